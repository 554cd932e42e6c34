#include "TestMain.h"

#include <QColorDialog>
#include <QFileDialog>
#include <QInputDialog>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QStandardPaths>

/// The sandbox and the answers that all other tests rely on.
class SandboxAndAnswers : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void keepsPreferencesInATemporaryFolder();
    void fixesLocaleAndTimeZone();
    void answersABoxByStandardButton();
    void answersABoxByText();
    void answersInTheOrderOfMaking();
    void typesAPathIntoAFileDialog();
    void givesNothingWhenAFileDialogIsRejected();
    void choosesAColour();
    void typesATextIntoAnInputDialog();
    void triggersAMenuEntry();
    void closesAMenuWithoutChoosing();
    void activatesWindows();
};

void SandboxAndAnswers::keepsPreferencesInATemporaryFolder()
{
    const QString temporary = QDir::tempPath();
    for (auto location : {QStandardPaths::HomeLocation, QStandardPaths::AppConfigLocation,
                          QStandardPaths::AppDataLocation, QStandardPaths::CacheLocation})
        QVERIFY2(QStandardPaths::writableLocation(location).startsWith(temporary),
                 qPrintable(QStandardPaths::writableLocation(location)));
}

void SandboxAndAnswers::fixesLocaleAndTimeZone()
{
    QCOMPARE(QLocale(), QLocale::c());
    QCOMPARE(QLocale::system().toString(1.5), QStringLiteral("1.5"));
    QCOMPARE(QDateTime(QDate(2020, 7, 1), QTime(12, 0)).offsetFromUtc(), 0);
}

void SandboxAndAnswers::answersABoxByStandardButton()
{
    ModalAnswer yes = ModalAnswer::button(QMessageBox::Yes);
    const auto answer = QMessageBox::question(nullptr, QStringLiteral("Title"), QStringLiteral("Sure?"));
    QCOMPARE(answer, QMessageBox::Yes);
    QVERIFY(yes.given());
    QCOMPARE(yes.record().className, QStringLiteral("QMessageBox"));
    QCOMPARE(yes.record().title, QStringLiteral("Title"));
    QCOMPARE(yes.record().text, QStringLiteral("Sure?"));
    QCOMPARE(yes.record().icon, QMessageBox::Question);
}

void SandboxAndAnswers::answersABoxByText()
{
    QMessageBox box;
    box.addButton(QStringLiteral("&Keep"), QMessageBox::AcceptRole);
    QPushButton *drop = box.addButton(QStringLiteral("&Drop"), QMessageBox::DestructiveRole);
    ModalAnswer answer = ModalAnswer::button(QStringLiteral("Drop"));
    box.exec();
    QCOMPARE(box.clickedButton(), static_cast<QAbstractButton *>(drop));
    QCOMPARE(answer.record().buttons, QStringList({QStringLiteral("&Keep"), QStringLiteral("&Drop")}));
}

void SandboxAndAnswers::answersInTheOrderOfMaking()
{
    ModalAnswer first = ModalAnswer::button(QMessageBox::Yes);
    ModalAnswer second = ModalAnswer::button(QMessageBox::No);
    QCOMPARE(QMessageBox::question(nullptr, QString(), QStringLiteral("1")), QMessageBox::Yes);
    QVERIFY(!second.given());
    QCOMPARE(QMessageBox::question(nullptr, QString(), QStringLiteral("2")), QMessageBox::No);
}

void SandboxAndAnswers::typesAPathIntoAFileDialog()
{
    QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("sets.json"));
    ModalAnswer save = ModalAnswer::file(path);
    QCOMPARE(QFileDialog::getSaveFileName(nullptr, QStringLiteral("Save")), path);
    QCOMPARE(save.record().title, QStringLiteral("Save"));
}

void SandboxAndAnswers::givesNothingWhenAFileDialogIsRejected()
{
    ModalAnswer reject = ModalAnswer::reject();
    QCOMPARE(QFileDialog::getOpenFileName(), QString());
}

void SandboxAndAnswers::choosesAColour()
{
    ModalAnswer red = ModalAnswer::colour(Qt::red);
    QCOMPARE(QColorDialog::getColor(Qt::blue), QColor(Qt::red));
}

void SandboxAndAnswers::typesATextIntoAnInputDialog()
{
    ModalAnswer name = ModalAnswer::input(QStringLiteral("Wheel"));
    QCOMPARE(QInputDialog::getText(nullptr, QString(), QString()), QStringLiteral("Wheel"));
}

void SandboxAndAnswers::triggersAMenuEntry()
{
    QMenu menu;
    menu.addAction(QStringLiteral("&Copy"));
    QAction *paste = menu.addAction(QStringLiteral("&Paste"));
    ModalAnswer answer = ModalAnswer::menu(QStringLiteral("Paste"));
    QCOMPARE(menu.exec(QPoint(10, 10)), paste);
    QCOMPARE(answer.record().buttons, QStringList({QStringLiteral("&Copy"), QStringLiteral("&Paste")}));
}

void SandboxAndAnswers::closesAMenuWithoutChoosing()
{
    QMenu menu;
    menu.addAction(QStringLiteral("Copy"));
    ModalAnswer none = ModalAnswer::menu(QString());
    QCOMPARE(menu.exec(QPoint(10, 10)), nullptr);
}

void SandboxAndAnswers::activatesWindows()
{
    QLineEdit first;
    first.show();
    QVERIFY(QTest::qWaitForWindowActive(&first));
    QLineEdit second;
    second.show();
    QVERIFY(QTest::qWaitForWindowActive(&second));
    QVERIFY(!first.isActiveWindow());
    QTest::keyClicks(QApplication::focusWidget(), QStringLiteral("abc"));
    QCOMPARE(second.text(), QStringLiteral("abc"));
}

NK_TEST_MAIN(SandboxAndAnswers)
#include "test_sandbox_and_answers.moc"
