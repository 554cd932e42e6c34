#pragma once

#include <nkKernelServices/nkQueryService.h>

#include <QThreadPool>
#include <QTimer>
#include <QVector>

#include <atomic>
#include <memory>

namespace kernel {

class SnapshotCollector;
struct QueryNode;
struct QuerySnapshot;

/// Metadata search on threads of its own. A query is read at once, the scene is copied in slices of the event
/// loop, then searched on a thread; a scene that changes meanwhile is copied anew. The copy is kept for the next
/// query until the scene changes or the search is cancelled. Destroying the service waits for its threads, which
/// stop at the next entry.
class NK_KERNEL_SERVICES_EXPORT QueryService final : public nkQueryService
{
    Q_OBJECT
public:
    QueryService();
    ~QueryService() override;

    void startAsyncMetadataQuery(const QString &query) override;
    void cancelAsyncMetadataQuery() override;
    QString getQueryError() const override { return m_error; }

private:
    /// One query, from its start to its answer or its end.
    struct Job
    {
        std::atomic<bool> cancelled{false};
        std::unique_ptr<QueryNode> query;
    };
    using Snapshot = std::shared_ptr<const QuerySnapshot>;

    void stop();
    void watchScene();
    void dropSnapshot();
    void onSceneChanged();
    void collect();
    void search(const Snapshot &snapshot);
    void finish(const std::shared_ptr<Job> &job, const QVector<quint64> &setIds, const QString &error);

    /// The query that runs; null where none does.
    std::shared_ptr<Job> m_job;
    std::unique_ptr<SnapshotCollector> m_collector;
    Snapshot m_snapshot;
    QTimer m_slices;
    int m_restarts = 0;
    bool m_watching = false;
    QString m_error;
    /// The last member: it ends first, and what runs in it is waited for.
    QThreadPool m_pool;
};

} // namespace kernel
