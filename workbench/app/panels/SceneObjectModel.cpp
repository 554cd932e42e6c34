#include "SceneObjectModel.h"

#include "SceneplateNote.h"

#include "kernel/document/Document.h"

#include <nkKernelServices/nkObjectService.h>
#include <nkKernelServices/nkdSceneObject.h>

#include <QApplication>
#include <QPalette>

#include <algorithm>

using kernel::Document;

namespace {

nkdSceneObject objectOf(quint64 id)
{
    return nkdSceneObject(nkdObject(id));
}

QString shownName(const nkdSceneObject &object)
{
    const QString name = object.getName();
    return name.isEmpty() ? SceneObjectModel::tr("(no name)") : name;
}

bool isPale(const nkdSceneObject &object)
{
    return !object.isEditable() || object.getName().isEmpty();
}

} // namespace

SceneObjectModel::SceneObjectModel(EditorModule module, QObject *parent)
    : QAbstractItemModel(parent), m_listing(module)
{
    const Document *document = &Document::the();
    connect(document, &Document::cleared, this, [this] { m_replaced = true; });
    connect(document, &Document::sceneChanged, this, &SceneObjectModel::follow);
    connect(&nkObjectService::the(), &nkObjectService::propertyChanged, this, &SceneObjectModel::noteChange);
    // Ten thousand renamings in one turn are told as one.
    m_tell.setSingleShot(true);
    connect(&m_tell, &QTimer::timeout, this, &SceneObjectModel::tellChanged);
}

SceneObjectModel::~SceneObjectModel() = default;

// Rows --------------------------------------------------------------------------------------------------

const SceneLevel *SceneObjectModel::findLevel(quint64 id) const
{
    const auto found = m_levels.find(id);
    return found == m_levels.end() ? nullptr : &found->second;
}

const SceneLevel &SceneObjectModel::levelBelow(const QModelIndex &parent) const
{
    const quint64 id = idOf(parent);
    const auto found = m_levels.find(id);
    if (found != m_levels.end()) {
        return found->second;
    }
    const SceneLevel level(parent.internalId(), parent.row(), m_listing.below(id));
    return m_levels.emplace(id, level).first->second;
}

/// The index of the row under whose id a level is kept.
QModelIndex SceneObjectModel::rowAbove(quint64 levelId) const
{
    const SceneLevel *level = levelId == 0 ? nullptr : findLevel(levelId);
    return level ? createIndex(level->row(), 0, quintptr(level->parentLevel())) : QModelIndex();
}

quint64 SceneObjectModel::idOf(const QModelIndex &index) const
{
    const SceneLevel *level = index.isValid() ? findLevel(index.internalId()) : nullptr;
    return level ? level->idAt(index.row()) : 0;
}

QModelIndex SceneObjectModel::indexOf(quint64 id) const
{
    QVector<quint64> line;
    for (quint64 at = id; at != 0; at = m_listing.parentOf(at)) {
        line.append(at);
    }
    QModelIndex found;
    for (int i = line.size() - 1; i >= 0; --i) {
        const int row = levelBelow(found).rowOf(line.at(i));
        if (row < 0) {
            return {};
        }
        found = createIndex(row, 0, quintptr(idOf(found)));
    }
    return found;
}

QItemSelection SceneObjectModel::selectionOf(const QList<quint64> &ids) const
{
    QHash<QModelIndex, QVector<int>> rows;
    quint64 parentId = 0;
    QModelIndex parent;
    for (const quint64 id : ids) {
        // Neighbours are often selected together: their parent is looked up once.
        if (const quint64 above = m_listing.parentOf(id); above != parentId) {
            parentId = above;
            parent = indexOf(above);
        }
        const int row = parentId == 0 || parent.isValid() ? levelBelow(parent).rowOf(id) : -1;
        if (row >= 0) {
            rows[parent].append(row);
        }
    }
    QItemSelection selection;
    for (auto level = rows.cbegin(); level != rows.cend(); ++level) {
        appendRanges(selection, level.key(), level.value());
    }
    return selection;
}

/// Rows of one parent, as few ranges as they make.
void SceneObjectModel::appendRanges(QItemSelection &selection, const QModelIndex &parent,
                                    QVector<int> rows) const
{
    std::sort(rows.begin(), rows.end());
    for (int first = 0, next = 0; first < rows.size(); first = next) {
        do {
            ++next;
        } while (next < rows.size() && rows.at(next) <= rows.at(next - 1) + 1);
        selection.append({index(rows.at(first), 0, parent), index(rows.at(next - 1), 0, parent)});
    }
}

QList<quint64> SceneObjectModel::idsOf(const QItemSelection &selection) const
{
    QList<quint64> ids;
    for (const QItemSelectionRange &range : selection) {
        const SceneLevel *level = range.isValid() ? findLevel(range.topLeft().internalId()) : nullptr;
        if (level) {
            ids += level->ids().mid(range.top(), range.height());
        }
    }
    return ids;
}

QList<quint64> SceneObjectModel::openedObjects() const
{
    QList<quint64> opened{0};
    for (int i = 0; i < opened.size() && opened.size() < int(m_levels.size()); ++i) {
        for (const quint64 id : findLevel(opened.at(i))->ids()) {
            if (findLevel(id)) {
                opened.append(id);
            }
        }
    }
    opened.removeFirst();
    return opened;
}

int SceneObjectModel::madeRowCount() const
{
    int count = 0;
    for (const auto &level : m_levels) {
        count += level.second.size();
    }
    return count;
}

// The model ---------------------------------------------------------------------------------------------

QModelIndex SceneObjectModel::index(int row, int column, const QModelIndex &parent) const
{
    // The parent's id is what an index keeps: it stays true however the rows move.
    return hasIndex(row, column, parent) ? createIndex(row, column, quintptr(idOf(parent))) : QModelIndex();
}

QModelIndex SceneObjectModel::parent(const QModelIndex &child) const
{
    return child.isValid() ? rowAbove(child.internalId()) : QModelIndex();
}

int SceneObjectModel::rowCount(const QModelIndex &parent) const
{
    return parent.column() > 0 || (parent.isValid() && !isTree()) ? 0 : levelBelow(parent).size();
}

int SceneObjectModel::columnCount(const QModelIndex &) const
{
    return 1;
}

bool SceneObjectModel::hasChildren(const QModelIndex &parent) const
{
    if (!parent.isValid()) {
        return rowCount() > 0;
    }
    const SceneLevel *made = findLevel(idOf(parent));
    return made ? made->size() > 0 : m_listing.hasAnyBelow(idOf(parent));
}

QVariant SceneObjectModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid()) {
        return {};
    }
    const nkdSceneObject object = objectOf(idOf(index));
    switch (role) {
    case Qt::DisplayRole:
        return shownName(object);
    case Qt::EditRole:
        return object.getName();
    case Qt::DecorationRole:
        return object.getIcon();
    case Qt::ForegroundRole:
        return isPale(object) ? QVariant(QApplication::palette().brush(QPalette::Disabled, QPalette::Text))
                              : QVariant();
    case Qt::ToolTipRole:
        return m_listing.hasNotes() ? QVariant(SceneplateNote::toolTip(idOf(index))) : QVariant();
    case Qt::AccessibleTextRole:
        return m_listing.hasNotes() ? QVariant(SceneplateNote::accessibleText(shownName(object), idOf(index)))
                                    : QVariant();
    case NoteRole:
        return m_listing.hasNotes() ? QVariant(SceneplateNote::text(idOf(index))) : QVariant();
    case IdRole:
        return object.getObjectId();
    default:
        return {};
    }
}

bool SceneObjectModel::setData(const QModelIndex &index, const QVariant &value, int role)
{
    const quint64 id = idOf(index);
    nkdSceneObject object = objectOf(id);
    if (role != Qt::EditRole || !object.isEditable()) {
        return false;
    }
    object.setName(value.toString());
    tellChanged();
    return true;
}
