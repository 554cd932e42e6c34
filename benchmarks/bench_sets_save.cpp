#include "SetFileMaterial.h"
#include "harness/BenchmarkRegistry.h"

#include <nkKernelServices/nkdMetadataEntry.h>
#include <nkKernelServices/nkdMetadataSet.h>

#include <QColor>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSaveFile>

#include <memory>

namespace {

QJsonObject entryObject(qint64 entry)
{
    static const QString names[] = {QStringLiteral("string"), QStringLiteral("integer"),
                                    QStringLiteral("float"), QStringLiteral("boolean")};
    return QJsonObject{{QStringLiteral("key"), QStringLiteral("property %1").arg(entry % 100)},
                       {QStringLiteral("type"), names[SetFileMaterial::type(entry)]},
                       {QStringLiteral("value"), QJsonValue::fromVariant(SetFileMaterial::value(entry))}};
}

QJsonDocument document(qint64 entries)
{
    QJsonArray sets;
    for (qint64 first = 0; first < entries; first += SetFileMaterial::EntriesPerSet) {
        QJsonArray list;
        for (qint64 entry = first; entry < qMin(entries, first + SetFileMaterial::EntriesPerSet); ++entry)
            list.append(entryObject(entry));
        sets.append(QJsonObject{{QStringLiteral("name"), QStringLiteral("Set %1").arg(first)},
                                {QStringLiteral("color"), QStringLiteral("#7f8c9b")},
                                {QStringLiteral("entries"), list}});
    }
    return QJsonDocument(QJsonObject{{QStringLiteral("format"), QStringLiteral("metadata-sets")},
                                     {QStringLiteral("version"), 1},
                                     {QStringLiteral("sets"), sets}});
}

} // namespace

/// Saving sets into a file (written, synced, read back and understood), against building the same data as a
/// JSON document of Qt and writing it to a file.
static Comparison compareSetsSave(qint64 entries)
{
    const auto material = std::make_shared<std::unique_ptr<SetFileMaterial>>();
    const auto sets = std::make_shared<QList<nkdMetadataSet>>();
    Comparison comparison;
    comparison.ours.prepare = [material, sets, entries] {
        *material = std::make_unique<SetFileMaterial>();
        *sets = (*material)->makeScene(entries);
    };
    comparison.ours.run = [material, sets] {
        nkMetadataService::the().saveSets(*sets, (*material)->path("sets.json"));
    };
    comparison.ours.finish = [material, sets] {
        sets->clear();
        material->reset();
    };
    comparison.baseline.prepare = [material] { *material = std::make_unique<SetFileMaterial>(); };
    comparison.baseline.run = [material, entries] {
        QSaveFile file((*material)->path("sets.json"));
        if (file.open(QIODevice::WriteOnly)) {
            file.write(document(entries).toJson(QJsonDocument::Compact));
            file.commit();
        }
    };
    comparison.baseline.finish = [material] { material->reset(); };
    comparison.timeAim = 1;
    return comparison;
}
NK_BENCHMARK("sets-save", compareSetsSave, 1000000)
