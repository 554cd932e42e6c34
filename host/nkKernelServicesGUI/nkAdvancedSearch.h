#pragma once

#include "nkKernelServicesGUIExport.h"

#include <QObject>

class QNKFilterBar;
class QWidget;
class nkAdvancedSearchBar;

/// A search by query, in addition to a tree's filter bar.
class NK_KERNEL_SERVICES_GUI_EXPORT nkAdvancedSearch : public QObject
{
    Q_OBJECT
public:
    /// @param module tells the searches of modules apart (5: the Metadata Editor); each keeps its own recent
    ///        queries
    /// @param filterBar the filter bar of the tree that is searched; not owned
    /// @param parent owns the search and its bar
    nkAdvancedSearch(int module, QNKFilterBar *filterBar, QWidget *parent);
    ~nkAdvancedSearch() override;

    nkAdvancedSearchBar *getSearchBar() const { return m_bar; }
    /// The widget to place in a window.
    QWidget *getWidget() const;

Q_SIGNALS:
    /// @param enabled false: no search; query is empty then
    void searchChanged(bool enabled, const QString &query);

private:
    nkAdvancedSearchBar *m_bar = nullptr;
    int m_module = 0;
};
