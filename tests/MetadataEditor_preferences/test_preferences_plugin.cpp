#include <TestMain.h>
#include <kernel/services/ServiceRegistry.h>
#include <nkKernelServices/nkMetadataService.h>
#include <nkKernelServices/nkPreferencesService.h>
#include <nkKernelServicesGUI/nkPreferencesCategory.h>

#include <QFile>
#include <QLibrary>
#include <QPointer>
#include <QWidget>

/// The page as the host has it: made by the plug-in's entry point, gone with the plug-in.
class TestPreferencesPlugin : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void the_page_comes_once_and_goes_with_the_plugin()
    {
        QLibrary plugin(QStringLiteral(EDITOR_PLUGIN));
        QVERIFY2(plugin.load(), qPrintable(plugin.errorString()));
        const QFunctionPointer start = plugin.resolve("initPreferencesPlugin");
        QVERIFY(start);
        start();
        start();
        QCOMPARE(nkPreferencesCategory::categories().size(), 1);
        const QPointer<QWidget> page = use(nkPreferencesCategory::categories().constFirst());
        QVERIFY(plugin.unload());
        QVERIFY(!page);
        QVERIFY(nkPreferencesCategory::categories().isEmpty());
        QVERIFY2(!isMapped(), "Something keeps the plug-in in memory.");
        useHost();
    }

private:
    static QWidget *use(nkPreferencesCategory *category)
    {
        category->loadToPage();
        category->getWidget()->show();
        QCoreApplication::processEvents();
        category->getWidget()->grab();
        category->storeFromPage();
        category->setDefaults(true);
        category->setChangedKeys({QStringLiteral("Metadata String Libraries")});
        category->apply();
        category->getWidget()->hide();
        return category->getWidget();
    }

    /// What would stumble over something that went with the plug-in.
    static void useHost()
    {
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QCoreApplication::processEvents();
        QCOMPARE(nkMetadataService::the().getStringLibraries().size(), 1);
        const QString key = QStringLiteral("Metadata String Libraries");
        QCOMPARE(nkPreferencesService::the().getStringListValue(key),
                 nkMetadataService::the().getStringLibraries());
        nkPreferencesService::the().setStringListValue(key, {QStringLiteral("later")}, true);
        kernel::ServiceRegistry::shutDown();
    }

    static bool isMapped()
    {
        QFile maps(QStringLiteral("/proc/self/maps"));
        return maps.open(QIODevice::ReadOnly) && maps.readAll().contains("libMetadataEditor.so");
    }
};

NK_TEST_MAIN(TestPreferencesPlugin)
#include "test_preferences_plugin.moc"
