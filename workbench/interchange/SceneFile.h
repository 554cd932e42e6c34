#pragma once

#include <interchange/SceneError.h>
#include <interchange/SceneSource.h>
#include <interchange/gltf/GltfAnnex.h>
#include <interchange/gltf/GltfScene.h>

#include <QCoreApplication>
#include <QStringList>

#include <memory>

QT_BEGIN_NAMESPACE
class QFile;
QT_END_NAMESPACE

namespace kernel {
class Progress;
} // namespace kernel

namespace interchange {
class ForeignReader;
} // namespace interchange

/// Opening and saving scene files: the door through which the rest of the workbench comes to this room.
class SceneFile
{
    Q_DECLARE_TR_FUNCTIONS(SceneFile)

public:
    struct Result
    {
        /// Empty when the scene is open; else one sentence that says what failed, where, and what to do.
        QString error;
        /// What came of the metadata in the file; empty on failure.
        interchange::ImportReport report;
        /// Where everything stands in the file, for saving; null on failure.
        std::shared_ptr<const interchange::SceneSource> source;

        /// The person ended it; nothing has changed. Without an error.
        bool isCancelled = false;

        bool isOpen() const { return error.isEmpty() && !isCancelled; }
    };

    struct Saved
    {
        enum Outcome {
            Done,
            Failed,          ///< the file is what it was
            Cancelled,       ///< by the person; the file is what it was
            ChangedElsewhere ///< somebody else has changed the file since it was read; it is what they made it
        };
        Outcome outcome = Failed;
        /// One sentence that says what failed, where, and what to do; with Done, what is to be known all the same.
        QString error;
        /// Where everything stands in the file now; null unless it was saved.
        std::shared_ptr<const interchange::SceneSource> source;
        /// The file that was to be written: the scene's, or the sidecar of one whose file is never written.
        QString file;
        /// Files beside the old one that the scene refers to and that do not go with it into another folder.
        QStringList leftBehind;
    };

    /// What to do with a file that somebody else has changed since it was read.
    enum class IfChanged { Refuse, Overwrite };

    /// Opens a scene in place of the present one: glTF 2.0, text or binary, told apart by content, else what the first
    /// of the ForeignReaders that is for it makes of it, with the metadata of the sidecar beside it.
    /// The whole file is read and checked before the document is touched: where anything is wrong, the scene that was
    /// open stays as it is. Files that the scene refers to (geometry, images) are not opened.
    /// @param path absolute, or relative to the working directory
    /// @param sidecar of a file that is never written: where its metadata is read from; empty for what stands beside it
    static Result open(const QString &path, const QString &sidecar = QString());

    /// Writes the open scene to a file, of glTF: the text it was read from with the changes that were made since, and not a
    /// byte else. The file is replaced in one go once all of it is on the disk and was read back. Of other kinds the
    /// sidecar is written in the same way, where there is anything to say, and never the file itself; another path
    /// makes a copy of the file.
    /// @param path absolute; another one than the source's is a copy, which takes the place of whatever is there. A
    ///        name that ends in ".glb" makes a binary file; one that does not keeps the kind of the source
    /// @param source where the scene was opened from or saved to last; null for a scene without a file
    static Saved save(const QString &path, const std::shared_ptr<const interchange::SceneSource> &source,
                      IfChanged ifChanged = IfChanged::Refuse);

private:
    explicit SceneFile(const QString &path, const QString &sidecar = QString());

    Result open();
    std::unique_ptr<interchange::ForeignReader> foreignReader() const;
    bool read(kernel::Progress &progress);
    void readAnnex();
    void noteAnnex();
    bool readJson(QByteArray &json);
    bool readBinary(QFile &file, QByteArray &json);
    bool readText(QFile &file, QByteArray &json);
    bool fail(const interchange::SceneError &error);
    bool failFile(const QString &reason, const QString &advice);

    interchange::GltfScene m_scene;
    interchange::GltfAnnex m_annex;
    bool m_isCancelled = false;
    interchange::SceneError m_error;
    std::shared_ptr<interchange::SceneSource> m_source;
    const QString m_sidecar;
};
