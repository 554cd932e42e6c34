#include "SceneSession.h"

#include <kernel/document/Document.h>
#include <kernel/document/DocumentLoader.h>

#include <QFileInfo>

using kernel::Document;

SceneSession::SceneSession(QObject *parent) : QObject(parent) {}

SceneSession::~SceneSession() = default;

QString SceneSession::title() const
{
    return m_path.isEmpty() ? tr("Untitled") : QFileInfo(m_path).fileName();
}

bool SceneSession::isModified()
{
    return Document::the().isModified();
}

bool SceneSession::isBinary() const
{
    return m_source && m_source->isBinary;
}

bool SceneSession::isForeign() const
{
    return m_source && m_source->foreign;
}

QString SceneSession::open(const QString &path)
{
    const SceneFile::Result result = SceneFile::open(path);
    if (!result.isOpen()) {
        return result.error;
    }
    m_source = result.source;
    m_report = result.report;
    setPath(result.source->filePath);
    Q_EMIT sceneReplaced();
    return QString();
}

SceneFile::Saved SceneSession::save(const QString &path, SceneFile::IfChanged ifChanged)
{
    const SceneFile::Saved saved = SceneFile::save(path, m_source, ifChanged);
    if (saved.outcome == SceneFile::Saved::Done) {
        m_source = saved.source;
        Document::the().markSaved();
        setPath(saved.source->filePath);
    }
    return saved;
}

void SceneSession::clear()
{
    // Not Document::clear(): what was copied from the old scene can be pasted into the new one.
    kernel::DocumentLoader empty;
    if (!empty.commit()) {
        return;
    }
    m_source.reset();
    m_report = {};
    setPath(QString());
    Q_EMIT sceneReplaced();
}

void SceneSession::setPath(const QString &path)
{
    m_path = path;
    Q_EMIT pathChanged(path);
}
