#pragma once

#include "kernel/services/AssetStore.h"

#include <QAbstractTableModel>
#include <QVector>

/// The versions of one asset, the newest first.
class AssetVersionRows : public QAbstractTableModel
{
    Q_OBJECT
public:
    enum Column { Version, Author, Changed, Name, ColumnCount };

    explicit AssetVersionRows(QObject *parent = nullptr) : QAbstractTableModel(parent) {}

    void setVersions(const QVector<kernel::AssetVersion> &versions);
    /// The number of the version in a row; 0 for no row.
    int versionAt(int row) const;

    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    QVector<kernel::AssetVersion> m_versions;
};
