#include "GuideStage.h"

#include "GuidePicture.h"

#include "MainWindow.h"
#include "Workbench.h"
#include "panels/EditorPanel.h"
#include "panels/SceneObjectView.h"
#include "viewport/ViewportPanel.h"

#include <nkKernelServices/nkScenegraphService.h>
#include <nkKernelServicesGUI/nkMetadataTreeView.h>

#include <QAction>
#include <QApplication>
#include <QDir>
#include <QDockWidget>
#include <QHeaderView>
#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QPainter>
#include <QTimer>
#include <QtTest>

#include <algorithm>

namespace {

constexpr QSize windowSize(1440, 900);
constexpr QPoint windowPlace(60, 40);
/// In the table: wide enough for the keys of the sample.
constexpr int keyColumn = 2;
constexpr int keyWidth = 150;
/// How long the program may take for one thing, and how long it has to stand still: milliseconds.
constexpr int patience = 15000;
constexpr int stillness = 60;
constexpr int turnsToDeliver = 8;

template <typename T>
T *needed(T *thing, const QString &name)
{
    if (!thing) {
        qFatal("There is no \"%s\" in the program any more", qPrintable(name));
    }
    return thing;
}

QString plain(QString text)
{
    return text.section(QLatin1Char('\t'), 0, 0).remove(QLatin1Char('&'));
}

QAction *actionOf(const QWidget *menu, const QString &text)
{
    QAction *found = nullptr;
    const QList<QAction *> actions = menu->actions();
    for (QAction *action : actions) {
        found = plain(action->text()) == text ? action : found;
    }
    return needed(found, text);
}

/// What pops up over the window; a submenu after its menu, which it overlaps.
QWidgetList popups()
{
    QWidgetList popups;
    const QWidgetList windows = QApplication::topLevelWidgets();
    for (QWidget *window : windows) {
        if (window->isVisible() && window->windowType() == Qt::Popup) {
            popups.append(window);
        }
    }
    std::sort(popups.begin(), popups.end(),
              [](const QWidget *one, const QWidget *other) { return one->x() < other->x(); });
    return popups;
}

} // namespace

GuideStage::GuideStage(const QString &folder) : m_folder(folder), m_workbench(std::make_unique<Workbench>())
{}

GuideStage::~GuideStage() = default;

void GuideStage::show()
{
    window()->setGeometry(QRect(windowPlace, windowSize));
    m_workbench->show();
    // What lies below the pointer looks otherwise.
    QCursor::setPos(0, 0);
    if (!QTest::qWaitForWindowActive(window(), patience) || window()->size() != windowSize) {
        qFatal("The window does not come up in its size");
    }
    settle();
}

MainWindow *GuideStage::window() const
{
    return m_workbench->window();
}

void GuideStage::openSample(int editorHeight)
{
    openScene(Workbench::sampleScene());
    if (editorHeight > 0) {
        window()->resizeDocks({editor()}, {editorHeight}, Qt::Vertical);
    }
    table()->header()->resizeSection(keyColumn, keyWidth);
    hurry();
}

void GuideStage::openScene(const QString &path)
{
    clearFields();
    const QString error = m_workbench->open(path);
    if (!error.isEmpty()) {
        qFatal("%s", qPrintable(error));
    }
    needed(window()->findChild<QAction *>(QStringLiteral("viewResetLayout")), QStringLiteral("Reset Layout"))
        ->trigger();
    sceneGraph()->clearSelection();
    hurry();
}

/// What was searched for another picture. By keys: a search does not hear of what is not typed.
void GuideStage::clearFields() const
{
    const QList<QLineEdit *> fields = window()->findChildren<QLineEdit *>();
    for (QLineEdit *field : fields) {
        if (field->isVisible() && field->isEnabled() && !field->text().isEmpty()) {
            field->setFocus(Qt::MouseFocusReason);
            field->selectAll();
            QTest::keyClick(field, Qt::Key_Delete);
            QTest::keyClick(field, Qt::Key_Return);
        }
    }
}

/// The two lists of the editor, from above to below.
QList<QTreeView *> GuideStage::lists() const
{
    const QList<nkMetadataTreeView *> views = editor()->findChildren<nkMetadataTreeView *>();
    if (views.size() != 2) {
        qFatal("The editor has not two lists any more");
    }
    QList<QTreeView *> lists{views.at(0), views.at(1)};
    const auto height = [](const QWidget *view) { return view->mapToGlobal(QPoint()).y(); };
    if (height(lists.at(0)) > height(lists.at(1))) {
        lists.swapItemsAt(0, 1);
    }
    return lists;
}

QDockWidget *GuideStage::dock(const QString &name) const
{
    return needed(window()->findChild<QDockWidget *>(name), name);
}

QTreeView *GuideStage::sceneGraph() const
{
    return window()->panels().constFirst()->view();
}

QTreeView *GuideStage::upperList() const
{
    return lists().constFirst();
}

QTreeView *GuideStage::lowerList() const
{
    return lists().constLast();
}

QTreeView *GuideStage::table() const
{
    QTreeView *table = nullptr;
    const QList<QTreeView *> views = editor()->findChildren<QTreeView *>();
    for (QTreeView *view : views) {
        table = view->accessibleName() == QLatin1String("Metadata entries") ? view : table;
    }
    return needed(table, QStringLiteral("table of entries"));
}

QLineEdit *GuideStage::field(const QWidget *parent, const QString &name)
{
    QLineEdit *found = nullptr;
    const QList<QLineEdit *> fields = parent->findChildren<QLineEdit *>();
    for (QLineEdit *field : fields) {
        const bool isIt = field->accessibleName() == name || field->parentWidget()->accessibleName() == name;
        found = isIt ? field : found;
    }
    return needed(found, name);
}

QModelIndexList GuideStage::cells(const QAbstractItemView *view, const QString &text, int column)
{
    const QModelIndex first = view->model()->index(0, column);
    const QModelIndexList found = view->model()->match(
        first, Qt::DisplayRole, text, -1, Qt::MatchExactly | Qt::MatchRecursive | Qt::MatchCaseSensitive);
    if (found.isEmpty()) {
        qFatal("There is no row \"%s\" in the list", qPrintable(text));
    }
    return found;
}

QModelIndex GuideStage::cell(const QAbstractItemView *view, const QString &text, int column)
{
    return cells(view, text, column).constFirst();
}

void GuideStage::click(QAbstractItemView *view, const QModelIndex &index, Qt::KeyboardModifiers keys)
{
    view->scrollTo(index);
    const QRect cell = view->visualRect(index);
    view->setFocus(Qt::MouseFocusReason);
    QTest::mouseClick(view->viewport(), Qt::LeftButton, keys,
                      QPoint(cell.left() + cell.width() / 3, cell.center().y()));
    hurry();
}

void GuideStage::clickRow(QAbstractItemView *view, const QString &text, Qt::KeyboardModifiers keys)
{
    click(view, cell(view, text), keys);
}

void GuideStage::type(QLineEdit *field, const QString &text)
{
    field->setFocus(Qt::MouseFocusReason);
    QTest::keyClicks(field, text);
    hurry();
}

QMenuBar *GuideStage::editorMenus() const
{
    return needed(editor()->findChild<QMenuBar *>(), QStringLiteral("menu bar of the editor"));
}

void GuideStage::openMenu(QMenuBar *bar, const QStringList &path)
{
    QAction *action = actionOf(bar, path.constFirst());
    QTest::mouseClick(bar, Qt::LeftButton, {}, bar->actionGeometry(action).center());
    openSubmenus(action->menu(), path.mid(1));
}

void GuideStage::openSubmenus(QMenu *menu, const QStringList &path)
{
    for (const QString &name : path) {
        QAction *action = actionOf(menu, name);
        menu->setActiveAction(action);
        if (action->menu() && !action->menu()->isVisible()) {
            QTest::keyClick(menu, Qt::Key_Right);
        }
        menu = action->menu();
    }
    hurry();
}

void GuideStage::closePopups()
{
    while (QWidget *popup = QApplication::activePopupWidget()) {
        popup->close();
    }
}

void GuideStage::during(const std::function<void()> &opening,
                        const std::function<void(QWidget *)> &looking) const
{
    QTimer waiting;
    QObject::connect(&waiting, &QTimer::timeout, window(), [&] {
        QWidget *shown = QApplication::activePopupWidget();
        shown = shown ? shown : QApplication::activeModalWidget();
        if (shown && shown->isVisible()) {
            waiting.stop();
            hurry();
            looking(shown);
        }
    });
    waiting.start(stillness);
    opening();
}

/// Changes are delivered by calls that are queued, and each may queue one more.
void GuideStage::hurry()
{
    for (int turn = 0; turn < turnsToDeliver; ++turn) {
        QTest::qWait(0);
    }
}

void GuideStage::selectAll(QAbstractItemView *view)
{
    view->setFocus(Qt::MouseFocusReason);
    QTest::keyClick(view, Qt::Key_A, Qt::ControlModifier);
    hurry();
}

QImage GuideStage::settle() const
{
    QImage before;
    const bool isStill = QTest::qWaitFor(
        [&] {
            QTest::qWait(stillness);
            const QImage now = look();
            const bool isSame = now == before && !isReading();
            before = now;
            return isSame;
        },
        patience);
    if (!isStill) {
        qFatal("The program does not come to rest");
    }
    return before;
}

/// The viewport shows a sentence until the geometry is there.
bool GuideStage::isReading() const
{
    auto *viewport = window()->findChild<ViewportPanel *>();
    return viewport && viewport->isVisible() && viewport->scene()->state() == ViewportScene::State::Reading;
}

QImage GuideStage::look() const
{
    QImage picture = window()->grab().toImage().convertToFormat(QImage::Format_RGB32);
    QPainter painter(&picture);
    for (QWidget *popup : popups()) {
        painter.drawPixmap(window()->mapFromGlobal(popup->mapToGlobal(QPoint())), popup->grab());
    }
    return picture;
}

void GuideStage::take(const QString &name, const QWidget *part)
{
    take(name, QRect(part->mapTo(window(), QPoint()), part->size()));
}

void GuideStage::take(const QString &name, QRect part)
{
    const QImage now = settle();
    for (const QWidget *popup : popups()) {
        part |= QRect(window()->mapFromGlobal(popup->mapToGlobal(QPoint())), popup->size());
    }
    save(name, now.copy(part & window()->rect()));
}

void GuideStage::takeDialog(const QString &name, QWidget *dialog)
{
    settle();
    save(name, dialog->grab().toImage().convertToFormat(QImage::Format_RGB32));
}

void GuideStage::save(const QString &name, const QImage &picture)
{
    m_texts.collect();
    const QString path = QDir(m_folder).filePath(name + QStringLiteral(".png"));
    if (!GuidePicture::save(picture, path)) {
        qFatal("The picture %s cannot be written", qPrintable(path));
    }
    m_pictures.append(name);
}
