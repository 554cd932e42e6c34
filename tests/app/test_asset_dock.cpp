#include "MainWindow.h"
#include "Workbench.h"
#include "assets/AssetDock.h"
#include "assets/AssetNotice.h"
#include "assets/AssetPanel.h"
#include "assets/AssetView.h"

#include <SceneFixture.h>
#include <TestMain.h>
#include <kernel/services/AssetsService.h>
#include <kernel/services/ServiceRegistry.h>
#include <nkKernelServices/nkMetadataService.h>
#include <nkKernelServices/nkPlatformService.h>

#include <QAbstractButton>
#include <QAction>
#include <QFile>
#include <QLabel>
#include <QMenuBar>

/// The asset panel in the workbench.
class TestAssetDock : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_workbench = std::make_unique<Workbench>();
        window()->show();
        QVERIFY(QTest::qWaitForWindowActive(window()));
        m_dock = window()->findChild<AssetDock *>();
        QVERIFY(m_dock);
    }
    void cleanup() { m_workbench.reset(); }

    void a_start_touches_no_database()
    {
        QVERIFY(m_dock->panel()->visibleRegion().isEmpty());
        QCoreApplication::processEvents();
        QVERIFY(!QFile::exists(nkPlatformService::the().getUserDataDirectory()
                               + QStringLiteral("assets.sqlite")));
    }

    void the_view_menu_brings_the_panel_to_the_front_and_hides_it()
    {
        m_dock->action()->trigger();
        QTRY_VERIFY(!m_dock->panel()->visibleRegion().isEmpty());
        QCOMPARE(window()->focusWidget(), static_cast<QWidget *>(m_dock->panel()->list()));
        QVERIFY(m_dock->action()->isChecked());
        m_dock->action()->trigger();
        QVERIFY(m_dock->isHidden());
        QVERIFY(!m_dock->action()->isChecked());
    }

    void the_panel_takes_no_key_of_the_menu_bar()
    {
        QStringList keys;
        for (const QAction *menu : window()->menuBar()->actions()) {
            keys << QKeySequence::mnemonic(menu->text()).toString();
        }
        QStringList own;
        for (const QLabel *label : m_dock->panel()->findChildren<QLabel *>()) {
            own << (label->buddy() ? QKeySequence::mnemonic(label->text()).toString() : QString());
        }
        for (const QAbstractButton *button : m_dock->panel()->findChildren<QAbstractButton *>()) {
            own << QKeySequence::mnemonic(button->text()).toString();
        }
        own.removeAll(QString());
        QVERIFY(own.size() >= 4);
        for (const QString &key : qAsConst(own)) {
            QVERIFY2(!keys.contains(key) && own.count(key) == 1, qPrintable(key));
        }
    }

    void another_database_is_chosen_from_the_menu()
    {
        m_dock->bringToFront();
        QTRY_VERIFY(!m_dock->panel()->visibleRegion().isEmpty());
        {
            ModalAnswer menu = ModalAnswer::menu(QStringLiteral("Choose Database..."));
            ModalAnswer url = ModalAnswer::input(QStringLiteral(" postgresql:///assets?host=/nowhere "));
            Q_EMIT m_dock->panel()->list()->customContextMenuRequested(QPoint(5, 5));
        }
        QCOMPARE(AssetDatabase::url(), QStringLiteral("postgresql:///assets?host=/nowhere"));
        QTRY_VERIFY(m_dock->panel()->notice()->text().contains(QStringLiteral("is not to be reached")));
        AssetDatabase::setUrl(QString());
        QTRY_VERIFY(m_dock->panel()->notice()->text().isEmpty());
    }

    void finding_an_asset_shows_it_in_the_panel()
    {
        const nkdMetadataSet chair = nkMetadataService::the().createSet(QStringLiteral("Chair"), {});
        auto &service = kernel::ServiceRegistry::the().service<kernel::AssetsService>();
        service.publishSets({chair});
        QVERIFY(chair.isAsset());
        m_dock->hide();
        service.findAssets({chair});
        QTRY_VERIFY(!m_dock->panel()->visibleRegion().isEmpty());
        QCOMPARE(m_dock->panel()->selectedIds(),
                 QStringList{kernel::Document::the().assetId(chair.getObjectId())});
    }

private:
    MainWindow *window() const { return m_workbench->window(); }

    std::unique_ptr<Workbench> m_workbench;
    AssetDock *m_dock = nullptr;
};

NK_TEST_MAIN(TestAssetDock)
#include "test_asset_dock.moc"
