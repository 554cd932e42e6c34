#pragma once

#include "Fixtures.h"

#include <interchange/SceneFile.h>
#include <kernel/document/Document.h>
#include <kernel/document/Store.h>
#include <nkKernelServices/nkMetadataService.h>
#include <nkKernelServices/nkdMetadata.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QtTest>

/// A folder for files, opening and saving in it, and the document as text.
class SavingFixture
{
public:
    using Saved = SceneFile::Saved;

    static kernel::Document &document() { return kernel::Document::the(); }

    static QByteArray read(const QString &path)
    {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("no such file");
    }

    QString write(const QString &name, const QByteArray &content) const
    {
        QFile file(folder.filePath(name));
        if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
            qWarning("cannot write %s", qPrintable(name));
        return file.fileName();
    }

    /// Opens a file, which then is the one that save() saves to.
    bool open(const QString &file)
    {
        const SceneFile::Result result = SceneFile::open(file);
        if (!result.isOpen())
            qWarning("%s", qPrintable(result.error));
        path = file;
        source = result.source;
        report = result.report;
        return result.isOpen();
    }

    bool openContent(const QByteArray &content) { return open(write(QStringLiteral("scene"), content)); }

    Saved save(SceneFile::IfChanged ifChanged = SceneFile::IfChanged::Refuse)
    {
        const Saved saved = SceneFile::save(path, source, ifChanged);
        if (saved.outcome == Saved::Done)
            source = saved.source;
        return saved;
    }

    /// The file after saving; the reason where that failed.
    QByteArray saved()
    {
        const Saved result = save();
        return result.outcome == Saved::Done && result.error.isEmpty() ? read(path) : result.error.toUtf8();
    }

    QStringList files() const { return QDir(folder.path()).entryList(QDir::Files | QDir::Hidden); }

    static QList<quint64> allObjects()
    {
        QList<quint64> ids;
        for (const auto kind :
             {nkObjectType::Node, nkObjectType::Camera, nkObjectType::Light, nkObjectType::Sceneplate,
              nkObjectType::Material, nkObjectType::MaterialGroup})
            ids += document().objects(kind);
        std::sort(ids.begin(), ids.end());
        return ids;
    }

    static nkdSceneObject object(const QString &name)
    {
        for (const quint64 id : allObjects()) {
            if (nkdSceneObject(nkdObject(id)).getName() == name)
                return nkdSceneObject(nkdObject(id));
        }
        return nkdSceneObject();
    }

    static nkdMetadataSet ownSet(const nkdObject &object)
    {
        return nkdMetadata::fromObject(nkdSceneObject(object)).getObjectSet();
    }
    static nkdMetadataSet ownSet(const QString &name) { return ownSet(object(name)); }

    static nkdMetadataEntry entry(const QString &object, const QString &key)
    {
        return ownSet(object).getEntries().find(key);
    }

    /// Every entry of every object's own set.
    static QList<nkdMetadataEntry> allEntries()
    {
        QList<nkdMetadataEntry> entries;
        for (const quint64 id : allObjects())
            entries += ownSet(nkdObject(id)).getEntries().data();
        return entries;
    }

    static void addText(QString &text, const nkdMetadataSet &set)
    {
        QDebug(&text) << set.getColor().name() << set.isLocked() << '\n';
        const QList<nkdMetadataEntry> entries = set.getEntries().data();
        for (const nkdMetadataEntry &entry : entries)
            QDebug(&text) << "   " << entry.getKey() << entry.isTag() << int(entry.getValueType())
                          << document().isNumberText(entry.getObjectId()) << entry.getValue() << '\n';
    }

    /// The whole document as text, whatever ids it has.
    static QString dump()
    {
        QString text;
        QHash<quint64, int> places;
        const QList<nkdMetadataSet> sets = nkMetadataService::the().getAllSets();
        for (const nkdMetadataSet &set : sets) {
            text += QStringLiteral("set ") + set.getName();
            QDebug(&text) << int(document().assetState(set.getObjectId()))
                          << document().assetId(set.getObjectId());
            addText(text, set);
        }
        for (const quint64 id : allObjects()) {
            const nkdSceneObject object{nkdObject(id)};
            places.insert(id, places.size());
            text += QStringLiteral("object ") + object.getName();
            QDebug(&text) << object.getLocked();
            for (const nkdMetadataSet &set : nkdMetadata::fromObject(object).getSets())
                text += QStringLiteral("+") + set.getName();
            addText(text, ownSet(object));
        }
        for (const nkdMetadataSet &set : sets) {
            for (const nkdSceneObject &object : set.getObjects())
                text +=
                    QStringLiteral("%1 on %2\n").arg(set.getName()).arg(places.value(object.getObjectId()));
        }
        return text;
    }

    QTemporaryDir folder;
    QString path;
    std::shared_ptr<const interchange::SceneSource> source;
    interchange::ImportReport report;
};
