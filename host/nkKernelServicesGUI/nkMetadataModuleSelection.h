#pragma once

#include "nkKernelServicesGUIExport.h"

#include <nkKernelServices/nkdObject.h>

#include <QList>
#include <QObject>

/// Which editor the user selected something in most recently. Moved only by a person's gesture in an editor
/// or the viewport, never by a module that pushes a selection.
class NK_KERNEL_SERVICES_GUI_EXPORT nkMetadataModuleSelection : public QObject
{
    Q_OBJECT
public:
    static nkMetadataModuleSelection &the();

    /// 0 scene graph, 1 material, 2 light, 3 camera, 4 sceneplate. Starts with 0.
    int getLastSelectionModule() const { return m_module; }
    /// For editors and the viewport, on a gesture. Numbers outside 0..4 are ignored.
    void setLastSelectionModule(int module);
    /// The present selection of that editor: nodes, or materials and material groups.
    QList<nkdObject> getLastSelection() const;

Q_SIGNALS:
    /// A gesture was made, also in the same editor as before.
    void lastSelectionModuleChanged(int module);

private:
    nkMetadataModuleSelection();

    int m_module = 0;
};
