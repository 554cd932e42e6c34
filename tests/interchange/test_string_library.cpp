#include <TestMain.h>
#include <interchange/libraries/StringLibrary.h>

#include <algorithm>
#include <random>

using interchange::StringLibrary;

/// Finding words in a library.
class TestStringLibrary : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void words_that_begin_with_the_text_come_first()
    {
        const StringLibrary library(QStringList{"white oak", "oak", "soak", "oaken", "pine", "cloak"});
        QCOMPARE(library.completions("oak", 12), (QStringList{"oak", "oaken", "cloak", "soak", "white oak"}));
    }

    void no_more_than_the_limit_are_offered()
    {
        const StringLibrary library(QStringList{"oak", "oaken", "soak", "cloak"});
        QCOMPARE(library.completions("oak", 1), QStringList{"oak"});
        QCOMPARE(library.completions("oak", 3), (QStringList{"oak", "oaken", "cloak"}));
        QCOMPARE(library.completions("oak", 0), QStringList());
    }

    void a_word_is_offered_once()
    {
        const StringLibrary library(QStringList{"banana", "cabana banana"});
        QCOMPARE(library.completions("an", 12), (QStringList{"banana", "cabana banana"}));
        QCOMPARE(library.completions("ban", 12), (QStringList{"banana", "cabana banana"}));
    }

    void a_word_listed_twice_is_kept_once()
    {
        const StringLibrary library(QStringList{"oak", "pine", "oak", "oak"});
        QCOMPARE(library.size(), 2);
    }

    void case_does_not_matter_for_finding()
    {
        const StringLibrary library(QStringList{"Oak", "SOAK", "ÉCLAIR"});
        QCOMPARE(library.completions("oAK", 12), (QStringList{"Oak", "SOAK"}));
        QCOMPARE(library.completions("écl", 12), QStringList{"ÉCLAIR"});
    }

    void words_that_differ_in_case_are_two()
    {
        const StringLibrary library(QStringList{"oak", "OAK", "Oak", "oak"});
        QCOMPARE(library.completions("oak", 12), (QStringList{"OAK", "Oak", "oak"}));
        QVERIFY(library.contains("Oak"));
        QVERIFY(!library.contains("oAk"));
    }

    void accents_matter()
    {
        const StringLibrary library(QStringList{"resume", "résumé", "Über", "Uber"});
        QCOMPARE(library.completions("resume", 12), QStringList{"resume"});
        QCOMPARE(library.completions("rés", 12), QStringList{"résumé"});
        QCOMPARE(library.completions("ü", 12), QStringList{"Über"});
        QCOMPARE(library.completions("u", 12), (QStringList{"Uber", "resume", "résumé"}));
    }

    void accented_letters_are_found_however_they_are_composed()
    {
        const QString decomposed = QString("Café").normalized(QString::NormalizationForm_D);
        const StringLibrary library(QStringList{decomposed});
        QCOMPARE(library.completions("café", 12), QStringList{decomposed});
        QCOMPARE(library.completions(QString("FÉ").normalized(QString::NormalizationForm_D), 12),
                 QStringList{decomposed});
    }

    void an_empty_text_begins_every_word()
    {
        const StringLibrary library(QStringList{"pine", "oak", "birch"});
        QCOMPARE(library.completions(QString(), 2), (QStringList{"birch", "oak"}));
    }

    void nothing_is_found_across_words_or_in_none()
    {
        const StringLibrary library(QStringList{"ab", "cd"});
        QVERIFY(library.completions("bc", 12).isEmpty());
        QVERIFY(library.completions("b\nc", 12).isEmpty());
        QVERIFY(library.completions("\n", 12).isEmpty());
        QVERIFY(library.completions("abc", 12).isEmpty());
        const StringLibrary none;
        QCOMPARE(none.size(), 0);
        QVERIFY(none.completions("a", 12).isEmpty());
        QVERIFY(none.completions(QString(), 12).isEmpty());
        QVERIFY(!none.contains("a"));
    }

    void letters_that_grow_when_folded_are_found()
    {
        const StringLibrary library(QStringList{"Straße", "İstanbul", "ŉ"});
        QCOMPARE(library.completions("straße", 12), QStringList{"Straße"});
        QCOMPARE(library.completions("İst", 12), QStringList{"İstanbul"});
        QVERIFY(library.contains("ŉ"));
    }

    void answers_like_a_search_word_by_word()
    {
        std::mt19937 random(11);
        for (int round = 0; round < 60; ++round) {
            const QStringList words = randomWords(random, 60);
            const StringLibrary library(words);
            const QStringList ordered = inOrder(words);
            for (int i = 0; i < 20; ++i) {
                const QString text = randomWord(random, 1 + int(random() % 3));
                const int limit = int(random() % 14);
                QCOMPARE(library.completions(text, limit), searched(ordered, text, limit));
            }
        }
    }

private:
    static QString randomWord(std::mt19937 &random, int letters)
    {
        static const QString alphabet = QStringLiteral("abABéÉ ");
        QString word;
        while (word.size() < letters) {
            word.append(alphabet.at(int(random() % uint(alphabet.size()))));
        }
        return word;
    }

    static QStringList randomWords(std::mt19937 &random, int count)
    {
        QStringList words;
        for (int i = 0; i < count; ++i) {
            words.append(randomWord(random, 1 + int(random() % 6)));
        }
        return words;
    }

    static QStringList inOrder(QStringList words)
    {
        const auto before = [](const QString &a, const QString &b) {
            const QByteArray foldedA = a.toCaseFolded().toUtf8();
            const QByteArray foldedB = b.toCaseFolded().toUtf8();
            return foldedA != foldedB ? foldedA < foldedB : a.toUtf8() < b.toUtf8();
        };
        words.removeDuplicates();
        std::sort(words.begin(), words.end(), before);
        return words;
    }

    static QStringList searched(const QStringList &words, const QString &text, int limit)
    {
        QStringList first;
        QStringList others;
        for (const QString &word : words) {
            const int place = word.toCaseFolded().indexOf(text.toCaseFolded());
            (place == 0 ? first : others).append(place >= 0 ? QStringList{word} : QStringList());
        }
        return (first + others).mid(0, limit);
    }
};

NK_GUILESS_TEST_MAIN(TestStringLibrary)
#include "test_string_library.moc"
