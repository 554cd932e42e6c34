#pragma once

#include "nkQt4ExtExport.h"

#include <QStyledItemDelegate>

/// Draws and edits a QVariant by its type (bool, int, double, QString, QTime, QDate, QDateTime, list) under
/// Qt::UserRole.
class NK_QT4EXT_EXPORT QNKVariantDelegate : public QStyledItemDelegate
{
    Q_OBJECT
public:
    explicit QNKVariantDelegate(QObject *parent = nullptr);
    ~QNKVariantDelegate() override;

    QString displayText(const QVariant &value, const QLocale &locale) const override;
    QWidget *createEditor(QWidget *parent, const QStyleOptionViewItem &option,
                          const QModelIndex &index) const override;
    void setEditorData(QWidget *editor, const QModelIndex &index) const override;
    void setModelData(QWidget *editor, QAbstractItemModel *model, const QModelIndex &index) const override;
    QSize sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const override;
    void updateEditorGeometry(QWidget *editor, const QStyleOptionViewItem &option,
                              const QModelIndex &index) const override;

protected:
    void initStyleOption(QStyleOptionViewItem *option, const QModelIndex &index) const override;
};
