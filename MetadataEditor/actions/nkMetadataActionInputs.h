#pragma once

#include <nkKernelServices/nkObjectType.h>
#include <nkKernelServices/nkdObject.h>

#include <QList>

class nkdMetadataSet;

/// What the states of the actions depend on, as plain data.
struct nkMetadataActionInputs
{
    /// Number of selected metadata objects: sets and scene objects.
    int selectionSize = 0;
    /// The scene holds at least one shared set.
    bool setsExist = false;

    // Whether something is selected in the editors of the host.
    bool nodesInScenegraph = false;
    bool materialsInEditor = false;
    bool camerasInEditor = false;
    bool lightsInEditor = false;
    bool sceneplatesInEditor = false;

    /// The kinds of the selected objects that can carry metadata and of the objects of the selected sets:
    /// bit n stands for the nkObjectType of value n. Where a node is among them others may be missing: a
    /// node alone already enables whatever a kind does.
    quint32 kinds = 0;
    bool metadataObjectSelected = false;
    /// A set of any sort, object sets included.
    bool anySetSelected = false;
    /// Number of selected shared sets, no object sets; counted up to 2.
    int setsSelected = 0;
    bool lockedSetSelected = false;   ///< among the shared sets
    bool unlockedSetSelected = false; ///< among the shared sets
    bool assetSelected = false;
    bool editedAssetSelected = false;
    bool uneditedAssetSelected = false;
    bool setWithEntriesSelected = false;

    bool setClipboardEmpty = true;
    /// The tree with the keyboard focus lists sets; false where no tree has the focus.
    bool setsMode = false;

    bool hasKind(nkObjectType type) const { return (kinds & kindBit(type)) != 0; }
    /// Cameras, lights, sceneplates and material groups are nodes too.
    bool hasNode() const;
    bool editorSelectionExists() const;

    static constexpr quint32 kindBit(nkObjectType type) { return quint32(1) << quint32(type); }

    /// Asks the host. @param setsMode see the member
    static nkMetadataActionInputs gather(bool setsMode);
    /// Folds a selection into the members that come from it. One pass that asks no object what is known
    /// already.
    void fold(const QList<nkdObject> &selection);

private:
    void foldObject(const nkdObject &object);
    void foldSet(const nkdMetadataSet &set);
    /// @param states see nkdMetadataSet::getStates
    void foldStates(quint32 states);
    void gatherEditors();
};
