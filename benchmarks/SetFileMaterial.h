#pragma once

#include <QFile>
#include <QTemporaryDir>
#include <QVariant>

#include <interchange/sets/SetFileCodec.h>
#include <kernel/document/Document.h>
#include <kernel/document/DocumentLoader.h>
#include <nkKernelServices/nkMetadataService.h>

/// Sets as people have them, for the benchmarks of set files: a hundred entries a set, of the types that are
/// common, with keys that come in every set.
class SetFileMaterial
{
public:
    static constexpr int EntriesPerSet = 100;

    SetFileMaterial() { kernel::SetCodec::install(&m_codec); }
    ~SetFileMaterial() { kernel::Document::the().clear(); }

    /// Makes a scene of sets with so many entries in all.
    QList<nkdMetadataSet> makeScene(qint64 entries) const
    {
        kernel::DocumentLoader loader;
        QList<nkdMetadataSet> sets;
        for (qint64 entry = 0; entry < entries; ++entry) {
            if (entry % EntriesPerSet == 0)
                sets.append(
                    nkdMetadataSet(loader.addSet(QStringLiteral("Set %1").arg(entry / EntriesPerSet))));
            const QString key = QStringLiteral("property %1").arg(entry % EntriesPerSet);
            loader.addEntry(sets.last().getObjectId(), key, type(entry), value(entry));
        }
        loader.commit();
        return sets;
    }

    static nkMetadataTypes::ValueType type(qint64 entry)
    {
        const nkMetadataTypes::ValueType types[] = {nkMetadataTypes::String, nkMetadataTypes::Integer,
                                                    nkMetadataTypes::Float, nkMetadataTypes::String,
                                                    nkMetadataTypes::Boolean};
        return types[entry % 5];
    }

    static QVariant value(qint64 entry)
    {
        switch (type(entry)) {
        case nkMetadataTypes::Integer:
            return int(entry);
        case nkMetadataTypes::Float:
            return double(entry) / 7;
        case nkMetadataTypes::Boolean:
            return entry % 2 == 0;
        default:
            return QStringLiteral("value %1 of the set").arg(entry);
        }
    }

    QString path(const char *name) const { return m_folder.filePath(QLatin1String(name)); }

private:
    interchange::SetFileCodec m_codec;
    QTemporaryDir m_folder;
};
