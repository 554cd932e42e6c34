#pragma once

#include "table/nkMetadataCellDelegate.h"

/// Edits keys in a line that completes from the active string library. An empty key cannot be committed.
class nkMetadataKeyDelegate : public nkMetadataCellDelegate
{
    Q_OBJECT
public:
    explicit nkMetadataKeyDelegate(QObject *parent = nullptr);
    ~nkMetadataKeyDelegate() override;

    QWidget *createEditor(QWidget *parent, const QStyleOptionViewItem &option,
                          const QModelIndex &index) const override;
    void destroyEditor(QWidget *editor, const QModelIndex &index) const override;
    QSize sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const override;

Q_SIGNALS:
    /// The editor of this cell has been closed, whether or not it wrote anything.
    void editingFinished(const QModelIndex &index);

protected:
    void fill(QWidget *editor, const QVariant &datum) const override;
    QVariant shown(QWidget *editor) const override;
    QVariant value(QWidget *editor) const override;
};
