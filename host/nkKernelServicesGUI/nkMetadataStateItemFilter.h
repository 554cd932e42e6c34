#pragma once

#include "nkKernelServicesGUIExport.h"

#include <nkQt4Ext/QNKIntegerFilter.h>

/// Filters the rows of a tree by the states of their sets (nkMetadataFilterModel::State): a set row by its
/// own, an object row by those of any of its sets.
class NK_KERNEL_SERVICES_GUI_EXPORT nkMetadataStateItemFilter : public QNKIntegerFilter
{
    Q_OBJECT
public:
    explicit nkMetadataStateItemFilter(QObject *parent = nullptr);
    ~nkMetadataStateItemFilter() override;

protected:
    bool acceptsIntegers(const QModelIndex &sourceIndex) const override;
};
