#include <nkKernelServicesGUI/nkMetadataVariantDelegate.h>

#include <nkKernelServicesGUI/nkMetadataGUIUtils.h>
#include <nkQt4Ext/QNKStringCompleterLineEdit.h>

nkMetadataVariantDelegate::nkMetadataVariantDelegate(QObject *parent) : QNKVariantDelegate(parent) {}

nkMetadataVariantDelegate::~nkMetadataVariantDelegate() = default;

QWidget *nkMetadataVariantDelegate::createEditor(QWidget *parent, const QStyleOptionViewItem &option,
                                                 const QModelIndex &index) const
{
    if (index.data(Qt::UserRole).userType() == QMetaType::QString) {
        return nkMetadataGUIUtils::createMetadataLineEdit(parent);
    }
    return QNKVariantDelegate::createEditor(parent, option, index);
}
