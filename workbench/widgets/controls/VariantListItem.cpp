#include "VariantListItem.h"

#include "VariantElement.h"

VariantListItem::VariantListItem(const QVariant &value)
{
    setFlags(Qt::ItemIsSelectable | Qt::ItemIsEnabled | Qt::ItemIsEditable | Qt::ItemIsDragEnabled
             | Qt::ItemNeverHasChildren);
    QListWidgetItem::setData(Qt::UserRole, value);
}

QVariant VariantListItem::data(int role) const
{
    if (role == Qt::EditRole)
        return QListWidgetItem::data(Qt::UserRole);
    if (role == Qt::DisplayRole)
        return VariantElement::text(QListWidgetItem::data(Qt::UserRole), QLocale::system());
    return QListWidgetItem::data(role);
}

void VariantListItem::setData(int role, const QVariant &value)
{
    const bool holdsValue = role == Qt::UserRole || role == Qt::EditRole;
    if (holdsValue && VariantElement::same(value, QListWidgetItem::data(Qt::UserRole)))
        return;
    QListWidgetItem::setData(holdsValue ? int(Qt::UserRole) : role, value);
}

QListWidgetItem *VariantListItem::clone() const
{
    return new VariantListItem(*this);
}
