#include "TestMain.h"

#include <nkQt4Ext/QNKStringCompleterLineEdit.h>

#include <QAbstractItemView>
#include <QCompleter>
#include <QSignalSpy>
#include <QStyledItemDelegate>
#include <QTableWidget>

namespace {

/// A shown edit that completes from a few words.
struct Edit
{
    Edit()
    {
        edit.setCompletions([this](const QString &text, int limit) {
            asked.append(text);
            limits.append(limit);
            QStringList found;
            for (const QString &word : words) {
                if (word.contains(text))
                    found.append(word);
            }
            return found;
        });
        edit.show();
        edit.activateWindow();
        edit.setFocus();
        usable = QTest::qWaitForWindowActive(&edit);
    }

    QAbstractItemView *popup() const { return edit.findChild<QCompleter *>()->popup(); }

    QStringList offered() const
    {
        QStringList texts;
        for (int row = 0; row < popup()->model()->rowCount(); ++row)
            texts.append(popup()->model()->index(row, 0).data().toString());
        return texts;
    }

    QNKStringCompleterLineEdit edit;
    bool usable = false;
    QStringList words{"wheel", "wheelbase", "white", "door"};
    QStringList asked;
    QList<int> limits;
};

} // namespace

class TestStringCompleterLineEdit : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void offersWordsWhileAPersonTypes();
    void changesByProgramOfferNothing();
    void offersNoMoreThanTwelve();
    void offersNothingWhereNothingFits();
    void anEmptyFunctionOffersNothing();
    void keyboardChoosesAWord();
    void mouseChoosesAWord();
    void walkingTheListLeavesTheTextAlone();
    void escapeLeavesWhatWasTyped();
    void returnWithoutAChoiceLeavesWhatWasTyped();
    void returnWithoutAChoiceCommitsACell();
    void downKeyOffersWords();
    void showsLongWordsInANarrowField();
    void holdsLongTexts();
};

void TestStringCompleterLineEdit::offersWordsWhileAPersonTypes()
{
    Edit edit;
    QVERIFY(edit.usable);
    QTest::keyClicks(&edit.edit, QStringLiteral("wh"));
    QVERIFY(edit.popup()->isVisible());
    QCOMPARE(edit.offered(), (QStringList{"wheel", "wheelbase", "white"}));
    QTest::keyClicks(edit.popup(), QStringLiteral("e"));
    QCOMPARE(edit.edit.text(), QStringLiteral("whe"));
    QCOMPARE(edit.offered(), (QStringList{"wheel", "wheelbase"}));
    QCOMPARE(edit.asked, (QStringList{"w", "wh", "whe"}));
    QCOMPARE(edit.limits.first(), 12);
}

void TestStringCompleterLineEdit::changesByProgramOfferNothing()
{
    Edit edit;
    QVERIFY(edit.usable);
    edit.edit.setText(QStringLiteral("wh"));
    QVERIFY(edit.asked.isEmpty());
    QVERIFY(!edit.popup()->isVisible());
}

void TestStringCompleterLineEdit::offersNoMoreThanTwelve()
{
    Edit edit;
    QVERIFY(edit.usable);
    edit.words.clear();
    for (int number = 0; number < 40; ++number)
        edit.words.append(QStringLiteral("word %1").arg(number));
    QTest::keyClicks(&edit.edit, QStringLiteral("w"));
    QCOMPARE(edit.offered(), edit.words.mid(0, 12));
}

void TestStringCompleterLineEdit::offersNothingWhereNothingFits()
{
    Edit edit;
    QVERIFY(edit.usable);
    QTest::keyClicks(&edit.edit, QStringLiteral("d"));
    QVERIFY(edit.popup()->isVisible());
    QTest::keyClicks(edit.popup(), QStringLiteral("x"));
    QVERIFY(!edit.popup()->isVisible());
    QTest::keyClick(&edit.edit, Qt::Key_Backspace);
    QVERIFY(edit.popup()->isVisible());
    QTest::keyClicks(edit.popup(), QStringLiteral("oor"));
    QVERIFY2(!edit.popup()->isVisible(), "the only word is already there");
}

void TestStringCompleterLineEdit::anEmptyFunctionOffersNothing()
{
    Edit edit;
    QVERIFY(edit.usable);
    edit.edit.setCompletions({});
    QTest::keyClicks(&edit.edit, QStringLiteral("w"));
    QVERIFY(!edit.popup()->isVisible());
    QCOMPARE(edit.edit.text(), QStringLiteral("w"));
}

void TestStringCompleterLineEdit::keyboardChoosesAWord()
{
    Edit edit;
    QVERIFY(edit.usable);
    QTest::keyClicks(&edit.edit, QStringLiteral("wh"));
    QTest::keyClick(edit.popup(), Qt::Key_Down);
    QTest::keyClick(edit.popup(), Qt::Key_Down);
    QTest::keyClick(edit.popup(), Qt::Key_Return);
    QCOMPARE(edit.edit.text(), QStringLiteral("wheelbase"));
    QVERIFY(!edit.popup()->isVisible());
}

void TestStringCompleterLineEdit::mouseChoosesAWord()
{
    Edit edit;
    QVERIFY(edit.usable);
    QTest::keyClicks(&edit.edit, QStringLiteral("wh"));
    const QModelIndex last = edit.popup()->model()->index(2, 0);
    QTest::mouseClick(edit.popup()->viewport(), Qt::LeftButton, {}, edit.popup()->visualRect(last).center());
    QCOMPARE(edit.edit.text(), QStringLiteral("white"));
    QTRY_VERIFY(!edit.popup()->isVisible());
}

void TestStringCompleterLineEdit::walkingTheListLeavesTheTextAlone()
{
    Edit edit;
    QVERIFY(edit.usable);
    QTest::keyClicks(&edit.edit, QStringLiteral("wh"));
    QTest::keyClick(edit.popup(), Qt::Key_Down);
    QCOMPARE(edit.edit.text(), QStringLiteral("wh"));
}

void TestStringCompleterLineEdit::escapeLeavesWhatWasTyped()
{
    Edit edit;
    QVERIFY(edit.usable);
    QTest::keyClicks(&edit.edit, QStringLiteral("wh"));
    QTest::keyClick(edit.popup(), Qt::Key_Down);
    QTest::keyClick(edit.popup(), Qt::Key_Escape);
    QVERIFY(!edit.popup()->isVisible());
    QCOMPARE(edit.edit.text(), QStringLiteral("wh"));
}

void TestStringCompleterLineEdit::returnWithoutAChoiceLeavesWhatWasTyped()
{
    Edit edit;
    QVERIFY(edit.usable);
    QTest::keyClicks(&edit.edit, QStringLiteral("wh"));
    QTest::keyClick(edit.popup(), Qt::Key_Return);
    QCOMPARE(edit.edit.text(), QStringLiteral("wh"));
    QVERIFY(!edit.popup()->isVisible());
}

void TestStringCompleterLineEdit::returnWithoutAChoiceCommitsACell()
{
    class Delegate : public QStyledItemDelegate
    {
    public:
        QWidget *createEditor(QWidget *parent, const QStyleOptionViewItem &,
                              const QModelIndex &) const override
        {
            auto *edit = new QNKStringCompleterLineEdit(parent);
            edit->setCompletions([](const QString &, int) { return QStringList{"wheel", "white"}; });
            return edit;
        }
    };
    QTableWidget table(1, 1);
    Delegate delegate;
    table.setItemDelegate(&delegate);
    table.setItem(0, 0, new QTableWidgetItem(QStringLiteral("old")));
    table.show();
    QVERIFY(QTest::qWaitForWindowActive(&table));
    table.editItem(table.item(0, 0));
    auto *edit = table.findChild<QNKStringCompleterLineEdit *>();
    QVERIFY(edit);
    QTest::keyClicks(edit, QStringLiteral("wh"));
    QAbstractItemView *popup = edit->findChild<QCompleter *>()->popup();
    QVERIFY(popup->isVisible());
    QTest::keyClick(popup, Qt::Key_Return);
    QTRY_COMPARE(table.item(0, 0)->text(), QStringLiteral("wh"));
}

void TestStringCompleterLineEdit::downKeyOffersWords()
{
    Edit edit;
    QVERIFY(edit.usable);
    edit.edit.setText(QStringLiteral("wh"));
    QTest::keyClick(&edit.edit, Qt::Key_Down);
    QVERIFY(edit.popup()->isVisible());
    QCOMPARE(edit.offered().size(), 3);
    QTest::keyClick(edit.popup(), Qt::Key_Escape);
}

void TestStringCompleterLineEdit::showsLongWordsInANarrowField()
{
    Edit edit;
    QVERIFY(edit.usable);
    edit.words = QStringList{QStringLiteral("a word that takes more room"),
                             QStringLiteral("a") + QString(900, 'x')};
    edit.edit.setFixedWidth(60);
    QTest::keyClicks(&edit.edit, QStringLiteral("a word"));
    QVERIFY(edit.popup()->viewport()->width() >= edit.popup()->sizeHintForColumn(0));
    edit.edit.clear();
    QTest::keyClicks(edit.popup(), QStringLiteral("a"));
    QVERIFY2(edit.popup()->width() <= 480, "a word without end has an end here");
}

void TestStringCompleterLineEdit::holdsLongTexts()
{
    QNKStringCompleterLineEdit edit;
    const QString text(1024 * 1024, QLatin1Char('x'));
    edit.setText(text);
    QCOMPARE(edit.text().size(), text.size());
}

NK_TEST_MAIN(TestStringCompleterLineEdit)

#include "test_string_completer_line_edit.moc"
