#include <interchange/foreign/ForeignReaders.h>

#include <interchange/ifc/IfcReader.h>

namespace interchange {

namespace {

template <typename Reader>
std::unique_ptr<ForeignReader> make()
{
    return std::make_unique<Reader>();
}

} // namespace

const std::vector<ForeignReaders::Kind> &ForeignReaders::kinds()
{
    static const std::vector<Kind> kinds{
        {QStringLiteral("IFC"), {QStringLiteral("ifc")}, &make<IfcReader>},
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
