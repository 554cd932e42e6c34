#pragma once

#include "IfcText.h"
#include "SavingFixture.h"

#include <interchange/sidecar/SidecarFile.h>
#include <nkKernelServices/nkScopedUndo.h>

#include <QUndoStack>

/// A tagged house in a folder, opened, and what stands beside it.
class SidecarFixture : public SavingFixture
{
public:
    bool openHouse(const QByteArray &content = IfcText::file(IfcText::taggedHouse()))
    {
        return open(write(QStringLiteral("house.ifc"), content));
    }
    bool reopen() { return open(path); }

    QString sidecarPath() const { return interchange::SidecarFile::pathFor(path); }
    bool hasSidecar() const { return QFileInfo::exists(sidecarPath()); }
    QByteArray sidecar() const { return read(sidecarPath()); }
    void writeSidecar(const QByteArray &content) const
    {
        write(QFileInfo(sidecarPath()).fileName(), content);
    }

    /// The shared set of this name; a null handle where there is none.
    static nkdMetadataSet sharedSet(const char *name)
    {
        const QList<nkdMetadataSet> sets = nkMetadataService::the().getAllSets();
        for (const nkdMetadataSet &set : sets) {
            if (set.getName() == QString::fromUtf8(name))
                return set;
        }
        return nkdMetadataSet();
    }

    static void add(nkdMetadataSet set, const char *key, nkMetadataTypes::ValueType type,
                    const QVariant &value = QVariant())
    {
        const nkScopedUndo step(true);
        nkdMetadataEntry entry = set.createEntry(type);
        entry.setKey(QString::fromUtf8(key));
        if (value.isValid())
            entry.setValue(value);
    }

    static QStringList namesOf(const QList<nkdSceneObject> &objects)
    {
        QStringList names;
        for (const nkdSceneObject &object : objects)
            names.append(object.getName());
        return names;
    }

    /// Something of everything that a sidecar holds.
    static void editEverything()
    {
        object(QStringLiteral("Home")).setName(QStringLiteral("Residence <b>&amp;"));
        object(QStringLiteral("Oak")).setLocked(true);
        nkdMetadataSet own = ownSet(QStringLiteral("Site"));
        add(own, "born", nkMetadataTypes::Date, QDate(2024, 2, 29));
        add(own, "at", nkMetadataTypes::Time, QTime(13, 5));
        add(own, "mine", nkMetadataTypes::Tag);
        own.setColor(QColor(1, 2, 3));
        ownSet(QStringLiteral("Zone")).setLocked(true);
        add(ownSet(QStringLiteral("House")), "list", nkMetadataTypes::List, QVariantList{1, 2.5, "x", true});
        sharedSet("Pset_DoorCommon").getEntries().find(QStringLiteral("Width")).setValue(1.5);
        sharedSet("Pset_WallCommon").setName(QStringLiteral("Walls"));
        nkdMetadataSet asset = nkMetadataService::the().createSet(
            QStringLiteral("Asset"), {object(QStringLiteral("Oak")), object(QStringLiteral("Ground floor"))});
        asset.setColor(QColor(9, 8, 7));
        document().setAssetState(asset.getObjectId(), kernel::AssetState::AtRest, QStringLiteral("chairs/12"),
                                 3);
    }
};
