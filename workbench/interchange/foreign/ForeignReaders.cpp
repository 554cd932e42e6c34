#include <interchange/foreign/ForeignReaders.h>

#include <interchange/ifc/IfcReader.h>
#include <interchange/importer/ImporterReader.h>

#include <QCoreApplication>

namespace interchange {

namespace {

template <typename Reader>
std::unique_ptr<ForeignReader> make()
{
    return std::make_unique<Reader>();
}

/// What the importer reads beside the kinds that are named.
QStringList otherSuffixes()
{
    static const QStringList named{QStringLiteral("fbx"), QStringLiteral("dae"), QStringLiteral("zae"),
                                   QStringLiteral("obj")};
    QStringList others = ImporterReader::suffixes();
    for (const QString &suffix : named)
        others.removeAll(suffix);
    return others;
}

} // namespace

const std::vector<ForeignReaders::Kind> &ForeignReaders::kinds()
{
    static const std::vector<Kind> kinds{
        {QStringLiteral("IFC"), {QStringLiteral("ifc")}, &make<IfcReader>},
        {QStringLiteral("FBX"), {QStringLiteral("fbx")}, &make<ImporterReader>},
        {QStringLiteral("COLLADA"), {QStringLiteral("dae"), QStringLiteral("zae")}, &make<ImporterReader>},
        {QStringLiteral("Wavefront OBJ"), {QStringLiteral("obj")}, &make<ImporterReader>},
        {QCoreApplication::translate("interchange::ForeignReaders", "Other scenes"), otherSuffixes(),
         &make<ImporterReader>},
    };
    return kinds;
}

std::unique_ptr<ForeignReader> ForeignReaders::readerFor(const QString &suffix, const QByteArray &firstBytes)
{
    for (const Kind &kind : kinds()) {
        std::unique_ptr<ForeignReader> reader = kind.make();
        if (reader->isFor(suffix, firstBytes))
            return reader;
    }
    return nullptr;
}

} // namespace interchange
