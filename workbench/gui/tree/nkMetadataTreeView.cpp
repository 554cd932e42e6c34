#include <nkKernelServicesGUI/nkMetadataTreeView.h>

#include "NameDelegate.h"
#include "ObjectRows.h"

#include <nkKernelServices/nkdMetadata.h>
#include <nkKernelServices/nkdSceneObject.h>
#include <nkKernelServicesGUI/nkMetadataTreeModel.h>
#include <nkQt4Ext/nkIconCache.h>

#include <QCoreApplication>
#include <QFocusEvent>
#include <QSet>

namespace {

// The kinds of getSelectedObjects.
constexpr int sceneObjects = 3;
constexpr int metadataSets = 4;

bool isOfKind(const nkdObject &object, int kind)
{
    switch (kind) {
    case sceneObjects:
        return object.isTypeOf(nkdSceneObject::staticMetaObject);
    case metadataSets:
        return object.isTypeOf(nkdMetadataSet::staticMetaObject);
    default:
        return !object.isNull();
    }
}

// Focus that a menu or another window borrows comes back by itself: the view has not lost it.
bool isBorrowing(Qt::FocusReason reason)
{
    return reason == Qt::PopupFocusReason || reason == Qt::MenuBarFocusReason
           || reason == Qt::ActiveWindowFocusReason;
}

// Sets in the order in which they are first added.
class SetCollector
{
public:
    void add(const nkdMetadataSet &set)
    {
        if (!set.isNull() && !m_known.contains(set.getObjectId())) {
            m_known.insert(set.getObjectId());
            m_sets.append(set);
        }
    }

    void addOf(const nkdMetadata &metadata)
    {
        if (metadata.hasObjectEntries()) {
            add(metadata.getObjectSet());
        }
        for (const nkdMetadataSet &set : metadata.getSets()) {
            add(set);
        }
    }

    QList<nkdMetadataSet> sets() const { return m_sets; }

private:
    QSet<quint64> m_known;
    QList<nkdMetadataSet> m_sets;
};

} // namespace

nkMetadataTreeView::nkMetadataTreeView(QWidget *parent) : QNKTreeView(parent)
{
    setAccessibleName(QCoreApplication::translate("Metadata", "Sets and objects"));
    setItemDelegate(new NameDelegate(this));
    setSelectionMode(QAbstractItemView::ExtendedSelection);
    setSelectionBehavior(QAbstractItemView::SelectRows);
    setEditTriggers(QAbstractItemView::EditKeyPressed);
    setContextMenuPolicy(Qt::CustomContextMenu);
    setDragDropMode(QAbstractItemView::DragDrop);
    setDefaultDropAction(Qt::CopyAction);
    setDropIndicatorShown(true);
    // Drops mean the row they fall on; there is no place between rows.
    setDragDropOverwriteMode(true);
    setDragPixmap(nkIconCache::Metadata::getMetadataSetIconPixmap());
}

nkMetadataTreeView::~nkMetadataTreeView() = default;

nkdObject nkMetadataTreeView::getObject(const QModelIndex &index) const
{
    return index.sibling(index.row(), 0).data(nkMetadataTreeModel::ObjectRole).value<nkdObject>();
}

nkdMetadataSet nkMetadataTreeView::getMetadataSet(const QModelIndex &index) const
{
    return nkdMetadataSet(getObject(index));
}

QList<nkdMetadataSet> nkMetadataTreeView::getAllMetadataSets() const
{
    SetCollector collector;
    const int rows = model() ? model()->rowCount() : 0;
    for (int row = 0; row < rows; ++row) {
        const nkdObject object = getObject(model()->index(row, 0));
        const nkdMetadataSet set(object);
        if (set.isNull()) {
            collector.addOf(nkdMetadata(object.getObjectId()));
        } else {
            collector.add(set);
        }
    }
    return collector.sets();
}

QList<nkdObject> nkMetadataTreeView::getSelectedObjects(int kind) const
{
    QList<nkdObject> objects;
    QSet<quint64> known;
    const QModelIndexList indexes = selectionModel() ? selectionModel()->selectedIndexes()
                                                     : QModelIndexList();
    for (const QModelIndex &index : indexes) {
        const nkdObject object = index.column() == 0 ? getObject(index) : nkdObject();
        if (isOfKind(object, kind) && !known.contains(object.getObjectId())) {
            known.insert(object.getObjectId());
            objects.append(object);
        }
    }
    return objects;
}

void nkMetadataTreeView::selectObjects(const QList<nkdObject> &objects)
{
    if (!selectionModel()) {
        return;
    }
    const QModelIndexList rows = ObjectRows(model()).find(objects);
    // The selection's listeners may reload the model.
    const QPersistentModelIndex first(rows.value(0));
    if (first.isValid()) {
        selectionModel()->setCurrentIndex(first, QItemSelectionModel::NoUpdate);
    }
    selectionModel()->select(ObjectRows::selectionOf(rows),
                             QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
    if (first.isValid()) {
        scrollTo(first);
    }
}

// While a window is inactive its focus can move without an event for the widget that loses it, and the
// widget that gains it is told with the activation.
bool nkMetadataTreeView::event(QEvent *event)
{
    const bool focusWidget = window()->focusWidget() == this;
    if (event->type() == QEvent::WindowDeactivate) {
        m_heldFocus = focusWidget;
        m_windowLeft = true;
    } else if (event->type() == QEvent::WindowActivate && m_windowLeft) {
        m_windowLeft = false;
        m_gainedMeanwhile = focusWidget && !m_heldFocus;
        if (m_heldFocus && !focusWidget) {
            Q_EMIT focusChanged(false);
        }
    }
    return QNKTreeView::event(event);
}

void nkMetadataTreeView::focusInEvent(QFocusEvent *event)
{
    QNKTreeView::focusInEvent(event);
    if (!isBorrowing(event->reason()) || m_gainedMeanwhile) {
        m_gainedMeanwhile = false;
        Q_EMIT focusChanged(true);
    }
}

void nkMetadataTreeView::focusOutEvent(QFocusEvent *event)
{
    QNKTreeView::focusOutEvent(event);
    if (!isBorrowing(event->reason())) {
        Q_EMIT focusChanged(false);
    }
}
