#pragma once

#include "gui/tree/NameDelegate.h"

/// Draws and edits the names of rows, with a short note at the right of those that have one.
class NoteDelegate : public NameDelegate
{
    Q_OBJECT
public:
    /// @param noteRole under which the model keeps the notes, as plain texts
    explicit NoteDelegate(int noteRole, QObject *parent = nullptr);
    ~NoteDelegate() override;

    void paint(QPainter *painter, const QStyleOptionViewItem &option,
               const QModelIndex &index) const override;

private:
    const int m_noteRole;
};
