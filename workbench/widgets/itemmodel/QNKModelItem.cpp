#include <nkQt4Ext/QNKModelItem.h>

#include "CellChanges.h"
#include "QNKItemModelPrivate.h"

#include <QColor>
#include <QSet>

#include <limits>

namespace {
bool isPossibleColumn(int column)
{
    return column >= 0 && column <= std::numeric_limits<qint16>::max();
}
} // namespace

QNKModelItem::QNKModelItem() = default;

QNKModelItem::~QNKModelItem()
{
    qDeleteAll(m_children);
}

QNKItemModel *QNKModelItem::model() const
{
    const QNKModelItem *top = this;
    while (top->m_parent)
        top = top->m_parent;
    return top->m_model;
}

QNKModelItem *QNKModelItem::child(int row) const
{
    return m_children.value(row, nullptr);
}

void QNKModelItem::setChildren(const QList<QNKModelItem *> &children)
{
    QVector<QNKModelItem *> rows;
    rows.reserve(children.size());
    QSet<QNKModelItem *> kept;
    for (QNKModelItem *row : children) {
        if (!row || row == this)
            continue;
        if (!row->m_parent && !row->m_model) {
            row->m_parent = this;
        } else {
            const bool isChild = row->m_parent == this && child(row->m_row) == row;
            if (!isChild || kept.contains(row)) // another row's, or named twice
                continue;
            kept.insert(row);
        }
        rows.append(row);
    }
    QNKItemModel *const owner = model();
    if (owner && (m_slot >= 0 || m_model))
        owner->d->changeChildren(this, rows);
    else
        takeChildren(rows);
}

/// Makes rows the children of a row that nobody watches; former ones that are not among them are deleted.
void QNKModelItem::takeChildren(const QVector<QNKModelItem *> &rows)
{
    const QVector<QNKModelItem *> former = m_children;
    for (QNKModelItem *row : former)
        row->m_row = -1;
    m_children = rows;
    for (int i = 0; i < rows.size(); ++i) {
        rows[i]->m_parent = this;
        rows[i]->m_row = i;
    }
    m_childrenState = Children::Made;
    for (QNKModelItem *row : former) {
        if (row->m_row < 0)
            delete row;
    }
}

QVariant QNKModelItem::data(int role, int column) const
{
    role = storedCellRole(role);
    if (const Datum *known = remembered(role, column))
        return known->value;
    if (!isPossibleColumn(column))
        return {};
    QNKItemModel *const owner = model();
    if (!owner) {
        const QVariant made = loadData(role, column);
        remember(role, made, column);
        return made;
    }
    const QNKItemModel::Private::Reading reading(owner->d.get());
    const QVariant made = loadData(role, column);
    if (const Datum *known = remembered(role, column))
        return known->value; // the row stored it while it made it
    remember(role, made, column);
    return made;
}

QNKModelItem::Datum *QNKModelItem::remembered(int role, int column) const
{
    if (m_data.isEmpty())
        return nullptr;
    for (Datum &datum : m_data) {
        if (datum.role == role && datum.column == column)
            return &datum;
    }
    return nullptr;
}

/// Remembers a made or committed value of a cell; what was stored stays stored.
/// @return whether that is news
bool QNKModelItem::remember(int role, const QVariant &value, int column) const
{
    if (Datum *known = remembered(role, column)) {
        if (isSameCellValue(known->value, value))
            return false;
        known->value = value;
        return true;
    }
    m_data.append({value, role, qint16(column), false});
    return true;
}

bool QNKModelItem::setData(int role, const QVariant &value, int column)
{
    role = storedCellRole(role);
    QNKItemModel *const owner = model();
    if (!owner) {
        if (!isPossibleColumn(column) || !getEditable(column))
            return false;
        remember(role, value, column);
        userDataChanged(role, column);
        return true;
    }
    const QNKItemModel::Private::Operation operation(owner->d.get());
    if (!isPossibleColumn(column) || !getEditable(column))
        return false;
    QNKItemModel::Private::Collector collector(owner->d.get(), this);
    if (remember(role, value, column))
        collector.note(column, role);
    userDataChanged(role, column);
    collector.announce();
    return true;
}

void QNKModelItem::setItemData(int role, const QVariant &value, int column)
{
    if (!isPossibleColumn(column))
        return;
    role = storedCellRole(role);
    const bool isNews = remember(role, value, column);
    remembered(role, column)->stored = true;
    QNKItemModel *const owner = isNews && m_slot >= 0 ? model() : nullptr;
    if (owner)
        owner->d->cellChanged(this, role, column);
}

QBrush QNKModelItem::foreground(int column) const
{
    const QVariant value = data(Qt::ForegroundRole, column);
    if (value.userType() == QMetaType::QColor)
        return QBrush(value.value<QColor>());
    return value.value<QBrush>();
}

/// What the row can make is made anew; what was stored in cells that it makes nothing for has no other home.
void QNKModelItem::reload()
{
    Data kept;
    for (const Datum &datum : qAsConst(m_data)) {
        if (!datum.stored)
            continue;
        const QVariant made = loadData(datum.role, datum.column);
        kept.append(made.isValid() ? Datum{made, datum.role, datum.column, false} : datum);
    }
    m_data = kept;
}

bool QNKModelItem::getEditable(int) const
{
    return isEditable();
}

QVariant QNKModelItem::getId() const
{
    return {};
}

QVariant QNKModelItem::getClassName() const
{
    return QStringLiteral("QNKModelItem");
}

void QNKModelItem::userDataChanged(int, int) {}

void QNKModelItem::getMimeData(QDataStream &) const {}

bool QNKModelItem::canDrop(const QMimeData *, Qt::DropAction) const
{
    return false;
}

bool QNKModelItem::drop(const QMimeData *, Qt::DropAction)
{
    return false;
}

QVariant QNKModelItem::loadData(int, int) const
{
    return {};
}
