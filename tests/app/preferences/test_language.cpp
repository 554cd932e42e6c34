#include "TestMain.h"
#include "preferences/GeneralPreferences.h"
#include "preferences/Language.h"
#include "preferences/Options.h"

#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QLocale>
#include <QtEndian>

/// The language of all texts, chosen among those that there are.
class TestLanguage : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup()
    {
        QDir(folder()).removeRecursively();
        for (QTranslator *translator : qApp->findChildren<QTranslator *>()) {
            delete translator;
        }
        Options::language.store(QString());
        QLocale::setDefault(QLocale::c());
    }

    void without_translations_there_are_the_system_and_english()
    {
        GeneralPreferences page;
        page.loadToPage();
        const QComboBox *languages = page.findChildren<QComboBox *>().at(1);
        QCOMPARE(languages->count(), 2);
        QCOMPARE(languages->itemText(0), QStringLiteral("As the system"));
        QCOMPARE(languages->itemText(1), QStringLiteral("English"));
    }

    void nothing_chosen_leaves_everything_to_the_system()
    {
        Language::install();
        QCOMPARE(QLocale().language(), QLocale::C);
        QCOMPARE(QCoreApplication::translate("TestLanguage", "Tree"), QStringLiteral("Tree"));
    }

    void english_is_also_how_numbers_and_dates_are_written()
    {
        QLocale::setDefault(QLocale(QLocale::German));
        Options::language.store(QStringLiteral("en"));
        Language::install();
        QCOMPARE(QLocale().toString(1.5), QStringLiteral("1.5"));
        QVERIFY(qApp->findChildren<QTranslator *>().isEmpty());
    }

    void a_translation_beside_the_program_is_offered_and_used_from_the_next_start_on()
    {
        writeTranslation(QStringLiteral("de"));
        GeneralPreferences page;
        page.loadToPage();
        auto *languages = page.findChildren<QComboBox *>().at(1);
        languages->setCurrentIndex(languages->findText(QStringLiteral("Deutsch")));
        page.storeFromPage();
        page.apply();
        QCOMPARE(QCoreApplication::translate("TestLanguage", "Tree"), QStringLiteral("Tree"));
        Language::install();
        QCOMPARE(QCoreApplication::translate("TestLanguage", "Tree"), QStringLiteral("Baum"));
        QCOMPARE(QLocale().toString(1.5), QStringLiteral("1,5"));
    }

    void a_translation_that_has_gone_leaves_english_texts()
    {
        Options::language.store(QStringLiteral("de"));
        Language::install();
        QCOMPARE(QCoreApplication::translate("TestLanguage", "Tree"), QStringLiteral("Tree"));
        QCOMPARE(QLocale().language(), QLocale::C);
        GeneralPreferences page;
        page.loadToPage();
        QCOMPARE(page.findChildren<QComboBox *>().at(1)->currentIndex(), 0);
    }

private:
    static QString folder() { return QCoreApplication::applicationDirPath() + "/translations"; }

    template <typename Number>
    static QByteArray bytes(Number number)
    {
        QByteArray made(sizeof(Number), '\0');
        qToBigEndian(number, made.data());
        return made;
    }
    static QByteArray part(quint8 tag, const QByteArray &content)
    {
        return bytes(tag) + bytes(quint32(content.size())) + content;
    }
    /// What the name of a message is found by.
    static quint32 hashOf(const QByteArray &text)
    {
        quint32 hash = 0;
        for (const char c : text) {
            hash = (hash << 4) + uchar(c);
            const quint32 high = hash & 0xf0000000;
            hash ^= high >> 24;
            hash &= ~high;
        }
        return hash;
    }
    /// A file of compiled translations with one message: "Tree" is "Baum".
    static void writeTranslation(const QString &code)
    {
        const QByteArray baum = QByteArray("\0B\0a\0u\0m", 8);
        const QByteArray message = part(3, baum) + part(6, "Tree") + part(7, "TestLanguage")
                                   + bytes(quint8(1));
        const QByteArray magic = QByteArray::fromHex("3cb86418caef9c95cd211cbf60a1bddd");
        QVERIFY(QDir().mkpath(folder()));
        QFile file(folder() + "/workbench_" + code + ".qm");
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(magic + part(0x42, bytes(hashOf("Tree")) + bytes(quint32(0))) + part(0x69, message));
    }
};

NK_TEST_MAIN(TestLanguage)
#include "test_language.moc"
