#include "StringLibraries.h"

#include <nkKernelServices/nkLogService.h>
#include <nkKernelServices/nkMetadataService.h>

#include <QThread>

namespace interchange {

StringLibraries::StringLibraries(QObject *parent) : QObject(parent)
{
    connect(&nkMetadataService::the(), &nkMetadataService::stringLibrariesChanged, this,
            &StringLibraries::follow);
    connect(&m_watch, &StringLibraryWatch::changed, this, &StringLibraries::read);
}

StringLibraries::~StringLibraries()
{
    if (m_reading) {
        m_reading->wait();
        delete m_reading;
    }
}

void StringLibraries::start()
{
    m_isStarted = true;
    follow();
}

QString StringLibraries::activeLibrary() const
{
    const nkMetadataService &metadata = nkMetadataService::the();
    return metadata.getStringLibraries().value(metadata.getActiveStringLibraryIndex());
}

QStringList StringLibraries::completions(const QString &text, int limit)
{
    const bool hasWords = m_library && m_library->size() > 0;
    return hasWords ? m_library->completions(text, limit) : m_sceneKeys.words().completions(text, limit);
}

bool StringLibraries::canAdd(const QString &word) const
{
    return m_library && !m_library->contains(word) && StringLibraryFile::canHold(m_path, word);
}

void StringLibraries::add(const QString &word)
{
    if (!canAdd(word)) {
        return;
    }
    const QString error = StringLibraryFile::add(m_path, word);
    if (error.isEmpty()) {
        // Not left to the watch: some file systems tell nothing.
        read();
    } else {
        nkLogService::the().reportError(tr("String Libraries"), error);
    }
}

void StringLibraries::follow()
{
    const QString path = activeLibrary();
    if (!m_isStarted || path == m_path) {
        return;
    }
    m_path = path;
    m_library.reset();
    m_lastReport.clear();
    m_watch.watch(path);
    read();
}

void StringLibraries::read()
{
    if (m_path.isEmpty()) {
        Q_EMIT settled();
        return;
    }
    if (m_reading) {
        m_isReadAgain = true;
        return;
    }
    const auto content = std::make_shared<StringLibraryFile::Content>();
    m_reading = QThread::create([content, path = m_path] { *content = StringLibraryFile::read(path); });
    connect(m_reading, &QThread::finished, this, [this, content, path = m_path] { take(path, *content); });
    m_reading->start(QThread::LowPriority);
}

void StringLibraries::take(const QString &path, const StringLibraryFile::Content &content)
{
    m_reading->wait();
    m_reading->deleteLater();
    m_reading = nullptr;
    const bool isOutdated = path != m_path || m_isReadAgain;
    m_isReadAgain = false;
    if (isOutdated) {
        read();
        return;
    }
    m_library = content.library;
    tell(content.report);
    Q_EMIT settled();
}

void StringLibraries::tell(const QString &report)
{
    if (!report.isEmpty() && report != m_lastReport) {
        nkLogService::the().reportWarning(tr("String Libraries"), report);
    }
    m_lastReport = report;
}

} // namespace interchange
