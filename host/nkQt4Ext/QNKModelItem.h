#pragma once

#include "nkQt4ExtExport.h"

#include <QBrush>
#include <QList>
#include <QVariant>
#include <QVector>

class QDataStream;
class QMimeData;
class QNKItemModel;

/// One row of a QNKItemModel, with its children.
///
/// A row makes its data when it is first asked (loadData) and remembers what it made, cell by cell, until
/// reload; so a million rows that nobody looks at cost a million small objects and nothing more.
///
/// Rows are owned by their parent row, the root by the model. A reload of the model makes new row objects:
/// never keep a pointer to a row across a call that can lead to one. A row that is replaced while one of its
/// own operations runs lives until that operation has returned.
class NK_QT4EXT_EXPORT QNKModelItem
{
    Q_DISABLE_COPY(QNKModelItem)
public:
    QNKModelItem();
    /// Deletes the children too.
    virtual ~QNKModelItem();

    /// The row above; null for the root and for rows in no model.
    QNKModelItem *parent() const { return m_parent; }
    /// The position below parent(); -1 for the root.
    int row() const { return m_row; }
    /// The model the row stands in; null where it stands in none.
    QNKItemModel *model() const;

    int childCount() const { return m_children.size(); }
    /// Null outside 0..childCount()-1.
    QNKModelItem *child(int row) const;
    /// Replaces all children, taking ownership; null pointers are ignored. In a model, old and new children
    /// are compared by getId: equal ids stay in place (see QNKItemModel::reload).
    void setChildren(const QList<QNKModelItem *> &children);
    /// Whether the row has children, made or not; decides whether a view shows an expander.
    virtual bool hasChildren() const { return !m_children.isEmpty(); }
    /// Makes the children of a row that hasChildren but has made none yet (setChildren). Called when they
    /// are first looked at.
    virtual void loadChildren() {}

    /// The data of a cell: what was stored with setItemData, else what loadData makes, remembered.
    /// Qt::EditRole answers like Qt::UserRole.
    virtual QVariant data(int role, int column) const;
    /// Commits an edit: stores value and calls userDataChanged(role, column). Qt::EditRole is taken as
    /// Qt::UserRole.
    /// @return false, and nothing done, where getEditable(column) is false
    bool setData(int role, const QVariant &value, int column);
    /// Stores data without calling userDataChanged; views are told.
    void setItemData(int role, const QVariant &value, int column);
    /// Stores the display text of a cell.
    void setText(const QString &text, int column) { setItemData(Qt::DisplayRole, text, column); }
    /// The stored or made foreground brush; a default brush where there is none.
    QBrush foreground(int column) const;
    void setForeground(const QBrush &brush, int column) { setItemData(Qt::ForegroundRole, brush, column); }

    /// Whether a cell can be edited now. The base answers isEditable().
    virtual bool getEditable(int column) const;
    /// The row's identity, equal across reloads and unique in the model: an unsigned 64-bit number or a
    /// text of decimal digits. Invalid: the row has none and keeps no place.
    virtual QVariant getId() const;
    /// The class name, for diagnostics.
    virtual QVariant getClassName() const;
    /// An edit was committed into the cell; the row carries it to where its data comes from.
    virtual void userDataChanged(int role, int column);
    /// Writes the row's drag record.
    virtual void getMimeData(QDataStream &stream) const;
    /// Whether data can be dropped on this row. The base answers false.
    virtual bool canDrop(const QMimeData *data, Qt::DropAction action) const;
    /// Takes a drop; called only after canDrop said true.
    virtual bool drop(const QMimeData *data, Qt::DropAction action);
    /// Refreshes the row from where its data comes from. The base forgets what was remembered, so that the
    /// next look makes it anew.
    virtual void reload();

    bool isDragEnabled() const { return m_dragEnabled; }
    void setDragEnabled(bool enabled) { m_dragEnabled = enabled; }
    bool isDropEnabled() const { return m_dropEnabled; }
    void setDropEnabled(bool enabled) { m_dropEnabled = enabled; }
    bool isEditable() const { return m_editable; }
    void setEditable(bool editable) { m_editable = editable; }

protected:
    /// Makes the data of a cell; invalid where there is none. Called at most once per cell and role between
    /// two reloads.
    virtual QVariant loadData(int role, int column) const;

private:
    friend class QNKItemModel;
    friend class RowPlace;
    friend class RowStore;
    friend class RowChange;
    friend struct RowPlan;
    friend struct RowDiff;

    struct Datum
    {
        QVariant value;
        int role;
        qint16 column;
        bool stored; // with setItemData: outlives reload; else made, or committed by an edit
    };
    using Data = QVector<Datum>;
    enum class Children : qint8 { Unmade, BeingMade, Made };
    enum class Answer : qint8 { None, No, Yes };

    Datum *remembered(int role, int column) const;
    bool remember(int role, const QVariant &value, int column) const;
    void takeChildren(const QVector<QNKModelItem *> &children);

    QNKModelItem *m_parent = nullptr;
    QVector<QNKModelItem *> m_children;
    mutable Data m_data;
    QNKItemModel *m_model = nullptr; // the root's only
    int m_row = -1;
    int m_slot = -1; // -1: not in a model
    Children m_childrenState = Children::Unmade;
    Answer m_toldChildren = Answer::None; // what hasChildren answered last
    bool m_dragEnabled = false;
    bool m_dropEnabled = false;
    bool m_editable = false;
};
