#pragma once

#include <nkKernelServices/nkdMetadataSet.h>
#include <nkKernelServices/nkdObject.h>
#include <nkKernelServicesGUI/TreeMode.h>
#include <nkKernelServicesGUI/nkMetadataStateItemFilter.h>

#include <QList>
#include <QPoint>
#include <QWidget>

class QNKCustomFilterProxyModel;
class nkMetadataIconFilterBar;
class nkMetadataModeWidget;
class nkMetadataRootModelItem;
class nkMetadataTreeModel;
class nkMetadataTreeView;

/// One list of metadata sets or scene objects. Its selection becomes the host's metadata selection and the
/// list of sets whose entries the table shows.
class nkMetadataTreeWidget : public QWidget
{
    Q_OBJECT
public:
    /// Lists TreeMode::Sets.
    explicit nkMetadataTreeWidget(QWidget *parent);
    ~nkMetadataTreeWidget() override;

    /// What the tree lists; a change reloads it.
    void setMode(TreeMode mode);
    TreeMode getMode() const;

    /// In focus mode the table shows every set of the list that had the focus last, whatever is selected, and
    /// that list has a border. Default: off.
    void setFocusMode(bool on);

    /// Whether this is the tree the person touched last (the view's dynamic property "hasLastFocus").
    bool hasLastFocus() const;
    void setHasLastFocus(bool hasLastFocus);

    /// Selects the rows of these objects, and no others. Does nothing while any tree hands its own selection
    /// to the host: what comes then is the echo.
    void selectObjects(const QList<nkdObject> &objects);
    /// Reads the list anew; selection, expansion and scroll position stay.
    void reload();
    void clearSelection();
    /// The list view; owned by this widget.
    nkMetadataTreeView *getTreeView() const { return m_treeView; }

Q_SIGNALS:
    /// The sets whose entries the table is to show, each once. After every change of the selection, also to
    /// an empty one; in focus mode when the list gains the focus instead.
    void metadataSelectionChanged(const QList<nkdMetadataSet> &sets);
    /// The user asked for a context menu; pos is in global screen coordinates.
    void showContextMenu(const QPoint &pos);
    /// The list view gained or lost the keyboard focus.
    void treeFocusChanged(bool hasFocus);

private:
    void createFilterBar();
    void createModels();
    void createView();
    void createModeWidget();
    void connectView();
    void connectFilterBar();
    void layOut();
    void publishSelection();
    void onFocusChanged(bool hasFocus);
    void applyMode(TreeMode mode);
    void publishAllSets();
    void updateHint();

    /// True exactly while a tree, whichever, hands its selection to the host.
    static bool s_handsOverSelection;
    /// Counts the selections handed over by all trees.
    static quint64 s_selectionSerial;

    nkMetadataRootModelItem *m_rootItem = nullptr;
    nkMetadataTreeModel *m_treeModel = nullptr;
    QNKCustomFilterProxyModel *m_proxyModel = nullptr;
    nkMetadataTreeView *m_treeView = nullptr;
    nkMetadataModeWidget *m_modeWidget = nullptr;
    nkMetadataIconFilterBar *m_filterBar = nullptr;
    nkMetadataStateItemFilter m_stateFilter;
    int m_focusMode = 0;
};
