#include "ModalAnswer.h"

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QColorDialog>
#include <QFileDialog>
#include <QInputDialog>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QtTest>

#include <algorithm>
#include <utility>

struct ModalAnswer::Pending
{
    DialogAction dialogAction;
    MenuAction menuAction;
    ModalRecord record;
    bool given = false;
};

namespace {

/// Fails the running test function. Called from inside the dialog's event loop, where QFAIL's return is useless.
void fail(const QString &reason)
{
    QTest::qFail(qPrintable(reason), __FILE__, __LINE__);
}

QString withoutMnemonic(QString text)
{
    // Icon text of a menu entry is followed by its shortcut behind a tabulator.
    text = text.section(QLatin1Char('\t'), 0, 0);
    text.replace(QLatin1String("&&"), QString(QChar(1)));
    text.remove(QLatin1Char('&'));
    return text.replace(QChar(1), QLatin1Char('&'));
}

void recordMessageBox(const QMessageBox *box, ModalRecord &record)
{
    record.text = box->text();
    record.informativeText = box->informativeText();
    record.icon = box->icon();
    for (const QAbstractButton *button : box->buttons())
        record.buttons << button->text();
    if (box->defaultButton())
        record.defaultButton = box->defaultButton()->text();
}

ModalRecord recordOf(const QWidget *window)
{
    ModalRecord record;
    record.className = QLatin1String(window->metaObject()->className());
    record.objectName = window->objectName();
    record.title = window->windowTitle();
    if (const auto *box = qobject_cast<const QMessageBox *>(window))
        recordMessageBox(box, record);
    for (const QAction *action : window->actions())
        if (!action->isSeparator())
            record.buttons << action->text();
    return record;
}

/// The dialog as what the answer expects, or null: then the test has failed and the dialog is rejected.
template <typename Dialog>
Dialog *expect(QDialog *dialog)
{
    auto *expected = qobject_cast<Dialog *>(dialog);
    if (expected)
        return expected;
    fail(QStringLiteral("expected a %1, got a %2 \"%3\"")
             .arg(QLatin1String(Dialog::staticMetaObject.className()),
                  QLatin1String(dialog->metaObject()->className()), dialog->windowTitle()));
    dialog->reject();
    return nullptr;
}

void pressStandardButton(QDialog *dialog, QMessageBox::StandardButton which)
{
    auto *box = expect<QMessageBox>(dialog);
    if (!box)
        return;
    if (QAbstractButton *button = box->button(which)) {
        button->click();
        return;
    }
    fail(QStringLiteral("the box \"%1\" has no button 0x%2").arg(box->text(), QString::number(which, 16)));
    dialog->reject();
}

void pressNamedButton(QDialog *dialog, const QString &text)
{
    auto *box = expect<QMessageBox>(dialog);
    if (!box)
        return;
    for (QAbstractButton *button : box->buttons()) {
        if (withoutMnemonic(button->text()) == withoutMnemonic(text)) {
            button->click();
            return;
        }
    }
    fail(QStringLiteral("the box \"%1\" has no button \"%2\"").arg(box->text(), text));
    dialog->reject();
}

void typePath(QDialog *dialog, const QString &path)
{
    if (!expect<QFileDialog>(dialog))
        return;
    // The line edit takes an absolute path at once; selecting in the file list would wait for its thread.
    auto *edit = dialog->findChild<QLineEdit *>(QStringLiteral("fileNameEdit"));
    if (!edit) {
        fail(QStringLiteral("the file dialog \"%1\" is not Qt's own").arg(dialog->windowTitle()));
        dialog->reject();
        return;
    }
    edit->setText(path);
    dialog->accept();
}

void triggerEntry(QMenu *menu, const QString &text)
{
    const QList<QAction *> entries = menu->actions();
    const auto matches = [&text](const QAction *action) {
        return withoutMnemonic(action->text()) == withoutMnemonic(text);
    };
    const auto found = std::find_if(entries.cbegin(), entries.cend(), matches);
    if (!text.isEmpty() && (found == entries.cend() || !(*found)->isEnabled()))
        fail(QStringLiteral("the menu has no enabled entry \"%1\"").arg(text));
    if (text.isEmpty() || found == entries.cend() || !(*found)->isEnabled()) {
        menu->close();
        return;
    }
    // The Return key goes the menu's own way, so that exec() returns the action.
    menu->setActiveAction(*found);
    QTest::keyClick(menu, Qt::Key_Return);
}

} // namespace

/// The answers that wait, in the order of their making.
static QList<ModalAnswer *> &waiting()
{
    static QList<ModalAnswer *> answers;
    return answers;
}

ModalAnswer::ModalAnswer(DialogAction action) : m_pending(new Pending)
{
    m_pending->dialogAction = std::move(action);
    waiting().append(this);
}

ModalAnswer::ModalAnswer(MenuAction action) : m_pending(new Pending)
{
    m_pending->menuAction = std::move(action);
    waiting().append(this);
}

ModalAnswer::~ModalAnswer()
{
    waiting().removeOne(this);
    if (!m_pending->given && !QTest::currentTestFailed())
        fail(QStringLiteral("the dialog or menu that an answer waited for never came"));
}

ModalAnswer ModalAnswer::button(QMessageBox::StandardButton button)
{
    return ModalAnswer(DialogAction([button](QDialog *dialog) { pressStandardButton(dialog, button); }));
}

ModalAnswer ModalAnswer::button(const QString &text)
{
    return ModalAnswer(DialogAction([text](QDialog *dialog) { pressNamedButton(dialog, text); }));
}

ModalAnswer ModalAnswer::file(const QString &path)
{
    return ModalAnswer(DialogAction([path](QDialog *dialog) { typePath(dialog, path); }));
}

ModalAnswer ModalAnswer::colour(const QColor &colour)
{
    return ModalAnswer(DialogAction([colour](QDialog *dialog) {
        if (auto *chooser = expect<QColorDialog>(dialog)) {
            chooser->setCurrentColor(colour);
            dialog->accept();
        }
    }));
}

ModalAnswer ModalAnswer::input(const QString &text)
{
    return ModalAnswer(DialogAction([text](QDialog *dialog) {
        if (auto *input = expect<QInputDialog>(dialog)) {
            input->setTextValue(text);
            dialog->accept();
        }
    }));
}

ModalAnswer ModalAnswer::reject()
{
    return ModalAnswer(DialogAction([](QDialog *dialog) { dialog->reject(); }));
}

ModalAnswer ModalAnswer::menu(const QString &text)
{
    return ModalAnswer(MenuAction([text](QMenu *menu) { triggerEntry(menu, text); }));
}

ModalAnswer ModalAnswer::menu(MenuAction action)
{
    return ModalAnswer(std::move(action));
}

bool ModalAnswer::given() const
{
    return m_pending->given;
}

ModalRecord ModalAnswer::record() const
{
    return m_pending->record;
}

void ModalAnswer::answerDialog(QDialog *dialog)
{
    if (waiting().isEmpty() || !waiting().first()->m_pending->dialogAction) {
        fail(QStringLiteral("unexpected %1 \"%2\": %3")
                 .arg(QLatin1String(dialog->metaObject()->className()), dialog->windowTitle(),
                      recordOf(dialog).text));
        dialog->reject();
        return;
    }
    Pending *pending = waiting().takeFirst()->m_pending.get();
    pending->given = true;
    pending->record = recordOf(dialog);
    pending->dialogAction(dialog);
}

void ModalAnswer::answerMenu(QMenu *menu)
{
    // A menu that nobody waits for is not an error: a test may open one and drive it by keys.
    if (waiting().isEmpty() || !waiting().first()->m_pending->menuAction)
        return;
    Pending *pending = waiting().takeFirst()->m_pending.get();
    pending->given = true;
    pending->record = recordOf(menu);
    pending->menuAction(menu);
}
