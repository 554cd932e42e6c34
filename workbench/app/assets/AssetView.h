#pragma once

#include <QTreeView>

/// A list of the asset panel: says in place of rows why there are none, and tells the Return key as a wish to place.
class AssetView : public QTreeView
{
    Q_OBJECT
public:
    /// @param model not owned; outlives the view
    /// @param stretched the column that takes the width that the others leave
    AssetView(QAbstractItemModel *model, int stretched, QWidget *parent = nullptr);

    /// What is said in place of rows, as plain text.
    void setEmptyText(const QString &text);
    QString emptyText() const { return m_emptyText; }

    /// Selects these rows alone and makes the first of them current where the current one is none of them. Nothing
    /// is told where they are selected already.
    void selectOnly(const QItemSelection &selection);

Q_SIGNALS:
    /// Return was pressed in a row, or it was clicked twice.
    void placeRequested();

protected:
    void paintEvent(QPaintEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    QString m_emptyText;
};
