#include "table/nkMetadataTextFilter.h"

#include <TestMain.h>

#include <QRandomGenerator>

/// The text filters of the table answer as QString does, only faster.
class TestTextFilter : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void an_empty_filter_passes_every_text();
    void every_character_matches_what_QString_matches();
    void random_texts_match_what_QString_matches();

private:
    static bool isIn(const QString &filter, const QString &text)
    {
        nkMetadataTextFilter each;
        each.setText(filter);
        return each.isIn(text);
    }
};

void TestTextFilter::an_empty_filter_passes_every_text()
{
    const nkMetadataTextFilter filter;
    QVERIFY(filter.isEmpty());
    QVERIFY(filter.isIn(QString()));
    QVERIFY(filter.isIn(QStringLiteral("a")));
    QVERIFY(!isIn(QStringLiteral("a"), QString()));
}

void TestTextFilter::every_character_matches_what_QString_matches()
{
    for (int code = 0; code <= 0xffff; ++code) {
        const QString character{QChar(code)};
        const QStringList variants{character, character.toUpper(), character.toLower(),
                                   character.toCaseFolded(), QStringLiteral("x") + character};
        for (const QString &text : variants) {
            const bool expected = text.contains(character, Qt::CaseInsensitive);
            QVERIFY2(isIn(character, text) == expected, qPrintable(QString::number(code, 16)));
        }
    }
}

void TestTextFilter::random_texts_match_what_QString_matches()
{
    QRandomGenerator random(7);
    const QVector<uint> letters{'a',  'A',   'b',   'B',   '1',     ' ',     0xe4,
                                0xc4, 0x3c3, 0x3a3, 0x3c2, 0x10400, 0x10428, 0x130};
    const auto text = [&](int longest) {
        QString made;
        for (int length = int(random.bounded(longest + 1)); length > 0; --length) {
            const uint letter = letters[int(random.bounded(letters.size()))];
            made += QString::fromUcs4(&letter, 1);
        }
        return made;
    };
    for (int i = 0; i < 100000; ++i) {
        const QString filter = text(3);
        const QString searched = text(12);
        QCOMPARE(isIn(filter, searched), searched.contains(filter, Qt::CaseInsensitive));
    }
}

NK_TEST_MAIN(TestTextFilter)
#include "test_text_filter.moc"
