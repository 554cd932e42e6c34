#pragma once

#include <QColor>
#include <QMessageBox>
#include <QObject>
#include <QStringList>

#include <functional>
#include <memory>

class QDialog;
class QMenu;

/// What a modal dialog showed when it was answered. Texts as set, mnemonics included.
struct ModalRecord
{
    QString className; ///< of the dialog: "QMessageBox", "QFileDialog", ...
    QString objectName;
    QString title;           ///< of the window
    QString text;            ///< message boxes only
    QString informativeText; ///< message boxes only
    /// The message box's buttons in the order of adding, or the menu's entries without separators.
    QStringList buttons;
    QString defaultButton; ///< message boxes only; empty where there is none
    QMessageBox::Icon icon = QMessageBox::NoIcon;
};

/// The next answer: what the tests' person does with one modal dialog or pop-up menu that is about to come.
///
/// Made before the action that opens the dialog; several wait in the order in which they were made and each
/// answers one dialog. Needs NK_TEST_MAIN, which also fails the running test and rejects the dialog when a
/// modal one comes that nobody waits for. An answer that was never needed fails the test when it goes.
///
///     ModalAnswer yes = ModalAnswer::button(QMessageBox::Yes);
///     QTest::keyClick(table, Qt::Key_Delete);
///     QCOMPARE(yes.record().text, QStringLiteral("..."));
class ModalAnswer
{
public:
    using DialogAction = std::function<void(QDialog *)>;
    using MenuAction = std::function<void(QMenu *)>;

    /// Any dialog; the action has to bring it to its end. Runs inside the dialog's event loop.
    explicit ModalAnswer(DialogAction action);
    ~ModalAnswer();

    /// Presses a standard button of a message box. Fails the test where there is no such button.
    static ModalAnswer button(QMessageBox::StandardButton button);
    /// Presses the message box's button of that text; mnemonics ("&") are left out on both sides.
    static ModalAnswer button(const QString &text);
    /// Types an absolute path into a file dialog and accepts it.
    static ModalAnswer file(const QString &path);
    /// Chooses a colour in a colour dialog and accepts it.
    static ModalAnswer colour(const QColor &colour);
    /// Types a text into an input dialog and accepts it.
    static ModalAnswer input(const QString &text);
    /// Rejects any dialog, as the Escape key does.
    static ModalAnswer reject();
    /// Triggers the entry of that text in the next pop-up menu, mnemonics left out. An empty text closes the
    /// menu without choosing. Fails the test where the entry is missing or disabled.
    static ModalAnswer menu(const QString &text);
    /// Any pop-up menu; the action has to bring it to its end.
    static ModalAnswer menu(MenuAction action);

    /// Whether the dialog has come.
    bool given() const;
    /// What the dialog showed; empty before it came.
    ModalRecord record() const;

private:
    friend class UnexpectedModals;
    struct Pending;

    explicit ModalAnswer(MenuAction action);
    static void answerDialog(QDialog *dialog);
    static void answerMenu(QMenu *menu);
    ModalAnswer(const ModalAnswer &) = delete;
    ModalAnswer &operator=(const ModalAnswer &) = delete;

    std::unique_ptr<Pending> m_pending;
};
