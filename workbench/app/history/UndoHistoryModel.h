#pragma once

#include <QAbstractListModel>

class QUndoStack;

/// The steps of the document's undo stack, oldest first, behind a row for the state before all of them. None at all
/// while there is no step. Follows the stack by itself; a new step costs the same however many there are.
class UndoHistoryModel : public QAbstractListModel
{
    Q_OBJECT
public:
    enum Role {
        /// "saved" beside the state that was saved; an invalid value otherwise.
        NoteRole = Qt::UserRole
    };

    explicit UndoHistoryModel(QObject *parent = nullptr);
    ~UndoHistoryModel() override;

    /// The row of the present state; those behind it are undone. -1 where there are no rows.
    int currentRow() const { return m_rows > 0 ? m_index : -1; }

    int rowCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;

Q_SIGNALS:
    /// Another state is the present one, or the rows have changed.
    void followed();

private:
    void follow();
    void resize(int rows);
    void tellAll();
    QString textAt(int row) const;
    QString accessibleText(int row) const;
    bool isSaved(int row) const;

    const QUndoStack *m_stack;
    int m_rows = 0;
    int m_index = 0;
};
