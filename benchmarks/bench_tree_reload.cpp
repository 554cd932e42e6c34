#include "fixtures/EditorWindow.h"
#include "fixtures/Painting.h"
#include "fixtures/SetScene.h"
#include "fixtures/StandardTree.h"
#include "harness/BenchmarkRegistry.h"

#include "tree/nkMetadataTreeWidget.h"

#include <nkKernelServicesGUI/nkMetadataTreeView.h>

#include <QItemSelectionModel>

#include <memory>

namespace {

/// Of the sets, every hundredth is open in a tree that a person works with.
constexpr int OpenStep = 100;

enum class Rows { Sets, OpenSets, Objects };

void selectFirst(QTreeView *view)
{
    view->selectionModel()->select(view->model()->index(0, 0), QItemSelectionModel::ClearAndSelect);
}

/// What a reload has to keep.
struct Place
{
    explicit Place(const QTreeView *view)
        : selected(view->selectionModel()->selectedIndexes().value(0).data().toString()),
          rows(view->model()->rowCount())
    {
        for (int row = 0; row < rows; ++row) {
            open += view->isExpanded(view->model()->index(row, 0));
        }
    }

    bool operator!=(const Place &other) const
    {
        return selected != other.selected || rows != other.rows || open != other.open;
    }

    QString selected;
    int rows = 0;
    int open = 0;
};

ComparisonSide reloading(Rows rows)
{
    const auto window = std::make_shared<std::unique_ptr<EditorWindow>>();
    const auto before = std::make_shared<std::unique_ptr<Place>>();
    const auto view = [window] { return (*window)->upperTree()->getTreeView(); };
    ComparisonSide side;
    side.prepare = [=] {
        *window = std::make_unique<EditorWindow>();
        (*window)->upperTree()->setMode(rows == Rows::Objects ? TreeMode::Scenegraph : TreeMode::Sets);
        if (rows == Rows::OpenSets) {
            view()->expandAll();
        }
        for (int row = 0; rows == Rows::Sets && row < view()->model()->rowCount(); row += OpenStep) {
            view()->expand(view()->model()->index(row, 0));
        }
        selectFirst(view());
        Painting::after(view()->viewport(), [] {});
        *before = std::make_unique<Place>(view());
    };
    side.run = [=] { Painting::after(view()->viewport(), [&] { (*window)->upperTree()->reload(); }); };
    side.finish = [=] {
        if (Place(view()) != **before) {
            qFatal("The reload has lost the place");
        }
        window->reset();
    };
    return side;
}

/// Rows made anew, opened and selected as before.
ComparisonSide refilling(const QList<nkdMetadataSet> &sets, Rows rows)
{
    const auto tree = std::make_shared<StandardTree>();
    ComparisonSide side;
    side.run = [=] {
        QTreeView *view = tree->view();
        Painting::after(view->viewport(), [&] {
            if (rows == Rows::Objects) {
                tree->fillWithObjects(sets);
            } else {
                tree->fillWithSets(sets);
            }
            if (rows == Rows::OpenSets) {
                view->expandAll();
            } else if (rows == Rows::Sets) {
                tree->expandEach(OpenStep);
            }
            selectFirst(view);
        });
    };
    return side;
}

Comparison compare(qint64 sets, Rows rows)
{
    const QList<nkdMetadataSet> loaded = SetScene::load(sets);
    Comparison comparison;
    comparison.ours = reloading(rows);
    comparison.baseline = refilling(loaded, rows);
    comparison.timeAim = 0.5;
    return comparison;
}

} // namespace

/// The tree of sets read anew, some sets open, to painted.
static Comparison compareSets(qint64 sets)
{
    return compare(sets, Rows::Sets);
}
NK_BENCHMARK("tree-reload", compareSets, 10000)

/// The same with the ten objects of every set shown.
static Comparison compareOpenSets(qint64 sets)
{
    return compare(sets, Rows::OpenSets);
}
NK_BENCHMARK("tree-reload-expanded", compareOpenSets, 10000)

/// The tree of the nodes that carry sets.
static Comparison compareObjects(qint64 objects)
{
    return compare(objects / SetScene::ObjectsPerSet, Rows::Objects);
}
NK_BENCHMARK("tree-reload-nodes", compareObjects, 100000)
