#pragma once

#include "kernel/services/LogLine.h"

#include <QAbstractTableModel>
#include <QTimer>

#include <deque>

/// The kept lines of the log, oldest first. New lines are appended, once for all that were written in one turn of the
/// event loop; the oldest go when the log holds no more.
class LogModel : public QAbstractTableModel
{
    Q_OBJECT
public:
    enum Column { Level, Time, Source, Message, ColumnCount };

    explicit LogModel(QObject *parent = nullptr);
    ~LogModel() override;

    const kernel::LogLine &line(int row) const { return m_lines[size_t(row)]; }
    /// The line as plain text: time, level, source, and the whole message.
    static QString textOf(const kernel::LogLine &line);
    static QString levelName(int level);
    /// Empties the log itself.
    void clear();

    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    void follow();

    std::deque<kernel::LogLine> m_lines;
    QTimer m_soon;
    /// How many lines had been written when the model last looked.
    quint64 m_seen = 0;
};
