#pragma once

#include <QString>
#include <QVector>

#include <functional>

/// One of the two things that a benchmark measures. Every repetition calls prepare, run and finish in this order;
/// only run is timed, and what the heap has grown by at its end is the memory. Any of them may be empty.
struct ComparisonSide
{
    std::function<void()> prepare;
    std::function<void()> run;
    std::function<void()> finish; ///< has to free what run and prepare made
};

/// The same job done by the product and by a baseline, at one size.
///
/// The aims are ratios of ours to the baseline that the product is to keep to; 0 for none.
struct Comparison
{
    ComparisonSide ours;
    ComparisonSide baseline;
    qint64 rows = 0;           ///< what memory is divided by; 0 where memory does not matter
    double timeAim = 0;        ///< time: at most this share of the baseline's
    double memoryAim = 0;      ///< memory: at most this share of the baseline's
    double bytesPerRowAim = 0; ///< memory: at most these bytes a row, whatever the baseline takes
};

/// A benchmark: a name and how to make its comparison at each of its sizes.
struct BenchmarkCase
{
    QString name;          ///< lower case with hyphens: "table-show"
    QVector<qint64> sizes; ///< in the unit of the benchmark: rows, objects, calls
    std::function<Comparison(qint64 size)> make;
};
