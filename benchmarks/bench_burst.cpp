#include "fixtures/EditorWindow.h"
#include "fixtures/EntryScene.h"
#include "fixtures/Painting.h"
#include "harness/BenchmarkRegistry.h"

#include "frame/nkMetadataEditorUpdater.h"
#include "table/nkMetadataKeyValueTreeView.h"
#include "tree/nkMetadataTreeWidget.h"

#include <nkQt4Ext/QNKItemModel.h>

#include <memory>

namespace {

/// How often each view of a window reads its rows anew.
class ReloadCounter : public QObject
{
public:
    explicit ReloadCounter(const EditorWindow &window)
    {
        const QList<QNKItemModel *> models = window.models();
        m_counts.resize(models.size());
        for (int i = 0; i < models.size(); ++i) {
            connect(models.at(i), &QNKItemModel::reloaded, this, [this, i] { ++m_counts[i]; });
        }
    }

    bool isOnceEach() const { return m_counts == QVector<int>(m_counts.size(), 1); }

private:
    QVector<int> m_counts;
};

/// Changes the colour of every set, and then values until it is enough.
void change(const QList<nkdMetadataSet> &sets, qint64 changes)
{
    // Never the same twice: writing what is there is no change.
    static int round = 0;
    ++round;
    qint64 left = changes;
    for (nkdMetadataSet set : sets) {
        set.setColor(QColor::fromHsv(round % 360, 100, 100));
        --left;
    }
    for (int i = 0; left > 0; ++i) {
        const nkdMetadataSet set = sets.at(i % sets.size());
        nkdMetadataEntry entry = set.getEntries().at(i / sets.size());
        entry.setValue(QString::number(round));
        --left;
    }
}

/// @param heard whether the window listens while the changes are made, or only takes in the outcome
ComparisonSide changing(const QList<nkdMetadataSet> &sets, qint64 changes, bool heard)
{
    const auto window = std::make_shared<std::unique_ptr<EditorWindow>>();
    const auto counter = std::make_shared<std::unique_ptr<ReloadCounter>>();
    ComparisonSide side;
    side.prepare = [=] {
        *window = std::make_unique<EditorWindow>();
        (*window)->select(sets);
        *counter = std::make_unique<ReloadCounter>(**window);
    };
    side.run = [=] {
        Painting::after((*window)->table()->viewport(), [&] {
            (*window)->updater()->setEnabled(heard);
            change(sets, changes);
            (*window)->updater()->setEnabled(true);
            (*window)->waitForUpdate();
        });
    };
    side.finish = [=] {
        if (!(*counter)->isOnceEach()) {
            qFatal("The changes did not cost one refresh of each view");
        }
        window->reset();
    };
    return side;
}

} // namespace

/// Many changes of properties in one turn, beside the same changes unheard and one refresh of each view.
static Comparison compareBurst(qint64 changes)
{
    const QList<nkdMetadataSet> sets = EntryScene::load(changes);
    Comparison comparison;
    comparison.ours = changing(sets, changes, true);
    comparison.baseline = changing(sets, changes, false);
    comparison.timeAim = 1.2; // as fast, but for noise
    return comparison;
}
NK_BENCHMARK("burst", compareBurst, 10000)
