#include "AssetVersionRows.h"

#include "AssetText.h"

void AssetVersionRows::setVersions(const QVector<kernel::AssetVersion> &versions)
{
    beginResetModel();
    m_versions = versions;
    endResetModel();
}

int AssetVersionRows::versionAt(int row) const
{
    return m_versions.value(row).version;
}

int AssetVersionRows::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : m_versions.size();
}

int AssetVersionRows::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : ColumnCount;
}

QVariant AssetVersionRows::data(const QModelIndex &index, int role) const
{
    if (!index.isValid() || role != Qt::DisplayRole) {
        return {};
    }
    const kernel::AssetVersion &version = m_versions.at(index.row());
    switch (index.column()) {
    case Version:
        return QString::number(version.version);
    case Author:
        return AssetText::line(version.author);
    case Changed:
        return AssetText::moment(version.changed);
    default:
        return AssetText::line(version.name);
    }
}

QVariant AssetVersionRows::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole) {
        return {};
    }
    switch (section) {
    case Version:
        return tr("Version");
    case Author:
        return tr("Stored by");
    case Changed:
        return tr("Stored");
    default:
        return tr("Name");
    }
}
