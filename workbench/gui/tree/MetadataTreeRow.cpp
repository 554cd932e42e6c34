#include "MetadataTreeRow.h"

#include "MetadataTreeDrop.h"
#include "TreeDragRecord.h"

#include <nkKernelServices/nkScopedUndo.h>
#include <nkKernelServices/nkdMetadata.h>
#include <nkKernelServices/nkdMetadataSet.h>
#include <nkKernelServicesGUI/nkMetadataTreeModel.h>

#include <QApplication>
#include <QDataStream>
#include <QPalette>
#include <QPointer>

namespace {

template <typename Handle>
QList<QNKModelItem *> makeChildren(const QList<Handle> &objects, quint64 parentId)
{
    QList<QNKModelItem *> rows;
    rows.reserve(objects.size());
    for (const Handle &object : objects) {
        rows.append(new MetadataTreeRow(object, parentId));
    }
    return rows;
}

constexpr int MostDigits = 20; // of 64 bits

/// Writes the decimal digits of a number so that they end at end. @return where they begin
ushort *writeBackwards(quint64 number, ushort *end)
{
    do {
        *--end = ushort('0' + number % 10);
        number /= 10;
    } while (number != 0);
    return end;
}

/// The digits of both numbers as one text, in one piece of memory: every reload asks every row.
QString oneAfterTheOther(quint64 first, quint64 second)
{
    ushort digits[2 * MostDigits];
    ushort *const end = digits + 2 * MostDigits;
    const ushort *const begin = writeBackwards(first, writeBackwards(second, end));
    return QString(reinterpret_cast<const QChar *>(begin), int(end - begin));
}

QBrush disabledText()
{
    return QBrush(QApplication::palette().color(QPalette::Disabled, QPalette::Text));
}

// By id, because a change of the scene inside the caller may have replaced every row of the model.
void showName(QNKItemModel *model, const QVariant &rowId, const QString &name)
{
    QNKModelItem *row = model ? model->itemFromIndex(model->indexFromId(rowId)) : nullptr;
    if (row) {
        row->setItemData(Qt::UserRole, name, 0);
        row->setText(name, 0);
    }
}

} // namespace

MetadataTreeRow::MetadataTreeRow(const nkdObject &object, quint64 parentId)
    : m_type(quint8(object.getTypeId())), m_objectId(object.getObjectId()), m_parentId(parentId)
{
    setDragEnabled(true);
    setDropEnabled(true);
    setEditable(true);
}

MetadataTreeRow::~MetadataTreeRow() = default;

nkdObject MetadataTreeRow::object() const
{
    return nkdObject(m_objectId, nkObjectType(m_type));
}

nkdMetadataSet MetadataTreeRow::set() const
{
    return nkdMetadataSet(m_objectId);
}

nkdSceneObject MetadataTreeRow::sceneObject() const
{
    return nkdSceneObject(object());
}

QString MetadataTreeRow::name() const
{
    return isSet() ? set().getName() : sceneObject().getName();
}

bool MetadataTreeRow::isObjectEditable() const
{
    return isSet() ? set().isEditable() : sceneObject().isEditable();
}

bool MetadataTreeRow::isAssignedToAnything() const
{
    return isSet() ? set().isAssigned() : !nkdMetadata(m_objectId).getSets().isEmpty();
}

// Rows that were made count until the next reload, so that the answer never contradicts the row count.
bool MetadataTreeRow::hasChildren() const
{
    return childCount() > 0 || (isTopLevel() && isAssignedToAnything());
}

void MetadataTreeRow::loadChildren()
{
    if (!isTopLevel()) {
        return;
    }
    if (isSet()) {
        setChildren(makeChildren(set().getObjects(), m_objectId));
    } else {
        setChildren(makeChildren(nkdMetadata(m_objectId).getSets(), m_objectId));
    }
}

QVariant MetadataTreeRow::data(int role, int column) const
{
    if (role == nkMetadataTreeModel::ObjectRole) {
        return column == 0 ? QVariant::fromValue(object()) : QVariant();
    }
    return QNKModelItem::data(role, column);
}

QVariant MetadataTreeRow::loadData(int role, int column) const
{
    if (column != 0) {
        return {};
    }
    switch (role) {
    case Qt::DisplayRole:
    case Qt::UserRole:
        return name();
    case Qt::DecorationRole:
        return isSet() ? set().getIcon() : sceneObject().getIcon();
    case Qt::ForegroundRole:
        return isObjectEditable() ? QVariant() : QVariant(disabledText());
    default:
        return {};
    }
}

bool MetadataTreeRow::getEditable(int column) const
{
    return column == 0 && isObjectEditable();
}

QVariant MetadataTreeRow::getId() const
{
    if (isTopLevel()) {
        return m_objectId;
    }
    return oneAfterTheOther(m_objectId, m_parentId);
}

QVariant MetadataTreeRow::getClassName() const
{
    return QStringLiteral("MetadataTreeRow");
}

void MetadataTreeRow::userDataChanged(int role, int column)
{
    if (role != Qt::UserRole || column != 0) {
        return;
    }
    const QString wanted = data(Qt::UserRole, 0).toString();
    const QPointer<QNKItemModel> keptModel = model();
    const QVariant rowId = getId();
    const bool ofSet = isSet();
    nkdMetadataSet keptSet = set();
    nkdSceneObject keptObject = sceneObject();
    {
        const nkScopedUndo undo(true);
        if (ofSet) {
            keptSet.setName(wanted);
        } else {
            keptObject.setName(wanted);
        }
    }
    showName(keptModel, rowId, ofSet ? keptSet.getName() : keptObject.getName());
}

void MetadataTreeRow::getMimeData(QDataStream &stream) const
{
    stream << TreeDragRecord(m_objectId, m_parentId);
}

bool MetadataTreeRow::canDrop(const QMimeData *data, Qt::DropAction action) const
{
    return MetadataTreeDrop(object()).canTake(data, action);
}

bool MetadataTreeRow::drop(const QMimeData *data, Qt::DropAction action)
{
    return MetadataTreeDrop(object()).take(data, action);
}
