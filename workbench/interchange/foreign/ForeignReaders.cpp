#include <interchange/foreign/ForeignReaders.h>

#include <interchange/ifc/IfcReader.h>
#include <interchange/importer/ImportKinds.h>
#include <interchange/importer/ImporterReader.h>

namespace interchange {

namespace {

template <typename Reader>
std::unique_ptr<ForeignReader> make()
{
    return std::make_unique<Reader>();
}

QStringList importerSuffixes()
{
    QStringList suffixes;
    for (const char *suffix : importkinds::Models)
        suffixes.append(QLatin1String(suffix));
    return suffixes;
}

} // namespace

const std::vector<ForeignReaders::Kind> &ForeignReaders::kinds()
{
    static const std::vector<Kind> kinds{
        {QStringLiteral("IFC"), {QStringLiteral("ifc")}, &make<IfcReader>},
        {tr("Scenes of other programs"), importerSuffixes(), &make<ImporterReader>},
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
