#pragma once

#include "nkKernelServicesGUIExport.h"
#include "nkPropertyEditorNkdObjectWrapper.h"

#include <QList>
#include <QWidget>

#include <memory>

class nkBaseControl;
class nkControlFactory;

/// A panel of the properties that several objects share: one control a property, equal values shown,
/// differing values marked. An edit is written to all objects as one undo step.
class NK_KERNEL_SERVICES_GUI_EXPORT nkPropertyEditorWidget : public QWidget
{
    Q_OBJECT
public:
    /// @param factories asked for a control before the editor's own; not owned
    /// @param showHeader a line with the objects' kind and number on top
    /// @param scrollable scrolls where the controls do not fit
    nkPropertyEditorWidget(QWidget *parent, const QList<nkControlFactory *> &factories, bool showHeader,
                           bool scrollable);
    ~nkPropertyEditorWidget() override;

    /// Without frame and margins, as part of a window.
    void setDocumentMode(bool on);
    /// Shows the properties that all objects have. @param force make the controls anew though the objects
    /// are the same
    void setCurrentObjects(const QList<nkPropertyEditorNkdObjectWrapper> &objects, bool force);
    QList<nkPropertyEditorNkdObjectWrapper> getCurrentObjects() const;
    /// The control of a property; null where it is not shown.
    nkBaseControl *getControl(const QString &property) const;

    using QWidget::resize;
    /// Takes the height that the controls need.
    void resize();

private:
    struct Private;
    std::unique_ptr<Private> d;
};
