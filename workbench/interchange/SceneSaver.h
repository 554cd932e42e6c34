#pragma once

#include <interchange/SceneFile.h>

#include <kernel/services/DurableReplacement.h>
#include <kernel/services/Progress.h>

#include <QCoreApplication>

namespace interchange {

/// Writes the open scene to one file, durably; the works behind SceneFile::save.
class SceneSaver
{
    Q_DECLARE_TR_FUNCTIONS(SceneSaver)

public:
    /// @param path absolute
    /// @param source where the scene stands; outlives the saver
    SceneSaver(const QString &path, const SceneSource &source);

    /// To be called once.
    SceneFile::Saved save(SceneFile::IfChanged ifChanged);

private:
    bool checkKind();
    bool checkTarget();
    bool isChangedElsewhere() const;
    bool makeText();
    bool checkOriginal();
    bool write();
    bool writeBinary();
    bool copyFrom(qint64 offset);
    bool readBack();
    bool readBackBinary(QFile &file);
    bool replace();
    bool finish();
    void noteFile();
    QStringList filesLeftBehind() const;
    bool fail(const QString &reason, const QString &advice);
    bool failSystem(const QString &reason);

    QString m_path;
    const SceneSource &m_source;
    SceneFile::IfChanged m_ifChanged = SceneFile::IfChanged::Refuse;
    bool m_isSameFile;
    bool m_isBinary = false;
    kernel::Progress m_progress;
    kernel::DurableReplacement m_file;
    QByteArray m_json;
    QString m_note;
    qint64 m_restOffset = 0;
    std::shared_ptr<SceneSource> m_written;
    SceneFile::Saved m_result;
};

} // namespace interchange
