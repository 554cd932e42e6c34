#pragma once

#include "BenchmarkResult.h"
#include "Comparison.h"

#include <functional>

/// Measures comparisons: product and baseline by turns in one process, so that both meet the same machine.
class BenchmarkRunner
{
public:
    /// @param repetitions how often each side is measured, at least 1; one more of each goes before to warm up
    explicit BenchmarkRunner(int repetitions);

    /// Runs one benchmark at one size.
    BenchmarkResult run(const BenchmarkCase &benchmark, qint64 size) const;

    /// The middle value; the mean of the two middle ones where their number is even; 0 for none.
    static double median(QVector<double> values);

private:
    /// What one repetition of a side took.
    struct Sample
    {
        double ms = 0;
        double bytes = 0;
    };
    struct Samples
    {
        QVector<double> ms;
        QVector<double> bytes;
        void add(const Sample &sample);
    };

    static Sample measure(const ComparisonSide &side);
    static QStringList missedAims(const Comparison &comparison, const BenchmarkResult &result);

    int m_repetitions;
};
