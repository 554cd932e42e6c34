#pragma once

#include "EditorState.h"
#include "OpenEditor.h"
#include "RowPlace.h"
#include "TreeState.h"

#include <QAbstractItemModel>
#include <QObject>

#include <memory>

class QAbstractItemDelegate;
class QNKTreeView;

/// Keeps a person's place in a tree view while its model changes: selection, current row, expansion, scroll
/// position and the open editor, by row.
///
/// What a change would lose is taken just before the first announcement and put back after the last: within
/// a reload of the source model after all of it, else after the new layout or the reset. Meanwhile the view
/// has no selection at all, so that not a single index of a million has to be carried through, and its
/// selection model is silent; then one signal tells what did change, if anything did.
class TreeKeeper : public QObject
{
    Q_OBJECT
public:
    explicit TreeKeeper(QNKTreeView *view);
    ~TreeKeeper() override;

    /// Around QTreeView::setModel: some announcements must be heard before the view hears them, some after.
    void aboutToSetModel(QAbstractItemModel *model);
    void modelSet();

    /// Whether the selection is being put back: no gesture of a person, nothing to commit before.
    bool isPuttingBack() const { return m_puttingBack; }
    /// Somebody set the selection while the former one was taken away: the new one counts.
    void selectionSetAnew();

    /// Carries out the view's reaction to changed cells without losing what is being typed into one of them.
    template <typename Reaction>
    void keepTyped(const QModelIndex &topLeft, const QModelIndex &bottomRight, Reaction reaction)
    {
        const Typed typed = typedIn(topLeft, bottomRight);
        reaction();
        restoreTyped(typed);
    }

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    struct Typed
    {
        QPointer<QWidget> editor; // null: nothing to be kept
        EditorState state;
        bool touched = false;
    };
    struct Held
    {
        TreeState state;
        OpenEditor editor;
        RowPlace::Slot editorRow;
        QPointer<QAbstractItemDelegate> delegate;
        EditorState editorState;
        bool editorTouched;
        bool selectionKept; // false: somebody else has set it meanwhile
        bool wasSilent;
    };

    void connectBefore();
    void connectAfter();
    void connectSource();
    void disconnectAll();

    void beforeReload();
    void afterReload();
    void beforeRows(const QModelIndex &parent, int first, int last, bool removed);
    void beforeLayout();
    void afterLayout(bool sorted);
    void beforeReset();
    void afterReset();

    void hold();
    /// @param isSameRows the source has the rows that it had when the state was taken
    void putBack(bool byRow, bool isSameRows = false);
    void putSelectionBack(Held &held, bool &selectionChanged, bool &currentChanged);
    void leaveEditor(QWidget *editor, QAbstractItemDelegate *delegate);
    void putEditorBack(const Held &held);
    void reopenEditor(const QModelIndex &index, const Held &held);
    void tell(const Held &held, bool selectionChanged, bool currentChanged);
    void closeEditorOf(const QModelIndex &parent, int first, int last);
    bool isTouched(const OpenEditor &editor) const;
    Typed typedIn(const QModelIndex &topLeft, const QModelIndex &bottomRight) const;
    void restoreTyped(const Typed &typed);

    QNKTreeView *m_view;
    /// The view's viewport, never asked for anything: it may be half destroyed.
    const QObject *m_viewport;
    QPointer<QAbstractItemModel> m_model;
    QVector<QMetaObject::Connection> m_connections;
    QVector<QMetaObject::Connection> m_sourceConnections;
    RowPlace m_place;
    QSet<RowPlace::Slot> m_expanded;
    std::unique_ptr<Held> m_held;
    QPointer<QWidget> m_opened; // the editor that opened last, and what it showed then
    EditorState m_openedState;
    bool m_reloading = false;
    bool m_puttingBack = false;
};
