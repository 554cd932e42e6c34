#pragma once

#include <SceneFixture.h>
#include <interchange/sets/SetFileCodec.h>
#include <kernel/document/Document.h>
#include <kernel/document/DocumentLoader.h>
#include <nkKernelServices/nkLogService.h>
#include <nkKernelServices/nkMetadataService.h>

#include <QDir>
#include <QFile>
#include <QLoggingCategory>
#include <QTemporaryDir>
#include <QUndoStack>
#include <QtTest>

/// A codec in place, a folder for files, and an empty scene.
class SetFileFixture
{
public:
    explicit SetFileFixture(const interchange::SetFileLimits &limits = interchange::SetFileLimits())
        : codec(limits), reports(&nkLogService::the(), &nkLogService::reported)
    {
        // Thousands of reports are looked at here, and would drown the rest.
        QLoggingCategory::setFilterRules(QStringLiteral("workbench.info=false"));
        SceneFixture::reset();
        kernel::SetCodec::install(&codec);
    }
    ~SetFileFixture() { SceneFixture::reset(); }

    QString path(const char *name = "sets.json") const { return folder.filePath(QLatin1String(name)); }

    static void write(const QString &path, const QByteArray &content)
    {
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
        QCOMPARE(file.write(content), qint64(content.size()));
    }

    static QByteArray read(const QString &path)
    {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("no such file");
    }

    static nkMetadataService &service() { return nkMetadataService::the(); }

    QList<nkdMetadataSet> load(const QByteArray &content, const QList<nkdObject> &objects = {}) const
    {
        write(path("load.json"), content);
        return service().loadSets(path("load.json"), objects);
    }

    QByteArray save(const QList<nkdMetadataSet> &sets) const
    {
        service().saveSets(sets, path("save.json"));
        return read(path("save.json"));
    }

    /// The only report since the last call; something else where there are more or fewer.
    QString takeReport()
    {
        const QString text = reports.size() == 1 ? reports.first().at(2).toString()
                                                 : QStringLiteral("%1 reports").arg(reports.size());
        reports.clear();
        return text;
    }

    QStringList files() const { return QDir(folder.path()).entryList(QDir::Files | QDir::Hidden); }

    /// One set with one entry of this type.
    static nkdMetadataSet setWith(nkMetadataTypes::ValueType type, const QVariant &value)
    {
        kernel::DocumentLoader loader(kernel::DocumentLoader::Mode::Add);
        const quint64 id = loader.addSet(QStringLiteral("Set"), QColor(1, 2, 255));
        loader.addEntry(id, QStringLiteral("k"), type, value);
        loader.commit();
        return nkdMetadataSet(id);
    }

    /// A file of one set with these entries, as it is written.
    static QByteArray file(const QByteArray &entries)
    {
        return "{\"format\":\"metadata-sets\",\"version\":1,\"sets\":[\n"
               "{\"name\":\"Set\",\"color\":\"#0102ff\",\"entries\":["
               + (entries.isEmpty() ? entries : '\n' + entries + '\n') + "]}\n]}\n";
    }

    static QByteArray entry(const QByteArray &type, const QByteArray &value)
    {
        return "{\"key\":\"k\",\"type\":\"" + type + "\",\"value\":" + value + '}';
    }

    interchange::SetFileCodec codec;
    QTemporaryDir folder;
    QSignalSpy reports;
};
