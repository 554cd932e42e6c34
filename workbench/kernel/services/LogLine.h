#pragma once

#include <QDateTime>
#include <QString>

namespace kernel {

/// One line of the log, as nkLogService::reported told it.
struct LogLine
{
    QDateTime time;
    int level = 0;
    QString title;
    QString text;
};

} // namespace kernel
