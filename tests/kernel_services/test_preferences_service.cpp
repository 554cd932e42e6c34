#include "TestMain.h"

#include <kernel/services/PreferencesService.h>
#include <nkKernelServices/nkLogService.h>

#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QStandardPaths>
#include <QTemporaryDir>

#include <limits>
#include <sys/stat.h>

using kernel::PreferencesService;

namespace {

const QString key = QStringLiteral("Metadata Active String Library Index");
const QString listKey = QStringLiteral("Metadata String Libraries");

} // namespace

/// The store of preferences and its file.
class TestPreferencesService : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void standsInTheConfigurationFolder();
    void keepsValuesAcrossARestart();
    void keepsValues_data();
    void keepsValues();
    void answersTheFallbackWithoutAValue();
    void tellsOnlyDifferences();
    void keepsPresentValuesWhenNotOverwriting();
    void mayBeWrittenByItsListeners();
    void writesOnTheNextTurnOfTheEventLoop();
    void writesWhatIsLeftAtTheEnd();
    void writesNothingWithoutAChange();
    void readsAnotherKindAsTheFallback_data();
    void readsAnotherKindAsTheFallback();
    void keepsWhatItDoesNotKnow();
    void keepsWhatAnotherProgramWrote();
    void setsADamagedFileAside_data();
    void setsADamagedFileAside();
    void setsAsideWhatIsNoFile();
    void neverWaitsForAPipe();
    void setsAsideAnOversizedFile();
    void neverWritesOverADamagedFileThatStays();
    void setsAsideAFileDamagedLater();
    void tellsAFailedWriteOnceAndTriesAgain();
    void keepsWhatIsSetWhileItReports();
    void leavesNoTemporaryFiles();
    void keepsALinkALink();
    void keepsTheFilesPermissions();

private:
    QString path() const { return m_folder->filePath(QStringLiteral("preferences.json")); }
    QByteArray content() const;
    void write(const QByteArray &bytes) const;
    QStringList reports() const;

    QScopedPointer<QTemporaryDir> m_folder;
    QScopedPointer<QSignalSpy> m_reported;
};

void TestPreferencesService::init()
{
    m_folder.reset(new QTemporaryDir);
    m_reported.reset(new QSignalSpy(&nkLogService::the(), &nkLogService::reported));
}

QByteArray TestPreferencesService::content() const
{
    QFile file(path());
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void TestPreferencesService::write(const QByteArray &bytes) const
{
    QFile file(path());
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write(bytes), qint64(bytes.size()));
}

/// "LEVEL TEXT" of what was reported since init().
QStringList TestPreferencesService::reports() const
{
    QStringList lines;
    for (const QVariantList &report : qAsConst(*m_reported)) {
        lines.append(report.at(0).toString() + QLatin1Char(' ') + report.at(2).toString());
    }
    return lines;
}

void TestPreferencesService::standsInTheConfigurationFolder()
{
    const PreferencesService preferences;
    const QString folder = QStandardPaths::writableLocation(QStandardPaths::AppConfigLocation);
    QCOMPARE(preferences.file(), folder + QStringLiteral("/preferences.json"));
    QVERIFY(reports().isEmpty());
}

void TestPreferencesService::keepsValuesAcrossARestart()
{
    {
        PreferencesService preferences(path());
        preferences.setIntValue(key, 2, true);
        preferences.setStringListValue(listKey, {QStringLiteral("/a.txt"), QStringLiteral("/b.csv")}, true);
    }
    const PreferencesService preferences(path());
    QCOMPARE(preferences.getIntValue(key), 2);
    QCOMPARE(preferences.getStringListValue(listKey),
             QStringList({QStringLiteral("/a.txt"), QStringLiteral("/b.csv")}));
    QVERIFY(reports().isEmpty());
}

void TestPreferencesService::keepsValues_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<int>("number");
    QTest::addColumn<QStringList>("texts");
    QTest::newRow("empty") << QString() << 0 << QStringList();
    QTest::newRow("largest") << QStringLiteral("values") << std::numeric_limits<int>::max()
                             << QStringList({QString()});
    QTest::newRow("smallest") << QStringLiteral("a.b/c\"\n") << std::numeric_limits<int>::min()
                              << QStringList({QStringLiteral("ä\"\\\n\U0001F600"), QStringLiteral("null")});
}

void TestPreferencesService::keepsValues()
{
    QFETCH(QString, name);
    QFETCH(int, number);
    QFETCH(QStringList, texts);
    {
        PreferencesService preferences(path());
        preferences.setIntValue(name + QStringLiteral("#int"), number, true);
        preferences.setStringListValue(name, texts, true);
    }
    const PreferencesService preferences(path());
    QCOMPARE(preferences.getIntValue(name + QStringLiteral("#int"), 77), number);
    QCOMPARE(preferences.getStringListValue(name, {QStringLiteral("fallback")}), texts);
}

void TestPreferencesService::answersTheFallbackWithoutAValue()
{
    const PreferencesService preferences(path());
    QVERIFY(!preferences.hasValue(key));
    QCOMPARE(preferences.getIntValue(key), 0);
    QCOMPARE(preferences.getIntValue(key, -1), -1);
    QCOMPARE(preferences.getStringListValue(listKey, {QStringLiteral("x")}),
             QStringList({QStringLiteral("x")}));
    QVERIFY(reports().isEmpty());
}

void TestPreferencesService::tellsOnlyDifferences()
{
    PreferencesService preferences(path());
    QSignalSpy changes(&preferences, &nkPreferencesService::valueChanged);
    preferences.setIntValue(key, 1, true);
    preferences.setIntValue(key, 1, true);
    preferences.setStringListValue(listKey, {QStringLiteral("x")}, true);
    preferences.setStringListValue(listKey, {QStringLiteral("x")}, true);
    preferences.setIntValue(key, 2, true);
    QCOMPARE(changes.size(), 3);
    QCOMPARE(changes.at(0), QVariantList({key}));
    QCOMPARE(changes.at(1), QVariantList({listKey}));
    QCOMPARE(changes.at(2), QVariantList({key}));
}

void TestPreferencesService::keepsPresentValuesWhenNotOverwriting()
{
    PreferencesService preferences(path());
    preferences.setIntValue(key, 1, false);
    QCOMPARE(preferences.getIntValue(key), 1);
    QSignalSpy changes(&preferences, &nkPreferencesService::valueChanged);
    preferences.setIntValue(key, 2, false);
    QCOMPARE(preferences.getIntValue(key), 1);
    QVERIFY(changes.isEmpty());
}

void TestPreferencesService::mayBeWrittenByItsListeners()
{
    PreferencesService preferences(path());
    connect(&preferences, &nkPreferencesService::valueChanged, this, [&preferences](const QString &changed) {
        if (changed == key) {
            preferences.setStringListValue(listKey, {QStringLiteral("follows")}, true);
            preferences.flush();
        }
    });
    preferences.setIntValue(key, 5, true);
    QCOMPARE(PreferencesService(path()).getIntValue(key), 5);
    QCOMPARE(PreferencesService(path()).getStringListValue(listKey),
             QStringList({QStringLiteral("follows")}));
}

void TestPreferencesService::writesOnTheNextTurnOfTheEventLoop()
{
    PreferencesService preferences(path());
    preferences.setIntValue(key, 1, true);
    preferences.setIntValue(key, 2, true);
    QVERIFY(!QFile::exists(path()));
    QCoreApplication::processEvents();
    QCOMPARE(PreferencesService(path()).getIntValue(key), 2);
    preferences.setIntValue(key, 3, true);
    QCoreApplication::processEvents();
    QCOMPARE(PreferencesService(path()).getIntValue(key), 3);
}

void TestPreferencesService::writesWhatIsLeftAtTheEnd()
{
    {
        PreferencesService preferences(path());
        preferences.setIntValue(key, 9, true);
    }
    QCOMPARE(PreferencesService(path()).getIntValue(key), 9);
}

void TestPreferencesService::writesNothingWithoutAChange()
{
    const QByteArray present = "{ \"values\": {\"Metadata Active String Library Index\": 4} }";
    write(present);
    {
        PreferencesService preferences(path());
        preferences.setIntValue(key, 4, true);
        QVERIFY(preferences.flush());
    }
    QCOMPARE(content(), present);
}

void TestPreferencesService::readsAnotherKindAsTheFallback_data()
{
    QTest::addColumn<QByteArray>("value");
    QTest::newRow("fraction") << QByteArray("1.5");
    QTest::newRow("too large") << QByteArray("2147483648");
    QTest::newRow("far too large") << QByteArray("1e300");
    QTest::newRow("text") << QByteArray("\"1\"");
    QTest::newRow("boolean") << QByteArray("true");
    QTest::newRow("null") << QByteArray("null");
    QTest::newRow("object") << QByteArray("{\"a\": 1}");
    QTest::newRow("mixed list") << QByteArray("[\"a\", 1]");
}

void TestPreferencesService::readsAnotherKindAsTheFallback()
{
    QFETCH(QByteArray, value);
    write("{\"values\": {\"v\": " + value + "}}");
    PreferencesService preferences(path());
    const QString name = QStringLiteral("v");
    QVERIFY(preferences.hasValue(name));
    QVERIFY(reports().isEmpty());
    QCOMPARE(preferences.getIntValue(name, 7), 7);
    QCOMPARE(preferences.getStringListValue(name, {QStringLiteral("x")}), QStringList({QStringLiteral("x")}));
    QCOMPARE(reports().size(), 1);
    QVERIFY2(reports().first().startsWith(QStringLiteral("1 The value of \"v\"")),
             qPrintable(reports().first()));
    preferences.setIntValue(name, 8, true);
    QCOMPARE(preferences.getIntValue(name), 8);
}

void TestPreferencesService::keepsWhatItDoesNotKnow()
{
    write("{\"version\": 3, \"windows\": [1, {\"a\": null}], \"values\": {\"new\": {\"kind\": 1.5}, \"n\": "
          "1}}");
    {
        PreferencesService preferences(path());
        preferences.setIntValue(QStringLiteral("n"), 2, true);
    }
    const QJsonObject root = QJsonDocument::fromJson(content()).object();
    const QByteArray expected =
        "{\"version\": 3, \"windows\": [1, {\"a\": null}], \"values\": {\"new\": {\"kind\": 1.5}, \"n\": 2}}";
    QCOMPARE(root, QJsonDocument::fromJson(expected).object());
    QVERIFY(reports().isEmpty());
}

void TestPreferencesService::keepsWhatAnotherProgramWrote()
{
    PreferencesService first(path());
    PreferencesService second(path());
    first.setIntValue(QStringLiteral("first"), 1, true);
    QVERIFY(first.flush());
    second.setIntValue(QStringLiteral("second"), 2, true);
    QVERIFY(second.flush());
    // The second still believes what it read; only what it changed may reach the file.
    first.setIntValue(QStringLiteral("second"), 3, true);
    QVERIFY(first.flush());
    second.setIntValue(QStringLiteral("more"), 4, true);
    QVERIFY(second.flush());
    const PreferencesService both(path());
    QCOMPARE(both.getIntValue(QStringLiteral("first")), 1);
    QCOMPARE(both.getIntValue(QStringLiteral("second")), 3);
    QCOMPARE(both.getIntValue(QStringLiteral("more")), 4);
}

void TestPreferencesService::setsADamagedFileAside_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("empty") << QByteArray();
    QTest::newRow("cut") << QByteArray("{\"values\": {\"a\": ");
    QTest::newRow("list") << QByteArray("[]");
    QTest::newRow("values are a list") << QByteArray("{\"values\": []}");
    QTest::newRow("no text") << QByteArray("\xff\xfe\x00\x01", 4);
    QTest::newRow("deep") << QByteArray(100000, '[');
    QTest::newRow("zeros") << QByteArray(4096, '\0');
}

void TestPreferencesService::setsADamagedFileAside()
{
    QFETCH(QByteArray, bytes);
    write(bytes);
    {
        PreferencesService preferences(path());
        QCOMPARE(preferences.getIntValue(key, -1), -1);
        QCOMPARE(reports().size(), 1);
        QVERIFY2(reports().first().startsWith(QStringLiteral("1 The preferences in")),
                 qPrintable(reports().first()));
        preferences.setIntValue(key, 6, true);
    }
    QCOMPARE(PreferencesService(path()).getIntValue(key), 6);
    QFile aside(path() + QStringLiteral(".damaged"));
    QVERIFY(aside.open(QIODevice::ReadOnly));
    QCOMPARE(aside.readAll(), bytes);
    QCOMPARE(reports().size(), 1);
}

void TestPreferencesService::setsAsideWhatIsNoFile()
{
    QVERIFY(QDir().mkpath(path()));
    PreferencesService preferences(path());
    QCOMPARE(reports().size(), 1);
    preferences.setIntValue(key, 1, true);
    QVERIFY(preferences.flush());
    QVERIFY(QFileInfo(path()).isFile());
    QVERIFY(QFileInfo(path() + QStringLiteral(".damaged")).isDir());
}

void TestPreferencesService::neverWaitsForAPipe()
{
    QCOMPARE(::mkfifo(QFile::encodeName(path()).constData(), 0600), 0);
    const PreferencesService preferences(path());
    QCOMPARE(reports().size(), 1);
    QVERIFY(!QFileInfo::exists(path()));
}

void TestPreferencesService::setsAsideAnOversizedFile()
{
    // Readable but for its length.
    write("{\"values\": {}}" + QByteArray(16 * 1024 * 1024, ' '));
    const PreferencesService preferences(path());
    QCOMPARE(reports().size(), 1);
    QVERIFY(!QFile::exists(path()));
}

void TestPreferencesService::neverWritesOverADamagedFileThatStays()
{
    write("damage");
    QVERIFY(QDir().mkpath(path() + QStringLiteral(".damaged/in the way")));
    PreferencesService preferences(path());
    preferences.setIntValue(key, 1, true);
    QVERIFY(!preferences.flush());
    QCOMPARE(content(), QByteArray("damage"));
    QCOMPARE(preferences.getIntValue(key), 1);
    QCOMPARE(reports().filter(QStringLiteral("2 ")).size(), 1);
}

void TestPreferencesService::setsAsideAFileDamagedLater()
{
    PreferencesService preferences(path());
    preferences.setIntValue(key, 1, true);
    QVERIFY(preferences.flush());
    write("damage");
    preferences.setStringListValue(listKey, {QStringLiteral("x")}, true);
    QVERIFY(preferences.flush());
    QCOMPARE(reports().size(), 1);
    const PreferencesService again(path());
    QCOMPARE(again.getStringListValue(listKey), QStringList({QStringLiteral("x")}));
    QCOMPARE(again.getIntValue(key), 1);
}

void TestPreferencesService::tellsAFailedWriteOnceAndTriesAgain()
{
    const QString blocker = m_folder->filePath(QStringLiteral("folder"));
    QFile file(blocker);
    QVERIFY(file.open(QIODevice::WriteOnly));
    PreferencesService preferences(blocker + QStringLiteral("/preferences.json"));
    preferences.setIntValue(key, 1, true);
    QVERIFY(!preferences.flush());
    QVERIFY(!preferences.flush());
    QCOMPARE(reports().size(), 1);
    QVERIFY2(reports().first().startsWith(QStringLiteral("2 ")), qPrintable(reports().first()));
    QVERIFY(file.remove());
    QVERIFY(preferences.flush());
    QCOMPARE(PreferencesService(preferences.file()).getIntValue(key), 1);
}

void TestPreferencesService::keepsWhatIsSetWhileItReports()
{
    PreferencesService preferences(path());
    preferences.setIntValue(key, 1, true);
    write("damage");
    QObject listener;
    connect(&nkLogService::the(), &nkLogService::reported, &listener,
            [&preferences] { preferences.setStringListValue(listKey, {QStringLiteral("x")}, true); });
    QVERIFY(preferences.flush());
    QVERIFY(preferences.flush());
    QCOMPARE(PreferencesService(path()).getIntValue(key), 1);
    QCOMPARE(PreferencesService(path()).getStringListValue(listKey), QStringList({QStringLiteral("x")}));
}

void TestPreferencesService::leavesNoTemporaryFiles()
{
    PreferencesService preferences(path());
    preferences.setIntValue(key, 1, true);
    QVERIFY(preferences.flush());
    QCOMPARE(QDir(m_folder->path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot),
             QStringList({QStringLiteral("preferences.json")}));
}

void TestPreferencesService::keepsALinkALink()
{
    const QString target = m_folder->filePath(QStringLiteral("elsewhere.json"));
    write("{}");
    QVERIFY(QFile::rename(path(), target));
    QVERIFY(QFile::link(target, path()));
    {
        PreferencesService preferences(path());
        preferences.setIntValue(key, 1, true);
    }
    QVERIFY(QFileInfo(path()).isSymLink());
    QCOMPARE(PreferencesService(target).getIntValue(key), 1);
}

void TestPreferencesService::keepsTheFilesPermissions()
{
    const QFile::Permissions shared = QFile::ReadOwner | QFile::WriteOwner | QFile::ReadGroup;
    PreferencesService preferences(path());
    preferences.setIntValue(key, 1, true);
    QVERIFY(preferences.flush());
    const QFile::Permissions others = QFile::ReadGroup | QFile::WriteGroup | QFile::ReadOther
                                      | QFile::WriteOther;
    QCOMPARE(QFile::permissions(path()) & others, QFile::Permissions());
    QVERIFY(QFile::setPermissions(path(), shared));
    preferences.setIntValue(key, 2, true);
    QVERIFY(preferences.flush());
    QCOMPARE(QFile::permissions(path()) & others, QFile::Permissions(QFile::ReadGroup));
}

NK_GUILESS_TEST_MAIN(TestPreferencesService)
#include "test_preferences_service.moc"
