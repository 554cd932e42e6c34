#include "fixtures/EditorTable.h"
#include "fixtures/EntryScene.h"
#include "fixtures/Painting.h"
#include "fixtures/StandardTable.h"
#include "harness/BenchmarkRegistry.h"

#include "table/nkMetadataKeyValueColumns.h"

#include <QHeaderView>

#include <memory>

using namespace nkMetadataKeyValue;

namespace {

template <typename Table>
ComparisonSide sorting(const std::shared_ptr<Table> &table, Column column)
{
    ComparisonSide side;
    side.prepare = [table] {
        QTreeView *view = table->view();
        Painting::after(view->viewport(), [view] { view->sortByColumn(-1, Qt::AscendingOrder); });
    };
    side.run = [table, column] {
        QTreeView *view = table->view();
        Painting::after(view->viewport(), [&] { view->sortByColumn(column, Qt::AscendingOrder); });
    };
    return side;
}

QStringList texts(QTreeView *view, int row)
{
    QStringList texts;
    for (int column = AssignmentColumn; column <= ValueColumn; ++column) {
        texts.append(view->model()->index(row, column).data().toString());
    }
    return texts;
}

/// Both sides have sorted alike, as far as the first, the middle and the last row tell.
void verifyAlike(QTreeView *ours, QTreeView *baseline)
{
    const int rows = ours->model()->rowCount();
    for (const int row : {0, rows / 2, rows - 1}) {
        if (texts(ours, row) != texts(baseline, row)) {
            qFatal("Row %d is %s here and %s there", row, qPrintable(texts(ours, row).join(QLatin1Char('|'))),
                   qPrintable(texts(baseline, row).join(QLatin1Char('|'))));
        }
    }
}

Comparison compare(qint64 rows, Column column)
{
    const QList<nkdMetadataSet> sets = EntryScene::load(rows);
    const auto ours = std::make_shared<EditorTable>();
    const auto baseline = std::make_shared<StandardTable>();
    ours->show(sets);
    baseline->show(sets);
    Comparison comparison;
    comparison.ours = sorting(ours, column);
    comparison.baseline = sorting(baseline, column);
    comparison.ours.finish = comparison.baseline.finish = [ours, baseline, column] {
        const auto isSorted = [column](const QTreeView *view) {
            return view->header()->sortIndicatorSection() == column;
        };
        if (isSorted(ours->view()) && isSorted(baseline->view())) {
            verifyAlike(ours->view(), baseline->view());
        }
    };
    comparison.timeAim = 0.2;
    return comparison;
}

} // namespace

/// The table sorted by a column that was not sorted before, to painted.
static Comparison compareKeys(qint64 rows)
{
    return compare(rows, KeyColumn);
}
NK_BENCHMARK("sort-key", compareKeys, 1000000)

static Comparison compareValues(qint64 rows)
{
    return compare(rows, ValueColumn);
}
NK_BENCHMARK("sort-value", compareValues, 1000000)

static Comparison compareColours(qint64 rows)
{
    return compare(rows, IconColumn);
}
NK_BENCHMARK("sort-colour", compareColours, 1000000)
