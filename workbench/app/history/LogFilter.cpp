#include "LogFilter.h"

#include "LogModel.h"

#include <algorithm>

LogFilter::LogFilter(LogModel *log) : QSortFilterProxyModel(log), m_log(log)
{
    setSourceModel(log);
}

LogFilter::~LogFilter() = default;

void LogFilter::setLeast(int level)
{
    m_least = level;
    invalidateFilter();
}

void LogFilter::setText(const QString &text)
{
    m_text = text;
    invalidateFilter();
}

bool LogFilter::filterAcceptsRow(int row, const QModelIndex &) const
{
    const kernel::LogLine &line = m_log->line(row);
    return line.level >= m_least
           && (m_text.isEmpty() || line.title.contains(m_text, Qt::CaseInsensitive)
               || line.text.contains(m_text, Qt::CaseInsensitive));
}

QString LogFilter::textOf(const QModelIndexList &rows) const
{
    QVector<int> lines;
    for (const QModelIndex &row : rows) {
        lines.append(mapToSource(row).row());
    }
    std::sort(lines.begin(), lines.end());
    QStringList texts;
    for (const int line : qAsConst(lines)) {
        texts.append(LogModel::textOf(m_log->line(line)));
    }
    return texts.join(QLatin1Char('\n'));
}
