#pragma once

#include "Comparison.h"

/// The benchmarks of the program, in the order of their names. A file benchmarks/bench_SUBJECT.cpp adds its own:
///
///     #include "harness/BenchmarkRegistry.h"
///
///     static Comparison compareTableShow(qint64 rows)
///     {
///         Comparison comparison;
///         auto table = std::make_shared<Table>(rows); // what both sides need stands outside of the timed run
///         comparison.ours = {[=] { table->reset(); }, [=] { table->show(); }, [=] { table->clear(); }};
///         comparison.baseline = ...
///         comparison.rows = rows;
///         comparison.timeAim = 0.5;
///         return comparison;
///     }
///     NK_BENCHMARK("table-show", compareTableShow, 100000, 1000000)
///
/// Both sides have to do the same work and to sort alike. A benchmark has to run at any size from 100 up: the tests
/// run all of them small, so that none of them rots.
namespace BenchmarkRegistry {

/// Adds a benchmark; called before main() by NK_BENCHMARK. Always true.
bool add(const BenchmarkCase &benchmark);

QVector<BenchmarkCase> all();

} // namespace BenchmarkRegistry

/// Adds a benchmark to the program: its name, a function Comparison(qint64 size), and the sizes.
#define NK_BENCHMARK(name, make, ...)                                   \
    static const bool nkBenchmarkAdded_##make = BenchmarkRegistry::add( \
        {QStringLiteral(name), {__VA_ARGS__}, make});
