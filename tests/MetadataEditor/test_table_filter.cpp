#include "TableFixture.h"

#include "table/nkMetadataTableFilterModel.h"

#include <TestMain.h>

#include <QRandomGenerator>
#include <QSignalSpy>

using namespace nkMetadataKeyValue;

/// Counts how often rows are filtered anew.
class CountingFilter : public nkMetadataTableFilterModel
{
public:
    using nkMetadataTableFilterModel::acceptsRow;
    using nkMetadataTableFilterModel::filterAcceptsRow;
    int runs = 0;

protected:
    void prepareFilter() override
    {
        ++runs;
        nkMetadataTableFilterModel::prepareFilter();
    }
};

class TestTableFilter : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_table = std::make_unique<TableFixture>();
        m_proxy = std::make_unique<CountingFilter>();
        m_proxy->setSourceModel(m_table->model.get());
        m_tester = std::make_unique<QAbstractItemModelTester>(
            m_proxy.get(), QAbstractItemModelTester::FailureReportingMode::QtTest);
        m_table->show({m_table->alpha, m_table->beta, m_table->locked, m_table->chairOwn});
    }
    void cleanup()
    {
        m_tester.reset();
        m_proxy.reset();
        m_table.reset();
    }

    void shows_everything_at_first()
    {
        QCOMPARE(keys(), (QStringList{"name", "count", "checked", "name", "note", "weight", "own"}));
        QVERIFY(m_proxy->isTypeFilterEnabled());
        QVERIFY(m_proxy->typeFilter().isEmpty());
    }

    void texts_match_anywhere_in_either_case_data()
    {
        QTest::addColumn<QString>("filter");
        QTest::addColumn<QStringList>("left");
        QTest::newRow("middle") << "AM" << QStringList{"name", "name"};
        QTest::newRow("whole") << "weight" << QStringList{"weight"};
        QTest::newRow("blank between") << "a m" << QStringList();
        QTest::newRow("no wildcard") << "n*e" << QStringList();
        QTest::newRow("no expression") << "." << QStringList();
        QTest::newRow("empty") << ""
                               << QStringList{"name", "count", "checked", "name", "note", "weight", "own"};
    }
    void texts_match_anywhere_in_either_case()
    {
        QFETCH(QString, filter);
        m_proxy->setKeyFilter(QStringLiteral("x"));
        m_proxy->setKeyFilter(filter);
        QTEST(keys(), "left");
    }

    void names_keys_and_values_narrow_each_other()
    {
        m_proxy->setNameFilter(QStringLiteral("ALPHA"));
        QCOMPARE(keys(), (QStringList{"name", "count", "checked"}));
        m_proxy->setValueFilter(QStringLiteral("7"));
        QCOMPARE(keys(), QStringList{"count"});
        m_proxy->setKeyFilter(QStringLiteral("name"));
        QVERIFY(keys().isEmpty());
        m_proxy->setValueFilter(QString());
        QCOMPARE(keys(), QStringList{"name"});
    }

    void values_match_as_they_are_shown()
    {
        nkdMetadataEntry day = m_table->beta.createEntry(nkMetadataTypes::Date);
        day.setValue(QDate(2023, 3, 2));
        m_table->model->reload();
        m_proxy->setValueFilter(QStringLiteral("march"));
        QCOMPARE(keys(), QStringList{"Key"});
        m_proxy->setValueFilter(QStringLiteral("2023-03"));
        QVERIFY(keys().isEmpty());
    }

    void types_let_their_entries_through_data()
    {
        QTest::addColumn<QList<int>>("types");
        QTest::addColumn<QStringList>("left");
        // A tag's declared type is String.
        QTest::newRow("tags") << QList<int>{8} << QStringList{"checked", "own"};
        QTest::newRow("strings") << QList<int>{0} << QStringList{"name", "checked", "name", "note", "own"};
        QTest::newRow("numbers") << QList<int>{1, 2} << QStringList{"count", "weight"};
        QTest::newRow("none there") << QList<int>{7} << QStringList();
        QTest::newRow("numbers and tags") << QList<int>{2, 8} << QStringList{"checked", "weight", "own"};
    }
    void types_let_their_entries_through()
    {
        QFETCH(QList<int>, types);
        m_proxy->setTypeFilter(types);
        QTEST(keys(), "left");
        m_proxy->enableTypeFilter(false);
        QCOMPARE(keys().size(), 7);
        m_proxy->enableTypeFilter(true);
        QTEST(keys(), "left");
        m_proxy->setTypeFilter({});
        QCOMPARE(keys().size(), 7);
    }

    void states_of_the_set_decide()
    {
        m_proxy->setStateFilter({nkMetadataFilterModel::Locked});
        QCOMPARE(keys(), QStringList{"note"});
        m_proxy->setStateFilter({nkMetadataFilterModel::Unlocked, nkMetadataFilterModel::Unassigned});
        QVERIFY(keys().contains(QStringLiteral("name")));
        QVERIFY(!keys().contains(QStringLiteral("note")));
        m_proxy->enableStateFilter(false);
        QCOMPARE(keys().size(), 7);
    }

    void equal_settings_filter_nothing_anew()
    {
        const auto runsOf = [this](const std::function<void()> &set) {
            const int before = m_proxy->runs;
            set();
            return m_proxy->runs - before;
        };
        QCOMPARE(runsOf([this] { m_proxy->setKeyFilter(QStringLiteral("na")); }), 1);
        QCOMPARE(runsOf([this] { m_proxy->setKeyFilter(QStringLiteral("na")); }), 0);
        QCOMPARE(runsOf([this] { m_proxy->setValueFilter(QStringLiteral("f")); }), 1);
        QCOMPARE(runsOf([this] { m_proxy->setValueFilter(QStringLiteral("f")); }), 0);
        QCOMPARE(runsOf([this] { m_proxy->setTypeFilter({0, 8}); }), 1);
        QCOMPARE(runsOf([this] { m_proxy->setTypeFilter({0, 8}); }), 0);
        QCOMPARE(runsOf([this] { m_proxy->setTypeFilter({8, 0}); }), 1);
        QCOMPARE(runsOf([this] { m_proxy->enableTypeFilter(false); }), 1);
        QCOMPARE(runsOf([this] { m_proxy->enableTypeFilter(false); }), 0);
    }

    void the_filters_stand_in_the_acceptance_test_of_the_proxy()
    {
        m_proxy->setKeyFilter(QStringLiteral("count"));
        for (int row = 0; row < m_table->model->rowCount(); ++row) {
            QCOMPARE(m_proxy->filterAcceptsRow(row, QModelIndex()), m_table->text(row, 2) == "count");
        }
    }

    void colours_sort_by_hue_then_saturation_then_value()
    {
        const QList<QColor> order{QColor(60, 60, 60), QColor(200, 200, 200), QColor(255, 128, 128),
                                  QColor(100, 0, 0),  QColor(255, 0, 0),     QColor(0, 255, 0),
                                  QColor(0, 0, 255)};
        kernel::DocumentLoader loader(kernel::DocumentLoader::Mode::Add);
        QList<nkdMetadataSet> sets;
        for (int i = order.size() - 1; i >= 0; --i) {
            sets.append(nkdMetadataSet(loader.addSet(QStringLiteral("s%1").arg(9 - i), order.at(i))));
            loader.addTag(sets.last().getObjectId(), QString::number(i));
        }
        loader.commit();
        m_table->show(sets);
        m_proxy->sort(IconColumn);
        QCOMPARE(keys(), (QStringList{"0", "1", "2", "3", "4", "5", "6"}));
        m_proxy->sort(IconColumn, Qt::DescendingOrder);
        QCOMPARE(keys(), (QStringList{"6", "5", "4", "3", "2", "1", "0"}));
    }

    void within_one_colour_names_and_keys_run_backwards()
    {
        kernel::DocumentLoader loader(kernel::DocumentLoader::Mode::Add);
        QList<nkdMetadataSet> sets;
        for (const char *name : {"B", "A", "C"}) {
            sets.append(nkdMetadataSet(loader.addSet(QLatin1String(name), QColor(9, 9, 9))));
            for (const char *key : {"y", "z", "x"}) {
                loader.addTag(sets.last().getObjectId(), QLatin1String(name) + QLatin1String(key));
            }
        }
        loader.commit();
        m_table->show(sets);
        m_proxy->sort(IconColumn);
        QCOMPARE(keys(), (QStringList{"Cz", "Cy", "Cx", "Bz", "By", "Bx", "Az", "Ay", "Ax"}));
    }

    void other_columns_sort_in_natural_order()
    {
        kernel::DocumentLoader loader(kernel::DocumentLoader::Mode::Add);
        const nkdMetadataSet set(loader.addSet(QStringLiteral("Natural")));
        for (const char *key : {"Part 10", "part 9", "Part 1"}) {
            loader.addTag(set.getObjectId(), QLatin1String(key));
        }
        loader.commit();
        m_table->show({set});
        m_proxy->sort(KeyColumn);
        QCOMPARE(keys(), (QStringList{"Part 1", "part 9", "Part 10"}));
    }

    void follows_a_random_walk_as_brute_force_says()
    {
        // The testers look at every row after each step; the walk compares on its own.
        m_tester.reset();
        m_table->tester.reset();
        QRandomGenerator random(20240501);
        for (int step = 0; step < 5000; ++step) {
            takeStep(random);
            checkRows();
            checkMapping();
        }
    }

private:
    QStringList keys() const
    {
        QStringList keys;
        for (int row = 0; row < m_proxy->rowCount(); ++row) {
            keys.append(m_proxy->index(row, KeyColumn).data().toString());
        }
        return keys;
    }

    void takeStep(QRandomGenerator &random)
    {
        const QStringList texts{"", "a", "E", "me", "7", "zz", "Al"};
        const auto any = [&random](const QStringList &list) { return list.at(random.bounded(list.size())); };
        switch (random.bounded(9)) {
        case 0:
            return m_proxy->setKeyFilter(any(texts));
        case 1:
            return m_proxy->setValueFilter(any(texts));
        case 2:
            return m_proxy->setNameFilter(any(texts));
        case 3:
            return m_proxy->setTypeFilter(QList<int>{random.bounded(9), random.bounded(9)});
        case 4:
            return m_proxy->enableTypeFilter(random.bounded(2));
        case 5:
            return m_proxy->sort(random.bounded(-1, 5), Qt::SortOrder(random.bounded(2)));
        case 6:
            return addOrRemove(random);
        case 7:
            m_proxy->setTypeFilter({});
            return m_proxy->setValueFilter(QString());
        default:
            return editAny(random);
        }
    }

    /// An edit through the model, as a person makes it.
    void editAny(QRandomGenerator &random)
    {
        const int row = random.bounded(qMax(1, m_table->model->rowCount()));
        m_table->model->setData(m_table->model->index(row, ValueColumn), random.bounded(100), Qt::UserRole);
    }

    void addOrRemove(QRandomGenerator &random)
    {
        nkdMetadataEntryList entries = m_table->alpha.getEntries();
        if (entries.size() > 12 || (entries.size() > 0 && random.bounded(2))) {
            entries.remove(entries.at(random.bounded(entries.size())));
        } else {
            m_table->alpha.createEntry(nkMetadataTypes::ValueType(random.bounded(9)));
        }
        m_table->model->reload();
    }

    /// The accepted rows and no others, and none before one that is less. Rows of equal rank may stand in any
    /// order, unsorted rows only in the source's.
    void checkRows() const
    {
        QList<int> expected;
        for (int row = 0; row < m_table->model->rowCount(); ++row) {
            if (isAccepted(row)) {
                expected.append(row);
            }
        }
        QList<int> rows = sourceRows();
        const int column = m_proxy->sortColumn();
        const bool isAscending = m_proxy->sortOrder() == Qt::AscendingOrder;
        for (int i = 0; column >= 0 && i + 1 < rows.size(); ++i) {
            QVERIFY(isAscending ? !isLess(rows.at(i + 1), rows.at(i), column)
                                : !isLess(rows.at(i), rows.at(i + 1), column));
        }
        if (column >= 0) {
            std::sort(rows.begin(), rows.end());
        }
        QCOMPARE(rows, expected);
    }

    QList<int> sourceRows() const
    {
        QList<int> rows;
        for (int row = 0; row < m_proxy->rowCount(); ++row) {
            rows.append(m_proxy->mapToSource(m_proxy->index(row, 0)).row());
        }
        return rows;
    }

    bool isAccepted(int row) const
    {
        const auto holds = [&](int column, const QString &filter) {
            return m_table->text(row, column).contains(filter, Qt::CaseInsensitive);
        };
        const auto entry =
            m_table->model->index(row, AssignmentColumn).data(EntryRole).value<nkdMetadataEntry>();
        const QList<int> types = m_proxy->typeFilter();
        const bool isOfType = types.isEmpty() || !m_proxy->isTypeFilterEnabled()
                              || types.contains(entry.getValueType()) || (types.contains(8) && entry.isTag());
        return isOfType && holds(AssignmentColumn, m_proxy->nameFilter())
               && holds(KeyColumn, m_proxy->keyFilter()) && holds(ValueColumn, m_proxy->valueFilter());
    }

    bool isLess(int left, int right, int column) const
    {
        const auto text = [this](int row, int of) { return m_table->text(row, of); };
        if (column != IconColumn) {
            return m_proxy->lessThan(text(left, column), text(right, column));
        }
        const auto hsv = [this](int row) {
            const QColor color = m_table->model->index(row, IconColumn).data(ColorRole).value<QColor>();
            return std::make_tuple(color.hsvHue(), color.hsvSaturation(), color.value());
        };
        if (hsv(left) != hsv(right)) {
            return hsv(left) < hsv(right);
        }
        if (text(left, AssignmentColumn) != text(right, AssignmentColumn)) {
            return m_proxy->lessThan(text(right, AssignmentColumn), text(left, AssignmentColumn));
        }
        return m_proxy->lessThan(text(right, KeyColumn), text(left, KeyColumn));
    }

    void checkMapping() const
    {
        for (int row = 0; row < m_proxy->rowCount(); ++row) {
            const QModelIndex index = m_proxy->index(row, KeyColumn);
            QCOMPARE(m_proxy->mapFromSource(m_proxy->mapToSource(index)), index);
        }
    }

    std::unique_ptr<TableFixture> m_table;
    std::unique_ptr<CountingFilter> m_proxy;
    std::unique_ptr<QAbstractItemModelTester> m_tester;
};

NK_TEST_MAIN(TestTableFilter)
#include "test_table_filter.moc"
