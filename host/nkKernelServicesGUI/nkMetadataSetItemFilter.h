#pragma once

#include "nkKernelServicesGUIExport.h"

#include <nkKernelServices/nkdMetadataSet.h>
#include <nkQt4Ext/QNKItemFilter.h>

#include <QList>
#include <QSet>

/// Filters the rows of a tree to given sets: a set row by itself, an object row by any of its sets. Starts
/// disabled.
class NK_KERNEL_SERVICES_GUI_EXPORT nkMetadataSetItemFilter : public QNKItemFilter
{
    Q_OBJECT
public:
    explicit nkMetadataSetItemFilter(QObject *parent = nullptr);
    ~nkMetadataSetItemFilter() override;

    /// An empty list accepts nothing.
    void setMetadataSets(const QList<nkdMetadataSet> &sets);

    bool accepts(const QModelIndex &sourceIndex) const override;

private:
    QSet<quint64> m_setIds;
};
