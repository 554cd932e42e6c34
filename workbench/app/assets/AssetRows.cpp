#include "AssetRows.h"

#include "AssetText.h"

#include <nkQt4Ext/nkIconManager.h>

#include <algorithm>

using kernel::AssetInfo;

void AssetRows::setAssets(const QVector<AssetInfo> &assets)
{
    if (hasSameRows(assets)) {
        m_assets = assets;
        if (!assets.isEmpty()) {
            Q_EMIT dataChanged(index(0, 0), index(assets.size() - 1, ColumnCount - 1));
        }
        return;
    }
    beginResetModel();
    m_assets = assets;
    endResetModel();
}

bool AssetRows::hasSameRows(const QVector<AssetInfo> &assets) const
{
    return std::equal(m_assets.begin(), m_assets.end(), assets.begin(), assets.end(),
                      [](const AssetInfo &one, const AssetInfo &other) { return one.id == other.id; });
}

int AssetRows::rowOf(const QString &id) const
{
    const auto found = std::find_if(m_assets.begin(), m_assets.end(),
                                    [&id](const AssetInfo &asset) { return asset.id == id; });
    return found == m_assets.end() ? -1 : int(found - m_assets.begin());
}

QItemSelection AssetRows::selectionOf(const QStringList &ids) const
{
    QItemSelection selection;
    for (const QString &id : ids) {
        const int row = rowOf(id);
        if (row >= 0) {
            selection.select(index(row, 0), index(row, ColumnCount - 1));
        }
    }
    return selection;
}

QStringList AssetRows::idsOf(const QModelIndexList &rows) const
{
    QStringList ids;
    for (const QModelIndex &row : rows) {
        ids.append(m_assets.at(row.row()).id);
    }
    return ids;
}

int AssetRows::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : m_assets.size();
}

int AssetRows::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : ColumnCount;
}

QVariant AssetRows::data(const QModelIndex &index, int role) const
{
    if (!index.isValid()) {
        return {};
    }
    const AssetInfo &asset = m_assets.at(index.row());
    if (role == Qt::DisplayRole) {
        return text(asset, index.column());
    }
    if (role == Qt::DecorationRole && index.column() == Name) {
        const QString icon = asset.isHeldHere ? QStringLiteral("MetadataSetEditedAsset")
                                              : QStringLiteral("MetadataSetAsset");
        return nkIconManager::getIcon(icon, QStringLiteral("MetadataEditor"));
    }
    return {};
}

QString AssetRows::text(const AssetInfo &asset, int column)
{
    switch (column) {
    case Name:
        return AssetText::line(asset.name);
    case Version:
        return QString::number(asset.newest);
    default:
        return asset.isHeldHere ? tr("this workbench") : AssetText::line(asset.holder);
    }
}

QVariant AssetRows::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole) {
        return {};
    }
    switch (section) {
    case Name:
        return tr("Name");
    case Version:
        return tr("Version");
    default:
        return tr("Checked out by");
    }
}
