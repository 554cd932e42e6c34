#pragma once

#include <nkKernelServices/nkKernelServicesExport.h>

#include <QJsonObject>
#include <QString>

#include <optional>

namespace kernel {

/// The preferences on disk, readable and small: {"values": {KEY: VALUE, ...}, "version": 1}, where a whole
/// number is a number and a list of texts an array. Members and values that this program does not know are
/// kept as they are.
///
/// A file that cannot be read is reported to nkLogService and set aside under its name with ".damaged" behind
/// it (replacing an older one), so that nothing of the user's is ever written over. Where that fails too,
/// nothing is written.
class NK_KERNEL_SERVICES_EXPORT PreferencesFile
{
public:
    /// @param path the file; it need not exist, nor its folder
    explicit PreferencesFile(const QString &path);

    QString path() const { return m_path; }
    /// The values of the file; empty where there is none or it is damaged.
    QJsonObject readValues();
    /// Puts the changed values into the file beside what it holds by now, which may be more than was read:
    /// another running program keeps what it wrote. Where the file has gone or was damaged meanwhile, all
    /// values are written.
    /// @return the reason of the failure; empty on success
    QString writeValues(const QJsonObject &changed, const QJsonObject &all);

private:
    std::optional<QJsonObject> readRoot();
    std::optional<QJsonObject> parse(const QByteArray &bytes, QString *damage) const;
    void setAside(const QString &damage);

    const QString m_path;
    /// What stands at the path is damaged and could not be moved away.
    bool m_blocked = false;
};

} // namespace kernel
