#include "RandomTree.h"
#include "SignalChecker.h"
#include "WordProxy.h"

#include <TestMain.h>

#include <QAbstractItemModelTester>

#include <algorithm>

namespace {

constexpr int AllLevels = -1;

/// What the proxy is to show, worked out the long way from the source alone.
class BruteForce
{
public:
    explicit BruteForce(const WordProxy &proxy) : m_proxy(proxy) {}

    using Row = RandomTree::Row;
    using Rows = std::vector<const Row *>;

    Rows shown(const Row &above, bool isWithin) const
    {
        Rows rows;
        for (const auto &row : above.rows) {
            if (isShown(*row, isWithin))
                rows.push_back(row.get());
        }
        if (m_proxy.sortColumn() >= 0 && m_proxy.sortColumn() < 2) {
            const bool isUp = m_proxy.sortOrder() == Qt::AscendingOrder;
            std::stable_sort(rows.begin(), rows.end(), [&](const Row *left, const Row *right) {
                return isUp ? isLess(*left, *right) : isLess(*right, *left);
            });
        }
        return rows;
    }

    bool passesOn(const Row &row, bool isWithin) const
    {
        return m_proxy.isRecursiveAcceptEnabled() && (isWithin || m_proxy.accepts(row.text));
    }

private:
    bool isShown(const Row &row, bool isWithin) const
    {
        if (isWithin || m_proxy.accepts(row.text))
            return true;
        return m_proxy.isRecursiveFilteringEnabled()
               && std::any_of(row.rows.begin(), row.rows.end(),
                              [&](const auto &below) { return isShown(*below, false); });
    }

    bool isLess(const Row &left, const Row &right) const
    {
        return m_proxy.sortColumn() == 0 ? m_proxy.lessThan(left.text, right.text)
                                         : left.number < right.number;
    }

    const WordProxy &m_proxy;
};

/// Where proxy and brute force part; empty: nowhere.
/// @param levels so many are looked at
QString difference(const WordProxy &proxy, const RandomTree &tree, const QModelIndex &parent,
                   const RandomTree::Row &above, bool isWithin, int levels)
{
    const BruteForce expected(proxy);
    const BruteForce::Rows rows = expected.shown(above, isWithin);
    if (proxy.rowCount(parent) != int(rows.size()))
        return QStringLiteral("%1 rows instead of %2").arg(proxy.rowCount(parent)).arg(rows.size());
    if (proxy.hasChildren(parent) == rows.empty())
        return QStringLiteral("hasChildren of %1 rows").arg(rows.size());
    for (int row = 0; row < int(rows.size()); ++row) {
        const QModelIndex index = proxy.index(row, row % 2, parent);
        const QModelIndex source = proxy.mapToSource(index);
        if (&tree.rowAt(source) != rows[size_t(row)])
            return QStringLiteral("another row at %1").arg(row);
        if (proxy.mapFromSource(source) != index || index.parent() != parent)
            return QStringLiteral("no way back from %1").arg(row);
        if (levels == 1)
            continue;
        const QString below = difference(proxy, tree, proxy.index(row, 0, parent), *rows[size_t(row)],
                                         expected.passesOn(*rows[size_t(row)], isWithin), levels - 1);
        if (!below.isEmpty())
            return QStringLiteral("%1: %2").arg(row).arg(below);
    }
    return {};
}

/// One change of the source or of what the proxy is to do. @return its name
QString change(RandomTree &tree, WordProxy &proxy)
{
    QRandomGenerator &random = tree.random();
    switch (random.bounded(10)) {
    case 0:
        proxy.setWord(random.bounded(3) == 0 ? QString() : tree.anyText());
        return QStringLiteral("filter %1").arg(proxy.word());
    case 1:
        proxy.sort(random.bounded(4) - 1, random.bounded(2) ? Qt::AscendingOrder : Qt::DescendingOrder);
        return QStringLiteral("sort %1").arg(proxy.sortColumn());
    case 2:
        if (random.bounded(2))
            proxy.setRecursiveFilteringEnabled(random.bounded(2));
        else
            proxy.setRecursiveAcceptEnabled(random.bounded(2));
        return QStringLiteral("recursion");
    default:
        return tree.change();
    }
}

QString stateOf(const WordProxy &proxy, const QString &parted)
{
    return QStringLiteral("%1; recursive %2 %3, sorted %4 %5, word %6")
        .arg(parted)
        .arg(proxy.isRecursiveFilteringEnabled())
        .arg(proxy.isRecursiveAcceptEnabled())
        .arg(proxy.sortColumn())
        .arg(proxy.sortOrder())
        .arg(proxy.word());
}

int stepsOf(int steps)
{
#ifdef __SANITIZE_ADDRESS__
    return steps / 10;
#else
    return steps;
#endif
}

} // namespace

class TestSortFilterProxyRandom : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void initTestCase()
    {
        // What QSignalSpy has to keep.
        qRegisterMetaType<QList<QPersistentModelIndex>>();
        qRegisterMetaType<QAbstractItemModel::LayoutChangeHint>();
        qRegisterMetaType<Qt::Orientation>();
    }

    void everyStepOfARandomRunEqualsBruteForce_data();
    void everyStepOfARandomRunEqualsBruteForce();
    void whatNobodyHasLookedAtIsTrueWhenSomebodyDoes();
};

void TestSortFilterProxyRandom::everyStepOfARandomRunEqualsBruteForce_data()
{
    QTest::addColumn<bool>("isFlat");
    QTest::addColumn<bool>("withKeys");
    QTest::newRow("flat") << true << false;
    QTest::newRow("flat, sort keys") << true << true;
    QTest::newRow("nested") << false << false;
    QTest::newRow("nested, sort keys") << false << true;
}

void TestSortFilterProxyRandom::everyStepOfARandomRunEqualsBruteForce()
{
    QFETCH(bool, isFlat);
    QFETCH(bool, withKeys);
    const int steps = stepsOf(25000);
    RandomTree tree(isFlat ? 11 : 12, isFlat);
    WordProxy proxy(withKeys);
    proxy.setSourceModel(&tree);
    const QAbstractItemModelTester tester(&proxy, QAbstractItemModelTester::FailureReportingMode::Fatal);
    SignalChecker checker(&proxy);
    for (int step = 0; step < steps; ++step) {
        const QString what = change(tree, proxy);
        const QString fault = checker.fault();
        const QString parted = difference(proxy, tree, {}, tree.root(), false, AllLevels);
        if (!fault.isEmpty() || !parted.isEmpty())
            QFAIL(qPrintable(
                QStringLiteral("step %1, %2: %3; %4").arg(step).arg(what, fault, stateOf(proxy, parted))));
        if (step % 100 == 0)
            checker.resetCounts();
    }
}

/// No tester listens here, because it would look at every row: lists below are judged for the sake of the rows above
/// them, and change before anybody has seen them.
void TestSortFilterProxyRandom::whatNobodyHasLookedAtIsTrueWhenSomebodyDoes()
{
    RandomTree tree(13, false);
    WordProxy proxy(true);
    proxy.setRecursiveFilteringEnabled(true);
    proxy.setSourceModel(&tree);
    const int steps = stepsOf(25000);
    for (int step = 0; step < steps; ++step) {
        const QString what = change(tree, proxy);
        const int levels = step % 11 == 0 ? AllLevels : 1 + step % 2;
        const QString parted = difference(proxy, tree, {}, tree.root(), false, levels);
        if (!parted.isEmpty())
            QFAIL(qPrintable(QStringLiteral("step %1, %2: %3").arg(step).arg(what, stateOf(proxy, parted))));
    }
}

NK_TEST_MAIN(TestSortFilterProxyRandom)
#include "test_sort_filter_proxy_random.moc"
