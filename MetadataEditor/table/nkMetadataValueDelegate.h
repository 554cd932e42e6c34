#pragma once

#include "table/nkMetadataCellDelegate.h"

/// Edits values with the editor of the row's declared type. A boolean's list opens at once; a list is edited
/// in a pop-up below its cell.
class nkMetadataValueDelegate : public nkMetadataCellDelegate
{
    Q_OBJECT
public:
    explicit nkMetadataValueDelegate(QObject *parent = nullptr);
    ~nkMetadataValueDelegate() override;

    QWidget *createEditor(QWidget *parent, const QStyleOptionViewItem &option,
                          const QModelIndex &index) const override;
    void updateEditorGeometry(QWidget *editor, const QStyleOptionViewItem &option,
                              const QModelIndex &index) const override;

protected:
    void fill(QWidget *editor, const QVariant &datum) const override;
    void filledFirst(QWidget *editor) const override;
    QVariant shown(QWidget *editor) const override;
    QVariant value(QWidget *editor) const override;
};
