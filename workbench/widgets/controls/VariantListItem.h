#pragma once

#include <QListWidgetItem>

/// One element of a list of typed values: it holds the value under Qt::UserRole and shows its text.
class VariantListItem : public QListWidgetItem
{
public:
    explicit VariantListItem(const QVariant &value);

    QVariant data(int role) const override;
    /// Under Qt::UserRole and Qt::EditRole; the same value again is no change.
    void setData(int role, const QVariant &value) override;
    QListWidgetItem *clone() const override;

private:
    // Not among the base's data: the base takes "1" for the 1 it has and would drop the change.
    QVariant m_value;
    int m_changes = 0;
};
