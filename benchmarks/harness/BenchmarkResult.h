#pragma once

#include <QJsonArray>
#include <QString>
#include <QVector>

/// What came out of one benchmark at one size: medians over the repetitions.
struct BenchmarkResult
{
    QString name;
    qint64 size = 0;
    double oursMs = 0;
    double baselineMs = 0;
    bool withMemory = false; ///< whether the bytes below were measured
    double oursBytesPerRow = 0;
    double baselineBytesPerRow = 0;
    QStringList missedAims; ///< one sentence each

    /// Time of ours over time of the baseline, below 1 where ours is faster. 0 where the baseline took no time.
    double ratio() const { return baselineMs > 0 ? oursMs / baselineMs : 0; }
    /// The same for memory.
    double bytesRatio() const { return baselineBytesPerRow > 0 ? oursBytesPerRow / baselineBytesPerRow : 0; }
};

/// How results are written down.
namespace BenchmarkReport {

/// The heading of the table that line() fills.
QString heading();

/// One line of the table, without a line end; missed aims follow on lines of their own.
QString line(const BenchmarkResult &result);

/// One object a result with "name", "size", "ours_ms", "baseline_ms" and "ratio", and where memory was measured
/// "ours_bytes_per_row", "baseline_bytes_per_row" and "bytes_ratio".
QJsonArray toJson(const QVector<BenchmarkResult> &results);

} // namespace BenchmarkReport
