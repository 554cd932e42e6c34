#include "ViewportScene.h"

#include "interchange/SceneSource.h"
#include "kernel/document/Document.h"

#include <algorithm>

using kernel::Document;

namespace {

/// Of a gizmo, measured by the scene.
constexpr float gizmoShare = 0.06F;
constexpr float usualGizmo = 0.5F;

bool areEqual(const std::vector<SceneItem> &a, const std::vector<SceneItem> &b)
{
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](const SceneItem &left, const SceneItem &right) {
                          return left.id == right.id && left.node == right.node && left.world == right.world;
                      });
}

bool isAlive(quint64 id)
{
    return Document::the().typeOf(id) != nkObjectType::Null;
}

} // namespace

ViewportScene::ViewportScene(QObject *parent) : QObject(parent)
{
    // Changes come many at a time.
    m_follow.setSingleShot(true);
    connect(&m_follow, &QTimer::timeout, this, &ViewportScene::follow);
    connect(&m_loader, &GeometryLoader::loaded, this, &ViewportScene::take);
    connect(&m_plates, &SceneplateImages::changed, this, [this] {
        ++m_revision;
        Q_EMIT changed();
    });
    connect(&Document::the(), &Document::sceneChanged, this, &ViewportScene::noteChange);
}

ViewportScene::~ViewportScene() = default;

void ViewportScene::setSource(const std::shared_ptr<const interchange::SceneSource> &source)
{
    m_source = source;
    m_geometry.reset();
    m_isUnread = source != nullptr;
    m_loader.load(nullptr);
    arrange({});
    setState(source ? State::Reading : State::Empty);
    if (m_isActive) {
        read();
    }
}

void ViewportScene::setActive(bool active)
{
    m_isActive = active;
    m_plates.setActive(active);
    if (active) {
        read();
        follow();
    }
}

void ViewportScene::read()
{
    if (m_isUnread) {
        m_isUnread = false;
        m_loader.load(m_source);
    }
}

void ViewportScene::take(const GeometryLoader::Geometry &geometry)
{
    m_geometry = geometry;
    arrange(SceneItem::all(*m_geometry, *m_source));
    setState(State::Ready);
    Q_EMIT sceneShown();
}

void ViewportScene::noteChange()
{
    m_isStale = true;
    if (m_isActive) {
        m_follow.start(0);
    }
}

/// Nothing is made anew for a change that moves nothing, such as a name.
void ViewportScene::follow()
{
    if (!m_isStale || !m_isActive) {
        return;
    }
    m_isStale = false;
    if (m_geometry) {
        std::vector<SceneItem> items = SceneItem::all(*m_geometry, *m_source);
        if (!areEqual(items, m_items)) {
            arrange(std::move(items));
        }
    }
}

void ViewportScene::arrange(std::vector<SceneItem> items)
{
    m_picker.reset();
    m_items = std::move(items);
    if (m_geometry) {
        m_batches = SceneBatches(*m_geometry, m_items);
        m_picker = std::make_unique<ScenePicker>(*m_geometry, m_items, m_gizmos);
        const float radius = m_picker->bounds().radius();
        m_gizmos = SceneGizmos(*m_geometry, m_items, radius > 0 ? radius * gizmoShare : usualGizmo);
    } else {
        m_gizmos = SceneGizmos();
        m_batches = SceneBatches();
    }
    ++m_revision;
    Q_EMIT changed();
}

void ViewportScene::setState(State state)
{
    m_state = state;
    Q_EMIT stateChanged();
}

SceneBox ViewportScene::bounds() const
{
    const SceneBox meshes = m_picker ? m_picker->bounds() : SceneBox();
    return meshes.isEmpty() ? m_gizmos.bounds() : meshes;
}

SceneBox ViewportScene::wholeBounds() const
{
    SceneBox box = m_gizmos.bounds();
    box.add(bounds());
    return box;
}

SceneBox ViewportScene::boundsOf(const std::vector<bool> &marked) const
{
    SceneBox box;
    for (size_t i = 0; i < marked.size(); ++i) {
        if (marked[i]) {
            box.add(m_picker->boundsOf(i));
        }
    }
    for (const SceneGizmos::Gizmo &gizmo : m_gizmos.all()) {
        if (marked.size() > gizmo.item && marked[gizmo.item]) {
            box.add(m_gizmos.boundsOf(gizmo));
        }
    }
    return box;
}

quint64 ViewportScene::pick(const OrbitCamera &camera, const QPointF &place, SceneGizmos::Kinds kinds) const
{
    const quint64 id = m_picker ? m_picker->at(camera, place, kinds) : 0;
    return isAlive(id) ? id : 0;
}

QList<quint64> ViewportScene::pickAll(const OrbitCamera &camera, const QRectF &rect,
                                      SceneGizmos::Kinds kinds) const
{
    QList<quint64> ids = m_picker ? m_picker->in(camera, rect, kinds) : QList<quint64>();
    const auto isDead = [](quint64 id) { return !isAlive(id); };
    ids.erase(std::remove_if(ids.begin(), ids.end(), isDead), ids.end());
    return ids;
}

std::vector<bool> ViewportScene::mark(const QList<quint64> &ids) const
{
    QList<quint64> all = ids;
    QSet<quint64> wanted(ids.cbegin(), ids.cend());
    for (int i = 0; i < all.size(); ++i) {
        for (const quint64 child : Document::the().childrenOf(all.at(i))) {
            if (!wanted.contains(child)) {
                wanted.insert(child);
                all.append(child);
            }
        }
    }
    std::vector<bool> marked(m_items.size());
    for (size_t i = 0; i < marked.size(); ++i) {
        marked[i] = wanted.contains(m_items[i].id);
    }
    return marked;
}

QStringList ViewportScene::troubles() const
{
    QStringList sentences = m_geometry ? m_geometry->troubles : QStringList();
    sentences += m_plates.troubles();
    if (!m_batches.isComplete()) {
        sentences.append(tr("The scene has more triangles than can be drawn; some objects are left out."));
    }
    return sentences;
}
