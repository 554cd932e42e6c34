#pragma once

#include <interchange/FileHash.h>
#include <interchange/SceneFile.h>

#include <QObject>

/// The open scene and its file: what the document itself does not know. Asks nobody anything.
class SceneSession : public QObject
{
    Q_OBJECT
public:
    /// @param sample a file that is opened as a scene without a file, so that nobody saves over it
    explicit SceneSession(const QString &sample = QString(), QObject *parent = nullptr);
    ~SceneSession() override;

    /// Absolute path of the scene's file; empty for one that was never saved.
    QString path() const { return m_path; }
    /// The file's name, or what stands for it.
    QString title() const;
    /// Whether there is a scene at all, with or without a file.
    bool hasScene() const { return m_hasScene; }
    /// Whether there is anything that would be lost: changes since the scene was opened or saved.
    bool isModified() const;
    /// Whether the scene is a binary one, so that a copy has to be one, too.
    bool isBinary() const;
    /// Whether the scene is of a kind whose file is never written: its metadata stands beside it.
    bool isForeign() const;

    /// Opens a scene in place of the present one; where that fails, the present one stays.
    /// @return empty, also where the person cancelled; else one sentence that says what failed, where, what to do
    QString open(const QString &path);
    /// Opens the copy of a scene in place of the present one, as that scene with changes that are not saved.
    /// @param file that of the scene, where it is saved to; empty for a scene that has none
    /// @param isFileAsItWas the file (or the metadata beside it, where it is never written) is the one that the copy comes
    ///        from; else saving over it is refused like saving
    ///        over what somebody else has changed
    /// @return like open
    QString recover(const QString &copy, const QString &file, bool isFileAsItWas);
    /// Whether the open scene is one that was recovered and not saved since.
    bool isRecovered() const { return m_isRecovered; }
    /// Saves to a file, which is the scene's from then on, and marks the document saved. What the file was stays beside
    /// it where the person wants backups: without one nothing is overwritten.
    SceneFile::Saved save(const QString &path, SceneFile::IfChanged ifChanged = SceneFile::IfChanged::Refuse);
    /// An empty scene without a file in place of the present one.
    void clear();
    /// No scene in place of the present one.
    void close();

    /// What came of the metadata in the file when it was opened.
    const interchange::ImportReport &report() const { return m_report; }
    /// Where the scene stands in its file; null for one that was never in a file.
    std::shared_ptr<const interchange::SceneSource> source() const { return m_source; }

Q_SIGNALS:
    /// Another scene was opened, or the present one emptied.
    void sceneReplaced();
    /// The scene has another file.
    void pathChanged(const QString &path);
    /// isModified() has changed.
    void modifiedChanged(bool modified);

private:
    void replace(bool hasScene);
    void setPath(const QString &path);
    void setRecovered(bool isRecovered);
    void tellModified();
    static SceneFile::Result openCopy(const QString &copy, const QString &file);
    void take(const SceneFile::Result &result);
    bool isFileAsRead(const QString &path) const;
    QString backUp(const QString &path, SceneFile::IfChanged ifChanged) const;

    QString m_path;
    const QString m_sample;
    bool m_hasScene = false;
    std::shared_ptr<const interchange::SceneSource> m_source;
    interchange::ImportReport m_report;
    bool m_isRecovered = false;
    /// Of a recovered scene: the file that the copy comes from, as long as it is that.
    interchange::FileHash m_recoveredFile;
    bool m_isToldModified = false;
};
