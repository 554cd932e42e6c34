#include "actions/nkMetadataFocusedTree.h"

#include <nkKernelServicesGUI/nkMetadataRootModelItem.h>
#include <nkKernelServicesGUI/nkMetadataTreeView.h>
#include <nkQt4Ext/QNKItemModel.h>

#include <QAbstractProxyModel>

namespace {

const nkMetadataTreeView *focusedTree(const QWidget *editorWindow)
{
    const auto *view = editorWindow
                           ? qobject_cast<nkMetadataTreeView *>(editorWindow->window()->focusWidget())
                           : nullptr;
    return view && editorWindow->isAncestorOf(view) ? view : nullptr;
}

/// The rows that the view shows, below its proxies.
const nkMetadataRootModelItem *rootOf(const nkMetadataTreeView *view)
{
    const QAbstractItemModel *model = view->model();
    while (const auto *proxy = qobject_cast<const QAbstractProxyModel *>(model)) {
        model = proxy->sourceModel();
    }
    const auto *rows = qobject_cast<const QNKItemModel *>(model);
    return rows ? dynamic_cast<const nkMetadataRootModelItem *>(rows->rootItem()) : nullptr;
}

} // namespace

bool nkMetadataFocusedTree::isSetsMode(const QWidget *editorWindow)
{
    const nkMetadataTreeView *view = focusedTree(editorWindow);
    const nkMetadataRootModelItem *root = view ? rootOf(view) : nullptr;
    return root && root->getTreeMode() == TreeMode::Sets;
}
