#include "UndoHistoryModel.h"

#include "kernel/document/Document.h"

#include <QApplication>
#include <QFont>
#include <QPalette>
#include <QUndoStack>

using kernel::Document;

UndoHistoryModel::UndoHistoryModel(QObject *parent)
    : QAbstractListModel(parent), m_stack(Document::the().undoStack())
{
    connect(m_stack, &QUndoStack::indexChanged, this, &UndoHistoryModel::follow);
    // What is saved shows in any row.
    connect(m_stack, &QUndoStack::cleanChanged, this, &UndoHistoryModel::tellAll);
    connect(&Document::the(), &Document::modifiedChanged, this, &UndoHistoryModel::tellAll);
    follow();
}

UndoHistoryModel::~UndoHistoryModel() = default;

void UndoHistoryModel::follow()
{
    const int before = m_index;
    m_index = m_stack->index();
    resize(m_stack->count() > 0 ? m_stack->count() + 1 : 0);
    if (m_rows > 0) {
        // A new step may stand where an undone one stood.
        const int first = qBound(0, qMin(before, m_index), m_rows - 1);
        const int last = qBound(0, qMax(before, m_index), m_rows - 1);
        Q_EMIT dataChanged(index(first), index(last));
    }
    Q_EMIT followed();
}

void UndoHistoryModel::resize(int rows)
{
    if (rows > m_rows) {
        beginInsertRows({}, m_rows, rows - 1);
        m_rows = rows;
        endInsertRows();
    } else if (rows < m_rows) {
        beginRemoveRows({}, rows, m_rows - 1);
        m_rows = rows;
        endRemoveRows();
    }
}

void UndoHistoryModel::tellAll()
{
    if (m_rows > 0) {
        Q_EMIT dataChanged(index(0), index(m_rows - 1));
    }
}

int UndoHistoryModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : m_rows;
}

QString UndoHistoryModel::textAt(int row) const
{
    return row == 0 ? tr("Start") : m_stack->text(row - 1);
}

/// The document knows better than the stack whether it is as it was saved.
bool UndoHistoryModel::isSaved(int row) const
{
    return row == m_stack->cleanIndex() && (row != m_index || !Document::the().isModified());
}

QString UndoHistoryModel::accessibleText(int row) const
{
    QStringList texts{textAt(row)};
    if (row == m_index) {
        texts.append(tr("current"));
    } else if (row > m_index) {
        texts.append(tr("undone"));
    }
    if (isSaved(row)) {
        texts.append(tr("saved"));
    }
    return texts.join(QLatin1String(", "));
}

QVariant UndoHistoryModel::data(const QModelIndex &index, int role) const
{
    const int row = index.row();
    if (!index.isValid() || row >= m_rows) {
        return {};
    }
    switch (role) {
    case Qt::DisplayRole:
        return textAt(row);
    case Qt::AccessibleTextRole:
        return accessibleText(row);
    case NoteRole:
        return isSaved(row) ? QVariant(tr("saved")) : QVariant();
    case Qt::FontRole: {
        QFont font = QApplication::font();
        font.setBold(row == m_index);
        font.setItalic(row > m_index);
        return font;
    }
    case Qt::ForegroundRole:
        return row > m_index ? QVariant(QApplication::palette().brush(QPalette::Disabled, QPalette::Text))
                             : QVariant();
    default:
        return {};
    }
}
