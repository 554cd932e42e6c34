#include "BenchmarkRegistry.h"

#include <algorithm>

namespace {

QVector<BenchmarkCase> &cases()
{
    // Inside a function, because other files fill it while static objects are made.
    static QVector<BenchmarkCase> registered;
    return registered;
}

} // namespace

bool BenchmarkRegistry::add(const BenchmarkCase &benchmark)
{
    cases().append(benchmark);
    return true;
}

QVector<BenchmarkCase> BenchmarkRegistry::all()
{
    QVector<BenchmarkCase> sorted = cases();
    const auto byName = [](const BenchmarkCase &a, const BenchmarkCase &b) { return a.name < b.name; };
    std::stable_sort(sorted.begin(), sorted.end(), byName);
    return sorted;
}
