#include "RowSelectionModel.h"

#include "OpenEditor.h"
#include "TreeKeeper.h"

RowSelectionModel::RowSelectionModel(QAbstractItemModel *itemModel, TreeKeeper *keeper, QObject *parent)
    : QItemSelectionModel(itemModel, parent), m_keeper(keeper)
{}

RowSelectionModel::~RowSelectionModel() = default;

void RowSelectionModel::select(const QItemSelection &selection, SelectionFlags command)
{
    if (!m_keeper->isPuttingBack()) {
        if (command != NoUpdate && OpenEditor::isAnyOpen() && changesSelection(selection, command))
            OpenEditor::commitAll();
        m_keeper->selectionSetAnew();
    }
    QItemSelectionModel::select(selection, command);
}

void RowSelectionModel::setCurrentIndex(const QModelIndex &index, SelectionFlags command)
{
    const QPersistentModelIndex wanted(index); // a commit may move it, or take it away
    const bool movesRow = index.row() != currentIndex().row() || index.parent() != currentIndex().parent();
    if (!m_keeper->isPuttingBack() && index.isValid() && movesRow && OpenEditor::isAnyOpen())
        OpenEditor::commitAll();
    QItemSelectionModel::setCurrentIndex(wanted, command);
}

/// Whether a command would leave another selection than there is.
bool RowSelectionModel::changesSelection(const QItemSelection &selected, SelectionFlags command) const
{
    const QItemSelection before = selection();
    QItemSelection after = command.testFlag(Clear) ? QItemSelection() : before;
    const SelectionFlags how = command & (Select | Deselect | Toggle);
    if (how != 0)
        after.merge(command.testFlag(Rows) ? wholeRows(selected) : selected, how);
    after.merge(before, Toggle);
    return !after.isEmpty();
}

QItemSelection RowSelectionModel::wholeRows(const QItemSelection &selection) const
{
    QItemSelection whole;
    for (const QItemSelectionRange &range : selection) {
        if (!range.isValid())
            continue;
        const int last = model()->columnCount(range.parent()) - 1;
        whole.append(QItemSelectionRange(model()->index(range.top(), 0, range.parent()),
                                         model()->index(range.bottom(), last, range.parent())));
    }
    return whole;
}
