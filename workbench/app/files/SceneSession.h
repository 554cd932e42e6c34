#pragma once

#include <interchange/SceneFile.h>

#include <QObject>

/// The open scene and its file: what the document itself does not know. Asks nobody anything.
class SceneSession : public QObject
{
    Q_OBJECT
public:
    explicit SceneSession(QObject *parent = nullptr);
    ~SceneSession() override;

    /// Absolute path of the scene's file; empty for one that was never saved.
    QString path() const { return m_path; }
    /// The file's name, or what stands for it.
    QString title() const;
    /// Whether there is anything that would be lost: changes since the scene was opened or saved.
    static bool isModified();
    /// Whether the scene is a binary one, so that a copy has to be one, too.
    bool isBinary() const;
    /// Whether the scene is of a kind whose file is never written: its metadata stands beside it.
    bool isForeign() const;

    /// Opens a scene in place of the present one; where that fails, the present one stays.
    /// @return empty, also where the person cancelled; else one sentence that says what failed, where, what to do
    QString open(const QString &path);
    /// Saves to a file, which is the scene's from then on, and marks the document saved.
    SceneFile::Saved save(const QString &path, SceneFile::IfChanged ifChanged = SceneFile::IfChanged::Refuse);
    /// An empty scene without a file in place of the present one.
    void clear();

    /// What came of the metadata in the file when it was opened.
    const interchange::ImportReport &report() const { return m_report; }
    /// Where the scene stands in its file; null for one that was never in a file.
    std::shared_ptr<const interchange::SceneSource> source() const { return m_source; }

Q_SIGNALS:
    /// Another scene was opened, or the present one emptied.
    void sceneReplaced();
    /// The scene has another file.
    void pathChanged(const QString &path);

private:
    void setPath(const QString &path);

    QString m_path;
    std::shared_ptr<const interchange::SceneSource> m_source;
    interchange::ImportReport m_report;
};
