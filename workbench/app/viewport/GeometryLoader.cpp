#include "GeometryLoader.h"

#include "interchange/SceneSource.h"
#include "interchange/geometry/GltfGeometryReader.h"

#include <QThread>

using interchange::GltfGeometryReader;
using interchange::SceneGeometry;
using interchange::SceneSource;

GeometryLoader::GeometryLoader(QObject *parent) : QObject(parent) {}

GeometryLoader::~GeometryLoader()
{
    forget();
    for (QThread *thread : qAsConst(m_threads)) {
        thread->wait();
        delete thread;
    }
}

void GeometryLoader::forget()
{
    if (m_job) {
        m_job->isCancelled = true;
        m_job.reset();
    }
}

void GeometryLoader::load(const std::shared_ptr<const SceneSource> &source)
{
    forget();
    if (!source) {
        return;
    }
    if (source->geometry) {
        Q_EMIT loaded(source->geometry);
        return;
    }
    m_job = std::make_shared<Job>();
    QThread *thread = QThread::create([job = m_job, source] {
        GltfGeometryReader reader(*source);
        reader.setGoOn([job] { return !job->isCancelled; });
        job->geometry = std::make_shared<SceneGeometry>(reader.read());
    });
    m_threads.append(thread);
    connect(thread, &QThread::finished, this, [this, thread, job = m_job] {
        m_threads.removeOne(thread);
        thread->deleteLater();
        take(job);
    });
    thread->start(QThread::LowPriority);
}

void GeometryLoader::take(const std::shared_ptr<Job> &job)
{
    if (job == m_job) {
        m_job.reset();
        Q_EMIT loaded(job->geometry);
    }
}
