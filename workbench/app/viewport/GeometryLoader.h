#pragma once

#include <QObject>

#include <atomic>
#include <memory>

class QThread;

namespace interchange {
struct SceneGeometry;
class SceneSource;
} // namespace interchange

/// Reads what can be drawn of a scene beside the event loop.
class GeometryLoader : public QObject
{
    Q_OBJECT
public:
    using Geometry = std::shared_ptr<const interchange::SceneGeometry>;

    explicit GeometryLoader(QObject *parent = nullptr);
    /// Waits for what is being read, which ends early.
    ~GeometryLoader() override;

    /// Begins to read; what was asked for before is forgotten. Told from the event loop, also where the source
    /// has brought its geometry along. @param source null: nothing
    void load(const std::shared_ptr<const interchange::SceneSource> &source);
    bool isLoading() const { return m_job != nullptr; }

Q_SIGNALS:
    /// What was asked for last has been read. Never null.
    void loaded(const GeometryLoader::Geometry &geometry);

private:
    struct Job
    {
        std::atomic<bool> isCancelled{false};
        Geometry geometry;
    };

    void forget();
    void take(const std::shared_ptr<Job> &job);

    std::shared_ptr<Job> m_job;
    /// Those that were forgotten end by themselves.
    QList<QThread *> m_threads;
};
