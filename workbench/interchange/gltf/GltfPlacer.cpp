#include <interchange/gltf/GltfPlacer.h>

#include <kernel/document/Document.h>

namespace interchange {

namespace {

const QLatin1String MatrixKey("matrix");
const QLatin1String TranslationKey("translation");
const QLatin1String RotationKey("rotation");
const QLatin1String ScaleKey("scale");

void insertNumber(QSet<quint32> &numbers, const JsonValue &value)
{
    if (value.isNumber())
        numbers.insert(JsonEdit::wholeOf(value));
}

} // namespace

GltfPlacer::GltfPlacer(const JsonTree &tree, const SceneSource &source, const GltfStructurePlan &plan,
                       const std::vector<JsonValue> &nodes, JsonEdit &edit)
    : m_tree(tree),
      m_plan(plan),
      m_nodes(nodes),
      m_edit(edit),
      m_places(source, kernel::Document::the().store(), nodes)
{
    if (!plan.movedNodes().empty() || !plan.goneNodes().empty())
        findBound();
}

void GltfPlacer::findBound()
{
    for (const JsonValue animation : m_tree.root().find(QLatin1String("animations")).children()) {
        for (const JsonValue channel : animation.find(QLatin1String("channels")).children())
            insertNumber(m_animated, channel.find(QLatin1String("target")).find(QLatin1String("node")));
    }
    for (const JsonValue skin : m_tree.root().find(QLatin1String("skins")).children()) {
        insertNumber(m_bound, skin.find(QLatin1String("skeleton")));
        for (const JsonValue joint : skin.find(QLatin1String("joints")).children())
            insertNumber(m_bound, joint);
    }
}

void GltfPlacer::place()
{
    const kernel::Store &store = kernel::Document::the().store();
    const auto isBound = [this](quint32 node) { return m_animated.contains(node) || m_bound.contains(node); };
    for (const SceneSource::ObjectOrigin *node : m_plan.goneNodes())
        m_disturbedCount += isBound(node->index) ? 1 : 0;
    for (const SceneSource::ObjectOrigin *node : m_plan.movedNodes()) {
        const kernel::Slot parent = store.object(store.objectSlot(node->id)).place.parent;
        bool isLost = false;
        const auto transform = m_places.below(*node, store.idOf(parent), isLost);
        m_lostCount += isLost ? 1 : 0;
        m_disturbedCount += (transform || isLost) && isBound(node->index) ? 1 : 0;
        if (transform)
            place(node->index, *transform);
    }
}

/// Animations move by steps, so a node of theirs has no matrix.
void GltfPlacer::place(quint32 index, const GltfTransform &transform)
{
    const JsonValue &node = m_nodes[index];
    bool isExact = false;
    const GltfTransform::Steps steps = transform.steps(isExact);
    if (!node.find(MatrixKey).isPresent() && (isExact || m_animated.contains(index)))
        return setSteps(node, steps);
    for (const QLatin1String key : {TranslationKey, RotationKey, ScaleKey})
        setMember(node, key, QByteArray());
    setMember(node, MatrixKey, transform.isIdentity() ? QByteArray() : transform.text(m_edit.isSpaced(node)));
}

void GltfPlacer::setSteps(const JsonValue &node, const GltfTransform::Steps &steps)
{
    const bool isSpaced = m_edit.isSpaced(node);
    const GltfTransform::Steps none;
    const GltfTransform::Steps before = GltfTransform::stepsOf(node);
    const auto set = [&](QLatin1String key, const auto &value, const auto &old, const auto &nothing) {
        if (value != old)
            setMember(node, key, value == nothing ? QByteArray() : GltfTransform::text(value, isSpaced));
    };
    set(TranslationKey, steps.translation, before.translation, none.translation);
    set(RotationKey, steps.rotation, before.rotation, none.rotation);
    set(ScaleKey, steps.scale, before.scale, none.scale);
}

/// Without a text, the member goes.
void GltfPlacer::setMember(const JsonValue &node, QLatin1String key, const QByteArray &text)
{
    const JsonValue member = node.find(key);
    if (text.isEmpty() && member.isPresent())
        m_edit.remove(node, member);
    else if (member.isPresent())
        m_edit.replace(member, text);
    else if (!text.isEmpty())
        m_edit.append(node, {key, text});
}

} // namespace interchange
