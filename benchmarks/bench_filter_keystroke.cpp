#include "fixtures/EditorTable.h"
#include "fixtures/EntryScene.h"
#include "fixtures/Painting.h"
#include "fixtures/StandardTable.h"
#include "harness/BenchmarkRegistry.h"

#include <QItemSelectionModel>

#include <memory>

namespace {

const QString typed = QStringLiteral("4");

/// The first row that the filter lets pass.
constexpr int CurrentRow = 4;

qint64 selectedRows(const QAbstractItemView *view)
{
    qint64 rows = 0;
    const QItemSelection selection = view->selectionModel()->selection();
    for (const QItemSelectionRange &range : selection) {
        rows += range.height();
    }
    return rows;
}

/// The current row passes the filter, and so do some of the selected ones: they stay what they were.
void verifyKept(EditorTable &table, bool everythingSelected)
{
    const QAbstractItemView *view = table.view();
    table.setKeyFilter(typed);
    const qint64 expected = everythingSelected ? view->model()->rowCount() : 1;
    if (selectedRows(view) < expected || !view->currentIndex().isValid()) {
        qFatal("The filter has lost the selection or the current row");
    }
    table.setKeyFilter(QString());
}

/// The filter is set and taken off again, each to painted.
template <typename Table>
ComparisonSide typing(const std::shared_ptr<Table> &table, bool everythingSelected)
{
    ComparisonSide side;
    side.prepare = [table, everythingSelected] {
        QAbstractItemView *view = table->view();
        view->setCurrentIndex(view->model()->index(CurrentRow, 2));
        if (everythingSelected) {
            view->selectAll();
        }
    };
    side.run = [table] {
        QWidget *viewport = table->view()->viewport();
        Painting::after(viewport, [&] { table->setKeyFilter(typed); });
        Painting::after(viewport, [&] { table->setKeyFilter(QString()); });
    };
    return side;
}

Comparison compare(qint64 rows, bool everythingSelected)
{
    const QList<nkdMetadataSet> sets = EntryScene::load(rows);
    const auto ours = std::make_shared<EditorTable>();
    const auto baseline = std::make_shared<StandardTable>();
    ours->show(sets);
    baseline->show(sets);
    Comparison comparison;
    comparison.ours = typing(ours, everythingSelected);
    comparison.baseline = typing(baseline, everythingSelected);
    comparison.ours.finish = [ours, everythingSelected] { verifyKept(*ours, everythingSelected); };
    comparison.timeAim = 0.3;
    return comparison;
}

} // namespace

/// A character typed into the key filter of the table, and taken out again.
static Comparison compareKeystroke(qint64 rows)
{
    return compare(rows, false);
}
NK_BENCHMARK("filter-keystroke", compareKeystroke, 100000, 1000000)

/// The same while every row is selected.
static Comparison compareKeystrokeSelected(qint64 rows)
{
    return compare(rows, true);
}
NK_BENCHMARK("filter-keystroke-selected", compareKeystrokeSelected, 100000, 1000000)
