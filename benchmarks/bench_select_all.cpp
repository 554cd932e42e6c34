#include "fixtures/EditorTable.h"
#include "fixtures/EditorWindow.h"
#include "fixtures/EntryScene.h"
#include "fixtures/Painting.h"
#include "harness/BenchmarkRegistry.h"

#include "tree/nkMetadataTreeWidget.h"

#include <nkKernelServicesGUI/nkMetadataTreeView.h>

#include <memory>

namespace {

ComparisonSide selectingAll(qint64 rows)
{
    const auto window = std::make_shared<std::unique_ptr<EditorWindow>>();
    ComparisonSide side;
    side.prepare = [window] { *window = std::make_unique<EditorWindow>(); };
    side.run = [window] {
        Painting::after((*window)->table()->viewport(),
                        [&] { (*window)->upperTree()->getTreeView()->selectAll(); });
    };
    side.finish = [window, rows] {
        if ((*window)->table()->model()->rowCount() != rows) {
            qFatal("The table does not show every entry");
        }
        window->reset();
    };
    return side;
}

ComparisonSide showing(const QList<nkdMetadataSet> &sets)
{
    const auto table = std::make_shared<std::unique_ptr<EditorTable>>();
    ComparisonSide side;
    side.prepare = [table] { *table = std::make_unique<EditorTable>(); };
    side.run = [table, sets] { (*table)->show(sets); };
    side.finish = [table] { table->reset(); };
    return side;
}

} // namespace

/// All sets of a scene selected in the tree, until their entries are painted, beside the table alone.
static Comparison compareSelectAll(qint64 sets)
{
    const QList<nkdMetadataSet> loaded = EntryScene::load(sets * EntryScene::EntriesPerSet);
    Comparison comparison;
    comparison.ours = selectingAll(sets * EntryScene::EntriesPerSet);
    comparison.baseline = showing(loaded);
    comparison.timeAim = 2;
    return comparison;
}
NK_BENCHMARK("select-all", compareSelectAll, 10000)
