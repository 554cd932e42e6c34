#include "QueryService.h"

#include "ServiceRegistry.h"
#include "kernel/document/Document.h"
#include "kernel/document/Store.h"
#include "kernel/query/QueryEvaluation.h"
#include "kernel/query/QueryParser.h"
#include "kernel/query/QueryRun.h"
#include "kernel/query/SnapshotCollector.h"

#include <nkKernelServices/nkMetadataService.h>

namespace kernel {

namespace {

/// How long the scene is copied before the window gets its turn: milliseconds, a quarter of a frame.
constexpr int SliceTime = 4;
/// A scene that changes all the time is copied in one go after so many beginnings.
constexpr int MostRestarts = 3;
/// A cancelled query may look at one last text while the next ones already run.
constexpr int MostThreads = 4;

} // namespace

QueryService::QueryService()
{
    m_pool.setMaxThreadCount(MostThreads);
    m_slices.setInterval(0);
    connect(&m_slices, &QTimer::timeout, this, &QueryService::collect);
}

QueryService::~QueryService()
{
    stop();
    m_pool.waitForDone();
}

void QueryService::startAsyncMetadataQuery(const QString &query)
{
    stop();
    watchScene();
    QueryParser parser(query);
    std::optional<QueryNode> read = parser.parse();
    m_error = read ? QString() : parser.error().sentence;
    const auto job = std::make_shared<Job>();
    if (read) {
        job->query = std::make_unique<QueryNode>(std::move(*read));
    }
    m_job = job;
    m_restarts = 0;
    m_slices.start();
    Q_EMIT asyncMetadataQueryStarted();
}

void QueryService::cancelAsyncMetadataQuery()
{
    stop();
    dropSnapshot();
}

void QueryService::stop()
{
    if (m_job) {
        m_job->cancelled = true;
        m_job.reset();
    }
    m_slices.stop();
    m_collector.reset();
}

void QueryService::watchScene()
{
    if (m_watching) {
        return;
    }
    m_watching = true;
    const Document *document = &Document::the();
    connect(document, &Document::sceneChanged, this, &QueryService::onSceneChanged);
    connect(document, &Document::cleared, this, &QueryService::onSceneChanged);
    connect(document, &Document::objectsDied, this, &QueryService::onSceneChanged);
    connect(&nkMetadataService::the(), &nkMetadataService::metadataChanged, this,
            &QueryService::onSceneChanged);
}

/// A million entries take a moment to let go of: not here.
void QueryService::dropSnapshot()
{
    if (m_snapshot) {
        m_pool.start([snapshot = std::exchange(m_snapshot, nullptr)]() mutable { snapshot.reset(); });
    }
}

void QueryService::onSceneChanged()
{
    dropSnapshot();
    if (m_collector) {
        m_collector.reset();
        ++m_restarts;
    }
}

void QueryService::collect()
{
    if (!m_job->query) {
        finish(m_job, {}, m_error);
        return;
    }
    const bool withObjectNames = m_job->query->asksFor(QueryTerm::Field::Object);
    if (!m_snapshot || (withObjectNames && !m_snapshot->hasObjectNames)) {
        if (!m_collector) {
            m_collector = std::make_unique<SnapshotCollector>(Document::the(), withObjectNames);
        }
        if (!m_collector->work(m_restarts < MostRestarts ? SliceTime : -1)) {
            return;
        }
        dropSnapshot();
        m_snapshot = m_collector->take();
        m_collector.reset();
    }
    m_slices.stop();
    search(m_snapshot);
}

void QueryService::search(const Snapshot &snapshot)
{
    m_pool.start([this, snapshot, job = m_job] {
        QueryRun run(job->cancelled);
        const QVector<quint64> found = QueryEvaluation(*job->query, *snapshot, run).matchingSets();
        if (run.isCancelled()) {
            return;
        }
        const QString error = run.hasRegexFailed() ? tr(
                                  "The regular expression takes too long: make it simpler, for example with "
                                  "fewer * and + inside brackets.")
                                                   : QString();
        QMetaObject::invokeMethod(
            this, [this, job, found, error] { finish(job, found, error); }, Qt::QueuedConnection);
    });
}

void QueryService::finish(const std::shared_ptr<Job> &job, const QVector<quint64> &setIds,
                          const QString &error)
{
    if (job != m_job) {
        return;
    }
    stop();
    m_error = error;
    QList<nkdMetadataSet> sets;
    if (error.isEmpty()) {
        const Store &store = Document::the().store();
        for (const quint64 id : setIds) {
            if (store.setSlot(id) != NoSlot) {
                sets.append(nkdMetadataSet(id));
            }
        }
    }
    Q_EMIT asyncMetadataQueryFinished(error.isEmpty(), sets);
}

} // namespace kernel

nkQueryService &nkQueryService::the()
{
    return kernel::ServiceRegistry::the().service<kernel::QueryService>();
}
