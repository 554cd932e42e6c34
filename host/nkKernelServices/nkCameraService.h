#pragma once

#include "nkKernelServicesExport.h"
#include "nkdNode.h"

#include <QList>
#include <QObject>

/// The cameras, their editor and its selection. Selections hold living cameras only, each once, in selection
/// order. Not undoable.
class NK_KERNEL_SERVICES_EXPORT nkCameraService : public QObject
{
    Q_OBJECT
public:
    static nkCameraService &the();

    /// Every camera, in the scene's order.
    virtual QList<nkdNode> getAllCameras() const = 0;
    /// The selected cameras.
    virtual QList<nkdNode> getSelectedCameras() const = 0;
    /// Selects these nodes, skipping what is no camera, and emits the selection
    /// signal before it returns: always, also when nothing changed. Re-entry is allowed. Never moves the
    /// last selection.
    virtual void setSelection(const QList<nkdNode> &nodes) = 0;

Q_SIGNALS:
    void selectionChanged(const QList<nkdNode> &nodes);
};
