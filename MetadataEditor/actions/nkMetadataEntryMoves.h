#pragma once

#include <nkKernelServices/nkdMetadataSet.h>
#include <nkKernelServices/nkdSceneObject.h>

#include <QList>

/// Moves of whole entry lists between sets and objects, inside the caller's undo scope. Nothing is taken
/// away from where no one took it.
namespace nkMetadataEntryMoves {

/// Appends the entries of the sets, set by set, to the own entries of each object, then empties the sets.
/// Objects whose own entries cannot be edited are left out; without any other object nothing is moved. A set
/// that is itself the object set of one of the objects stays.
void setsToObjects(const QList<nkdMetadataSet> &sets, const QList<nkdSceneObject> &objects);

/// Moves the own entries of the object to a new set assigned to it. Does nothing where it has none.
/// @param baseName the set's name, made unique
void objectToNewSet(const nkdSceneObject &object, const QString &baseName);

} // namespace nkMetadataEntryMoves
