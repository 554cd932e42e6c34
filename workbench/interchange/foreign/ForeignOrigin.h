#pragma once

#include <interchange/FileHash.h>
#include <interchange/sidecar/Sidecar.h>

#include <QString>

#include <vector>

namespace interchange {

/// Where a scene of a file that is never written came from, beside what SceneSource has of its objects: who they are
/// in the file and in the sidecar, and what the sidecar was.
struct ForeignOrigin
{
    /// An object, at its place in SceneSource::objects().
    struct Object
    {
        QString key;
        quint64 parentId = 0; ///< in the document; 0 at the top level
    };

    /// What the sidecar knows of an object that the model does not have any more.
    struct Gone
    {
        Sidecar::Object object;
        std::vector<quint64> setIds; ///< what it is assigned to, in the document
    };

    std::vector<Object> objects;
    std::vector<Gone> gone;
    FileHash model;   ///< the content of the model's file when it was read
    FileHash sidecar; ///< that of the sidecar; of nothing where there was none
    /// What the sidecar would be if it were written now that the scene has been read: as long as it stays this, there
    /// is nothing to save.
    FileHash unchanged;
    /// Why the sidecar beside the model cannot be read, a clause; empty where it can, or where there is none.
    QString trouble;
};

} // namespace interchange
