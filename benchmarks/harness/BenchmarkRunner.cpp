#include "BenchmarkRunner.h"

#include "HeapMeter.h"

#include <QElapsedTimer>

#include <algorithm>

namespace {

void call(const std::function<void()> &step)
{
    if (step)
        step();
}

} // namespace

void BenchmarkRunner::Samples::add(const Sample &sample)
{
    ms.append(sample.ms);
    bytes.append(sample.bytes);
}

BenchmarkRunner::BenchmarkRunner(int repetitions) : m_repetitions(std::max(1, repetitions)) {}

BenchmarkResult BenchmarkRunner::run(const BenchmarkCase &benchmark, qint64 size) const
{
    const Comparison comparison = benchmark.make(size);
    Samples ours;
    Samples baseline;
    measure(comparison.ours);
    measure(comparison.baseline);
    for (int i = 0; i < m_repetitions; ++i) {
        // Who goes first changes, so that what a side leaves behind in caches helps both.
        if (i % 2 == 0) {
            ours.add(measure(comparison.ours));
            baseline.add(measure(comparison.baseline));
        } else {
            baseline.add(measure(comparison.baseline));
            ours.add(measure(comparison.ours));
        }
    }
    BenchmarkResult result{
        benchmark.name, size, median(ours.ms), median(baseline.ms), comparison.rows > 0, 0, 0, {}};
    if (result.withMemory) {
        result.oursBytesPerRow = median(ours.bytes) / double(comparison.rows);
        result.baselineBytesPerRow = median(baseline.bytes) / double(comparison.rows);
    }
    result.missedAims = missedAims(comparison, result);
    return result;
}

double BenchmarkRunner::median(QVector<double> values)
{
    if (values.isEmpty())
        return 0;
    std::sort(values.begin(), values.end());
    const int middle = values.size() / 2;
    return values.size() % 2 == 1 ? values.at(middle) : (values.at(middle - 1) + values.at(middle)) / 2;
}

BenchmarkRunner::Sample BenchmarkRunner::measure(const ComparisonSide &side)
{
    call(side.prepare);
    Sample sample;
    const qint64 before = HeapMeter::bytesInUse();
    QElapsedTimer timer;
    timer.start();
    call(side.run);
    sample.ms = double(timer.nsecsElapsed()) / 1e6;
    sample.bytes = double(HeapMeter::bytesInUse() - before);
    call(side.finish);
    return sample;
}

QStringList BenchmarkRunner::missedAims(const Comparison &comparison, const BenchmarkResult &result)
{
    QStringList missed;
    const auto hold = [&missed](double aim, double value, const char *text) {
        if (aim > 0 && value > aim)
            missed.append(QString::asprintf(text, value, aim));
    };
    hold(comparison.timeAim, result.ratio(), "%.3f times the baseline's time, at most %.3f aimed at");
    if (result.withMemory) {
        hold(comparison.memoryAim, result.bytesRatio(),
             "%.3f times the baseline's memory, at most %.3f aimed at");
        hold(comparison.bytesPerRowAim, result.oursBytesPerRow, "%.1f bytes a row, at most %.1f aimed at");
    }
    return missed;
}
