#pragma once

#include "StringLibraryFile.h"
#include "StringLibrarySceneKeys.h"
#include "StringLibraryWatch.h"

#include <QObject>
#include <QString>
#include <QStringList>

#include <memory>

class QThread;

namespace interchange {

/// Follows the string libraries of the metadata service and answers completions: from the active library;
/// where none is active, where it cannot be read and where it has no word yet, from the scene's own keys.
///
/// Reads the active library alone, on a thread of its own, and reads it again whenever it has changed on
/// disk. What a file keeps from being read is told to the log, once. GUI thread only.
class StringLibraries : public QObject
{
    Q_OBJECT
public:
    explicit StringLibraries(QObject *parent = nullptr);
    /// Waits for a file that is just being read.
    ~StringLibraries() override;

    /// Nothing is read before this was called: not before the application has shown its window.
    void start();

    /// The words to offer for a typed text, best first, at most limit.
    QStringList completions(const QString &text, int limit);
    /// The path of the active library; empty where none is.
    QString activeLibrary() const;
    /// Whether the active library is in use, does not have this word yet, and can hold it.
    bool canAdd(const QString &word) const;
    /// Writes a word to the active library, which is read again soon after. Failures go to the log, as errors.
    void add(const QString &word);

Q_SIGNALS:
    /// The active library is in use, or was found not to be usable, or there is none.
    void settled();

private:
    void follow();
    void read();
    void take(const QString &path, const StringLibraryFile::Content &content);
    void tell(const QString &report);

    StringLibraryWatch m_watch;
    StringLibrarySceneKeys m_sceneKeys;
    /// Null where there is none, as long as it is read for the first time, and where it cannot be read.
    std::shared_ptr<const StringLibrary> m_library;
    QString m_path;
    QString m_lastReport;
    QThread *m_reading = nullptr;
    bool m_isStarted = false;
    bool m_isReadAgain = false;
};

} // namespace interchange
