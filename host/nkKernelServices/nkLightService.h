#pragma once

#include "nkKernelServicesExport.h"
#include "nkdNode.h"

#include <QList>
#include <QObject>

/// The lights, their editor and its selection. Selections hold living lights only, each once, in selection
/// order. Not undoable.
class NK_KERNEL_SERVICES_EXPORT nkLightService : public QObject
{
    Q_OBJECT
public:
    static nkLightService &the();

    /// Every light, in the scene's order.
    virtual QList<nkdNode> getAllLights() const = 0;
    /// The selected lights.
    virtual QList<nkdNode> getSelectedLights() const = 0;
    /// Selects these nodes, skipping what is no light, and emits the selection
    /// signal before it returns: always, also when nothing changed. Re-entry is allowed. Never moves the
    /// last selection.
    virtual void setSelection(const QList<nkdNode> &nodes) = 0;

Q_SIGNALS:
    void nodeSelectionChanged(const QList<nkdNode> &nodes);
};
