#include "GeometryLoader.h"

#include "interchange/SceneSource.h"
#include "interchange/geometry/GltfGeometryReader.h"

#include <QThread>
#include <QTimer>

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
    m_job = std::make_shared<Job>();
    // A scene of another kind than glTF has no text to read, and need not have brought anything.
    if (source->geometry || source->json.isEmpty()) {
        // Opening a scene does not wait for its picture.
        m_job->geometry = source->geometry ? source->geometry : std::make_shared<const SceneGeometry>();
        QTimer::singleShot(0, this, [this, job = m_job] { take(job); });
        return;
    }
    QThread *thread = QThread::create([job = m_job, source] {
        GltfGeometryReader reader(*source);
        reader.setGoOn([job] { return !job->isCancelled; });
        job->geometry = std::make_shared<const SceneGeometry>(reader.read());
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
