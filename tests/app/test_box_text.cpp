#include "BoxText.h"
#include "MainWindow.h"
#include "files/FileQuestions.h"

#include <ModalAnswer.h>
#include <TestMain.h>

#include <QLabel>
#include <QTextBoundaryFinder>

/// Message boxes with names of files that are longer than a line.
class TestBoxText : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void whatFitsStaysAsItIs();
    void aLongNameLosesItsMiddle();
    void aLongNameInAPathLosesItsMiddle();
    void noQuestionIsCutOff();
    void noErrorIsCutOff();

private:
    static QString longName()
    {
        return QStringLiteral("Begin") + QString(200, QLatin1Char('m')) + QStringLiteral("End.gltf");
    }
    /// Looks whether all words of a box that is about to come fit into it, and closes it.
    static ModalAnswer looker(bool *isWhole)
    {
        return ModalAnswer(ModalAnswer::DialogAction([isWhole](QDialog *dialog) {
            *isWhole = true;
            for (const QLabel *label : dialog->findChildren<QLabel *>()) {
                *isWhole = *isWhole && isWholeIn(*label);
            }
            dialog->reject();
        }));
    }
    static bool isWholeIn(const QLabel &label)
    {
        const QRect wrapped = label.fontMetrics().boundingRect(
            QRect(0, 0, label.contentsRect().width(), 10000), Qt::TextWordWrap, label.text());
        return !label.isVisible() || label.text().isEmpty()
               || wrapped.width() <= label.contentsRect().width();
    }
};

void TestBoxText::whatFitsStaysAsItIs()
{
    for (const char *text : {"", "Save the changes to “a & b.gltf”?", "/home/me/scenes/a.gltf is gone.",
                             "One\n\nTwo \n Three ", "<b>%1</b> &amp;"}) {
        QCOMPARE(BoxText::elided(QString::fromUtf8(text)), QString::fromUtf8(text));
    }
    const QString words = QStringLiteral("many short words ").repeated(50);
    QCOMPARE(BoxText::elided(words), words);
}

void TestBoxText::aLongNameLosesItsMiddle()
{
    const QString text = BoxText::elided(QStringLiteral("Save “%1”, or\nnot?").arg(longName()));
    QVERIFY2(text.startsWith(QStringLiteral("Save “Beginm")), qPrintable(text));
    QVERIFY2(text.endsWith(QStringLiteral(".gltf”, or\nnot?")), qPrintable(text));
    QCOMPARE(text.count(QChar(0x2026)), 1);
    QVERIFY(text.size() < 100);
    QTextBoundaryFinder breaks(QTextBoundaryFinder::Line, text);
    breaks.setPosition(text.indexOf(QChar(0x2026)));
    QVERIFY2(breaks.toNextBoundary() > text.indexOf(QStringLiteral(".gltf")), "the name is torn apart");
}

void TestBoxText::aLongNameInAPathLosesItsMiddle()
{
    const QString text = BoxText::elided(QStringLiteral("It is /home/me/%1 now.").arg(longName()));
    QVERIFY2(text.startsWith(QStringLiteral("It is /home/me/Beginm")), qPrintable(text));
    QVERIFY2(text.endsWith(QStringLiteral(".gltf now.")), qPrintable(text));
}

void TestBoxText::noQuestionIsCutOff()
{
    MainWindow window;
    window.show();
    bool isWhole = false;
    const ModalAnswer answer = looker(&isWhole);
    FileQuestions::restore(&window, longName(), QStringLiteral("/home/%1/%1").arg(longName()));
    QVERIFY(isWhole);
}

void TestBoxText::noErrorIsCutOff()
{
    MainWindow window;
    window.show();
    bool isWhole = false;
    const ModalAnswer answer = looker(&isWhole);
    window.showError(QStringLiteral("Open Scene"), QStringLiteral("“/tmp/%1” is no scene.").arg(longName()));
    QTRY_VERIFY(answer.given());
    QVERIFY(isWhole);
}

NK_TEST_MAIN(TestBoxText)
#include "test_box_text.moc"
