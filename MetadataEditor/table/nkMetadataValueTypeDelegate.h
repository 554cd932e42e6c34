#pragma once

#include "table/nkMetadataCellDelegate.h"

/// Edits value types in a combo box whose list opens at once.
class nkMetadataValueTypeDelegate : public nkMetadataCellDelegate
{
    Q_OBJECT
public:
    explicit nkMetadataValueTypeDelegate(QObject *parent = nullptr);
    ~nkMetadataValueTypeDelegate() override;

    QWidget *createEditor(QWidget *parent, const QStyleOptionViewItem &option,
                          const QModelIndex &index) const override;

protected:
    void fill(QWidget *editor, const QVariant &datum) const override;
    void filledFirst(QWidget *editor) const override;
    QVariant value(QWidget *editor) const override;
};
