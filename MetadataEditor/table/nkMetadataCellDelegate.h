#pragma once

#include <QStyledItemDelegate>
#include <QVariant>

/// What the table's delegates share: texts in one line, and an editor that is filled with the cell's
/// Qt::UserRole datum and written back under that role only where a person touched it. By itself it edits
/// nothing: cells are shown, no editor opens.
class nkMetadataCellDelegate : public QStyledItemDelegate
{
    Q_OBJECT
public:
    explicit nkMetadataCellDelegate(QObject *parent = nullptr);
    ~nkMetadataCellDelegate() override;

    QString displayText(const QVariant &value, const QLocale &locale) const override;
    QWidget *createEditor(QWidget *parent, const QStyleOptionViewItem &option,
                          const QModelIndex &index) const override;
    void setEditorData(QWidget *editor, const QModelIndex &index) const override;
    void setModelData(QWidget *editor, QAbstractItemModel *model, const QModelIndex &index) const override;

protected:
    /// What the table's rows say of a cell: its text and the colour of it. Fonts, alignments, backgrounds, checks and
    /// icons, of which they say nothing, are not asked for.
    void initStyleOption(QStyleOptionViewItem *option, const QModelIndex &index) const override;
    /// Puts datum into the editor.
    virtual void fill(QWidget *editor, const QVariant &datum) const;
    /// Called after the first fill of an editor.
    virtual void filledFirst(QWidget *editor) const;
    /// What the editor shows, to be compared with what it shows later. The base answers value.
    virtual QVariant shown(QWidget *editor) const;
    /// What the editor would write; invalid where it has nothing that can be written.
    virtual QVariant value(QWidget *editor) const;
};
