#pragma once

#include "AssetState.h"
#include "SceneplatePlacement.h"

#include <nkKernelServices/nkKernelServicesExport.h>
#include <nkKernelServices/nkObjectType.h>

#include <QList>
#include <QObject>
#include <QString>
#include <QVector>

#include <memory>

class QUndoStack;

namespace kernel {

class ChangeScopes;
class Clipboard;
class Store;

/// The open scene: its objects, metadata sets and entries, its undo stack and its clipboards. The one place
/// where scene data lives; handles (nkdObject and the rest) look everything up here by id.
///
/// Ids are object ids in the sense of nkdObject; 0 stands for "none". An id that names nothing alive, or
/// something of another kind than asked for, reads as empty and is never an error. GUI thread only.
class NK_KERNEL_SERVICES_EXPORT Document : public QObject
{
    Q_OBJECT
    Q_DISABLE_COPY(Document)
public:
    /// The process-wide document, made on first use. It ends with the application object, or with the
    /// process where there is none. Works without any application object.
    static Document &the();
    ~Document() override;

    /// Empties the scene, the undo stack, both clipboards and every selection; announced once, by
    /// metadataChanged(7), where anything was there. Ids are not used again. Refused (false) while a scope is
    /// open.
    bool clear();

    // Undo ----------------------------------------------------------------------------------------------

    /// The stack for menus and undo views; owned by the document. Nobody else pushes to it. Its own undo(),
    /// redo() and setIndex() do nothing while a scope is open.
    QUndoStack *undoStack() const;
    /// Undoes or redoes one step and announces it. False where there is none or a scope is open.
    bool undo();
    bool redo();
    /// Undoes or redoes until this many steps of the stack are done, and announces that once. False where the
    /// stack has fewer or a scope is open.
    bool goToStep(int index);
    /// True while an nkScopedUndo or nkScopedMultiCommand lives, or a change is being made.
    bool isScopeOpen() const;
    /// Whether the scene differs from the one that was marked saved; an empty new scene does not. True again
    /// to the point: undoing to the saved state makes it unmodified, also past the stack's limit.
    bool isModified() const;
    void markSaved();

    /// Whether the scene's objects have to stay as they were loaded, because what the scene is saved to cannot tell
    /// otherwise: none can be made, deleted or moved then. Names, locks and metadata can still change. The loader of the
    /// scene decides (DocumentLoader::fixTree); an empty new scene is free.
    bool isTreeFixed() const { return m_isTreeFixed; }

    // Undoable operations of the host itself ------------------------------------------------------------

    /// A new scene object at the end of its parent's children, with an empty object set.
    /// @param type Node, Camera, Light, Sceneplate, Material or MaterialGroup
    /// @param parentId 0 for the top level. Nodes, cameras, lights and sceneplates stand under each other;
    ///        materials and groups under groups
    /// @return the id; 0 where type or parent do not fit, and where the tree is fixed
    quint64 createObject(nkObjectType type, const QString &name, quint64 parentId = 0);
    /// Deletes the objects with everything below them, their object sets and their assignments: one change.
    /// Ids that name no scene object are skipped. Undo brings back the same ids in the same places.
    /// @return whether anything was deleted; nothing is where the tree is fixed
    bool deleteObjects(const QList<quint64> &ids);
    /// A new sceneplate at the end of its parent's children, as createObject makes it.
    /// @param imagePath of the image that it shows, kept as given and not looked at
    /// @return the id; 0 where the parent does not fit, and where the tree is fixed
    quint64 createSceneplate(const QString &name, const QString &imagePath, SceneplatePlacement placement,
                             quint64 parentId = 0);
    /// Moves objects, with everything below them, to another parent or another place among their siblings:
    /// one change, which touches no metadata. They end up side by side in the order of ids; those that stand
    /// below others of ids stay there.
    /// @param parentId 0 for the top level; what fits where is as in createObject
    /// @param position they come before the child that stands there now; -1: behind the last
    /// @return false, and nothing has changed, where they stand there already, and where any of them is no
    ///         living scene object, is locked, does not fit below the parent, or has the parent below itself; also
    ///         where the tree is fixed
    bool moveObjects(const QList<quint64> &ids, quint64 parentId, int position = -1);
    /// Gives a sceneplate another image or place: one change. Refused (false) where it is locked or no
    /// sceneplate, and where nothing would change.
    bool setSceneplateImage(quint64 id, const QString &imagePath);
    bool setSceneplatePlacement(quint64 id, SceneplatePlacement placement);
    /// Gives a shared set its asset state: metadataChanged(1).
    /// @param assetId names the asset in the asset manager; kept as given, dropped with None
    /// @param version of the asset that the set's content comes from, 0 for unknown; kept and dropped likewise
    /// @return whether anything changed
    bool setAssetState(quint64 setId, AssetState state, const QString &assetId = QString(), int version = 0);

    // Reading what handles do not offer -----------------------------------------------------------------

    /// The kind of what lives under this id; Null where nothing does.
    nkObjectType typeOf(quint64 id) const;
    AssetState assetState(quint64 setId) const;
    QString assetId(quint64 setId) const;
    int assetVersion(quint64 setId) const;
    /// True for a String entry whose text was read as a number too long for the number types, and has been a
    /// number literal ever since: a writer of files writes it without quotes.
    bool isNumberText(quint64 entryId) const;
    /// Whether a shared set is assigned to at least one object of this kind. O(1).
    bool isAssignedToKind(quint64 setId, nkObjectType kind) const;
    /// Those kinds as bits, bit n for the nkObjectType of value n; an object set answers its object's. O(1).
    quint32 assignedKinds(quint64 setId) const;

    /// The path of the image that a sceneplate shows, as it was given; empty where it has none.
    QString sceneplateImage(quint64 id) const;
    SceneplatePlacement sceneplatePlacement(quint64 id) const;

    /// The parent node or group; 0 at the top level.
    quint64 parentOf(quint64 objectId) const;
    /// The objects directly below, in scene order; those of a material group are groups and materials.
    QList<quint64> childrenOf(quint64 objectId) const;
    /// The nodes (cameras, lights and sceneplates among them) that have no parent, in scene order.
    QList<quint64> topLevelNodes() const;
    /// The material groups and materials that stand in no group, in scene order.
    QList<quint64> topLevelMaterials() const;
    /// Every object of exactly this kind, depth first in scene order.
    QList<quint64> objects(nkObjectType kind) const;
    /// Those of objects(kind) that have own entries or assigned sets.
    QList<quint64> objectsWithMetadata(nkObjectType kind) const;
    /// A shared set that is assigned to an object, by their ids.
    struct Assignment
    {
        quint64 setId;
        quint64 objectId;
    };
    /// Every assignment of the scene, in the order in which they were made: assigning them anew in this order
    /// gives every set its objects and every object its sets in the same order.
    QVector<Assignment> assignments() const;
    /// Number of living scene objects of all kinds.
    int objectCount() const;

    /// Number of living shared sets. O(1).
    int setCount() const;
    /// Number of living entries, those of objects' own sets among them. O(1).
    int entryCount() const;

    /// The tables behind all of it and the clipboards, for the kernel's own classes.
    const Store &store() const { return *m_store; }
    Clipboard &clipboard() const { return *m_clipboard; }
    ChangeScopes &scopes() const { return *m_scopes; }

Q_SIGNALS:
    /// Scene objects and sets (object sets too, entries not) have ceased to live. Comes when the change is
    /// complete and before it is announced, in scopes too: whoever keeps handles drops the dead ones here
    /// without announcing that yet.
    void objectsDied(const QList<quint64> &ids);
    /// The whole scene was emptied or replaced: every id known so far is dead. In place of objectsDied.
    void cleared();
    /// A change is about to be announced: whoever dropped handles since the last time announces that now.
    void aboutToAnnounce();
    /// Scene objects were created, deleted, moved or renamed, or sceneplates changed, undo and redo included.
    /// Follows the announcement rules of nkMetadataService::metadataChanged.
    void sceneChanged();
    /// isModified() has changed.
    void modifiedChanged(bool modified);
    /// isTreeFixed() has changed; comes when the scene that it is about has been announced.
    void treeFixedChanged(bool fixed);

private:
    friend class ChangeScopes;
    friend class DocumentLoader;
    friend class Kernel;
    friend class Operation;

    Document();
    /// The store becomes the scene: no history, unmodified, announced where either scene held anything.
    void replaceScene(std::unique_ptr<Store> store, bool isTreeFixed);

    std::unique_ptr<Store> m_store;
    std::unique_ptr<ChangeScopes> m_scopes;
    std::unique_ptr<Clipboard> m_clipboard;
    bool m_isTreeFixed = false;
};

} // namespace kernel
