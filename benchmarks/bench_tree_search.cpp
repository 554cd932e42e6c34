#include "fixtures/EditorWindow.h"
#include "fixtures/Painting.h"
#include "fixtures/SetScene.h"
#include "fixtures/StandardTree.h"
#include "harness/BenchmarkRegistry.h"

#include "tree/nkMetadataTreeWidget.h"

#include <nkKernelServicesGUI/nkMetadataTreeView.h>
#include <nkQt4Ext/QNKCustomFilterProxyModel.h>

#include <memory>

namespace {

/// Stands in the names of some sets and of some nodes.
const QString searched = QStringLiteral("77");

/// The upper tree of the editor window.
class EditorTree
{
public:
    explicit EditorTree(const QList<nkdMetadataSet> &) {}

    QTreeView *view() { return m_window.upperTree()->getTreeView(); }
    void setSearch(const QString &text)
    {
        static_cast<QNKCustomFilterProxyModel *>(view()->model())->setFilterWildcard(text);
    }

private:
    EditorWindow m_window;
};

class FilledStandardTree : public StandardTree
{
public:
    explicit FilledStandardTree(const QList<nkdMetadataSet> &sets) { fillWithSets(sets); }
};

/// The rows of two levels that a search left, collapsed or not.
int countRows(const QAbstractItemModel *model)
{
    int rows = model->rowCount();
    for (int row = model->rowCount() - 1; row >= 0; --row) {
        rows += model->rowCount(model->index(row, 0));
    }
    return rows;
}

/// A text searched for and the search taken off again, each to painted.
template <typename Tree>
ComparisonSide searching(const QList<nkdMetadataSet> &sets, bool expanded)
{
    const auto tree = std::make_shared<std::unique_ptr<Tree>>();
    ComparisonSide side;
    side.prepare = [=] {
        *tree = std::make_unique<Tree>(sets);
        if (expanded) {
            (*tree)->view()->expandAll();
        }
        Painting::after((*tree)->view()->viewport(), [] {});
    };
    side.run = [=] {
        QWidget *viewport = (*tree)->view()->viewport();
        Painting::after(viewport, [&] { (*tree)->setSearch(searched); });
        Painting::after(viewport, [&] { (*tree)->setSearch(QString()); });
    };
    side.finish = [=] { tree->reset(); };
    return side;
}

/// Both sides find the same number of rows.
void verifyAlike(const QList<nkdMetadataSet> &sets)
{
    EditorTree ours(sets);
    FilledStandardTree baseline(sets);
    ours.setSearch(searched);
    baseline.setSearch(searched);
    const int found = countRows(ours.view()->model());
    const int expected = countRows(baseline.view()->model());
    if (found != expected) {
        qFatal("%d rows found here and %d there", found, expected);
    }
}

Comparison compare(qint64 sets, bool expanded)
{
    const QList<nkdMetadataSet> loaded = SetScene::load(sets);
    verifyAlike(loaded);
    Comparison comparison;
    comparison.ours = searching<EditorTree>(loaded, expanded);
    comparison.baseline = searching<FilledStandardTree>(loaded, expanded);
    comparison.timeAim = 0.5;
    return comparison;
}

} // namespace

/// A search through sets and their objects, all sets closed; the first in a fresh tree.
static Comparison compareCollapsed(qint64 sets)
{
    return compare(sets, false);
}
NK_BENCHMARK("tree-search", compareCollapsed, 10000)

/// The same with all sets open.
static Comparison compareExpanded(qint64 sets)
{
    return compare(sets, true);
}
NK_BENCHMARK("tree-search-expanded", compareExpanded, 10000)
