#pragma once

#include <QStyledItemDelegate>

/// Draws and edits the names in a tree of metadata. Names come from files: they are drawn in one line
/// whatever they hold, and one that was not touched in its editor is never written back.
class NameDelegate : public QStyledItemDelegate
{
    Q_OBJECT
public:
    explicit NameDelegate(QObject *parent = nullptr);
    ~NameDelegate() override;

    /// Shows a name that the column cuts off whole, as a tool tip.
    bool helpEvent(QHelpEvent *event, QAbstractItemView *view, const QStyleOptionViewItem &option,
                   const QModelIndex &index) override;
    QString displayText(const QVariant &value, const QLocale &locale) const override;
    QWidget *createEditor(QWidget *parent, const QStyleOptionViewItem &option,
                          const QModelIndex &index) const override;
    /// Keeps a text that a person has begun to change.
    void setEditorData(QWidget *editor, const QModelIndex &index) const override;
    void setModelData(QWidget *editor, QAbstractItemModel *model, const QModelIndex &index) const override;
};
