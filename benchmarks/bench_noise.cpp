#include "harness/BenchmarkRegistry.h"

#include <QString>
#include <QStringList>

#include <algorithm>
#include <memory>

/// Both sides do the very same, so the ratio of times and of memory is 1 but for the noise of the machine: as far as
/// it is off, so far may every other ratio of the same run be.
static Comparison compareNoise(qint64 size)
{
    const auto makeSide = [size] {
        const auto texts = std::make_shared<QStringList>();
        ComparisonSide side;
        side.run = [texts, size] {
            for (qint64 i = 0; i < size; ++i)
                texts->append(QString::number(i * 7919 % size));
            std::sort(texts->begin(), texts->end());
        };
        side.finish = [texts] { *texts = QStringList(); };
        return side;
    };
    Comparison comparison;
    comparison.ours = makeSide();
    comparison.baseline = makeSide();
    comparison.rows = size;
    return comparison;
}
NK_BENCHMARK("noise", compareNoise, 100000)
