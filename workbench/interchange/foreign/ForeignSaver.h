#pragma once

#include <interchange/SceneFile.h>
#include <interchange/foreign/ForeignOrigin.h>

#include <kernel/services/DurableReplacement.h>
#include <kernel/services/Progress.h>

#include <QCoreApplication>

namespace interchange {

/// Saves a scene whose file is never written: its metadata goes into the sidecar. Saved under another name, the model
/// is copied as it is.
class ForeignSaver
{
    Q_DECLARE_TR_FUNCTIONS(ForeignSaver)

public:
    /// @param path absolute, of the model or of its copy
    /// @param source where the scene was opened from, foreign; outlives the saver
    ForeignSaver(const QString &path, const SceneSource &source);

    /// To be called once.
    SceneFile::Saved save(SceneFile::IfChanged ifChanged);

private:
    bool checkName();
    bool checkObjects();
    bool isAnythingMoved() const;
    bool makeText();
    bool checkPresent();
    bool isChangedElsewhere() const;
    bool isNothingToSay() const;
    bool replaceSidecar();
    bool canBeRead();
    bool copyModel();
    bool writeCopy(kernel::DurableReplacement &copy);
    bool commit(kernel::DurableReplacement &file, const QString &path);
    void noteFiles();
    bool failSystem(const QString &reason);
    bool fail(const QString &reason, const QString &advice);

    const SceneSource &m_source;
    const ForeignOrigin &m_origin;
    QString m_model;
    QString m_path; ///< of the sidecar
    bool m_isSameFile;
    SceneFile::IfChanged m_ifChanged = SceneFile::IfChanged::Refuse;
    kernel::Progress m_progress;
    QByteArray m_text;
    FileHash m_textHash;
    QString m_failing; ///< the file that a sentence is about
    SceneFile::Saved m_result;
};

} // namespace interchange
