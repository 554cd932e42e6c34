#pragma once

#include <interchange/gltf/GltfAnnex.h>
#include <interchange/json/JsonValue.h>

#include <QCoreApplication>

#include <initializer_list>

namespace interchange {

/// Reads the annex out of the extras of a glTF file's root. Strict: what is not exactly as docs/formats.md has it was
/// written by someone else, and is not touched.
class GltfAnnexReader
{
    Q_DECLARE_TR_FUNCTIONS(GltfAnnexReader)

public:
    /// Reads `extras`, the JSON text of the root's extras; empty where there are none. False with error() where
    /// something stands in the annex's place that cannot be read; the annex is empty then, as it is where there is
    /// none.
    bool read(const QByteArray &extras, GltfAnnex &annex);

    /// A clause, with the place.
    const QString &error() const { return m_error; }

private:
    using Names = std::initializer_list<const char *>;

    bool readAnnex(const JsonValue &value);
    bool readSets(const JsonValue &value);
    bool readAsset(const JsonValue &value);
    bool readObject(const JsonValue &value);
    bool readReference(const JsonValue &value, GltfAnnex::Reference &reference);
    bool readReferences(const JsonValue &value, std::vector<GltfAnnex::Reference> &references);
    bool readMaterials(const JsonValue &value);
    bool readMaterial(const JsonValue &value);
    bool readSceneplate(const JsonValue &value, GltfAnnex::Object &object);
    bool readOwn(const JsonValue &value, GltfAnnex::Object &object);
    bool readApart(const JsonValue &value, GltfAnnex::Object &object);
    bool readRenamed(const JsonValue &value, GltfAnnex::Object &object);
    bool readRun(const JsonValue &value);
    bool readIndex(const JsonValue &value, size_t count, quint32 &index);
    template <typename Read>
    bool readArray(const JsonValue &array, const Read &read);
    bool hasOnly(const JsonValue &object, const Names &names);
    bool fail(const JsonValue &value, const QString &reason);

    GltfAnnex m_annex;
    quint32 m_groupCount = 0;
    QString m_error;
};

} // namespace interchange
