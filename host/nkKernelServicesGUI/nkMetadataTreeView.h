#pragma once

#include "nkKernelServicesGUIExport.h"

#include <nkKernelServices/nkdMetadataSet.h>
#include <nkKernelServices/nkdObject.h>
#include <nkQt4Ext/QNKTreeView.h>

#include <QList>

/// A tree of sets or objects, over an nkMetadataTreeModel below any chain of proxies.
class NK_KERNEL_SERVICES_GUI_EXPORT nkMetadataTreeView : public QNKTreeView
{
    Q_OBJECT
public:
    explicit nkMetadataTreeView(QWidget *parent = nullptr);
    ~nkMetadataTreeView() override;

    /// The object of a row of the view's model; null for an invalid index.
    nkdObject getObject(const QModelIndex &index) const;
    /// The set of a row; null when the row is no set.
    nkdMetadataSet getMetadataSet(const QModelIndex &index) const;
    /// Every set the list holds, filtered-out rows not counted: in Sets the sets of the rows; in the object
    /// lists each object's object set, where it has entries, and then its sets. Each once, in row order.
    QList<nkdMetadataSet> getAllMetadataSets() const;
    /// The selected objects of one kind, each once, in selection order. @param kind 3: scene objects,
    /// 4: sets; other kinds: all
    QList<nkdObject> getSelectedObjects(int kind) const;
    /// Selects the rows of these objects, top-level rows where they have one, and no others; the first
    /// becomes current and is scrolled to. Objects without a row are skipped.
    void selectObjects(const QList<nkdObject> &objects);

Q_SIGNALS:
    /// The view gained or lost the keyboard focus. Pop-ups and the activation of windows do not count.
    void focusChanged(bool hasFocus);

protected:
    bool event(QEvent *event) override;
    void focusInEvent(QFocusEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;

private:
    bool m_heldFocus = false; // when the window was last deactivated
    bool m_windowLeft = false;
    bool m_gainedMeanwhile = false;
};
