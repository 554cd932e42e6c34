#pragma once

#include "QNKModelItem.h"
#include "nkQt4ExtExport.h"

#include <QAbstractItemModel>
#include <QStringList>

#include <memory>

/// The item model of the host's lists: rows are QNKModelItem objects below one invisible root.
///
/// A reload keeps the place. The new rows are compared with the old by row id: unchanged ids mean dataChanged
/// for what differs, small differences mean row insertions and removals, little in common means one reset.
/// Model indexes never hold a pointer to a row but a slot that stays with its row id as long as the model
/// lives, so persistent indexes of rows that stay remain true.
class NK_QT4EXT_EXPORT QNKItemModel : public QAbstractItemModel
{
    Q_OBJECT
public:
    explicit QNKItemModel(QObject *parent = nullptr);
    ~QNKItemModel() override;

    /// Titles of the columns; their number is the column count of every row.
    void setHeader(const QStringList &titles);
    /// The type under which mimeData packs the records of the dragged rows; empty: rows cannot be dragged.
    void setMimeType(const QString &mimeType);
    QString mimeType() const;
    /// Default: Qt::CopyAction.
    void setSupportedDragActions(Qt::DropActions actions);

    /// Installs the root, taking ownership and deleting the former one; null is ignored. The root is not
    /// reloaded.
    void setRootItem(QNKModelItem *root);
    QNKModelItem *rootItem() const;

    /// Has the root make its rows anew (QNKModelItem::reload of the root) and keeps the place, as above.
    /// Children that were made are made anew where their row stays. May be called from inside any of the
    /// model's signals and rows' operations; a call while a reload runs is carried out after it.
    void reload();
    /// Has the rows of these indexes refresh themselves and tells what differs. Invalid indexes are ignored.
    void reloadIndices(const QModelIndexList &indexes);
    /// The index of the row with this id, wherever it stands; invalid where there is none. Ids compare by
    /// their decimal text, so a number finds the row with the same text. Rows whose children were not made
    /// yet are searched by making them only when id is the id of a child (its parent's id is its ending).
    QModelIndex indexFromId(const QVariant &id, int column = 0) const;
    /// The row of an index; null for an invalid index, and for one whose row is gone. Do not keep it.
    QNKModelItem *itemFromIndex(const QModelIndex &index) const;
    /// The index of a row of this model; invalid for null, the root and rows elsewhere.
    QModelIndex indexFromItem(const QNKModelItem *item, int column = 0) const;

    QModelIndex index(int row, int column, const QModelIndex &parent = {}) const override;
    QModelIndex parent(const QModelIndex &child) const override;
    using QObject::parent;
    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    bool hasChildren(const QModelIndex &parent = {}) const override;
    bool canFetchMore(const QModelIndex &parent) const override;
    void fetchMore(const QModelIndex &parent) override;
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    /// Qt::EditRole commits like Qt::UserRole. @return false where the cell is not editable
    bool setData(const QModelIndex &index, const QVariant &value, int role = Qt::EditRole) override;
    Qt::ItemFlags flags(const QModelIndex &index) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;
    bool setHeaderData(int section, Qt::Orientation orientation, const QVariant &value,
                       int role = Qt::EditRole) override;
    QStringList mimeTypes() const override;
    /// The drag records of the rows of indexes, each row once, in row order, one after the other in one
    /// QDataStream (version Qt_5_15).
    QMimeData *mimeData(const QModelIndexList &indexes) const override;
    Qt::DropActions supportedDragActions() const override;
    Qt::DropActions supportedDropActions() const override;
    bool canDropMimeData(const QMimeData *data, Qt::DropAction action, int row, int column,
                         const QModelIndex &parent) const override;
    bool dropMimeData(const QMimeData *data, Qt::DropAction action, int row, int column,
                      const QModelIndex &parent) override;

Q_SIGNALS:
    /// Around a reload that was asked for, whatever it comes to; for views that keep their place.
    void aboutToReload();
    void reloaded();

private:
    friend class QNKModelItem;
    friend class RowChange;
    friend class RowPlace;
    struct Private;
    std::unique_ptr<Private> d;
};
