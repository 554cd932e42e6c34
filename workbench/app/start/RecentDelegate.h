#pragma once

#include <QStyledItemDelegate>

/// Draws a recent file in two lines: its name, and smaller, fainter, its folder.
class RecentDelegate : public QStyledItemDelegate
{
    Q_OBJECT
public:
    enum Role {
        PathRole = Qt::UserRole,
        FolderRole, ///< the second line
        IsThereRole ///< false: the name is faint, too
    };

    explicit RecentDelegate(QObject *parent = nullptr) : QStyledItemDelegate(parent) {}

    void paint(QPainter *painter, const QStyleOptionViewItem &option,
               const QModelIndex &index) const override;
    QSize sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const override;

private:
    static QFont nameFont(const QStyleOptionViewItem &option);
};
