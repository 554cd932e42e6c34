#include <nkQt4Ext/QNKItemModel.h>

#include "LayoutPass.h"
#include "QNKItemModelPrivate.h"

#include <QDataStream>
#include <QMimeData>

QNKItemModel::QNKItemModel(QObject *parent) : QAbstractItemModel(parent), d(std::make_unique<Private>(this))
{}

QNKItemModel::~QNKItemModel() = default;

void QNKItemModel::setHeader(const QStringList &titles)
{
    const Private::Announcement announcement(d.get());
    if (titles.size() == d->titles.size()) {
        d->titles = titles;
        if (!titles.isEmpty())
            Q_EMIT headerDataChanged(Qt::Horizontal, 0, titles.size() - 1);
        return;
    }
    beginResetModel();
    d->titles = titles;
    endResetModel();
}

void QNKItemModel::setMimeType(const QString &mimeType)
{
    d->mimeType = mimeType;
}

QString QNKItemModel::mimeType() const
{
    return d->mimeType;
}

void QNKItemModel::setSupportedDragActions(Qt::DropActions actions)
{
    d->dragActions = actions;
}

void QNKItemModel::setRootItem(QNKModelItem *root)
{
    if (!root || root == d->root.get())
        return;
    if (d->canChangeRows())
        d->setRoot(root);
    else
        d->defer([this, root] { d->setRoot(root); });
}

QNKModelItem *QNKItemModel::rootItem() const
{
    return d->root.get();
}

void QNKItemModel::reload()
{
    d->requestReload();
}

void QNKItemModel::reloadIndices(const QModelIndexList &indexes)
{
    d->reloadRows(d->rowIds(indexes));
}

QModelIndex QNKItemModel::indexFromId(const QVariant &id, int column) const
{
    if (!d->isColumn(column))
        return {};
    const Private::Reading reading(d.get());
    const RowId wanted(id);
    QNKModelItem *found = d->rows.find(wanted);
    const QString text = found ? QString() : wanted.text();
    for (int digits = 1; !found && digits < text.size(); ++digits) {
        QNKModelItem *const parent = d->rows.find(RowId(text.right(digits)));
        if (!parent || parent->m_childrenState != QNKModelItem::Children::Unmade)
            continue;
        d->makeChildren(parent);
        found = d->rows.find(wanted);
    }
    return d->indexOf(found, column);
}

QNKModelItem *QNKItemModel::itemFromIndex(const QModelIndex &index) const
{
    return index.isValid() ? d->rowOf(index) : nullptr;
}

QModelIndex QNKItemModel::indexFromItem(const QNKModelItem *item, int column) const
{
    if (!item || !d->isColumn(column) || item->model() != this)
        return {};
    return d->indexOf(item, column);
}

QModelIndex QNKItemModel::index(int row, int column, const QModelIndex &parent) const
{
    if (row < 0 || !d->isColumn(column))
        return {};
    QNKModelItem *const above = d->parentRow(parent);
    if (!above)
        return {};
    d->makeChildren(above);
    return row < above->m_children.size() ? d->indexOf(above->m_children.at(row), column) : QModelIndex();
}

QModelIndex QNKItemModel::parent(const QModelIndex &child) const
{
    const QNKModelItem *const row = itemFromIndex(child);
    return row ? d->indexOf(row->m_parent) : QModelIndex();
}

int QNKItemModel::rowCount(const QModelIndex &parent) const
{
    QNKModelItem *const row = d->parentRow(parent);
    if (!row)
        return 0;
    d->makeChildren(row);
    return row->m_children.size();
}

int QNKItemModel::columnCount(const QModelIndex &) const
{
    return d->titles.size();
}

bool QNKItemModel::hasChildren(const QModelIndex &parent) const
{
    QNKModelItem *const row = d->parentRow(parent);
    return row && d->hasChildren(row) && !d->titles.isEmpty();
}

bool QNKItemModel::canFetchMore(const QModelIndex &parent) const
{
    QNKModelItem *const row = d->parentRow(parent);
    return row && row->m_childrenState == QNKModelItem::Children::Unmade && d->hasChildren(row);
}

void QNKItemModel::fetchMore(const QModelIndex &parent)
{
    if (QNKModelItem *const row = d->parentRow(parent))
        d->makeChildren(row);
}

QVariant QNKItemModel::data(const QModelIndex &index, int role) const
{
    QNKModelItem *const row = itemFromIndex(index);
    if (!row)
        return {};
    const Private::Reading reading(d.get());
    return row->data(role, index.column());
}

bool QNKItemModel::setData(const QModelIndex &index, const QVariant &value, int role)
{
    QNKModelItem *const row = itemFromIndex(index);
    return row && row->setData(role, value, index.column());
}

Qt::ItemFlags QNKItemModel::flags(const QModelIndex &index) const
{
    QNKModelItem *const row = d->rowOf(index);
    if (!row)
        return Qt::NoItemFlags;
    const Qt::ItemFlags drop = row->isDropEnabled() ? Qt::ItemIsDropEnabled : Qt::NoItemFlags;
    if (!index.isValid())
        return drop;
    if (LayoutPass::isRunning())
        return Qt::ItemIsSelectable | Qt::ItemIsEnabled; // hasChildren knows the rest
    const Private::Reading reading(d.get());
    Qt::ItemFlags flags = Qt::ItemIsSelectable | Qt::ItemIsEnabled | drop;
    if (row->getEditable(index.column()))
        flags |= Qt::ItemIsEditable;
    if (row->isDragEnabled() && !d->mimeType.isEmpty())
        flags |= Qt::ItemIsDragEnabled;
    return flags;
}

QVariant QNKItemModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || !d->isColumn(section))
        return {};
    if (role == Qt::DisplayRole || role == Qt::EditRole)
        return d->titles.at(section);
    return d->headerValues.value({section, role});
}

bool QNKItemModel::setHeaderData(int section, Qt::Orientation orientation, const QVariant &value, int role)
{
    if (orientation != Qt::Horizontal || !d->isColumn(section))
        return false;
    if (role == Qt::DisplayRole || role == Qt::EditRole)
        d->titles[section] = value.toString();
    else
        d->headerValues.insert({section, role}, value);
    const Private::Announcement announcement(d.get());
    Q_EMIT headerDataChanged(orientation, section, section);
    return true;
}

QStringList QNKItemModel::mimeTypes() const
{
    return d->mimeType.isEmpty() ? QStringList() : QStringList{d->mimeType};
}

QMimeData *QNKItemModel::mimeData(const QModelIndexList &indexes) const
{
    const Private::Operation operation(d.get());
    const QVector<quintptr> ids = d->rowIds(indexes);
    if (ids.isEmpty() || d->mimeType.isEmpty())
        return nullptr;
    QByteArray records;
    QDataStream stream(&records, QIODevice::WriteOnly);
    stream.setVersion(QDataStream::Qt_5_15);
    for (quintptr id : ids) {
        if (const QNKModelItem *const row = d->rows.row(id))
            row->getMimeData(stream);
    }
    auto data = std::make_unique<QMimeData>();
    data->setData(d->mimeType, records);
    return data.release();
}

Qt::DropActions QNKItemModel::supportedDragActions() const
{
    return d->dragActions;
}

Qt::DropActions QNKItemModel::supportedDropActions() const
{
    return Qt::CopyAction | Qt::MoveAction;
}

bool QNKItemModel::canDropMimeData(const QMimeData *data, Qt::DropAction action, int, int,
                                   const QModelIndex &parent) const
{
    QNKModelItem *const row = d->rowOf(parent);
    if (!data || !row || !row->isDropEnabled())
        return false;
    const Private::Operation operation(d.get());
    return row->canDrop(data, action);
}

bool QNKItemModel::dropMimeData(const QMimeData *data, Qt::DropAction action, int row, int column,
                                const QModelIndex &parent)
{
    const Private::Operation operation(d.get());
    if (!canDropMimeData(data, action, row, column, parent))
        return false;
    QNKModelItem *const target = d->rowOf(parent);
    return target && target->drop(data, action);
}
