#pragma once

#include "SceneLevel.h"
#include "SceneListing.h"

#include <QAbstractItemModel>
#include <QItemSelection>
#include <QSet>
#include <QTimer>

class SceneRowChange;
class nkdObject;

/// What an editor lists, as an item model with one column: the names, with icons, edited in place where the
/// object allows it. It follows the scene by itself.
///
/// A row is an id and nothing else, and rows come into being level by level when somebody looks at them: a
/// scene of any size opens at once. What a cell shows is read from the scene whenever it is asked for. Rows
/// of objects that stay keep their model indexes true when others come and go; a new scene and a new search
/// reset the model.
class SceneObjectModel : public QAbstractItemModel
{
    Q_OBJECT
public:
    enum Role {
        /// The object's id, as quint64.
        IdRole = Qt::UserRole,
        /// What is said beside the name; an invalid value for most.
        NoteRole
    };

    explicit SceneObjectModel(EditorModule module, QObject *parent = nullptr);
    ~SceneObjectModel() override;

    bool isTree() const { return m_listing.isTree(); }
    /// Shows what matches, and in trees what stands above it. * and ? are wildcards; empty: everything.
    void search(const QString &text);
    bool isSearching() const { return m_listing.isSearching(); }
    int shownCount() const { return m_listing.shownCount(); }

    /// 0 for an invalid index.
    quint64 idOf(const QModelIndex &index) const;
    /// Invalid where the object is not listed, or not shown by the search.
    QModelIndex indexOf(quint64 id) const;
    /// The rows of those of the objects that have one.
    QItemSelection selectionOf(const QList<quint64> &ids) const;
    /// The objects of the selected rows.
    QList<quint64> idsOf(const QItemSelection &selection) const;
    /// The objects whose rows below somebody has looked at, parents first.
    QList<quint64> openedObjects() const;
    /// How many rows have come into being.
    int madeRowCount() const;
    /// True while rows come and go because the scene has changed, or because of a search.
    bool isFollowing() const { return m_following; }

    QModelIndex index(int row, int column, const QModelIndex &parent = {}) const override;
    QModelIndex parent(const QModelIndex &child) const override;
    using QObject::parent;
    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    bool hasChildren(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    /// Renames the object by an edit, undoably. @return false where its name cannot be changed
    bool setData(const QModelIndex &index, const QVariant &value, int role = Qt::EditRole) override;
    Qt::ItemFlags flags(const QModelIndex &index) const override;

    Qt::DropActions supportedDragActions() const override { return Qt::CopyAction | Qt::MoveAction; }
    /// A drag is proposed as a copy, for the trees of metadata; dropped in its own tree it moves.
    Qt::DropActions supportedDropActions() const override { return Qt::CopyAction | Qt::MoveAction; }
    QStringList mimeTypes() const override;
    /// The objects as the trees of metadata understand them: dropped on sets they are assigned.
    QMimeData *mimeData(const QModelIndexList &indexes) const override;
    /// In trees, whether rows that were dragged from here may stand there.
    bool canDropMimeData(const QMimeData *data, Qt::DropAction action, int row, int column,
                         const QModelIndex &parent) const override;
    /// Moves nothing by itself: asks for it by moveRequested.
    bool dropMimeData(const QMimeData *data, Qt::DropAction action, int row, int column,
                      const QModelIndex &parent) override;

Q_SIGNALS:
    /// A person has dropped these objects. @param parentId 0 for the top level
    /// @param position of the child that they come before, among all children; -1: behind the last
    void moveRequested(const QList<quint64> &ids, quint64 parentId, int position);
    /// Around everything that a change of the scene or a search does to the rows.
    void aboutToFollow();
    void followed();
    /// The rows are those of another scene; comes before followed.
    void sceneReplaced();

private:
    const SceneLevel &levelBelow(const QModelIndex &parent) const;
    const SceneLevel *findLevel(quint64 id) const;
    QModelIndex rowAbove(quint64 levelId) const;
    void appendRanges(QItemSelection &selection, const QModelIndex &parent, QVector<int> rows) const;
    void noteChange(const nkdObject &object, const QString &property);
    void tellChanged();
    void follow();
    void followOnce();
    void startAnew();
    void layOut(const SceneRowChange &change);
    QHash<quint64, QModelIndex> placesOf(const QVector<quint64> &ids) const;
    void tellNotes();
    void removeGone(quint64 levelId, const QList<quint64> &present);
    void insertNew(quint64 levelId, const QList<quint64> &present);
    void removeFrom(quint64 levelId, int first, int last);
    void insertInto(quint64 levelId, int row, const QList<quint64> &ids);
    void shiftLevelsBelow(quint64 levelId, int firstRow, int by);
    void dropLevels(const QList<quint64> &ids);

    SceneListing m_listing;
    /// By the id of the object above; 0: the top level. Made when first looked at.
    mutable SceneLevels m_levels;
    QSet<quint64> m_changed;
    QTimer m_tell;
    bool m_following = false;
    bool m_stale = false;
    bool m_replaced = false;
};
