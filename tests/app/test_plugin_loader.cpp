#include "PluginLoader.h"
#include "TestMain.h"

#include <nkKernelServices/nkLogService.h>

#include <QFile>
#include <QSignalSpy>
#include <QTemporaryDir>

/// Plug-ins: what is loaded, and that everything else is named in the log and skipped.
class TestPluginLoader : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void callsBothEntryPointsOnce();
    void unloadsWhatItLoaded();
    void aMissingFolderIsTold();
    void anEmptyFolderIsTold();
    void aLibraryWithoutEntryPointsIsNamedAndSkipped();
    void aPluginForOtherLibrariesIsNamedAndSkipped();
    void aFileThatIsNoLibraryIsNamedAndSkipped();
    void otherFilesAreLeftAlone();

private:
    static QString folder(const char *plugin)
    {
        return QStringLiteral(SAMPLE_PLUGINS "/") + QLatin1String(plugin);
    }
    static QStringList texts(const QSignalSpy &spy, int level)
    {
        QStringList result;
        for (const QVariantList &report : spy) {
            if (report.at(0).toInt() == level) {
                result.append(report.at(2).toString());
            }
        }
        return result;
    }
};

void TestPluginLoader::callsBothEntryPointsOnce()
{
    QSignalSpy spy(&nkLogService::the(), &nkLogService::reported);
    PluginLoader loader;
    loader.loadAll(folder("goodplugin"));
    QCOMPARE(texts(spy, 0).count(QStringLiteral("initPlugin")), 1);
    QCOMPARE(texts(spy, 0).count(QStringLiteral("initPreferencesPlugin")), 1);
    QCOMPARE(texts(spy, 1), QStringList());
    QCOMPARE(loader.loadedPlugins().size(), 1);
    QVERIFY(loader.loadedPlugins().constFirst().endsWith(QStringLiteral("libgoodplugin.so")));
}

void TestPluginLoader::unloadsWhatItLoaded()
{
    const auto isMapped = [] {
        QFile maps(QStringLiteral("/proc/self/maps"));
        return maps.open(QIODevice::ReadOnly) && maps.readAll().contains("libgoodplugin.so");
    };
    PluginLoader loader;
    loader.loadAll(folder("goodplugin"));
    QVERIFY(isMapped());
    loader.unloadAll();
    QVERIFY(loader.loadedPlugins().isEmpty());
    QVERIFY(!isMapped());
}

void TestPluginLoader::aMissingFolderIsTold()
{
    QSignalSpy spy(&nkLogService::the(), &nkLogService::reported);
    PluginLoader loader;
    loader.loadAll(QStringLiteral("/no/such/folder"));
    QCOMPARE(texts(spy, 1), QStringList{QStringLiteral("There is no plug-in in /no/such/folder.")});
}

void TestPluginLoader::anEmptyFolderIsTold()
{
    QTemporaryDir empty;
    QSignalSpy spy(&nkLogService::the(), &nkLogService::reported);
    PluginLoader loader;
    loader.loadAll(empty.path());
    QCOMPARE(texts(spy, 1).size(), 1);
}

void TestPluginLoader::aLibraryWithoutEntryPointsIsNamedAndSkipped()
{
    QSignalSpy spy(&nkLogService::the(), &nkLogService::reported);
    PluginLoader loader;
    loader.loadAll(folder("noentrypoints"));
    QVERIFY(loader.loadedPlugins().isEmpty());
    QCOMPARE(texts(spy, 1).size(), 1);
    QVERIFY(texts(spy, 1).constFirst().contains(QStringLiteral("libnoentrypoints.so is no plug-in")));
}

void TestPluginLoader::aPluginForOtherLibrariesIsNamedAndSkipped()
{
    QSignalSpy spy(&nkLogService::the(), &nkLogService::reported);
    PluginLoader loader;
    loader.loadAll(folder("otherlibraries"));
    QVERIFY(loader.loadedPlugins().isEmpty());
    QCOMPARE(texts(spy, 1).size(), 1);
    QVERIFY(texts(spy, 1).constFirst().contains(QStringLiteral("libotherlibraries.so was not loaded")));
    QVERIFY(texts(spy, 1).constFirst().contains(QStringLiteral("operationOfAnotherHost")));
}

void TestPluginLoader::aFileThatIsNoLibraryIsNamedAndSkipped()
{
    QTemporaryDir directory;
    QFile file(directory.filePath(QStringLiteral("libbroken.so")));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("this is no library");
    file.close();
    QSignalSpy spy(&nkLogService::the(), &nkLogService::reported);
    PluginLoader loader;
    loader.loadAll(directory.path());
    QVERIFY(loader.loadedPlugins().isEmpty());
    QCOMPARE(texts(spy, 1).size(), 1);
    QVERIFY(texts(spy, 1).constFirst().contains(QStringLiteral("libbroken.so was not loaded")));
}

void TestPluginLoader::otherFilesAreLeftAlone()
{
    QTemporaryDir directory;
    QFile file(directory.filePath(QStringLiteral("readme.txt")));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.close();
    QSignalSpy spy(&nkLogService::the(), &nkLogService::reported);
    PluginLoader loader;
    loader.loadAll(directory.path());
    QCOMPARE(texts(spy, 1).size(), 1);
    QVERIFY(!texts(spy, 1).constFirst().contains(QStringLiteral("readme")));
}

NK_TEST_MAIN(TestPluginLoader)
#include "test_plugin_loader.moc"
