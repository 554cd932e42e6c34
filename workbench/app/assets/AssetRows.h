#pragma once

#include "kernel/services/AssetStore.h"

#include <QAbstractTableModel>
#include <QItemSelection>
#include <QStringList>
#include <QVector>

/// The assets of the panel's list, a row each, as they were read last.
class AssetRows : public QAbstractTableModel
{
    Q_OBJECT
public:
    enum Column { Name, Version, Holder, ColumnCount };

    explicit AssetRows(QObject *parent = nullptr) : QAbstractTableModel(parent) {}

    /// Rows that stay the same rows are changed in place; else the model is reset.
    void setAssets(const QVector<kernel::AssetInfo> &assets);
    const QVector<kernel::AssetInfo> &assets() const { return m_assets; }
    /// The row of an asset; -1 where it is not listed.
    int rowOf(const QString &id) const;
    /// The rows of those that are listed.
    QItemSelection selectionOf(const QStringList &ids) const;
    QStringList idsOf(const QModelIndexList &rows) const;

    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    static QString text(const kernel::AssetInfo &asset, int column);
    bool hasSameRows(const QVector<kernel::AssetInfo> &assets) const;

    QVector<kernel::AssetInfo> m_assets;
};
