#include "UndoHistoryDock.h"

#include "RowsView.h"
#include "UndoHistoryModel.h"

#include "panels/NoteDelegate.h"

#include "kernel/document/Document.h"

#include <nkQt4Ext/QNKViewBase.h>

#include <QHeaderView>

UndoHistoryDock::UndoHistoryDock(QWidget *parent)
    : PanelDock(tr("Undo History"), tr("&Undo History"), QStringLiteral("UndoHistoryPanel"),
                QStringLiteral("UndoHistory"), parent),
      m_model(new UndoHistoryModel(this)),
      m_view(new RowsView(this))
{
    m_view->setAccessibleName(tr("Undo History"));
    m_view->setHeaderHidden(true);
    m_view->setModel(m_model);
    m_view->setItemDelegate(new NoteDelegate(UndoHistoryModel::NoteRole, m_view));
    m_view->setEmptyText(
        tr("Nothing was changed yet.\nEvery change of the scene is listed here; click one to go "
           "back to it."));
    setWidget(m_view);
    connect(m_view, &QAbstractItemView::clicked, this, &UndoHistoryDock::goTo);
    connect(m_view, &QAbstractItemView::activated, this, &UndoHistoryDock::goTo);
    connect(m_model, &UndoHistoryModel::followed, this, &UndoHistoryDock::showCurrent);
    showCurrent();
}

UndoHistoryDock::~UndoHistoryDock() = default;

/// What is being typed becomes a step first, and takes the place of the undone ones: then there may be nowhere to
/// go to.
void UndoHistoryDock::goTo(const QModelIndex &index)
{
    const int row = index.row();
    QNKViewBase::commitOpenEditors();
    kernel::Document::the().goToStep(row);
    showCurrent();
}

void UndoHistoryDock::showCurrent()
{
    const QModelIndex current = m_model->index(m_model->currentRow());
    m_view->setCurrentIndex(current);
    m_view->scrollTo(current);
}
