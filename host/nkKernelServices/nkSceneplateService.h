#pragma once

#include "nkKernelServicesExport.h"
#include "nkdNode.h"

#include <QList>
#include <QObject>

/// The sceneplates, their editor and its selection. Selections hold living sceneplates only, each once, in
/// selection order. Not undoable.
class NK_KERNEL_SERVICES_EXPORT nkSceneplateService : public QObject
{
    Q_OBJECT
public:
    static nkSceneplateService &the();

    /// Every sceneplate, in the scene's order.
    virtual QList<nkdNode> getAllSceneplates() const = 0;
    /// The selected sceneplates.
    virtual QList<nkdNode> getSelectedSceneplates() const = 0;
    /// Selects these nodes, skipping what is no sceneplate, and emits the selection
    /// signal before it returns: always, also when nothing changed. Re-entry is allowed. Never moves the
    /// last selection.
    virtual void setSelection(const QList<nkdNode> &nodes) = 0;

Q_SIGNALS:
    void nodesSelected(const QList<nkdNode> &nodes);
};
