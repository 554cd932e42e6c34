#include "fixtures/EditorTable.h"
#include "fixtures/EntryScene.h"
#include "fixtures/Painting.h"
#include "fixtures/StandardTable.h"
#include "harness/BenchmarkRegistry.h"

#include <QScrollBar>

#include <memory>

namespace {

constexpr int Pages = 50;

/// Pages of rows that were never painted before: the texts of a row are made when it is.
template <typename Table>
ComparisonSide scrolling(const QList<nkdMetadataSet> &sets)
{
    const auto table = std::make_shared<Table>();
    ComparisonSide side;
    side.prepare = [table, sets] {
        table->show(sets);
        table->view()->verticalScrollBar()->setValue(0);
    };
    side.run = [table] {
        QAbstractItemView *view = table->view();
        for (int page = 0; page < Pages; ++page) {
            Painting::after(view->viewport(), [view] {
                view->verticalScrollBar()->triggerAction(QAbstractSlider::SliderPageStepAdd);
            });
        }
    };
    return side;
}

} // namespace

/// Fifty pages down the table, each painted.
static Comparison compareScroll(qint64 rows)
{
    const QList<nkdMetadataSet> sets = EntryScene::load(rows);
    Comparison comparison;
    comparison.ours = scrolling<EditorTable>(sets);
    comparison.baseline = scrolling<StandardTable>(sets);
    comparison.timeAim = 1;
    return comparison;
}
NK_BENCHMARK("scroll-50-pages", compareScroll, 1000000)
