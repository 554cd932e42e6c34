#include "SignalChecker.h"
#include "TestRows.h"

#include <TestMain.h>

#include <QAbstractItemModelTester>
#include <QSignalSpy>

/// What a model of rows answers, and how reloads are told.
class ItemModelTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void rowsShowWhatTheyLoad();
    void cellsAreMadeOnceUntilReload();
    void storedDataOutliveAReloadOfTheRow();
    void editRoleIsUserRole();
    void unchangedReloadTellsNothing();
    void changedCellsAreToldAndNothingElse();
    void cellsNobodyAskedForAreNotTold();
    void fewNewRowsAreInserted();
    void fewGoneRowsAreRemoved();
    void reorderedRowsAreLaidOut();
    void littleInCommonIsOneReset();
    void manyRowsComeByOneReset();
    void slotsStayWithTheirIds();
    void rowsWithoutIdKeepNoPlace();
    void childrenAreMadeWhenLookedAt();
    void childrenThatWereMadeAreMadeAnew();
    void expanderComesAndGoes();
    void idsCompareByTheirText();
    void childIsFoundByItsId();
    void setDataStoresCallsTheRowAndTellsOnce();
    void refusedEditChangesNothing();
    void headerCarriesTitlesAndData();
    void dragRecordsComeOnceInRowOrder();
    void setChildrenOfOneRowTellsThatRow();
    void rowThatIsHandedBackStays();

private:
    std::unique_ptr<TestSource> m_source;
    std::unique_ptr<TestModel> m_model;
    std::unique_ptr<SignalChecker> m_checker;

    void make(const QVector<TestSource::Row> &rows);
    void makeParents();
    QModelIndex rowWithId(quint64 id, int column = 0) const { return m_model->indexFromId(id, column); }
};

void ItemModelTest::init()
{
    make(testRows({1, 2, 3, 4, 5}));
}

void ItemModelTest::cleanup()
{
    if (m_checker)
        QCOMPARE(m_checker->fault(), QString());
    m_checker.reset();
    m_model.reset();
    QCOMPARE(m_source->living, 0);
    m_source.reset();
}

void ItemModelTest::make(const QVector<TestSource::Row> &rows)
{
    m_checker.reset();
    m_model.reset();
    m_source = std::make_unique<TestSource>();
    m_source->rows = rows;
    m_model = std::make_unique<TestModel>(m_source.get());
    new QAbstractItemModelTester(m_model.get(), QAbstractItemModelTester::FailureReportingMode::QtTest,
                                 m_model.get());
    m_checker = std::make_unique<SignalChecker>(m_model.get());
}

/// Three rows, of which 20 has children 1, 2 and 3.
void ItemModelTest::makeParents()
{
    QVector<TestSource::Row> rows = testRows({10, 20, 30});
    rows[1].children = testRows({1, 2, 3});
    make(rows);
}

void ItemModelTest::rowsShowWhatTheyLoad()
{
    QCOMPARE(m_model->rowCount(), 5);
    QCOMPARE(m_model->columnCount(), 2);
    QCOMPARE(m_model->index(2, 0).data().toString(), QStringLiteral("row 3"));
    QCOMPARE(m_model->index(2, 1).data().toInt(), 3);
    QVERIFY(!m_model->index(5, 0).isValid());
    QVERIFY(!m_model->index(0, 2).isValid());
    QVERIFY(!m_model->index(-1, 0).isValid());
    QCOMPARE(m_model->rowCount(m_model->index(0, 1)), 0);
}

void ItemModelTest::cellsAreMadeOnceUntilReload()
{
    const QModelIndex cell = m_model->index(0, 0);
    cell.data();
    cell.data(Qt::FontRole);
    const int loads = m_source->loads;
    cell.data();
    cell.data(Qt::FontRole); // nothing is remembered too
    QCOMPARE(m_source->loads, loads);
    m_model->reloadIndices({cell});
    QVERIFY(m_source->loads > loads);
}

void ItemModelTest::storedDataOutliveAReloadOfTheRow()
{
    const QModelIndex cell = m_model->index(0, 0);
    QNKModelItem *row = m_model->itemFromIndex(cell);
    row->setItemData(Qt::StatusTipRole, QStringLiteral("a tip"), 0);
    row->setText(QStringLiteral("another text"), 0);
    QCOMPARE(cell.data().toString(), QStringLiteral("another text"));
    m_model->reloadIndices({cell});
    QCOMPARE(cell.data(Qt::StatusTipRole).toString(), QStringLiteral("a tip"));
    QCOMPARE(cell.data().toString(), QStringLiteral("row 1")); // the row makes it itself
}

void ItemModelTest::editRoleIsUserRole()
{
    const QModelIndex cell = m_model->index(0, 1);
    QCOMPARE(cell.data(Qt::EditRole), cell.data(Qt::UserRole));
    QVERIFY(m_model->setData(cell, 77, Qt::EditRole));
    QCOMPARE(cell.data(Qt::UserRole).toInt(), 77);
    QCOMPARE(cell.data(Qt::EditRole).toInt(), 77);
}

void ItemModelTest::unchangedReloadTellsNothing()
{
    QSignalSpy about(m_model.get(), &QNKItemModel::aboutToReload);
    QSignalSpy done(m_model.get(), &QNKItemModel::reloaded);
    m_model->reload();
    m_model->reload();
    QCOMPARE(m_checker->signalsSeen(), QStringList());
    QCOMPARE(about.count(), 2);
    QCOMPARE(done.count(), 2);
    QCOMPARE(m_source->living, 5);
}

void ItemModelTest::changedCellsAreToldAndNothingElse()
{
    QSignalSpy data(m_model.get(), &QAbstractItemModel::dataChanged);
    m_source->rows[1].text = QStringLiteral("new");
    m_source->rows[2].text = QStringLiteral("new too");
    m_source->rows[4].number = 99;
    m_model->reload();
    QCOMPARE(m_checker->signalsSeen(), (QStringList{"data", "data"}));
    QCOMPARE(data.at(0).at(0).toModelIndex(), m_model->index(1, 0));
    QCOMPARE(data.at(0).at(1).toModelIndex(), m_model->index(2, 0));
    QCOMPARE(data.at(0).at(2).value<QVector<int>>(), QVector<int>{Qt::DisplayRole});
    QCOMPARE(data.at(1).at(0).toModelIndex(), m_model->index(4, 1));
    QCOMPARE(data.at(1).at(1).toModelIndex(), m_model->index(4, 1));
}

void ItemModelTest::cellsNobodyAskedForAreNotTold()
{
    m_checker.reset();
    m_model->reloadIndices({});
    TestSource source;
    source.rows = testRows({1, 2});
    TestModel model(&source);
    QSignalSpy data(&model, &QAbstractItemModel::dataChanged);
    model.index(0, 0).data();
    source.rows[0].number = 5;
    source.rows[1].text = QStringLiteral("new");
    const int loads = source.loads;
    model.reload();
    QCOMPARE(data.count(), 0);
    QCOMPARE(source.loads, loads + 1); // the one cell that was known
    QCOMPARE(model.index(1, 0).data().toString(), QStringLiteral("new"));
}

void ItemModelTest::fewNewRowsAreInserted()
{
    const QPersistentModelIndex third = m_model->index(2, 0);
    m_source->rows = testRows({8, 1, 2, 9, 3, 4, 5, 7});
    m_model->reload();
    QCOMPARE(m_checker->signalsSeen(), (QStringList{"inserted", "inserted", "inserted"}));
    QCOMPARE(third.row(), 4);
    QCOMPARE(m_model->index(3, 0).data().toString(), QStringLiteral("row 9"));
}

void ItemModelTest::fewGoneRowsAreRemoved()
{
    const QPersistentModelIndex second = m_model->index(1, 0);
    const QPersistentModelIndex last = m_model->index(4, 1);
    m_source->rows = testRows({1, 4, 5});
    m_model->reload();
    QCOMPARE(m_checker->signalsSeen(), QStringList{"removed"});
    QVERIFY(!second.isValid());
    QCOMPARE(QModelIndex(last), m_model->index(2, 1));
}

void ItemModelTest::reorderedRowsAreLaidOut()
{
    const QPersistentModelIndex second = m_model->index(1, 1);
    m_source->rows = testRows({5, 2, 1, 4, 3});
    m_model->reload();
    QCOMPARE(m_checker->signalsSeen(), QStringList{"layout"});
    QCOMPARE(second.row(), 1);
    QCOMPARE(rowWithId(5).row(), 0);
    m_source->rows = testRows({6, 2, 5, 4});
    m_model->reload();
    QCOMPARE(m_checker->count("layout"), 2);
    QCOMPARE(m_checker->count("reset"), 0);
    QCOMPARE(second.row(), 1);
}

void ItemModelTest::littleInCommonIsOneReset()
{
    m_source->rows = testRows({5, 11, 12, 13, 14});
    m_model->reload();
    QCOMPARE(m_checker->signalsSeen(), QStringList{"reset"});
    QCOMPARE(m_source->living, 5);
}

void ItemModelTest::manyRowsComeByOneReset()
{
    QVector<quint64> ids;
    for (quint64 id = 1; id <= 3000; ++id)
        ids.append(id);
    m_source->rows = testRows(ids);
    m_model->reload();
    QCOMPARE(m_checker->signalsSeen(), QStringList{"reset"});
    m_checker->resetCounts();
    for (int i = 0; i < ids.size(); ++i)
        ids[i] = ids[i] + quint64(i % 2) * 1000000;
    m_source->rows = testRows(ids); // 1,500 separate differences
    m_model->reload();
    QCOMPARE(m_checker->signalsSeen(), QStringList{"reset"});
}

void ItemModelTest::slotsStayWithTheirIds()
{
    const QModelIndex third = m_model->index(2, 0); // on purpose not persistent
    m_source->rows = testRows({11, 12, 13, 14});
    m_model->reload();
    QCOMPARE(m_model->itemFromIndex(third), nullptr);
    QCOMPARE(third.data(), QVariant());
    QVERIFY(!third.parent().isValid());
    QCOMPARE(third.flags(), Qt::ItemFlags(Qt::NoItemFlags));
    QVERIFY(!m_model->setData(third, 1));
    m_source->rows = testRows({14, 3, 1});
    m_model->reload();
    QCOMPARE(third.internalId(), rowWithId(3).internalId());
    QCOMPARE(third.data().toString(), QStringLiteral("row 3"));
}

void ItemModelTest::rowsWithoutIdKeepNoPlace()
{
    make(testRows({0, 1, 2, 0}));
    const QModelIndex first = m_model->index(0, 0);
    const QPersistentModelIndex kept = m_model->index(1, 0);
    for (int i = 0; i < 10; ++i) {
        m_model->reload();
        QCOMPARE(m_model->itemFromIndex(first), nullptr); // also where the slot is used again
        QCOMPARE(kept.row(), 1);
    }
    QVERIFY(m_model->index(3, 0).internalId() != m_model->index(0, 0).internalId());
}

void ItemModelTest::childrenAreMadeWhenLookedAt()
{
    TestSource source;
    source.rows = testRows({10, 20});
    source.rows[1].children = testRows({1, 2});
    TestModel model(&source);
    QVERIFY(!model.hasChildren(model.index(0, 0)));
    QVERIFY(model.hasChildren(model.index(1, 0)));
    QVERIFY(model.canFetchMore(model.index(1, 0)));
    QCOMPARE(source.nestedLoads, 0);
    QCOMPARE(model.rowCount(model.index(1, 0)), 2);
    QCOMPARE(source.nestedLoads, 1);
    QVERIFY(!model.canFetchMore(model.index(1, 0)));
    const QModelIndex child = model.index(1, 0, model.index(1, 0));
    QCOMPARE(child.data().toString(), QStringLiteral("row 2"));
    QCOMPARE(child.parent(), model.index(1, 0));
    model.reload();
    QCOMPARE(source.nestedLoads, 2);
}

void ItemModelTest::childrenThatWereMadeAreMadeAnew()
{
    makeParents();
    const QPersistentModelIndex child = m_model->index(2, 0, rowWithId(20));
    QCOMPARE(child.data().toString(), QStringLiteral("row 3"));
    m_source->rows[1].children = testRows({4, 1, 3});
    m_source->rows[1].children[2].text = QStringLiteral("changed");
    m_source->rows.prepend(testRows({5}).first());
    m_model->reload();
    QCOMPARE(m_checker->count("reset"), 0);
    QCOMPARE(child.row(), 2);
    QCOMPARE(child.data().toString(), QStringLiteral("changed"));
    QCOMPARE(QModelIndex(child).parent(), rowWithId(20));
    QCOMPARE(m_model->rowCount(rowWithId(20)), 3);
}

void ItemModelTest::expanderComesAndGoes()
{
    TestSource source;
    source.rows = testRows({10, 20});
    source.rows[1].children = testRows({1});
    TestModel model(&source);
    QVERIFY(!model.hasChildren(model.index(0, 0))); // what a view asks, and no more
    QVERIFY(model.hasChildren(model.index(1, 0)));
    QSignalSpy inserted(&model, &QAbstractItemModel::rowsInserted);
    int layouts = 0;
    connect(&model, &QAbstractItemModel::layoutChanged, this, [&layouts] { ++layouts; });
    source.rows[0].children = testRows({1});
    model.reload();
    QCOMPARE(inserted.count(), 1);
    QCOMPARE(inserted.at(0).at(0).toModelIndex(), model.index(0, 0));
    QCOMPARE(layouts, 0);
    source.rows[1].children.clear();
    model.reload();
    QCOMPARE(layouts, 1);
    QVERIFY(!model.hasChildren(model.index(1, 0)));
}

void ItemModelTest::idsCompareByTheirText()
{
    QCOMPARE(m_model->indexFromId(3).row(), 2);
    QCOMPARE(m_model->indexFromId(quint64(3)).row(), 2);
    QCOMPARE(m_model->indexFromId(QStringLiteral("3")).row(), 2);
    QCOMPARE(m_model->indexFromId(QStringLiteral("3"), 1).column(), 1);
    QVERIFY(!m_model->indexFromId(QStringLiteral("03")).isValid());
    QVERIFY(!m_model->indexFromId(QStringLiteral("x")).isValid());
    QVERIFY(!m_model->indexFromId(QString()).isValid());
    QVERIFY(!m_model->indexFromId(QVariant()).isValid());
    QVERIFY(!m_model->indexFromId(-3).isValid());
    QVERIFY(!m_model->indexFromId(3, 2).isValid());
    QVERIFY(!m_model->indexFromId(3, -1).isValid());
}

void ItemModelTest::childIsFoundByItsId()
{
    TestSource source;
    const quint64 wide = Q_UINT64_C(1000000000000000007);
    source.rows = testRows({10, wide});
    source.rows[0].children = testRows({wide});
    source.rows[1].children = testRows({wide});
    TestModel model(&source);
    QVERIFY(!model.indexFromId(QStringLiteral("510")).isValid());
    QCOMPARE(source.nestedLoads, 1); // its ending is a row
    QVERIFY(!model.indexFromId(QStringLiteral("511")).isValid());
    QCOMPARE(source.nestedLoads, 1);
    const QString text = QString::number(wide) + QString::number(wide); // 38 digits
    const QModelIndex child = model.indexFromId(text);
    QCOMPARE(child.parent(), model.index(1, 0));
    QCOMPARE(child.data(Qt::UserRole).toString(), source.rows[1].children[0].text);
    QCOMPARE(source.nestedLoads, 2);
}

void ItemModelTest::setDataStoresCallsTheRowAndTellsOnce()
{
    QVector<QPair<quint64, int>> calls;
    m_source->onUserDataChanged = [&](quint64 id, int column) {
        calls.append({id, column});
        QCOMPARE(m_checker->count("data"), 0); // told after the row had its say
        QCOMPARE(rowWithId(id, column).data(Qt::UserRole).toInt(), 42);
        m_model->itemFromIndex(rowWithId(id))->setText(QStringLiteral("answer"), 0);
    };
    QSignalSpy data(m_model.get(), &QAbstractItemModel::dataChanged);
    QVERIFY(m_model->setData(rowWithId(2, 1), 42, Qt::UserRole));
    QCOMPARE(calls, (QVector<QPair<quint64, int>>{{2, 1}}));
    QCOMPARE(data.count(), 1);
    QCOMPARE(data.at(0).at(0).toModelIndex(), rowWithId(2, 0));
    QCOMPARE(data.at(0).at(1).toModelIndex(), rowWithId(2, 1));
    QVERIFY(data.at(0).at(2).value<QVector<int>>().contains(Qt::EditRole));
}

void ItemModelTest::refusedEditChangesNothing()
{
    m_source->editable = false;
    m_model->reload();
    m_source->onUserDataChanged = [](quint64, int) { QFAIL("called"); };
    QVERIFY(!m_model->setData(rowWithId(2), QStringLiteral("x")));
    QVERIFY(!m_model->flags(rowWithId(2)).testFlag(Qt::ItemIsEditable));
    QCOMPARE(rowWithId(2).data().toString(), QStringLiteral("row 2"));
    QVERIFY(!m_model->setData(QModelIndex(), 1));
    QCOMPARE(m_checker->count("data"), 0);
}

void ItemModelTest::headerCarriesTitlesAndData()
{
    QCOMPARE(m_model->headerData(1, Qt::Horizontal).toString(), QStringLiteral("Number"));
    QVERIFY(m_model->setHeaderData(0, Qt::Horizontal, QStringLiteral("Icon"), Qt::UserRole));
    QCOMPARE(m_model->headerData(0, Qt::Horizontal, Qt::UserRole).toString(), QStringLiteral("Icon"));
    QCOMPARE(m_model->headerData(0, Qt::Horizontal).toString(), QStringLiteral("Text"));
    QVERIFY(!m_model->setHeaderData(2, Qt::Horizontal, 1, Qt::UserRole));
    QVERIFY(!m_model->setHeaderData(0, Qt::Vertical, 1, Qt::UserRole));
    QCOMPARE(m_checker->signalsSeen(), QStringList{"header"});
    m_model->setHeader({QStringLiteral("a"), QStringLiteral("b")});
    QCOMPARE(m_checker->signalsSeen(), (QStringList{"header", "header"}));
    m_model->setHeader({QStringLiteral("a"), QStringLiteral("b"), QStringLiteral("c")});
    QCOMPARE(m_checker->count("reset"), 1);
    QCOMPARE(m_model->columnCount(), 3);
}

void ItemModelTest::dragRecordsComeOnceInRowOrder()
{
    makeParents();
    const QModelIndex child = m_model->index(1, 0, rowWithId(20));
    const std::unique_ptr<QMimeData> data(m_model->mimeData(
        {rowWithId(30, 1), child, rowWithId(10), rowWithId(30), rowWithId(20), QModelIndex()}));
    QCOMPARE(data->formats(), QStringList{QStringLiteral("application/x-test-rows")});
    QByteArray bytes = data->data(data->formats().first());
    QDataStream stream(bytes);
    stream.setVersion(QDataStream::Qt_5_15);
    QVector<quint64> ids;
    while (!stream.atEnd()) {
        quint64 id = 0;
        stream >> id;
        ids.append(id);
    }
    QCOMPARE(ids, (QVector<quint64>{10, 20, 2, 30}));
    QCOMPARE(m_model->mimeData({}), nullptr);
    QVERIFY(m_model->flags(rowWithId(10)).testFlag(Qt::ItemIsDragEnabled));
    m_model->setMimeType(QString());
    QVERIFY(!m_model->flags(rowWithId(10)).testFlag(Qt::ItemIsDragEnabled));
    QCOMPARE(m_model->mimeData({rowWithId(10)}), nullptr);
}

void ItemModelTest::setChildrenOfOneRowTellsThatRow()
{
    makeParents();
    QSignalSpy inserted(m_model.get(), &QAbstractItemModel::rowsInserted);
    QNKModelItem *row = m_model->itemFromIndex(rowWithId(10));
    row->setChildren({new TestRow(m_source.get(), testRows({7}).first(), QStringLiteral("10")), nullptr});
    QCOMPARE(inserted.count(), 1);
    QCOMPARE(inserted.at(0).at(0).toModelIndex(), rowWithId(10));
    QCOMPARE(m_model->rowCount(rowWithId(10)), 1);
    m_model->itemFromIndex(rowWithId(20))->setChildren({});
    QCOMPARE(m_checker->signalsSeen(), (QStringList{"inserted", "removed"}));
}

void ItemModelTest::rowThatIsHandedBackStays()
{
    QNKModelItem *root = m_model->rootItem();
    QNKModelItem *second = root->child(1);
    QNKModelItem *fourth = root->child(3);
    root->setChildren({fourth, second, second, root});
    QCOMPARE(m_model->rowCount(), 2);
    QCOMPARE(m_model->itemFromIndex(m_model->index(0, 0)), fourth);
    QCOMPARE(m_model->itemFromIndex(m_model->index(1, 0)), second);
    QCOMPARE(m_source->living, 2);
}

NK_GUILESS_TEST_MAIN(ItemModelTest)
#include "test_item_model.moc"
