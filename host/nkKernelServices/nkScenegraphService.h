#pragma once

#include "nkKernelServicesExport.h"
#include "nkdNode.h"

#include <QList>
#include <QObject>

/// The scene graph, its editor and that editor's selection. Selections hold living nodes only, each once, in
/// selection order. Not undoable.
class NK_KERNEL_SERVICES_EXPORT nkScenegraphService : public QObject
{
    Q_OBJECT
public:
    static nkScenegraphService &the();

    /// The top-level nodes, in the scene's order; their children hold the rest.
    virtual QList<nkdNode> getRootNodes() const = 0;
    /// The selected nodes.
    virtual QList<nkdNode> getSelectedNodes() const = 0;
    /// Selects these nodes, skipping what is no node of the scene graph, and emits the selection
    /// signal before it returns: always, also when nothing changed. Re-entry is allowed. Never moves the
    /// last selection.
    virtual void setSelection(const QList<nkdNode> &nodes) = 0;
    /// Brings the first selected node into view.
    virtual void scrollToSelected() = 0;

Q_SIGNALS:
    void selectionChanged(const QList<nkdNode> &nodes);
    /// scrollToSelected was asked for; the scene graph editor follows.
    void scrollToSelectedRequested();
};
