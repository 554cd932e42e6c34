#include "TestMain.h"
#include <nkKernelServices/nkLogService.h>
#include <nkKernelServices/nkPlatformService.h>

#include <QFileInfo>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTemporaryFile>

/// The folders and names of the platform.
class TestPlatformService : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void makesTheUserDataDirectory();
    void tellsOnceThatItCannotBeMade();
    void answersTheApplicationName();
};

void TestPlatformService::makesTheUserDataDirectory()
{
    const QString folder = QStandardPaths::writableLocation(QStandardPaths::AppDataLocation);
    QVERIFY(!QFileInfo::exists(folder));
    const QString path = nkPlatformService::the().getUserDataDirectory();
    QCOMPARE(path, folder + QLatin1Char('/'));
    QVERIFY(QFileInfo(path).isDir());
    QCOMPARE(nkPlatformService::the().getUserDataDirectory(), path);
}

void TestPlatformService::tellsOnceThatItCannotBeMade()
{
    const QByteArray present = qgetenv("XDG_DATA_HOME");
    QTemporaryFile inTheWay;
    QVERIFY(inTheWay.open());
    qputenv("XDG_DATA_HOME", QFile::encodeName(inTheWay.fileName()));
    QSignalSpy reports(&nkLogService::the(), &nkLogService::reported);
    const QString path = nkPlatformService::the().getUserDataDirectory();
    nkPlatformService::the().getUserDataDirectory();
    qputenv("XDG_DATA_HOME", present);
    QVERIFY(path.startsWith(inTheWay.fileName()));
    QVERIFY(path.endsWith(QLatin1Char('/')));
    QCOMPARE(reports.size(), 1);
    QCOMPARE(reports.first().first().toInt(), 1);
}

void TestPlatformService::answersTheApplicationName()
{
    QCOMPARE(nkPlatformService::the().getInformationTitle(), QCoreApplication::applicationName());
    QGuiApplication::setApplicationDisplayName(QStringLiteral("Display Name"));
    QCOMPARE(nkPlatformService::the().getInformationTitle(), QStringLiteral("Display Name"));
    QGuiApplication::setApplicationDisplayName(QString());
}

NK_GUILESS_TEST_MAIN(TestPlatformService)
#include "test_platform_service.moc"
