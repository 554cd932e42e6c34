#pragma once

#include "nkKernelServicesGUIExport.h"

#include <nkQt4Ext/QNKVariantDelegate.h>

/// A variant delegate for the elements of metadata lists: texts are edited with completion.
class NK_KERNEL_SERVICES_GUI_EXPORT nkMetadataVariantDelegate : public QNKVariantDelegate
{
    Q_OBJECT
public:
    explicit nkMetadataVariantDelegate(QObject *parent = nullptr);
    ~nkMetadataVariantDelegate() override;

    QWidget *createEditor(QWidget *parent, const QStyleOptionViewItem &option,
                          const QModelIndex &index) const override;
};
