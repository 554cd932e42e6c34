#include "LogService.h"

#include "ServiceRegistry.h"

#include <QLoggingCategory>

#include <algorithm>

namespace kernel {

namespace {

Q_LOGGING_CATEGORY(workbenchLog, "workbench", QtInfoMsg)

QLatin1String levelName(LogService::Level level)
{
    switch (level) {
    case LogService::Information:
        return QLatin1String("information");
    case LogService::Warning:
        return QLatin1String("warning");
    case LogService::Error:
        break;
    }
    return QLatin1String("error");
}

/// A text of its own: a literal of a plug-in is gone when the plug-in is unloaded, and the log stays.
QString onTheHeap(const QString &text)
{
    return QString(text.constData(), text.size());
}

/// Names and values come from files: a line break or an escape sequence in one must neither forge a second
/// line nor reach the terminal.
QString oneLine(QString text)
{
    for (QChar &character : text) {
        if (character == QLatin1Char('\n') || character == QLatin1Char('\t')) {
            character = QLatin1Char(' ');
        } else if (character.category() == QChar::Other_Control) {
            character = QChar::ReplacementCharacter;
        }
    }
    return text;
}

} // namespace

void LogService::reportError(const QString &title, const QString &text)
{
    report(Error, title, text);
}

void LogService::reportWarning(const QString &title, const QString &text)
{
    report(Warning, title, text);
}

void LogService::reportInformation(const QString &title, const QString &text)
{
    report(Information, title, text);
}

QVector<LogLine> LogService::lines() const
{
    return QVector<LogLine>(m_lines.begin(), m_lines.end());
}

QVector<LogLine> LogService::linesSince(quint64 lineCount) const
{
    const quint64 missed = m_lineCount - std::min(lineCount, m_lineCount);
    const auto count = std::ptrdiff_t(std::min(missed, quint64(m_lines.size())));
    return QVector<LogLine>(m_lines.end() - count, m_lines.end());
}

void LogService::clear()
{
    m_lines.clear();
}

void LogService::report(Level level, const QString &title, const QString &text)
{
    // Copies: the caller's texts may be lines of this log, and a listener may report again.
    const LogLine line{QDateTime::currentDateTime(), level, onTheHeap(title), onTheHeap(text)};
    m_lines.push_back(line);
    ++m_lineCount;
    if (m_lines.size() > size_t(capacity)) {
        m_lines.pop_front();
    }
    qCInfo(workbenchLog).noquote().nospace()
        << levelName(level) << ": " << oneLine(line.title) << ": " << oneLine(line.text);
    Q_EMIT reported(level, line.title, line.text);
}

} // namespace kernel

nkLogService &nkLogService::the()
{
    return kernel::ServiceRegistry::the().service<kernel::LogService>();
}
