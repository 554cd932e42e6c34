#include "PendingEdits.h"

PendingEdits::PendingEdits(QWidget *panel) : QListView(panel), QNKViewBase(this), m_cell({QString()})
{
    setObjectName(QStringLiteral("PendingEdits"));
    setFocusPolicy(Qt::NoFocus);
    setModel(&m_cell);
    setCurrentIndex(m_cell.index(0));
    // What the host takes for the open editor.
    setIndexWidget(m_cell.index(0), new QWidget(viewport()));
    hide();
}

// The model goes before the view does.
PendingEdits::~PendingEdits()
{
    setModel(nullptr);
}

void PendingEdits::commitData(QWidget *)
{
    Q_EMIT commitRequested();
}

// The panel says itself when nothing waits any more.
void PendingEdits::closeEditor(QWidget *, QAbstractItemDelegate::EndEditHint) {}
