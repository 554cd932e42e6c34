#include <TestMain.h>
#include <kernel/services/PreferencesService.h>
#include <nkKernelServices/nkLogService.h>

#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLoggingCategory>
#include <QSignalSpy>
#include <QTemporaryDir>

#include <random>

using kernel::PreferencesService;

/// Values set on trial, and files as no program would write them.
class TestPreferencesTrial : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { m_folder = std::make_unique<QTemporaryDir>(); }

    void values_on_trial_are_answered_and_taken_back()
    {
        PreferencesService preferences(path());
        preferences.setIntValue("kept", 1, true);
        preferences.beginTrial();
        preferences.setIntValue("kept", 2, true);
        preferences.setStringListValue("new", {"a"}, true);
        QCOMPARE(preferences.getIntValue("kept"), 2);
        QCOMPARE(preferences.getStringListValue("new"), QStringList{"a"});
        QVERIFY(preferences.hasValue("new"));
        preferences.endTrial();
        QCOMPARE(preferences.getIntValue("kept"), 1);
        QVERIFY(!preferences.hasValue("new"));
    }

    void values_on_trial_are_neither_told_nor_written()
    {
        PreferencesService preferences(path());
        preferences.setIntValue("kept", 1, true);
        QVERIFY(preferences.flush());
        const QByteArray before = bytes(path());
        const QSignalSpy changes(&preferences, &PreferencesService::valueChanged);
        preferences.beginTrial();
        preferences.setIntValue("kept", 2, true);
        preferences.setIntValue("new", 3, true);
        QVERIFY(preferences.flush());
        preferences.endTrial();
        QVERIFY(preferences.flush());
        QCoreApplication::processEvents();
        QCOMPARE(changes.size(), 0);
        QCOMPARE(bytes(path()), before);
    }

    void a_trial_keeps_present_values_when_not_overwriting()
    {
        PreferencesService preferences(path());
        preferences.setIntValue("kept", 1, true);
        preferences.beginTrial();
        preferences.setIntValue("kept", 2, false);
        preferences.setIntValue("new", 3, true);
        preferences.setIntValue("new", 4, false);
        QCOMPARE(preferences.getIntValue("kept"), 1);
        QCOMPARE(preferences.getIntValue("new"), 3);
    }

    void what_waits_to_be_written_is_written_during_a_trial()
    {
        PreferencesService preferences(path());
        preferences.setIntValue("kept", 1, true);
        preferences.beginTrial();
        QVERIFY(preferences.flush());
        QVERIFY(bytes(path()).contains("\"kept\": 1"));
    }

    void a_damaged_file_never_hinders_the_start()
    {
        // Thousands of reports, each of which Qt Test would print.
        QLoggingCategory::setFilterRules(QStringLiteral("workbench*=false"));
        std::mt19937 random(9);
        QSignalSpy reports(&nkLogService::the(), &nkLogService::reported);
        for (int i = mutantCount(); i > 0; --i) {
            const QByteArray text = mutant(random);
            write(text);
            reports.clear();
            PreferencesService preferences(path());
            readAll(preferences);
            const bool isAside = QFile::exists(path() + ".damaged");
            QCOMPARE(isAside, !holdsPreferences(text));
            QVERIFY2(!isAside || (!reports.isEmpty() && bytes(path() + ".damaged") == text),
                     text.constData());
            QFile::remove(path() + ".damaged");
            if (i % 100 == 0) {
                // Writing is durable, which takes its time.
                preferences.setIntValue("after", i, true);
                QVERIFY(preferences.flush());
                QCOMPARE(PreferencesService(path()).getIntValue("after"), i);
            }
        }
        QLoggingCategory::setFilterRules(QString());
    }

private:
    QString path() const { return m_folder->filePath("preferences.json"); }

    static QByteArray bytes(const QString &path)
    {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("unreadable");
    }

    void write(const QByteArray &text) const
    {
        QFile file(path());
        QVERIFY(file.open(QIODevice::WriteOnly));
        QCOMPARE(file.write(text), qint64(text.size()));
    }

    static int mutantCount()
    {
        // More of them by hand: NK_MUTANTS=200000
        const int wanted = qEnvironmentVariableIntValue("NK_MUTANTS");
        return wanted > 0 ? wanted : 4000;
    }

    static QByteArray mutant(std::mt19937 &random)
    {
        static constexpr char bytes[] = "{}[]\",:\\ue-+.0123456789nft\0\xFF\xC3 \n";
        static const QByteArray letters(bytes, sizeof(bytes) - 1);
        QByteArray text(
            "{\"values\": {\"number\": 7, \"list\": [\"a\", \"\\u00e9\"], \"odd\": 1.5e3, \"x\": null},\n"
            " \"version\": 1, \"more\": {\"a\": [true, {}]}}\n");
        for (uint changes = 1 + random() % 6; changes > 0; --changes) {
            const int place = int(random() % uint(text.size() + 1));
            const char letter = letters.at(int(random() % uint(letters.size())));
            switch (random() % 4) {
            case 0:
                text.insert(place, letter);
                break;
            case 1:
                text.remove(place, 1 + int(random() % 6));
                break;
            case 2:
                text.insert(place, text.mid(int(random() % uint(text.size() + 1)), 12));
                break;
            default:
                text.replace(place, 1, QByteArray(1, letter));
                break;
            }
        }
        return text;
    }

    static bool holdsPreferences(const QByteArray &text)
    {
        const QJsonDocument document = QJsonDocument::fromJson(text);
        const QJsonValue values = document.object().value("values");
        return document.isObject() && (values.isUndefined() || values.isObject());
    }

    static void readAll(const PreferencesService &preferences)
    {
        preferences.getIntValue("number");
        preferences.getIntValue("odd");
        preferences.getStringListValue("list");
        preferences.getStringListValue("number");
    }

    std::unique_ptr<QTemporaryDir> m_folder;
};

NK_GUILESS_TEST_MAIN(TestPreferencesTrial)
#include "test_preferences_trial.moc"
