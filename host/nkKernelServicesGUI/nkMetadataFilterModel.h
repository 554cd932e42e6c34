#pragma once

#include "nkKernelServicesGUIExport.h"

#include <nkKernelServices/nkdMetadataSet.h>
#include <nkQt4Ext/QNKSortFilterProxyModel.h>

#include <QList>
#include <QString>

/// A sort-filter proxy for rows of sets: keeps a name filter and a state filter for its subclasses.
class NK_KERNEL_SERVICES_GUI_EXPORT nkMetadataFilterModel : public QNKSortFilterProxyModel
{
    Q_OBJECT
public:
    /// The numbers of the state filter.
    enum State : int { Locked = 1, Unlocked = 2, Asset = 3, Unassigned = 4 };

    explicit nkMetadataFilterModel(QObject *parent = nullptr);
    ~nkMetadataFilterModel() override;

    QString nameFilter() const { return m_nameFilter; }
    QList<int> stateFilter() const { return m_stateFilter; }
    bool isStateFilterEnabled() const { return m_stateFilterEnabled; }

    /// Whether a set passes one of the states: the states of the first group (locked, unlocked) and of the
    /// second (asset, unassigned) narrow each other; within a group any one suffices. Empty: all pass.
    static bool matchesStates(const nkdMetadataSet &set, const QList<int> &states);

public Q_SLOTS:
    // Each has the rows filtered anew only when something changed.
    void setNameFilter(const QString &filter);
    void setStateFilter(const QList<int> &states);
    /// Default: enabled.
    void enableStateFilter(bool enable);

protected:
    /// Whether the set passes the state filter's list.
    bool filterState(const nkdMetadataSet &set) const;

private:
    QString m_nameFilter;
    QList<int> m_stateFilter;
    bool m_stateFilterEnabled = true;
};
