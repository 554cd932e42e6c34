#include "TestRows.h"

#include <TestMain.h>
#include <nkQt4Ext/QNKCustomFilterProxyModel.h>
#include <nkQt4Ext/QNKTreeView.h>

#include <QLineEdit>
#include <QScrollBar>
#include <QSignalSpy>
#include <QStyledItemDelegate>

/// A view over a proxy over a proxy over a model: what a person has selected, expanded, scrolled to and typed
/// stays through every change of the rows.
class TreeViewKeepsPlaceTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void unchangedReloadTouchesNothing();
    void selectionAndCurrentSurviveInsertions();
    void selectionAndCurrentSurviveReset();
    void selectionAndCurrentSurviveReordering();
    void goneRowLeavesTheSelectionOnce();
    void goneCurrentRowPassesToTheNext();
    void goneLastRowPassesToTheOneBefore();
    void emptiedModelHasNoCurrentRow();
    void filterKeepsSelectionOfWhatIsShown();
    void everythingSelectedDoesNotGrowBack();
    void expansionSurvivesResetAndFilter();
    void scrollPositionStaysWithItsRows();
    void sortKeepsSelectionAndScrollBar();
    void selectionSetInsideAReloadCounts();
    void childSelectionSurvivesReset();
    void otherSourceModelIsFollowed();
    void selectionChangeInsideSelectionChange();
    void singleColumnLayoutHidesTheOthers();

private:
    std::unique_ptr<TestSource> m_source;
    std::unique_ptr<TestModel> m_model;
    std::unique_ptr<QNKSortFilterProxyModel> m_lower;
    std::unique_ptr<QNKCustomFilterProxyModel> m_upper;
    std::unique_ptr<QNKTreeView> m_view;
    std::unique_ptr<QSignalSpy> m_selections;
    std::unique_ptr<QSignalSpy> m_currents;

    void select(const QVector<quint64> &ids);
    QModelIndex shown(quint64 id, int column = 0) const;
    QModelIndex shown(const QString &id) const;
    QVector<quint64> selected() const;
    quint64 current() const;
    void resetSpies();
    void resetWith(const QVector<quint64> &ids);
};

void TreeViewKeepsPlaceTest::init()
{
    m_source = std::make_unique<TestSource>();
    QVector<quint64> ids;
    for (quint64 id = 100; id < 200; ++id)
        ids.append(id);
    m_source->rows = testRows(ids);
    m_source->rows[5].children = testRows({1, 2, 3});
    m_source->rows[6].children = testRows({1, 2, 3});
    m_model = std::make_unique<TestModel>(m_source.get());
    m_lower = std::make_unique<QNKSortFilterProxyModel>();
    m_lower->setSourceModel(m_model.get());
    m_upper = std::make_unique<QNKCustomFilterProxyModel>();
    m_upper->setSourceModel(m_lower.get());
    m_view = std::make_unique<QNKTreeView>();
    m_view->setSelectionMode(QAbstractItemView::ExtendedSelection);
    m_view->setModel(m_upper.get());
    m_view->resize(300, 200);
    m_view->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_view.get()));
    QItemSelectionModel *selection = m_view->selectionModel();
    m_selections = std::make_unique<QSignalSpy>(selection, &QItemSelectionModel::selectionChanged);
    m_currents = std::make_unique<QSignalSpy>(selection, &QItemSelectionModel::currentChanged);
}

void TreeViewKeepsPlaceTest::cleanup()
{
    m_selections.reset();
    m_currents.reset();
    m_view.reset();
    m_upper.reset();
    m_lower.reset();
    m_model.reset();
    QCOMPARE(m_source->living, 0);
    m_source.reset();
}

QModelIndex TreeViewKeepsPlaceTest::shown(quint64 id, int column) const
{
    return m_upper->mapFromSource(m_lower->mapFromSource(m_model->indexFromId(id, column)));
}

QModelIndex TreeViewKeepsPlaceTest::shown(const QString &id) const
{
    return m_upper->mapFromSource(m_lower->mapFromSource(m_model->indexFromId(id)));
}

/// Selects these rows; the first becomes the current one.
void TreeViewKeepsPlaceTest::select(const QVector<quint64> &ids)
{
    m_view->setCurrentIndex(shown(ids.first()));
    for (quint64 id : ids)
        m_view->selectionModel()->select(shown(id), QItemSelectionModel::Select | QItemSelectionModel::Rows);
    resetSpies();
}

void TreeViewKeepsPlaceTest::resetSpies()
{
    m_selections->clear();
    m_currents->clear();
}

/// The selected top-level rows, in their order.
QVector<quint64> TreeViewKeepsPlaceTest::selected() const
{
    QVector<quint64> ids;
    for (int row = 0; row < m_upper->rowCount(); ++row) {
        if (m_view->selectionModel()->isRowSelected(row, {}))
            ids.append(m_upper->index(row, 1).data().toULongLong());
    }
    return ids;
}

quint64 TreeViewKeepsPlaceTest::current() const
{
    return m_view->currentIndex().sibling(m_view->currentIndex().row(), 1).data().toULongLong();
}

/// Gives the model these rows and no others; enough is new that a reset tells it.
void TreeViewKeepsPlaceTest::resetWith(const QVector<quint64> &ids)
{
    QSignalSpy reset(m_model.get(), &QAbstractItemModel::modelReset);
    m_source->rows = testRows(ids);
    m_model->reload();
    QCOMPARE(reset.count(), 1);
}

void TreeViewKeepsPlaceTest::unchangedReloadTouchesNothing()
{
    select({110, 111, 150});
    m_model->reload();
    QCOMPARE(selected(), (QVector<quint64>{110, 111, 150}));
    QCOMPARE(current(), 110ull);
    QCOMPARE(m_selections->count(), 0);
    QCOMPARE(m_currents->count(), 0);
}

void TreeViewKeepsPlaceTest::selectionAndCurrentSurviveInsertions()
{
    select({110, 111, 150});
    m_source->rows.insert(11, testRows({500}).first());
    m_source->rows.prepend(testRows({501}).first());
    m_model->reload();
    QCOMPARE(selected(), (QVector<quint64>{110, 111, 150})); // 500 came between two selected rows
    QCOMPARE(current(), 110ull);
    QCOMPARE(m_selections->count(), 0);
    QCOMPARE(m_currents->count(), 0);
}

void TreeViewKeepsPlaceTest::selectionAndCurrentSurviveReset()
{
    select({110, 111, 150});
    m_view->setCurrentIndex(shown(111, 1));
    select({111, 110, 150});
    resetWith({900, 901, 902, 903, 904, 905, 906, 907, 150, 111, 110});
    QCOMPARE(selected(), (QVector<quint64>{150, 111, 110}));
    QCOMPARE(current(), 111ull);
    QCOMPARE(m_selections->count(), 0);
    QCOMPARE(m_currents->count(), 0);
}

void TreeViewKeepsPlaceTest::selectionAndCurrentSurviveReordering()
{
    select({110, 111, 150});
    std::reverse(m_source->rows.begin(), m_source->rows.end());
    m_model->reload();
    QCOMPARE(selected(), (QVector<quint64>{150, 111, 110}));
    QCOMPARE(current(), 110ull);
    QCOMPARE(m_selections->count(), 0);
    QCOMPARE(m_currents->count(), 0);
}

void TreeViewKeepsPlaceTest::goneRowLeavesTheSelectionOnce()
{
    select({110, 130, 150});
    m_source->rows.removeAt(50);
    m_source->rows.removeAt(30);
    m_model->reload();
    QCOMPARE(selected(), QVector<quint64>{110});
    QCOMPARE(m_selections->count(), 1);
    QCOMPARE(m_currents->count(), 0);

    resetSpies();
    m_source->rows.removeAt(60); // nobody had selected that one
    m_model->reload();
    QCOMPARE(m_selections->count(), 0);
}

void TreeViewKeepsPlaceTest::goneCurrentRowPassesToTheNext()
{
    select({110, 120});
    m_view->selectionModel()->setCurrentIndex(shown(112), QItemSelectionModel::NoUpdate);
    resetSpies();
    m_source->rows.remove(12, 2);
    m_model->reload();
    QCOMPARE(current(), 114ull);
    QCOMPARE(selected(), (QVector<quint64>{110, 120}));
    QCOMPARE(m_selections->count(), 0);
    QCOMPARE(m_currents->count(), 1);
}

void TreeViewKeepsPlaceTest::goneLastRowPassesToTheOneBefore()
{
    select({110});
    m_view->selectionModel()->setCurrentIndex(shown(199), QItemSelectionModel::NoUpdate);
    resetSpies();
    m_source->rows.removeLast();
    m_model->reload();
    QCOMPARE(current(), 198ull);
    QCOMPARE(m_selections->count(), 0);
}

void TreeViewKeepsPlaceTest::emptiedModelHasNoCurrentRow()
{
    select({110, 111});
    m_source->rows.clear();
    m_model->reload();
    QVERIFY(!m_view->currentIndex().isValid());
    QCOMPARE(m_selections->count(), 1);
    QCOMPARE(m_currents->count(), 1);
    m_source->rows = testRows({110, 111});
    m_model->reload();
    QCOMPARE(selected(), QVector<quint64>());
}

void TreeViewKeepsPlaceTest::filterKeepsSelectionOfWhatIsShown()
{
    select({111, 151, 160});
    m_upper->setFilterWildcard(QStringLiteral("row 1?1"));
    QCOMPARE(m_upper->rowCount(), 10);
    QCOMPARE(selected(), (QVector<quint64>{111, 151}));
    QCOMPARE(current(), 111ull);
    QCOMPARE(m_selections->count(), 1);
    QCOMPARE(m_currents->count(), 0);
    m_upper->setFilterWildcard(QStringLiteral("row 1?0"));
    QCOMPARE(selected(), QVector<quint64>());
    QCOMPARE(current(), 110ull); // at the same position
    m_upper->setFilterWildcard(QString());
    QCOMPARE(selected(), QVector<quint64>());
    QCOMPARE(current(), 110ull); // at the same position
}

void TreeViewKeepsPlaceTest::everythingSelectedDoesNotGrowBack()
{
    m_view->selectAll();
    QCOMPARE(selected().size(), 100);
    m_upper->setFilterWildcard(QStringLiteral("row 1?1"));
    QCOMPARE(selected().size(), 10);
    m_upper->setFilterWildcard(QString());
    QCOMPARE(selected().size(), 10);
    QCOMPARE(m_upper->rowCount(), 100);
}

void TreeViewKeepsPlaceTest::expansionSurvivesResetAndFilter()
{
    m_view->expand(shown(105));
    m_view->expand(shown(106));
    m_view->collapse(shown(106));
    QSignalSpy expanded(m_view.get(), &QTreeView::expanded);
    m_upper->setFilterWildcard(QStringLiteral("106"));
    m_upper->setFilterWildcard(QString());
    QVERIFY(m_view->isExpanded(shown(105)));
    QVERIFY(!m_view->isExpanded(shown(106)));

    const TestSource::Row parent = m_source->rows[5];
    m_source->rows = testRows({900, 901, 902});
    m_source->rows.append(parent);
    m_model->reload();
    QVERIFY(m_view->isExpanded(shown(105)));
    QCOMPARE(expanded.count(), 0);
}

void TreeViewKeepsPlaceTest::scrollPositionStaysWithItsRows()
{
    for (const auto mode : {QAbstractItemView::ScrollPerItem, QAbstractItemView::ScrollPerPixel}) {
        m_view->setVerticalScrollMode(mode);
        m_view->scrollTo(shown(150), QAbstractItemView::PositionAtTop);
        const int top = m_view->visualRect(shown(152)).top();
        QVERIFY(top > 0);
        m_source->rows.prepend(testRows({quint64(500 + int(mode))}).first());
        m_source->rows.removeAt(51); // the topmost one
        m_model->reload();
        QCOMPARE(m_view->visualRect(shown(152)).top(), top);

        m_upper->setFilterWildcard(QStringLiteral("row 1*"));
        QCOMPARE(m_view->visualRect(shown(152)).top(), top);
        m_upper->setFilterWildcard(QString());
        QCOMPARE(m_view->visualRect(shown(152)).top(), top);
        cleanup();
        init();
    }
}

void TreeViewKeepsPlaceTest::sortKeepsSelectionAndScrollBar()
{
    m_upper->sort(0, Qt::DescendingOrder);
    select({110, 150});
    m_view->verticalScrollBar()->setValue(0);
    m_upper->sort(0, Qt::AscendingOrder);
    QCOMPARE(selected(), (QVector<quint64>{110, 150}));
    QCOMPARE(current(), 110ull);
    QCOMPARE(m_view->verticalScrollBar()->value(), 0);
    QCOMPARE(m_selections->count(), 0);
    QCOMPARE(m_currents->count(), 0);
}

void TreeViewKeepsPlaceTest::selectionSetInsideAReloadCounts()
{
    select({110});
    const auto selectOther = [this] {
        m_view->selectionModel()->select(m_upper->index(0, 0),
                                         QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
    };
    connect(m_upper.get(), &QAbstractItemModel::rowsInserted, this, selectOther);
    m_source->rows.prepend(testRows({500}).first());
    m_model->reload();
    QCOMPARE(selected(), QVector<quint64>{500});
    QCOMPARE(m_selections->count(), 1);
}

void TreeViewKeepsPlaceTest::childSelectionSurvivesReset()
{
    m_view->expand(shown(105));
    m_view->setCurrentIndex(shown(QStringLiteral("2105")));
    resetSpies();
    const TestSource::Row parent = m_source->rows[5];
    m_source->rows = testRows({900, 901, 902});
    m_source->rows.append(parent);
    m_model->reload();
    QVERIFY(m_view->selectionModel()->isSelected(shown(QStringLiteral("2105"))));
    QCOMPARE(m_view->currentIndex(), shown(QStringLiteral("2105")));
    QCOMPARE(m_selections->count(), 0);
}

void TreeViewKeepsPlaceTest::otherSourceModelIsFollowed()
{
    TestSource source;
    source.rows = testRows({1, 2, 3});
    TestModel model(&source);
    m_lower->setSourceModel(&model);
    QCOMPARE(m_upper->rowCount(), 3);
    m_view->setCurrentIndex(m_upper->index(1, 0));
    resetSpies();
    source.rows = testRows({7, 8, 9, 10, 2});
    model.reload();
    QCOMPARE(selected(), QVector<quint64>{2});
    QCOMPARE(m_selections->count(), 0);
    m_lower->setSourceModel(m_model.get());
}

void TreeViewKeepsPlaceTest::selectionChangeInsideSelectionChange()
{
    select({110, 111});
    connect(m_view->selectionModel(), &QItemSelectionModel::selectionChanged, this, [this] {
        if (m_selections->count() == 1)
            m_model->reload();
    });
    m_source->rows.removeAt(11);
    m_model->reload();
    QCOMPARE(selected(), QVector<quint64>{110});
    QCOMPARE(m_selections->count(), 1);
}

void TreeViewKeepsPlaceTest::singleColumnLayoutHidesTheOthers()
{
    m_view->setSingleColumnLayout(true);
    QVERIFY(m_view->isColumnHidden(1));
    QVERIFY(!m_view->isColumnHidden(0));
    m_view->setSingleColumnLayout(false);
    QVERIFY(!m_view->isColumnHidden(1));
    QNKTreeView view;
    view.setSingleColumnLayout(true);
    view.setModel(m_model.get());
    QVERIFY(view.isColumnHidden(1));
}

NK_TEST_MAIN(TreeViewKeepsPlaceTest)
#include "test_tree_view_keeps_place.moc"
