#include "fixtures/EditorTable.h"
#include "fixtures/EditorWindow.h"
#include "fixtures/EntryScene.h"
#include "fixtures/Painting.h"
#include "harness/BenchmarkRegistry.h"

#include "table/nkMetadataKeyValueColumns.h"

#include <memory>

using namespace nkMetadataKeyValue;

namespace {

constexpr int SmallRows = 1000;
constexpr int Edits = 20;

QList<nkdMetadataSet> small(const QList<nkdMetadataSet> &sets)
{
    return sets.mid(0, SmallRows / EntryScene::EntriesPerSet);
}

/// Never the same twice: writing what is there is no change.
QString newValue()
{
    static int count = 0;
    return QString::number(++count);
}

/// The value of the last row is written, as a cell editor does it.
ComparisonSide editing(const QList<nkdMetadataSet> &sets)
{
    const auto table = std::make_shared<EditorTable>();
    table->show(sets);
    ComparisonSide side;
    side.run = [table] {
        QNKItemModel *model = table->model();
        for (int i = 0; i < Edits; ++i) {
            Painting::after(table->view()->viewport(), [&] {
                model->setData(model->index(model->rowCount() - 1, ValueColumn), newValue(), Qt::UserRole);
            });
        }
    };
    return side;
}

/// The same with the whole window listening, which brings the views up to date.
ComparisonSide editingInWindow(const QList<nkdMetadataSet> &sets)
{
    const auto window = std::make_shared<std::unique_ptr<EditorWindow>>();
    ComparisonSide side;
    side.prepare = [window, sets] {
        *window = std::make_unique<EditorWindow>();
        (*window)->select(sets);
    };
    side.run = [window, sets] {
        nkdMetadataEntryList entries = sets.last().getEntries();
        Painting::after((*window)->table()->viewport(), [&] {
            nkdMetadataEntry(entries.at(entries.size() - 1)).setValue(newValue());
            (*window)->waitForUpdate();
        });
    };
    side.finish = [window] { window->reset(); };
    return side;
}

} // namespace

/// A value changed in a row out of sight, to painted, beside a table of a thousand rows.
static Comparison compareEdit(qint64 rows)
{
    const QList<nkdMetadataSet> sets = EntryScene::load(rows);
    Comparison comparison;
    comparison.ours = editing(sets);
    comparison.baseline = editing(small(sets));
    comparison.timeAim = 1.1; // as fast, but for noise
    return comparison;
}
NK_BENCHMARK("edit-offscreen", compareEdit, 1000000)

static Comparison compareEditInWindow(qint64 rows)
{
    const QList<nkdMetadataSet> sets = EntryScene::load(rows);
    Comparison comparison;
    comparison.ours = editingInWindow(sets);
    comparison.baseline = editingInWindow(small(sets));
    comparison.timeAim = 1.1;
    return comparison;
}
NK_BENCHMARK("edit-offscreen-window", compareEditInWindow, 1000000)
