#pragma once

#include <QSortFilterProxyModel>

class LogModel;

/// The lines of a log from a level on that hold a text.
class LogFilter : public QSortFilterProxyModel
{
    Q_OBJECT
public:
    /// @param log also the parent
    explicit LogFilter(LogModel *log);
    ~LogFilter() override;

    /// @param level 0: all lines, 1: warnings and errors, 2: errors
    void setLeast(int level);
    /// In source or message, whatever its case; empty: all lines.
    void setText(const QString &text);
    bool isFiltering() const { return m_least > 0 || !m_text.isEmpty(); }
    /// The lines of these rows as plain text, in order, one below the other.
    QString textOf(const QModelIndexList &rows) const;

protected:
    bool filterAcceptsRow(int row, const QModelIndex &parent) const override;

private:
    const LogModel *m_log;
    int m_least = 0;
    QString m_text;
};
