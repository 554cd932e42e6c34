#include "SceneItem.h"

#include "interchange/SceneSource.h"
#include "interchange/geometry/SceneGeometry.h"
#include "kernel/document/Document.h"

#include <algorithm>
#include <cmath>

using interchange::SceneGeometry;
using interchange::SceneSource;

namespace {

struct Step
{
    quint64 id;
    QMatrix4x4 above;
};

bool isFinite(const QMatrix4x4 &matrix)
{
    const float *numbers = matrix.constData();
    return std::all_of(numbers, numbers + 16,
                       [](float number) { return std::isfinite(number) && std::abs(number) < 1e15F; });
}

/// The node in the file; -1 for an object that came into being here.
qint32 nodeOf(quint64 id, const SceneGeometry &geometry, const SceneSource &source)
{
    const SceneSource::ObjectOrigin *origin = source.object(id);
    const bool isNode = origin && origin->list == SceneSource::List::Nodes
                        && origin->index < geometry.nodes.size();
    return isNode ? qint32(origin->index) : -1;
}

bool showsSomething(const SceneGeometry::Node &node)
{
    return node.mesh >= 0 || node.camera >= 0 || node.light >= 0;
}

/// The last one comes first off the list.
void addSteps(std::vector<Step> &steps, const QList<quint64> &ids, const QMatrix4x4 &above)
{
    for (auto id = ids.crbegin(); id != ids.crend(); ++id) {
        steps.push_back({*id, above});
    }
}

} // namespace

std::vector<SceneItem> SceneItem::all(const SceneGeometry &geometry, const SceneSource &source)
{
    const kernel::Document &document = kernel::Document::the();
    std::vector<SceneItem> items;
    std::vector<Step> steps; // files nest nodes thousands deep: no recursion
    addSteps(steps, document.topLevelNodes(), QMatrix4x4());
    while (!steps.empty()) {
        const Step step = steps.back();
        steps.pop_back();
        const qint32 node = nodeOf(step.id, geometry, source);
        QMatrix4x4 world = step.above;
        if (node >= 0) {
            world *= geometry.nodes[size_t(node)].local;
            if (showsSomething(geometry.nodes[size_t(node)]) && isFinite(world)) {
                items.push_back({step.id, node, world});
            }
        }
        addSteps(steps, document.childrenOf(step.id), world);
    }
    return items;
}
