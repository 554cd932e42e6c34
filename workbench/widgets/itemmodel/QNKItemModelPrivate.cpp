#include "QNKItemModelPrivate.h"

#include "CellChanges.h"
#include "RowChange.h"

#include <QSet>

#include <algorithm>

QNKItemModel::Private::Operation::~Operation()
{
    if (--m_model->operations == 0)
        m_model->rows.emptyGraveyard();
}

QNKItemModel::Private::Announcement::~Announcement()
{
    --m_model->announcements;
    m_model->runDeferred();
}

QNKItemModel::Private::Collector::Collector(Private *model, const QNKModelItem *item)
    : id(item->m_slot >= 0 ? model->rows.internalId(item) : NoRow),
      row(item),
      outer(model->collectors),
      m_model(model)
{
    model->collectors = this;
}

QNKItemModel::Private::Collector::~Collector()
{
    m_model->collectors = outer;
}

void QNKItemModel::Private::Collector::note(int column, int role)
{
    firstColumn = firstColumn < 0 ? column : qMin(firstColumn, column);
    lastColumn = qMax(lastColumn, column);
    if (!roles.contains(role))
        roles.append(role);
}

void QNKItemModel::Private::Collector::note(const Cells &cells)
{
    for (const auto &cell : cells)
        note(cell.first, cell.second);
}

void QNKItemModel::Private::Collector::announce()
{
    if (firstColumn < 0 || id == NoRow || m_model->rows.row(id) != row)
        return;
    lastColumn = qMin(lastColumn, m_model->titles.size() - 1);
    if (firstColumn > lastColumn)
        return;
    if (roles.contains(Qt::UserRole))
        roles.append(Qt::EditRole);
    m_model->announceCells(m_model->indexOf(row, firstColumn), m_model->indexOf(row, lastColumn), roles);
}

QNKModelItem *QNKItemModel::Private::rowOf(const QModelIndex &index) const
{
    if (!index.isValid())
        return root.get();
    return index.model() == q ? rows.row(index.internalId()) : nullptr;
}

QNKModelItem *QNKItemModel::Private::parentRow(const QModelIndex &parent) const
{
    return parent.column() > 0 ? nullptr : rowOf(parent);
}

QModelIndex QNKItemModel::Private::indexOf(const QNKModelItem *row, int column) const
{
    if (!row || row == root.get() || row->m_slot < 0)
        return {};
    return q->createIndex(row->m_row, column, rows.internalId(row));
}

void QNKItemModel::Private::makeChildren(QNKModelItem *row)
{
    if (row->m_childrenState != QNKModelItem::Children::Unmade)
        return;
    const Reading reading(this);
    row->m_childrenState = QNKModelItem::Children::BeingMade;
    if (row->hasChildren())
        row->loadChildren();
    row->m_childrenState = QNKModelItem::Children::Made;
}

bool QNKItemModel::Private::hasChildren(QNKModelItem *row)
{
    const Reading reading(this);
    const bool made = row->m_childrenState != QNKModelItem::Children::Unmade;
    const bool has = made ? !row->m_children.isEmpty() : row->hasChildren();
    row->m_toldChildren = has ? QNKModelItem::Answer::Yes : QNKModelItem::Answer::No;
    return has;
}

void QNKItemModel::Private::defer(std::function<void()> action)
{
    deferred.push_back(std::move(action));
    if (announcements == 0 && !reloading) // a reading: its end is no good moment either
        flushFromEventLoop();
}

void QNKItemModel::Private::flushFromEventLoop()
{
    if (flushQueued)
        return;
    flushQueued = true;
    const auto flush = [this] {
        flushQueued = false;
        if (readings > 0)
            flushFromEventLoop();
        else
            runDeferred();
    };
    QMetaObject::invokeMethod(q, flush, Qt::QueuedConnection);
}

void QNKItemModel::Private::runDeferred()
{
    while (!deferred.empty() && canChangeRows()) {
        const std::function<void()> action = std::move(deferred.front());
        deferred.pop_front();
        action();
    }
}

void QNKItemModel::Private::setRoot(QNKModelItem *newRoot)
{
    const Operation operation(this);
    const Announcement announcement(this);
    q->beginResetModel();
    if (root) {
        for (QNKModelItem *row : qAsConst(root->m_children))
            rows.uninstall(row);
        root->m_model = nullptr;
        rows.bury(root.release());
    }
    root.reset(newRoot);
    newRoot->m_model = q;
    RowChange(this).install(newRoot, newRoot->m_children);
    q->endResetModel();
}

void QNKItemModel::Private::cellChanged(const QNKModelItem *row, int role, int column)
{
    if (!isColumn(column))
        return;
    const quintptr id = rows.internalId(row);
    Collector *const collector = collectorOf(id);
    if (collector && collector->row == row) {
        collector->note(column, role);
        return;
    }
    if (readings > 0)
        return; // the row stores while it makes: nobody has seen another value
    const auto announce = [this, row, id, role, column] {
        if (rows.row(id) != row)
            return;
        QVector<int> roles{role};
        if (role == Qt::UserRole)
            roles.append(Qt::EditRole);
        const QModelIndex cell = indexOf(row, column);
        announceCells(cell, cell, roles);
    };
    if (canChangeRows())
        announce();
    else
        defer(announce);
}

void QNKItemModel::Private::announceCells(const QModelIndex &first, const QModelIndex &last,
                                          const QVector<int> &roles)
{
    const Announcement announcement(this);
    Q_EMIT q->dataChanged(first, last, roles);
}

void QNKItemModel::Private::announceExpanders()
{
    const Announcement announcement(this);
    Q_EMIT q->layoutAboutToBeChanged();
    Q_EMIT q->layoutChanged();
}

QNKItemModel::Private::Collector *QNKItemModel::Private::collectorOf(quintptr internalId) const
{
    Collector *found = collectors;
    while (found && found->id != internalId)
        found = found->outer;
    return found;
}
