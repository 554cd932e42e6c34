#include "TestMain.h"
#include <kernel/services/ServiceRegistry.h>
#include <nkKernelServices/nkInternalUiService.h>
#include <nkKernelServices/nkLogService.h>
#include <nkKernelServices/nkMainWindowService.h>
#include <nkKernelServices/nkPlatformService.h>
#include <nkKernelServices/nkPreferencesService.h>

#include <QIcon>

using kernel::ServiceRegistry;

namespace {

/// Stands for the window service of an application.
class OwnMainWindowService final : public nkMainWindowService
{
public:
    void registerModule(const QString &name, const QString &, QWidget *, const QString &, const QIcon &,
                        const QString &, bool) override
    {
        modules.append(name);
    }
    QWidget *getMainWindow() const override { return nullptr; }

    QStringList modules;
};

/// A service that still uses another one while it ends.
class TalkativeService final : public QObject
{
    Q_OBJECT
public:
    ~TalkativeService() override
    {
        nkLogService::the().reportInformation(QStringLiteral("End"), QStringLiteral("over"));
    }
};

/// A service that is asked for, by way of a listener, while it is being made.
class EagerService final : public QObject
{
    Q_OBJECT
public:
    EagerService()
    {
        ++living;
        if (living == 1) {
            ServiceRegistry::the().service<EagerService>();
        }
    }
    ~EagerService() override { --living; }

    static int living;
};

int EagerService::living = 0;

int s_argc = 1;
char s_name[] = "test";
char *s_argv[] = {s_name, nullptr};

} // namespace

/// The life of the services. Runs without an application object of its own.
class TestServiceRegistry : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup() { ServiceRegistry::shutDown(); }

    void worksWithoutAnApplication();
    void makesEachServiceOnce();
    void endsServicesWithTheApplication();
    void servesASecondApplication();
    void makesAServiceOnceThatIsAskedForWhileBeingMade();
    void letsServicesTalkWhileTheyEnd();
    void usesTheInstalledMainWindowService();
    void forgetsAMainWindowServiceThatDied();
    void namesModulesWithoutAMainWindowInTheLog();
};

void TestServiceRegistry::worksWithoutAnApplication()
{
    QVERIFY(!QCoreApplication::instance());
    nkPreferencesService::the().setIntValue(QStringLiteral("a"), 3, true);
    QCOMPARE(nkPreferencesService::the().getIntValue(QStringLiteral("a")), 3);
    ServiceRegistry::shutDown();
    QCOMPARE(nkPreferencesService::the().getIntValue(QStringLiteral("a")), 3);
}

void TestServiceRegistry::makesEachServiceOnce()
{
    QCOMPARE(&nkLogService::the(), &nkLogService::the());
    QCOMPARE(&nkPlatformService::the(), &nkPlatformService::the());
    QCOMPARE(&nkInternalUiService::the(), &nkInternalUiService::the());
    QVERIFY(static_cast<QObject *>(&nkLogService::the()) != &nkPlatformService::the());
}

void TestServiceRegistry::endsServicesWithTheApplication()
{
    QPointer<QObject> service;
    {
        QCoreApplication application(s_argc, s_argv);
        service = &nkInternalUiService::the();
        QVERIFY(service);
    }
    QVERIFY(!service);
}

void TestServiceRegistry::servesASecondApplication()
{
    QPointer<QObject> service;
    for (int round = 0; round < 2; ++round) {
        QCoreApplication application(s_argc, s_argv);
        QVERIFY(!service);
        service = &nkPlatformService::the();
    }
    QVERIFY(!service);
}

void TestServiceRegistry::makesAServiceOnceThatIsAskedForWhileBeingMade()
{
    EagerService &service = ServiceRegistry::the().service<EagerService>();
    QCOMPARE(&service, &ServiceRegistry::the().service<EagerService>());
    QCOMPARE(EagerService::living, 1);
    ServiceRegistry::shutDown();
    QCOMPARE(EagerService::living, 0);
}

void TestServiceRegistry::letsServicesTalkWhileTheyEnd()
{
    ServiceRegistry::the().service<TalkativeService>();
    // Younger than the talkative one, hence gone when that ends; the word goes to a log made for it.
    nkLogService::the();
    QTest::ignoreMessage(QtInfoMsg, "information: End: over");
    ServiceRegistry::shutDown();
}

void TestServiceRegistry::usesTheInstalledMainWindowService()
{
    OwnMainWindowService own;
    ServiceRegistry::the().setMainWindowService(&own);
    QCOMPARE(&nkMainWindowService::the(), &own);
    nkMainWindowService::the().registerModule(QStringLiteral("M"), QString(), nullptr, QString(), QIcon(),
                                              QString(), false);
    QCOMPARE(own.modules, QStringList({QStringLiteral("M")}));
    ServiceRegistry::the().setMainWindowService(nullptr);
    QVERIFY(&nkMainWindowService::the() != &own);
}

void TestServiceRegistry::forgetsAMainWindowServiceThatDied()
{
    {
        OwnMainWindowService own;
        ServiceRegistry::the().setMainWindowService(&own);
    }
    QVERIFY(!ServiceRegistry::the().mainWindowService());
    QCOMPARE(nkMainWindowService::the().getMainWindow(), nullptr);
}

void TestServiceRegistry::namesModulesWithoutAMainWindowInTheLog()
{
    QSignalSpy reports(&nkLogService::the(), &nkLogService::reported);
    nkMainWindowService::the().registerModule(QStringLiteral("My %1 Module"), QStringLiteral("Scene"),
                                              nullptr, QString(), QIcon(), QString(), false);
    QCOMPARE(reports.size(), 1);
    QVERIFY(reports.first().at(2).toString().contains(QStringLiteral("My %1 Module")));
}

int main(int argc, char **argv)
{
    TestMessages::watch();
    const TestSandbox sandbox;
    TestServiceRegistry test;
    QTEST_SET_MAIN_SOURCE_PATH
    const int status = QTest::qExec(&test, argc, argv);
    return status == 0 && TestMessages::strayCount() > 0 ? 1 : status;
}

#include "test_service_registry.moc"
