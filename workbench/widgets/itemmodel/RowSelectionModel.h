#pragma once

#include <QItemSelectionModel>

class TreeKeeper;

/// A view's selection that commits open editors before it moves: in any of the host's views, since what is
/// selected in one decides what others show.
class RowSelectionModel : public QItemSelectionModel
{
    Q_OBJECT
public:
    /// @param keeper of the view; not owned, outlives this
    RowSelectionModel(QAbstractItemModel *model, TreeKeeper *keeper, QObject *parent);
    ~RowSelectionModel() override;

    using QItemSelectionModel::select;
    void select(const QItemSelection &selection, QItemSelectionModel::SelectionFlags command) override;
    void setCurrentIndex(const QModelIndex &index, QItemSelectionModel::SelectionFlags command) override;

private:
    bool changesSelection(const QItemSelection &selection, SelectionFlags command) const;
    QItemSelection wholeRows(const QItemSelection &selection) const;

    TreeKeeper *m_keeper;
};
