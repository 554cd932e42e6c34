#pragma once

#include "PanelDock.h"

class RowsView;
class UndoHistoryModel;

/// The history of the scene's changes in a dock: a click on a state, or Enter, goes there.
class UndoHistoryDock : public PanelDock
{
    Q_OBJECT
public:
    explicit UndoHistoryDock(QWidget *parent = nullptr);
    ~UndoHistoryDock() override;

    RowsView *view() const { return m_view; }

private:
    void goTo(const QModelIndex &index);
    void showCurrent();

    UndoHistoryModel *m_model;
    RowsView *m_view;
};
