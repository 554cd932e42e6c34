#include "harness/BenchmarkRegistry.h"

#include <nkKernelServices/nkdMetadataEntry.h>

#include <QVector>

#include <memory>

namespace {

/// An id and a type id in a QObject and nothing else: the least that a handle which is a QObject can be.
class BareObject : public QObject
{
public:
    explicit BareObject(quint64 id = 0) : m_id(id), m_type(id) {}
    BareObject(const BareObject &other) : QObject(), m_id(other.m_id), m_type(other.m_type) {}
    BareObject &operator=(const BareObject &other)
    {
        m_id = other.m_id;
        m_type = other.m_type;
        return *this;
    }

private:
    quint64 m_id;
    quint64 m_type;
};

template <typename Handle>
ComparisonSide makeSide(qint64 size)
{
    const auto originals = std::make_shared<QVector<Handle>>();
    const auto copies = std::make_shared<QVector<Handle>>();
    ComparisonSide side;
    side.prepare = [originals, size] {
        for (qint64 index = 0; index < size; ++index) {
            originals->append(Handle(quint64(1000000000 + index)));
        }
    };
    side.run = [originals, copies] {
        copies->reserve(originals->size());
        for (const Handle &handle : qAsConst(*originals)) {
            copies->append(handle);
        }
    };
    side.finish = [originals, copies] {
        *copies = QVector<Handle>();
        *originals = QVector<Handle>();
    };
    return side;
}

} // namespace

/// Copying handles, against the least that a QObject with two numbers costs.
static Comparison compareHandleCopy(qint64 size)
{
    Comparison comparison;
    comparison.ours = makeSide<nkdMetadataEntry>(size);
    comparison.baseline = makeSide<BareObject>(size);
    comparison.rows = size;
    comparison.timeAim = 1.25;
    comparison.memoryAim = 1.05;
    return comparison;
}
NK_BENCHMARK("handle-copy", compareHandleCopy, 100000, 1000000)
