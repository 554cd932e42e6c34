#include "harness/BenchmarkRegistry.h"
#include "harness/PaintWait.h"

#include "kernel/document/DocumentLoader.h"

#include "table/nkMetadataKeyValueHeader.h"
#include "table/nkMetadataKeyValueModel.h"
#include "table/nkMetadataKeyValueRootModelItem.h"
#include "table/nkMetadataKeyValueTreeView.h"
#include "table/nkMetadataTableFilterModel.h"

#include <QHeaderView>
#include <QSortFilterProxyModel>
#include <QStandardItemModel>
#include <QTreeView>

#include <memory>

namespace {

constexpr int EntriesPerSet = 100;

const QStringList columnTitles{QString(), QStringLiteral("Assignment"), QStringLiteral("Key"),
                               QStringLiteral("Value"), QStringLiteral("Type")};

/// Sets of a hundred entries each, as the document; both sides show them.
QList<nkdMetadataSet> loadScene(qint64 entries)
{
    kernel::DocumentLoader loader;
    QList<nkdMetadataSet> sets;
    for (qint64 i = 0; i < entries; ++i) {
        if (i % EntriesPerSet == 0) {
            sets.append(nkdMetadataSet(loader.addSet(QStringLiteral("Set %1").arg(sets.size()))));
        }
        loader.addEntry(sets.last().getObjectId(), QStringLiteral("key %1").arg(i % EntriesPerSet),
                        nkMetadataTypes::Integer, int(i));
    }
    loader.commit();
    return sets;
}

/// The table of the editor window, empty and on the screen.
class EditorTable
{
public:
    EditorTable()
    {
        m_root = new nkMetadataKeyValueRootModelItem;
        m_model.setHeader(columnTitles);
        m_model.setRootItem(m_root);
        m_proxy.setSourceModel(&m_model);
        m_view.setModel(&m_proxy);
        auto *header = new nkMetadataKeyValueHeader(&m_view, &m_view);
        m_view.setHeader(header);
        header->initialise();
        showEmpty(&m_view);
    }

    static void showEmpty(QWidget *view)
    {
        view->resize(700, 600);
        PaintWait painted(view);
        view->show();
        view->update();
        painted.wait();
    }

    void show(const QList<nkdMetadataSet> &sets)
    {
        PaintWait painted(m_view.viewport());
        m_root->setSets(sets);
        m_view.setSortingEnabled(false);
        m_model.reload();
        m_view.setSortingEnabled(true);
        painted.wait();
    }

private:
    nkMetadataKeyValueModel m_model;
    nkMetadataTableFilterModel m_proxy;
    nkMetadataKeyValueTreeView m_view;
    nkMetadataKeyValueRootModelItem *m_root = nullptr;
};

/// The same rows as five standard items each.
class StandardTable
{
public:
    StandardTable()
    {
        m_view.setRootIsDecorated(false);
        m_view.setUniformRowHeights(true);
        m_view.setSortingEnabled(true);
        m_view.header()->setSortIndicator(-1, Qt::AscendingOrder);
        EditorTable::showEmpty(&m_view);
    }

    void show(const QList<nkdMetadataSet> &sets)
    {
        PaintWait painted(m_view.viewport());
        auto model = std::make_unique<QStandardItemModel>(0, columnTitles.size());
        model->setHorizontalHeaderLabels(columnTitles);
        for (const nkdMetadataSet &set : sets) {
            for (const nkdMetadataEntry &entry : set.getEntries()) {
                model->invisibleRootItem()->appendRow(row(set, entry));
            }
        }
        // Filled first and watched then, which is its fast way.
        m_model = std::move(model);
        m_proxy.setSourceModel(m_model.get());
        m_view.setModel(&m_proxy);
        painted.wait();
    }

private:
    static QList<QStandardItem *> row(const nkdMetadataSet &set, const nkdMetadataEntry &entry)
    {
        const QVariant value = entry.getValue();
        QList<QStandardItem *> items{new QStandardItem, new QStandardItem(set.getName()),
                                     new QStandardItem(entry.getKey()), new QStandardItem(value.toString()),
                                     new QStandardItem(QStringLiteral("Integer"))};
        items[0]->setData(entry.getObjectId());
        return items;
    }

    std::unique_ptr<QStandardItemModel> m_model;
    QSortFilterProxyModel m_proxy;
    QTreeView m_view;
};

template <typename Table>
ComparisonSide showing(const QList<nkdMetadataSet> &sets)
{
    const auto table = std::make_shared<std::unique_ptr<Table>>();
    ComparisonSide side;
    side.prepare = [table] { *table = std::make_unique<Table>(); };
    side.run = [table, sets] { (*table)->show(sets); };
    side.finish = [table] { table->reset(); };
    return side;
}

} // namespace

/// Sets are selected; the time until their entries are painted, and the memory that the rows take.
static Comparison compareTableShow(qint64 entries)
{
    const QList<nkdMetadataSet> sets = loadScene(entries);
    Comparison comparison;
    comparison.ours = showing<EditorTable>(sets);
    comparison.baseline = showing<StandardTable>(sets);
    comparison.rows = entries;
    comparison.timeAim = 0.5;
    comparison.memoryAim = 0.5;
    return comparison;
}
NK_BENCHMARK("table-show", compareTableShow, 100000, 1000000)
