#pragma once

#include "AssetState.h"
#include "SceneplatePlacement.h"

#include <nkKernelServices/nkKernelServicesExport.h>
#include <nkKernelServices/nkMetadataTypes.h>
#include <nkKernelServices/nkObjectType.h>

#include <QColor>
#include <QString>
#include <QVariant>

#include <memory>

namespace kernel {

class EntryValue;
class Store;
struct SetRecord;
enum class ChangeKind : quint8;

/// Fills the document from a file, fast: no undo steps and no announcements while it works. commit() makes
/// the result the scene and announces it once, by metadataChanged(7); without commit() nothing has happened.
///
/// Ids are final as soon as they are given out; in Replace mode nobody but the loader knows them before
/// commit(). What does not fit (an unknown parent, a value that is none of its type) is answered with 0 or
/// false and adds nothing.
class NK_KERNEL_SERVICES_EXPORT DocumentLoader
{
    Q_DISABLE_COPY(DocumentLoader)
public:
    enum class Mode {
        /// The loaded scene takes the place of the present one, whole or not at all.
        Replace,
        /// The loaded objects are added to the present scene, which may be referred to (parents, sets). While
        /// the loader lives an undo scope is open.
        Add
    };

    /// A loader made while an undo scope is open adds nothing and commits nothing.
    explicit DocumentLoader(Mode mode = Mode::Replace);
    /// Drops what was not committed.
    ~DocumentLoader();

    /// A scene object at the end of its parent's children; see Document::createObject for what fits where.
    quint64 addObject(nkObjectType type, const QString &name, quint64 parentId = 0);
    /// A shared set.
    /// @param name made unique; empty: "MetadataSet", made unique
    /// @param color invalid: the colour of new sets
    quint64 addSet(const QString &name, const QColor &color = QColor(), bool locked = false);
    /// The object's own set; it exists as soon as its object does.
    quint64 objectSet(quint64 objectId) const;

    // What is not as it is at birth, in Replace mode only; false where the id names nothing of the kind.

    /// Gives any set another colour; an invalid one is refused.
    bool setColor(quint64 setId, const QColor &color);
    /// Locks any set. Entries can still be loaded into it.
    bool lockSet(quint64 setId);
    /// Locks a scene object.
    bool lockObject(quint64 objectId);
    /// Gives a shared set its asset state; see Document::setAssetState.
    bool setAsset(quint64 setId, AssetState state, const QString &assetId, int version = 0);

    /// The scene to be keeps its objects as they are loaded; see Document::isTreeFixed. In Replace mode only.
    void fixTree() { m_isTreeFixed = true; }

    /// Says what a sceneplate shows; see Document::createSceneplate.
    bool setSceneplate(quint64 id, const QString &imagePath, SceneplatePlacement placement);

    /// An entry at the end of the set.
    /// @param key made unique in the set; empty: "Key", made unique
    /// @param type 0..7
    /// @param value converted to type as nkdMetadataEntry::setValue does; invalid: the type's default
    quint64 addEntry(quint64 setId, const QString &key, nkMetadataTypes::ValueType type,
                     const QVariant &value);
    /// A String entry that remembers being a number (see Document::isNumberText); a text that is no number
    /// literal makes a plain String entry.
    quint64 addNumberText(quint64 setId, const QString &key, const QString &number);
    /// A tag at the end of the set.
    quint64 addTag(quint64 setId, const QString &key);
    /// Assigns a shared set to an object. False where it already is or either is not there.
    bool assign(quint64 setId, quint64 objectId);

    /// Makes what was loaded the scene: the undo stack is emptied, the document counts as unmodified in
    /// Replace mode and as modified in Add mode (where anything came), clipboards stay. The first call ends
    /// the loading.
    /// @return false where a scope is open that is not the loader's own; nothing has changed then, and the
    ///         call may be made again
    bool commit();

private:
    quint64 add(quint64 setId, const QString &key, EntryValue value);
    /// The record of a set of the scene to be; null in Add mode and where there is none.
    SetRecord *freshSet(quint64 setId) const;
    void appear(ChangeKind kind, quint32 slotOrLink);

    const Mode m_mode;
    bool m_isTreeFixed = false;
    /// The scene to be, in Replace mode.
    std::unique_ptr<Store> m_aside;
    /// What is being filled; null before it could begin and after it ended.
    Store *m_target = nullptr;
};

} // namespace kernel
