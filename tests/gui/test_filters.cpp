#include "GuiScene.h"

#include <TestMain.h>
#include <nkKernelServicesGUI/nkMetadataFilterModel.h>
#include <nkKernelServicesGUI/nkMetadataRootModelItem.h>
#include <nkKernelServicesGUI/nkMetadataSetItemFilter.h>
#include <nkKernelServicesGUI/nkMetadataStateItemFilter.h>
#include <nkKernelServicesGUI/nkMetadataTreeModel.h>
#include <nkQt4Ext/QNKCustomFilterProxyModel.h>

#include <QAbstractItemModelTester>
#include <QSignalSpy>
#include <QStandardItemModel>

namespace {

// Counts how often its rows are asked for.
class CountingModel : public nkMetadataFilterModel
{
public:
    using nkMetadataFilterModel::filterState;
    mutable int asked = 0;

protected:
    bool acceptsRow(int, const QModelIndex &) const override
    {
        ++asked;
        return true;
    }
};

} // namespace

class TestFilters : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_scene = GuiScene::load();
        kernel::Document::the().setAssetState(m_scene.second, kernel::AssetState::AtRest,
                                              QStringLiteral("asset"));
    }

    void states_narrow_each_other_by_group_data()
    {
        QTest::addColumn<QList<int>>("states");
        QTest::addColumn<QList<bool>>("passes"); // Common, Second (an asset), Locked (unassigned), Lamp's own
        using States = QList<int>;
        using Passes = QList<bool>;
        QTest::newRow("none") << States{} << Passes{true, true, true, true};
        QTest::newRow("locked") << States{1} << Passes{false, false, true, false};
        QTest::newRow("unlocked") << States{2} << Passes{true, true, false, true};
        QTest::newRow("both locks") << States{1, 2} << Passes{true, true, true, true};
        QTest::newRow("asset") << States{3} << Passes{false, true, false, false};
        QTest::newRow("unassigned") << States{4} << Passes{false, false, true, false};
        QTest::newRow("asset or unassigned") << States{3, 4} << Passes{false, true, true, false};
        QTest::newRow("locked asset") << States{1, 3} << Passes{false, false, false, false};
        QTest::newRow("locked unassigned") << States{1, 4} << Passes{false, false, true, false};
        QTest::newRow("all") << States{1, 2, 3, 4} << Passes{false, true, true, false};
        QTest::newRow("unknown") << States{17} << Passes{true, true, true, true};
    }
    void states_narrow_each_other_by_group()
    {
        QFETCH(QList<int>, states);
        const nkdMetadataSet lampsOwn = nkdMetadata(m_scene.lamp).getObjectSet();
        QList<bool> passes;
        for (const nkdMetadataSet &set : {nkdMetadataSet(m_scene.common), nkdMetadataSet(m_scene.second),
                                          nkdMetadataSet(m_scene.locked), lampsOwn}) {
            passes.append(nkMetadataFilterModel::matchesStates(set, states));
        }
        QTEST(passes, "passes");
    }

    void the_model_filters_by_its_own_list()
    {
        CountingModel model;
        model.setStateFilter({1});
        QVERIFY(model.filterState(nkdMetadataSet(m_scene.locked)));
        QVERIFY(!model.filterState(nkdMetadataSet(m_scene.common)));
    }

    void rows_are_filtered_anew_only_when_a_filter_changed()
    {
        QStandardItemModel rows(3, 1);
        CountingModel model;
        model.setSourceModel(&rows);
        QCOMPARE(model.rowCount(), 3);
        const auto asks = [&model](auto change) {
            model.asked = 0;
            change();
            return model.rowCount() == 3 && model.asked > 0;
        };
        QVERIFY(asks([&] { model.setNameFilter(QStringLiteral("a")); }));
        QVERIFY(!asks([&] { model.setNameFilter(QStringLiteral("a")); }));
        QVERIFY(asks([&] { model.setStateFilter({1}); }));
        QVERIFY(!asks([&] { model.setStateFilter({1}); }));
        QVERIFY(asks([&] { model.enableStateFilter(false); }));
        QVERIFY(!asks([&] { model.enableStateFilter(false); }));
        QCOMPARE(model.nameFilter(), QStringLiteral("a"));
        QCOMPARE(model.stateFilter(), QList<int>{1});
        QVERIFY(!model.isStateFilterEnabled());
    }

    void the_state_filter_shows_sets_in_that_state()
    {
        nkMetadataStateItemFilter filter;
        filter.setIntegers({1});
        QCOMPARE(namesShown(TreeMode::Sets, &filter), QStringList{"Locked"});
        filter.setIntegers({});
        QCOMPARE(namesShown(TreeMode::Sets, &filter).size(), 3);
    }

    void the_state_filter_shows_objects_by_any_of_their_sets()
    {
        nkMetadataStateItemFilter filter;
        filter.setIntegers({3});
        QCOMPARE(namesShown(TreeMode::AllObjects, &filter), (QStringList{"Camera", "Plate"}));
    }

    void an_objects_own_entries_count_for_its_state()
    {
        nkMetadataStateItemFilter filter;
        filter.setIntegers({2});
        QVERIFY(namesShown(TreeMode::AllObjects, &filter).contains(QStringLiteral("Lamp")));
    }

    void the_set_filter_starts_disabled_and_shows_everything()
    {
        nkMetadataSetItemFilter filter;
        QVERIFY(!filter.isEnabled());
        QCOMPARE(namesShown(TreeMode::Sets, &filter).size(), 3);
    }

    void the_set_filter_without_sets_shows_nothing()
    {
        nkMetadataSetItemFilter filter;
        filter.setEnabled(true);
        QVERIFY(namesShown(TreeMode::Sets, &filter).isEmpty());
        QVERIFY(namesShown(TreeMode::AllObjects, &filter).isEmpty());
    }

    void the_set_filter_shows_sets_and_the_objects_that_carry_them()
    {
        nkMetadataSetItemFilter filter;
        filter.setEnabled(true);
        filter.setMetadataSets({nkdMetadataSet(m_scene.second)});
        QCOMPARE(namesShown(TreeMode::Sets, &filter), QStringList{"Second"});
        QCOMPARE(namesShown(TreeMode::AllObjects, &filter), (QStringList{"Camera", "Plate"}));
    }

    void a_set_is_not_found_for_another_one_that_its_objects_carry()
    {
        nkMetadataSetItemFilter found;
        found.setEnabled(true);
        found.setMetadataSets({nkdMetadataSet(m_scene.second)}); // Camera carries Common, too
        QCOMPARE(namesShown(TreeMode::Sets, &found, true), QStringList{"Second"});
        nkMetadataStateItemFilter assets;
        assets.setIntegers({3});
        QCOMPARE(namesShown(TreeMode::Sets, &assets, true), QStringList{"Second"});
    }

    void the_set_filter_finds_objects_by_their_own_sets()
    {
        nkMetadataSetItemFilter filter;
        filter.setEnabled(true);
        filter.setMetadataSets({nkdMetadata(m_scene.lamp).getObjectSet()});
        QCOMPARE(namesShown(TreeMode::AllObjects, &filter), QStringList{"Lamp"});
    }

    void the_set_filter_tells_changes_only()
    {
        nkMetadataSetItemFilter filter;
        QSignalSpy changes(&filter, &QNKItemFilter::filterChanged);
        filter.setMetadataSets({nkdMetadataSet(m_scene.second)});
        QCOMPARE(changes.count(), 0);
        filter.setEnabled(true);
        QCOMPARE(changes.count(), 1);
        filter.setMetadataSets({nkdMetadataSet(m_scene.second), nkdMetadataSet(m_scene.second)});
        QCOMPARE(changes.count(), 1);
        filter.setMetadataSets({});
        QCOMPARE(changes.count(), 2);
    }

private:
    static QStringList namesShown(TreeMode mode, QNKItemFilter *filter, bool recursive = false)
    {
        nkMetadataTreeModel model;
        nkMetadataRootModelItem *root = new nkMetadataRootModelItem;
        root->setTreeMode(mode);
        model.setRootItem(root);
        model.reload();
        QNKCustomFilterProxyModel proxy;
        const QAbstractItemModelTester tester(&proxy, QAbstractItemModelTester::FailureReportingMode::QtTest);
        proxy.setRecursiveFilteringEnabled(recursive);
        proxy.addCustomFilter(filter);
        proxy.setSourceModel(&model);
        QStringList names;
        for (int row = 0; row < proxy.rowCount(); ++row) {
            names.append(proxy.index(row, 0).data().toString());
        }
        return names;
    }

    GuiScene m_scene;
};

Q_DECLARE_METATYPE(QList<bool>)

NK_TEST_MAIN(TestFilters)
#include "test_filters.moc"
