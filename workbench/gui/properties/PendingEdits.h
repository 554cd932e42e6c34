#pragma once

#include <nkQt4Ext/QNKViewBase.h>

#include <QListView>
#include <QStringListModel>

/// Stands among the host's views for a panel whose editors lie in no view: while something in the panel waits to be
/// committed, this view counts as one with an open editor, so that whoever has open editors committed (before
/// saving, undoing, closing, or another selection) reaches the panel too. Never shown.
class PendingEdits : public QListView, public QNKViewBase
{
    Q_OBJECT
public:
    /// @param panel owns it
    explicit PendingEdits(QWidget *panel);
    ~PendingEdits() override;

    bool isPending() const { return state() == EditingState; }
    void setPending(bool pending) { setState(pending ? EditingState : NoState); }

Q_SIGNALS:
    /// What waits is to be committed now, inside the call. Whoever listens may delete this view.
    void commitRequested();

protected Q_SLOTS:
    void commitData(QWidget *editor) override;
    void closeEditor(QWidget *editor, QAbstractItemDelegate::EndEditHint hint) override;

private:
    QStringListModel m_cell;
};
