#include "fixtures/OrbitStage.h"
#include "harness/BenchmarkRegistry.h"

#include <cstdio>

/// A step around a scene of many nodes and its frame, until the graphics card is done, against drawing the same
/// triangles in one call.
static Comparison compareOrbit(qint64 nodes)
{
    Comparison comparison;
    const auto stage = std::make_shared<OrbitStage>(int(nodes));
    if (!stage->isReady()) {
        std::fprintf(stderr, "bench: orbit is left out: it needs a display with OpenGL (QT_QPA_PLATFORM=xcb "
                             "xvfb-run -a ./bench orbit)\n");
        return comparison;
    }
    comparison.ours.run = [stage] { stage->drawFrames(); };
    comparison.baseline.run = [stage] { stage->drawAtOnce(); };
    comparison.timeAim = 2;
    return comparison;
}
NK_BENCHMARK("orbit", compareOrbit, 12603)
