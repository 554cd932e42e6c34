#include "Hands.h"

#include <WindowFocus.h>

#include <QAbstractItemView>
#include <QApplication>
#include <QContextMenuEvent>
#include <QMenu>
#include <QMenuBar>
#include <QTimer>
#include <QWindow>
#include <QtTest>

namespace {

/// The window that takes the keys. Lists that a field shows below itself leave the keys to the field.
QWindow *focusedWindow()
{
    if (QTest::currentTestFailed()) {
        return nullptr; // what is pressed from here on meets nobody knows what
    }
    const QWidget *popup = QApplication::activePopupWidget();
    const bool isOfField = qobject_cast<const QAbstractItemView *>(popup);
    const QWidget *wanted = isOfField ? nullptr : popup ? popup : QApplication::activeModalWidget();
    // A submenu leaves the focus to the menu that it belongs to.
    const bool isIn = QTest::qWaitFor([wanted] {
        const QWindow *focus = QGuiApplication::focusWindow();
        // A window that a dialog has just left has the focus before it is active, and gives it to none of its widgets.
        return focus && QApplication::activeWindow()
               && (!wanted || wanted->windowHandle() == focus
                   || (wanted->windowType() == Qt::Popup && focus->type() == Qt::Popup));
    });
    if (!isIn) {
        const auto name = [](const QObject *object) {
            return object ? QLatin1String(object->metaObject()->className()) + QLatin1Char(' ')
                                + object->objectName()
                          : QStringLiteral("nothing");
        };
        Hands::fail(
            QStringLiteral("the focus is not at %1 but at %2, %3")
                .arg(name(wanted), name(QGuiApplication::focusWindow()), name(QApplication::focusWidget())));
    }
    return QGuiApplication::focusWindow();
}

/// Whether a person would click there now.
bool isReady(const QWidget *widget)
{
    return widget && widget->isVisible() && WindowFocus::waitFor(widget)
           && QTest::qWaitFor([] { return QApplication::activeWindow() != nullptr; });
}

QPoint inWindow(const QWidget *widget, const QPoint &place)
{
    return widget->mapTo(widget->window(), place);
}

QString withoutMnemonic(const QString &text)
{
    return text.section(QLatin1Char('\t'), 0, 0).remove(QLatin1Char('&'));
}

QAction *entryOf(const QWidget *menu, const QString &text)
{
    for (QAction *action : menu->actions()) {
        if (withoutMnemonic(action->text()) == text && action->isEnabled() && action->isVisible()) {
            return action;
        }
    }
    Hands::fail(QStringLiteral("the menu offers no \"%1\"").arg(text));
    return nullptr;
}

QModelIndex find(const QAbstractItemModel *model, const QString &text, int column)
{
    const QModelIndex start = model->index(0, column);
    return start.isValid()
               ? model
                     ->match(start, Qt::DisplayRole, text, 1,
                             Qt::MatchExactly | Qt::MatchRecursive | Qt::MatchWrap | Qt::MatchCaseSensitive)
                     .value(0)
               : QModelIndex();
}

QMenu *openMenu()
{
    QMenu *menu = nullptr;
    if (!QTest::qWaitFor([&] {
            menu = qobject_cast<QMenu *>(QApplication::activePopupWidget());
            return menu != nullptr;
        })) {
        Hands::fail(QStringLiteral("no menu has opened"));
    }
    return menu;
}

} // namespace

void Hands::fail(const QString &reason)
{
    QTest::qFail(qPrintable(reason), __FILE__, __LINE__);
}

void Hands::press(Qt::Key key, Qt::KeyboardModifiers modifiers)
{
    // The press may close the window it goes to.
    const QPointer<QWindow> window = focusedWindow();
    if (window) {
        QTest::keyPress(window.data(), key, modifiers);
        if (QWindow *after = window ? window.data() : QGuiApplication::focusWindow()) {
            QTest::keyRelease(after, key, modifiers);
        }
        QCoreApplication::processEvents();
    }
}

void Hands::type(const QString &text)
{
    for (const QChar letter : text) {
        if (QWindow *window = focusedWindow()) {
            QTest::keyClick(window, letter.toLatin1());
        }
    }
    QCoreApplication::processEvents();
}

void Hands::retype(const QString &text)
{
    press(Qt::Key_A, Qt::ControlModifier);
    type(text);
}

void Hands::pressMenuKey()
{
    QWidget *focus = focusedWindow() ? QApplication::focusWidget() : nullptr;
    if (!focus) {
        fail(QStringLiteral("nothing has the focus"));
        return;
    }
    const QPoint at = focus->inputMethodQuery(Qt::ImCursorRectangle).toRect().center();
    QContextMenuEvent event(QContextMenuEvent::Keyboard, at, focus->mapToGlobal(at));
    QCoreApplication::sendEvent(focus, &event);
}

void Hands::click(QWidget *widget, Qt::MouseButton button)
{
    clickAt(widget, widget ? widget->rect().center() : QPoint(), Qt::NoModifier, button);
}

void Hands::clickAt(QWidget *widget, const QPoint &place, Qt::KeyboardModifiers modifiers,
                    Qt::MouseButton button)
{
    if (QTest::currentTestFailed()) {
        return;
    }
    if (!isReady(widget)) {
        fail(QStringLiteral("there is nothing to click"));
        return;
    }
    QTest::mouseClick(widget->window()->windowHandle(), button, modifiers, inWindow(widget, place));
    QCoreApplication::processEvents();
}

void Hands::doubleClickAt(QWidget *widget, const QPoint &place)
{
    if (QTest::currentTestFailed() || !isReady(widget)) {
        fail(QStringLiteral("there is nothing to click"));
        return;
    }
    QTest::mouseDClick(widget->window()->windowHandle(), Qt::LeftButton, {}, inWindow(widget, place));
    QCoreApplication::processEvents();
}

void Hands::drag(QWidget *from, const QPoint &start, QWidget *to, const QPoint &end)
{
    if (QTest::currentTestFailed()) {
        return;
    }
    QWindow *window = from->window()->windowHandle();
    const QPoint first = inWindow(from, start);
    const QPoint last = inWindow(to, end);
    const QPoint step(QApplication::startDragDistance() + 2, 0);
    if (!isReady(from)) {
        fail(QStringLiteral("the window does not get the focus"));
    }
    QTest::mousePress(window, Qt::LeftButton, {}, first);
    QTest::mouseMove(window, first + step);
    // The drag runs an event loop of its own from the next move on.
    QTimer::singleShot(0, from, [=] {
        QTest::mouseMove(window, last - QPoint(1, 0));
        QTest::mouseMove(window, last);
        QTest::mouseRelease(window, Qt::LeftButton, {}, last);
    });
    QTest::mouseMove(window, first + step + QPoint(1, 0));
    QCoreApplication::processEvents();
}

QModelIndex Hands::cell(QAbstractItemView *view, const QString &text, int column)
{
    QModelIndex found;
    if (!view || !QTest::qWaitFor([&] { return (found = find(view->model(), text, column)).isValid(); })) {
        fail(QStringLiteral("there is no \"%1\" in the list").arg(text));
        return found;
    }
    view->scrollTo(found);
    QCoreApplication::processEvents();
    return find(view->model(), text, column);
}

void Hands::clickCell(QAbstractItemView *view, const QModelIndex &cell, Qt::KeyboardModifiers modifiers)
{
    if (cell.isValid()) {
        // Not its middle: a wide column may reach beyond the view.
        const QRect place = view->visualRect(cell) & view->viewport()->rect();
        clickAt(view->viewport(), place.center(), modifiers);
    }
}

void Hands::clickCell(QAbstractItemView *view, const QString &text, Qt::KeyboardModifiers modifiers)
{
    clickCell(view, cell(view, text), modifiers);
}

void Hands::choose(QMenuBar *bar, const QStringList &entries)
{
    QAction *title = bar ? entryOf(bar, entries.constFirst()) : nullptr;
    if (title) {
        clickAt(bar, bar->actionGeometry(title).center());
    }
    for (int i = 1; title && i < entries.size(); ++i) {
        QMenu *menu = openMenu();
        QAction *entry = menu ? entryOf(menu, entries.at(i)) : nullptr;
        if (entry) {
            clickAt(menu, menu->actionGeometry(entry).center());
        }
    }
}

void Hands::chooseByKeys(const QStringList &entries)
{
    for (int i = 0; i < entries.size(); ++i) {
        QMenu *menu = openMenu();
        QAction *entry = menu ? entryOf(menu, entries.at(i)) : nullptr;
        if (!entry) {
            return;
        }
        for (int steps = menu->actions().size() + 1; steps > 0 && menu->activeAction() != entry; --steps) {
            press(Qt::Key_Down);
        }
        press(i + 1 < entries.size() ? Qt::Key_Right : Qt::Key_Return);
    }
}
