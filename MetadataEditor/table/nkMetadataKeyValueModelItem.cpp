#include "table/nkMetadataKeyValueModelItem.h"

#include "table/nkMetadataCellCommit.h"
#include "table/nkMetadataCellToolTip.h"
#include "table/nkMetadataKeyValueColumns.h"
#include "table/nkMetadataValueText.h"
#include "table/nkMetadataValueType.h"

#include <nkKernelServices/nkMetadataEntryMime.h>

#include <QApplication>
#include <QPalette>
#include <QWidget>

namespace {

using namespace nkMetadataKeyValue;

/// The colour of a row's texts in the window the person works in; a window that is not active shows its own.
QBrush textBrush(bool isEditable)
{
    const QWidget *window = QApplication::activeWindow();
    const QPalette palette = window ? window->palette() : QApplication::palette();
    return QBrush(palette.color(isEditable ? QPalette::Current : QPalette::Disabled, QPalette::Text));
}

QVariant valueData(const nkdMetadataEntry &entry, int role)
{
    switch (role) {
    case Qt::UserRole:
        return entry.getValue();
    case Qt::DisplayRole:
        return nkMetadataValueText::text(entry.getValue());
    default:
        return QVariant();
    }
}

QVariant typeData(const nkdMetadataEntry &entry, int role)
{
    switch (role) {
    case Qt::UserRole:
        return QVariant::fromValue(entry.getValueType());
    case Qt::DisplayRole:
        return nkMetadataValueType::name(entry.getValueType());
    default:
        return QVariant();
    }
}

} // namespace

nkMetadataKeyValueModelItem::nkMetadataKeyValueModelItem(const nkdMetadataSet &set,
                                                         const nkdMetadataEntry &entry)
    : m_setId(set.getObjectId()), m_entryId(entry.getObjectId())
{
    setDragEnabled(true);
    setDropEnabled(false);
    setEditable(true);
}

nkMetadataKeyValueModelItem::~nkMetadataKeyValueModelItem() = default;

QVariant nkMetadataKeyValueModelItem::data(int role, int column) const
{
    if (role == Qt::ToolTipRole) {
        return nkMetadataCellToolTip::text(set(), entry(), column);
    }
    if (role == Qt::DecorationRole && column == IconColumn) {
        return entry().getIcon();
    }
    if (column == AssignmentColumn && role == SetRole) {
        return QVariant::fromValue(set());
    }
    if (column == AssignmentColumn && role == EntryRole) {
        return QVariant::fromValue(entry());
    }
    return QNKModelItem::data(role, column);
}

QVariant nkMetadataKeyValueModelItem::loadData(int role, int column) const
{
    if (role == Qt::ForegroundRole && column >= 0 && column < ColumnCount) {
        return textBrush(set().isEditable());
    }
    switch (column) {
    case IconColumn:
        return role == ColorRole ? QVariant(set().getColor()) : QVariant();
    case AssignmentColumn:
        return role == Qt::DisplayRole ? QVariant(set().getName()) : QVariant();
    case KeyColumn:
        return role == Qt::DisplayRole || role == Qt::UserRole ? QVariant(entry().getKey()) : QVariant();
    case ValueColumn:
        return valueData(entry(), role);
    case TypeColumn:
        return typeData(entry(), role);
    default:
        return QVariant();
    }
}

bool nkMetadataKeyValueModelItem::getEditable(int column) const
{
    const bool isOfValue = column == ValueColumn || column == TypeColumn;
    return set().isEditable() && !(isOfValue && entry().isTag());
}

QVariant nkMetadataKeyValueModelItem::getId() const
{
    return m_entryId;
}

void nkMetadataKeyValueModelItem::userDataChanged(int role, int column)
{
    const bool isColor = column == IconColumn && role == ColorRole;
    nkMetadataCellCommit commit(set(), entry(), data(isColor ? int(ColorRole) : int(Qt::UserRole), column),
                                model());
    // From here on the row may be replaced at any moment: no member is touched any more.
    commit.run(role, column);
}

void nkMetadataKeyValueModelItem::getMimeData(QDataStream &stream) const
{
    stream << nkMetadataEntryMime(entry());
}

void nkMetadataKeyValueModelItem::reload()
{
    QNKModelItem::reload();
    setEditable(set().isEditable());
}
