#include "VariantListItem.h"

#include "VariantElement.h"

namespace {

/// Setting it is how the base announces a change of the item.
constexpr int changesRole = Qt::UserRole + 1;

} // namespace

VariantListItem::VariantListItem(const QVariant &value) : m_value(value)
{
    setFlags(Qt::ItemIsSelectable | Qt::ItemIsEnabled | Qt::ItemIsEditable | Qt::ItemIsDragEnabled
             | Qt::ItemNeverHasChildren);
}

QVariant VariantListItem::data(int role) const
{
    if (role == Qt::UserRole || role == Qt::EditRole)
        return m_value;
    if (role == Qt::DisplayRole)
        return VariantElement::text(m_value, QLocale::system());
    return QListWidgetItem::data(role);
}

void VariantListItem::setData(int role, const QVariant &value)
{
    if (role != Qt::UserRole && role != Qt::EditRole) {
        QListWidgetItem::setData(role, value);
        return;
    }
    if (VariantElement::same(value, m_value))
        return;
    m_value = value;
    QListWidgetItem::setData(changesRole, ++m_changes);
}

QListWidgetItem *VariantListItem::clone() const
{
    return new VariantListItem(*this);
}
