#include "WindowFixture.h"

#include "actions/nkMetadataActions.h"

#include <TestMain.h>
#include <nkKernelServices/nkAssetsService.h>
#include <nkKernelServices/nkCameraService.h>
#include <nkKernelServices/nkLightService.h>
#include <nkKernelServices/nkMaterialService.h>
#include <nkKernelServices/nkObjectService.h>
#include <nkKernelServices/nkScenegraphService.h>
#include <nkKernelServices/nkSceneplateService.h>
#include <nkKernelServicesGUI/nkMetadataTreeModel.h>

class TestEditorUpdates : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_editor = std::make_unique<WindowFixture>();
        m_deliveries = std::make_unique<QSignalSpy>(m_editor->window->updater(),
                                                    &QNKUpdateScheduler::updateScheduled);
    }
    void cleanup()
    {
        m_deliveries.reset();
        m_editor.reset();
    }

    void refreshes_everything_once_when_it_is_shown()
    {
        m_editor->window->show();
        WindowFixture::settle();
        QCOMPARE(bits(), QList<uint>{15});
    }

    void stays_quiet_while_hidden()
    {
        m_editor->show();
        m_editor->window->hide();
        m_deliveries->clear();
        m_editor->paint.setName(QStringLiteral("Lacquer"));
        m_editor->alpha.setName(QStringLiteral("Aleph"));
        WindowFixture::settle();
        QVERIFY(bits().isEmpty());
        QCOMPARE(m_editor->treeNames().first(), QStringLiteral("Alpha"));
        m_editor->window->show();
        WindowFixture::settle();
        QCOMPARE(bits(), QList<uint>{15});
        QCOMPARE(m_editor->treeNames().first(), QStringLiteral("Aleph"));
    }

    void a_rename_while_hidden_refreshes_each_view_once_when_shown()
    {
        m_editor->show();
        m_editor->select({m_editor->alpha});
        WindowFixture::settle();
        m_editor->window->hide();
        std::vector<std::unique_ptr<QSignalSpy>> reloads;
        for (QNKItemModel *model : viewModels()) {
            reloads.push_back(std::make_unique<QSignalSpy>(model, &QNKItemModel::aboutToReload));
        }
        QCOMPARE(reloads.size(), size_t(3));
        m_editor->paint.setName(QStringLiteral("Lacquer"));
        WindowFixture::settle();
        for (const auto &spy : reloads) {
            QCOMPARE(spy->count(), 0);
        }
        m_editor->window->show();
        WindowFixture::settle();
        for (const auto &spy : reloads) {
            QCOMPARE(spy->count(), 1);
        }
    }

    void a_created_entry_is_edited_before_anything_is_refreshed()
    {
        m_editor->show();
        m_editor->select({m_editor->alpha});
        WindowFixture::settle();
        m_deliveries->clear();
        QSignalSpy reloads(tableModel(), &QNKItemModel::aboutToReload);
        nkMetadataActions::instance()->createIntegerEntryAction()->trigger();
        QPointer<QWidget> editor = m_editor->view()->indexWidget(m_editor->view()->currentIndex());
        QVERIFY(editor);
        // The one that brought the new row, and no other under its editor.
        QCOMPARE(reloads.count(), 1);
        WindowFixture::settle();
        QCOMPARE(reloads.count(), 1);
        QVERIFY(bits().isEmpty());
        QVERIFY(editor && editor->isVisible());
    }

    void deleted_entries_ask_for_the_panel_once_more()
    {
        m_editor->show();
        m_editor->select({m_editor->alpha});
        WindowFixture::settle();
        m_deliveries->clear();
        // Nothing is selected, so nothing is announced.
        m_editor->window->deleteEntries();
        WindowFixture::settle();
        QCOMPARE(bits(), QList<uint>{8});
    }

    void translates_notifications_into_refreshes_data()
    {
        QTest::addColumn<int>("notification");
        QTest::addColumn<uint>("delivered");
        QTest::newRow("entry property") << 0 << 12u;
        QTest::newRow("set property") << 1 << 7u;
        QTest::newRow("node name") << 2 << 7u;
        QTest::newRow("material name") << 3 << 7u;
        QTest::newRow("node Name") << 4 << 0u;
        QTest::newRow("node locked") << 5 << 0u;
        QTest::newRow("sets changed") << 6 << 3u;
        QTest::newRow("entries changed") << 7 << 12u;
        QTest::newRow("assignments changed") << 8 << 3u;
        QTest::newRow("everything changed") << 9 << 15u;
        QTest::newRow("assets changed") << 10 << 7u;
        QTest::newRow("scene graph selection") << 11 << 16u;
        QTest::newRow("material selection") << 12 << 16u;
        QTest::newRow("light selection") << 13 << 16u;
        QTest::newRow("camera selection") << 14 << 16u;
        QTest::newRow("sceneplate selection") << 15 << 16u;
    }
    void translates_notifications_into_refreshes()
    {
        QFETCH(int, notification);
        QFETCH(uint, delivered);
        m_editor->show();
        m_deliveries->clear();
        notify(notification);
        WindowFixture::settle();
        QCOMPARE(bits(), delivered ? QList<uint>{delivered} : QList<uint>());
    }

    void a_burst_costs_one_refresh_of_the_table()
    {
        m_editor->show();
        m_editor->select({m_editor->alpha});
        WindowFixture::settle();
        m_deliveries->clear();
        const auto *model = m_editor->window->findChild<nkMetadataKeyValueTreeView *>()->model();
        QSignalSpy reloads(tableModel(), &QNKItemModel::aboutToReload);
        for (int i = 0; i < 10; ++i) {
            Q_EMIT nkMetadataService::the().metadataChanged(nkMetadataTypes::EntriesChanged);
        }
        WindowFixture::settle();
        QCOMPARE(reloads.count(), 1);
        // Table and property panel, each once.
        QCOMPARE(bits(), QList<uint>{12});
        QCOMPARE(model->rowCount(), 3);
    }

    void follows_an_edit_by_the_next_turn()
    {
        m_editor->show();
        m_editor->select({m_editor->alpha});
        QCOMPARE(m_editor->cell(QStringLiteral("count"), 3).data().toString(), QStringLiteral("7"));
        WindowFixture::entry(m_editor->alpha, "count").setValue(8);
        QCOMPARE(m_editor->cell(QStringLiteral("count"), 3).data().toString(), QStringLiteral("7"));
        WindowFixture::settle();
        QCOMPARE(m_editor->cell(QStringLiteral("count"), 3).data().toString(), QStringLiteral("8"));
    }

    void the_lower_list_follows_selections_elsewhere()
    {
        m_editor->show();
        QSignalSpy reloads(m_editor->window->treeWidgets().last()->findChild<nkMetadataTreeModel *>(),
                           &QNKItemModel::aboutToReload);
        nkLightService::the().setSelection({});
        nkLightService::the().setSelection({});
        WindowFixture::settle();
        QCOMPARE(reloads.count(), 1);
    }

    void selections_elsewhere_reload_only_lists_of_the_last_selection()
    {
        m_editor->show();
        auto *model = m_editor->tree()->findChild<nkMetadataTreeModel *>();
        QSignalSpy reloads(model, &QNKItemModel::aboutToReload);
        nkLightService::the().setSelection({});
        WindowFixture::settle();
        QCOMPARE(reloads.count(), 0);
        m_editor->tree()->setMode(TreeMode::LastSelection);
        reloads.clear();
        nkLightService::the().setSelection({});
        WindowFixture::settle();
        QCOMPARE(reloads.count(), 1);
    }

    void blocked_requests_are_dropped()
    {
        m_editor->show();
        m_deliveries->clear();
        m_editor->window->updater()->blockRequests(true);
        m_editor->alpha.createEntry(nkMetadataTypes::String);
        m_editor->window->updater()->blockRequests(false);
        WindowFixture::settle();
        QVERIFY(bits().isEmpty());
    }

    void new_colours_reach_the_table()
    {
        m_editor->show();
        m_editor->select({m_editor->alpha});
        WindowFixture::settle();
        QPalette palette = m_editor->window->palette();
        palette.setColor(QPalette::Text, Qt::magenta);
        m_editor->window->setPalette(palette);
        WindowFixture::settle();
        const QVariant brush = m_editor->view()->model()->index(0, 2).data(Qt::ForegroundRole);
        QCOMPARE(brush.value<QBrush>().color(), QColor(Qt::magenta));
    }

private:
    QNKItemModel *tableModel() const
    {
        QAbstractItemModel *model = m_editor->view()->model();
        while (auto *proxy = qobject_cast<QAbstractProxyModel *>(model)) {
            model = proxy->sourceModel();
        }
        return qobject_cast<QNKItemModel *>(model);
    }

    QList<QNKItemModel *> viewModels() const
    {
        QList<QNKItemModel *> models{tableModel()};
        for (const nkMetadataTreeWidget *tree : m_editor->window->treeWidgets()) {
            models.append(tree->findChild<nkMetadataTreeModel *>());
        }
        return models;
    }

    QList<uint> bits() const
    {
        QList<uint> bits;
        for (const QList<QVariant> &arguments : *m_deliveries) {
            bits.append(arguments.first().toUInt());
        }
        return bits;
    }

    void notify(int notification)
    {
        auto &objects = nkObjectService::the();
        const nkdObject entry = WindowFixture::entry(m_editor->alpha, "name");
        switch (notification) {
        case 0:
            return objects.propertyChanged(entry, QStringLiteral("value"));
        case 1:
            return objects.propertyChanged(m_editor->alpha, QStringLiteral("color"));
        case 2:
            return objects.propertyChanged(m_editor->chair, QStringLiteral("name"));
        case 3:
            return objects.propertyChanged(m_editor->paint, QStringLiteral("name"));
        case 4:
            return objects.propertyChanged(m_editor->chair, QStringLiteral("Name"));
        case 5:
            return objects.propertyChanged(m_editor->chair, QStringLiteral("locked"));
        case 6:
            return nkMetadataService::the().metadataChanged(nkMetadataTypes::SetsChanged);
        case 7:
            return nkMetadataService::the().metadataChanged(nkMetadataTypes::EntriesChanged);
        case 8:
            return nkMetadataService::the().metadataChanged(nkMetadataTypes::AssignmentsChanged);
        case 9:
            return nkMetadataService::the().metadataChanged(nkMetadataTypes::ChangeFlag(7));
        default:
            return notifySelection(notification);
        }
    }

    void notifySelection(int notification)
    {
        switch (notification) {
        case 10:
            return nkAssetsService::the().assetsChanged();
        case 11:
            return nkScenegraphService::the().setSelection({});
        case 12:
            return nkMaterialService::the().setSelection({}, true, false);
        case 13:
            return nkLightService::the().setSelection({});
        case 14:
            return nkCameraService::the().setSelection({});
        default:
            return nkSceneplateService::the().setSelection({});
        }
    }

    std::unique_ptr<WindowFixture> m_editor;
    std::unique_ptr<QSignalSpy> m_deliveries;
};

NK_TEST_MAIN(TestEditorUpdates)
#include "test_editor_updates.moc"
