#include "BenchmarkResult.h"

#include <QJsonObject>
#include <QStringList>

QString BenchmarkReport::heading()
{
    return QString::asprintf("%-24s %10s %12s %12s %7s %12s %12s %7s", "benchmark", "size", "ours ms",
                             "baseline ms", "ratio", "ours B/row", "base B/row", "ratio");
}

QString BenchmarkReport::line(const BenchmarkResult &result)
{
    QString text = QString::asprintf("%-24s %10lld %12.3f %12.3f %7.3f", qPrintable(result.name),
                                     static_cast<long long>(result.size), result.oursMs, result.baselineMs,
                                     result.ratio());
    if (result.withMemory)
        text += QString::asprintf(" %12.1f %12.1f %7.3f", result.oursBytesPerRow, result.baselineBytesPerRow,
                                  result.bytesRatio());
    for (const QString &missed : result.missedAims)
        text += QStringLiteral("\n    missed: ") + missed;
    return text;
}

QJsonArray BenchmarkReport::toJson(const QVector<BenchmarkResult> &results)
{
    QJsonArray array;
    for (const BenchmarkResult &result : results) {
        QJsonObject object{{QStringLiteral("name"), result.name},
                           {QStringLiteral("size"), result.size},
                           {QStringLiteral("ours_ms"), result.oursMs},
                           {QStringLiteral("baseline_ms"), result.baselineMs},
                           {QStringLiteral("ratio"), result.ratio()}};
        if (result.withMemory) {
            object.insert(QStringLiteral("ours_bytes_per_row"), result.oursBytesPerRow);
            object.insert(QStringLiteral("baseline_bytes_per_row"), result.baselineBytesPerRow);
            object.insert(QStringLiteral("bytes_ratio"), result.bytesRatio());
        }
        array.append(object);
    }
    return array;
}
