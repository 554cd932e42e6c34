#pragma once

#include "Records.h"

#include <nkKernelServices/nkObjectType.h>

#include <QList>
#include <QString>

namespace kernel {

class Store;

/// Whether an object of this kind can stand under that parent (0: at the top level) of the store.
bool fitsBelow(const Store &store, nkObjectType type, quint64 parentId);

/// The undoable changes of scene objects; what Document and nkdSceneObject say about them holds.
namespace ObjectOperations {

quint64 create(nkObjectType type, const QString &name, quint64 parentId);
quint64 createSceneplate(const QString &name, const SceneplateRecord &content, quint64 parentId);
bool remove(const QList<quint64> &ids);
bool move(const QList<quint64> &ids, quint64 parentId, int position);
void rename(quint64 id, const QString &name);
void setLocked(quint64 id, bool locked);
bool setSceneplate(quint64 id, const SceneplateRecord &content);

} // namespace ObjectOperations
} // namespace kernel
