#include <interchange/ifc/IfcReader.h>

#include <interchange/ifc/IfcMaterials.h>
#include <interchange/ifc/IfcSets.h>
#include <interchange/ifc/IfcTree.h>
#include <interchange/ifc/StepFile.h>

#include <kernel/services/Progress.h>

#include <QFile>

namespace interchange {

namespace {

// What one QByteArray can hold.
constexpr qint64 LargestText = 0x7fffffe0;
constexpr qint64 PieceSize = 1 << 24;
// What reading the bytes, finding the records and the tree cost, measured on large files.
constexpr double BytesRead = 0.2;
constexpr double RecordsFound = 0.5;
constexpr double TreeBuilt = 0.7;

} // namespace

bool IfcReader::isFor(const QString &suffix, const QByteArray &firstBytes) const
{
    return suffix == QLatin1String("ifc") || StepFile::isStep(firstBytes);
}

bool IfcReader::read(const QString &path, ForeignScene &scene, kernel::Progress &progress)
{
    QByteArray bytes;
    return readBytes(path, bytes, progress) && readText(bytes, scene, progress);
}

bool IfcReader::readBytes(const QString &path, QByteArray &bytes, kernel::Progress &progress)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return fail(tr("it cannot be read (%1)").arg(file.errorString()), tr("check who may read it"));
    const qint64 size = file.size();
    if (size > LargestText)
        return fail(tr("the file has more than 2 GiB of text"), tr("split the model"));
    bytes.reserve(int(size));
    while (!file.atEnd()) {
        const QByteArray piece = file.read(PieceSize);
        bytes += piece;
        if (piece.isEmpty() || bytes.size() > LargestText - PieceSize)
            break;
        if (!progress.advance(BytesRead * double(bytes.size()) / double(std::max<qint64>(size, 1))))
            return false;
    }
    return file.error() == QFileDevice::NoError
           || fail(tr("it cannot be read to its end (%1)").arg(file.errorString()), tr("copy it again"));
}

bool IfcReader::readText(const QByteArray &bytes, ForeignScene &scene, kernel::Progress &progress)
{
    StepFile file;
    const auto goOn = [&progress](double share) {
        return progress.advance(BytesRead + (RecordsFound - BytesRead) * share);
    };
    if (!file.read(bytes, scene.report, goOn)) {
        m_error = file.error();
        return false;
    }
    if (!checkSchema(file.schema(), scene))
        return false;
    IfcTree tree(file, scene);
    tree.build();
    if (!progress.advance(TreeBuilt))
        return false;
    addIfcMaterials(file, scene);
    IfcSets sets(file, tree, scene);
    sets.build();
    if (sets.isOverfull())
        return fail(tr("it assigns more properties to its objects than a scene can have"),
                    tr("split the model"));
    scene.geometry = noShapes();
    return progress.advance(1);
}

/// Said where the shapes would be: whoever looks for them shall not look for a fault.
std::shared_ptr<const SceneGeometry> IfcReader::noShapes()
{
    auto geometry = std::make_shared<SceneGeometry>();
    geometry->troubles.append(
        tr("The shapes of IFC models are not drawn; their objects and metadata are all there."));
    return geometry;
}

bool IfcReader::checkSchema(const QString &schema, ForeignScene &scene)
{
    if (!schema.startsWith(QLatin1String("IFC"), Qt::CaseInsensitive))
        return fail(tr("its schema is “%1”, and of such files only IFC can be opened").arg(schema.left(40)),
                    tr("export it as IFC or glTF"));
    if (!schema.startsWith(QLatin1String("IFC2X"), Qt::CaseInsensitive))
        scene.report.addNote(schema.left(40), ImportReason::OtherSchema);
    return true;
}

bool IfcReader::fail(const QString &reason, const QString &advice)
{
    m_error = SceneError::ofFile(reason, advice);
    return false;
}

} // namespace interchange
