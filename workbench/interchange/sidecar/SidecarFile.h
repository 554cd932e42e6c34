#pragma once

#include <interchange/FileHash.h>
#include <interchange/sidecar/Sidecar.h>

#include <QCoreApplication>
#include <QString>

#include <functional>

namespace interchange {

/// The file that a sidecar stands in, as it is now.
class SidecarFile
{
    Q_DECLARE_TR_FUNCTIONS(SidecarFile)

public:
    enum class State {
        Absent,    ///< there is none
        Known,     ///< it was read
        Foreign,   ///< there is something that cannot be read; see trouble()
        Cancelled, ///< reading was ended
    };

    /// "/a/house.ifc.metadata.json" for "/a/house.ifc".
    static QString pathFor(const QString &model);
    /// The hash of a file's content; that of nothing where there is no file.
    static FileHash hashOf(const QString &path);

    explicit SidecarFile(const QString &path) : m_path(path) {}

    /// @param goOn told the share that has been read; false ends the reading
    State read(Sidecar &sidecar, const std::function<bool(double)> &goOn);

    /// What is wrong and where, a clause; empty unless the file is foreign.
    const QString &trouble() const { return m_trouble; }
    /// Of what was read.
    const FileHash &hash() const { return m_hash; }

private:
    QString m_path;
    QString m_trouble;
    FileHash m_hash;
};

} // namespace interchange
