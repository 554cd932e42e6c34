#pragma once

#include <interchange/GltfScene.h>
#include <interchange/SceneError.h>
#include <interchange/SceneSource.h>

#include <QCoreApplication>

#include <memory>

QT_BEGIN_NAMESPACE
class QFile;
QT_END_NAMESPACE

/// Opening scene files: the door through which the rest of the workbench comes to this room.
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

        bool isOpen() const { return error.isEmpty(); }
    };

    /// Opens a glTF 2.0 scene, text (.gltf) or binary (.glb), told apart by content, in place of the present scene.
    /// The whole file is read and checked before the document is touched: where anything is wrong, the scene that was
    /// open stays as it is. Files that the scene refers to (geometry, images) are not opened.
    /// @param path absolute, or relative to the working directory
    static Result open(const QString &path);

private:
    explicit SceneFile(const QString &path);

    Result open();
    bool read();
    bool readJson(QByteArray &json);
    bool readBinary(QFile &file, QByteArray &json);
    bool readText(QFile &file, QByteArray &json);
    bool fail(const interchange::SceneError &error);
    bool failFile(const QString &reason, const QString &advice);

    interchange::GltfScene m_scene;
    interchange::SceneError m_error;
    std::shared_ptr<interchange::SceneSource> m_source;
};
