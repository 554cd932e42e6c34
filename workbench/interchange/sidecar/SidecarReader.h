#pragma once

#include <interchange/json/JsonValue.h>
#include <interchange/sets/SetFileError.h>
#include <interchange/sidecar/Sidecar.h>

#include <QCoreApplication>
#include <QSet>

#include <functional>

namespace interchange {

/// Reads a sidecar. Strict: what is not exactly as docs/formats.md has it was written by someone else, and is not
/// touched.
class SidecarReader
{
    Q_DECLARE_TR_FUNCTIONS(SidecarReader)

public:
    using GoOn = std::function<bool(double share)>;

    /// False with error(), or without where it was ended; the sidecar is empty then.
    bool read(const QByteArray &text, Sidecar &sidecar, const GoOn &goOn);

    const SetFileError &error() const { return m_error; }

private:
    bool readRoot(const JsonValue &root);
    bool checkFormat(const JsonValue &root);
    bool readSets(const JsonValue &value);
    bool readAsset(const JsonValue &value);
    bool readObject(const JsonValue &value);
    bool readOwn(const JsonValue &value, Sidecar::Object &object);
    bool readRun(const JsonValue &value);
    bool readIndex(const JsonValue &value, size_t count, quint32 &index);
    template <typename Read>
    bool readArray(const JsonValue &array, const Read &read);
    bool fail(const JsonValue &value, const QString &reason);

    Sidecar m_sidecar;
    QSet<QString> m_nodes;
    QSet<QString> m_materials;
    SetFileError m_error;
};

} // namespace interchange
