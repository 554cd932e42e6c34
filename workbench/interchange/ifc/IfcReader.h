#pragma once

#include <interchange/foreign/ForeignReader.h>

#include <QCoreApplication>

namespace interchange {

/// Reads IFC (STEP text): the spatial tree and what is in it as nodes, property sets as shared sets. Written for
/// IFC2x3; files of other IFC schemas are read as far as they say the same in the same way, and the report says so.
/// Shapes are not read, and the geometry says so.
class IfcReader : public ForeignReader
{
    Q_DECLARE_TR_FUNCTIONS(IfcReader)

public:
    bool isFor(const QString &suffix, const QByteArray &firstBytes) const override;
    bool read(const QString &path, ForeignScene &scene, kernel::Progress &progress) override;
    /// Likewise, from the content of a file.
    bool readText(const QByteArray &bytes, ForeignScene &scene, kernel::Progress &progress);

private:
    bool readBytes(const QString &path, QByteArray &bytes, kernel::Progress &progress);
    static std::shared_ptr<const SceneGeometry> noShapes();
    bool checkSchema(const QString &schema, ForeignScene &scene);
    bool fail(const QString &reason, const QString &advice);
};

} // namespace interchange
