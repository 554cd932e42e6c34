#pragma once

#include "GeometryLoader.h"
#include "SceneBatches.h"
#include "SceneGizmos.h"
#include "ScenePicker.h"
#include "SceneplateImages.h"

#include <QSet>
#include <QTimer>

/// What the viewport shows of the document: the geometry of the file it came from, for the objects that it has now.
/// Follows the document while it is active and does nothing while it is not.
class ViewportScene : public QObject
{
    Q_OBJECT
public:
    enum class State {
        Empty,   ///< no file was read
        Reading, ///< what can be drawn is being read
        Ready    ///< read; there may be nothing in it
    };

    explicit ViewportScene(QObject *parent = nullptr);
    ~ViewportScene() override;

    /// Another scene. @param source of the scene; null for one without a file
    void setSource(const std::shared_ptr<const interchange::SceneSource> &source);
    /// Whether anybody looks. Becoming active catches up.
    void setActive(bool active);

    State state() const { return m_state; }
    /// Whether anything could be drawn.
    bool isBlank() const { return m_items.empty() && m_plates.plates().empty(); }
    const std::vector<SceneItem> &items() const { return m_items; }
    const SceneGizmos &gizmos() const { return m_gizmos; }
    const SceneBatches &batches() const { return m_batches; }
    const std::vector<SceneplateImages::Plate> &plates() const { return m_plates.plates(); }
    /// Changes with the batches, gizmos and plates; never 0.
    int revision() const { return m_revision; }

    /// Of all meshes; of the gizmos where there are none.
    SceneBox bounds() const;
    /// Of meshes and gizmos.
    SceneBox wholeBounds() const;
    /// Of those items that are marked.
    SceneBox boundsOf(const std::vector<bool> &marked) const;
    /// The living object at a place; 0 where there is none. See ScenePicker.
    quint64 pick(const OrbitCamera &camera, const QPointF &place, SceneGizmos::Kinds kinds) const;
    QList<quint64> pickAll(const OrbitCamera &camera, const QRectF &rect, SceneGizmos::Kinds kinds) const;
    /// Which items are these objects or stand below one of them.
    std::vector<bool> mark(const QList<quint64> &ids) const;
    /// Sentences about what is not drawn.
    QStringList troubles() const;

Q_SIGNALS:
    /// The state is another one.
    void stateChanged();
    /// Items, gizmos, batches or plates are other ones.
    void changed();
    /// The geometry of another scene is there, after changed().
    void sceneShown();

private:
    void read();
    void take(const GeometryLoader::Geometry &geometry);
    void noteChange();
    void follow();
    void arrange(std::vector<SceneItem> items);
    void setState(State state);

    std::shared_ptr<const interchange::SceneSource> m_source;
    GeometryLoader m_loader;
    SceneplateImages m_plates;
    GeometryLoader::Geometry m_geometry;
    std::vector<SceneItem> m_items;
    SceneGizmos m_gizmos;
    SceneBatches m_batches;
    std::unique_ptr<ScenePicker> m_picker;
    QTimer m_follow;
    State m_state = State::Empty;
    int m_revision = 1;
    bool m_isActive = false;
    bool m_isUnread = false;
    bool m_isStale = false;
};
