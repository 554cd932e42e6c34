#pragma once

#include <kernel/document/Document.h>
#include <kernel/document/DocumentLoader.h>
#include <nkKernelServices/nkdMetadata.h>
#include <nkKernelServices/nkdMetadataSet.h>

/// A small scene for the tests of the shared widgets, made anew by load():
///
///     Root (node)              carries Common
///       Camera (camera)        carries Common and Second
///       Lamp (light)           own entry "watt" = 60
///       Plate (sceneplate)     carries Second
///     Plain (node)             carries nothing
///     Paints (material group)  own tag "painted"
///       Red (material)         carries Common
///       Blue (material)        carries nothing
///
///     Common   "colour" = "red", "count" = 3, tag "checked"     assigned to Root, Camera, Red
///     Second   "colour" = "blue"                                assigned to Camera, Plate
///     Locked   locked, "note" = "fixed"                         unassigned
struct GuiScene
{
    quint64 root = 0, camera = 0, lamp = 0, plate = 0, plain = 0, paints = 0, red = 0, blue = 0;
    quint64 common = 0, second = 0, locked = 0;

    static GuiScene load()
    {
        GuiScene scene;
        kernel::DocumentLoader loader;
        scene.addObjects(loader);
        scene.addSets(loader);
        loader.commit();
        return scene;
    }

    static nkdMetadataEntry entry(quint64 set, const char *key)
    {
        return nkdMetadataSet(set).getEntries().find(QLatin1String(key));
    }

    static QStringList keys(quint64 set)
    {
        QStringList keys;
        for (const nkdMetadataEntry &entry : nkdMetadataSet(set).getEntries()) {
            keys.append(entry.getKey());
        }
        return keys;
    }

private:
    void addObjects(kernel::DocumentLoader &loader)
    {
        root = loader.addObject(nkObjectType::Node, QStringLiteral("Root"));
        camera = loader.addObject(nkObjectType::Camera, QStringLiteral("Camera"), root);
        lamp = loader.addObject(nkObjectType::Light, QStringLiteral("Lamp"), root);
        plate = loader.addObject(nkObjectType::Sceneplate, QStringLiteral("Plate"), root);
        plain = loader.addObject(nkObjectType::Node, QStringLiteral("Plain"));
        paints = loader.addObject(nkObjectType::MaterialGroup, QStringLiteral("Paints"));
        red = loader.addObject(nkObjectType::Material, QStringLiteral("Red"), paints);
        blue = loader.addObject(nkObjectType::Material, QStringLiteral("Blue"), paints);
        loader.addEntry(loader.objectSet(lamp), QStringLiteral("watt"), nkMetadataTypes::Integer, 60);
        loader.addTag(loader.objectSet(paints), QStringLiteral("painted"));
    }

    void addSets(kernel::DocumentLoader &loader)
    {
        common = loader.addSet(QStringLiteral("Common"));
        second = loader.addSet(QStringLiteral("Second"));
        locked = loader.addSet(QStringLiteral("Locked"), QColor(), true);
        loader.addEntry(common, QStringLiteral("colour"), nkMetadataTypes::String, QStringLiteral("red"));
        loader.addEntry(common, QStringLiteral("count"), nkMetadataTypes::Integer, 3);
        loader.addTag(common, QStringLiteral("checked"));
        loader.addEntry(second, QStringLiteral("colour"), nkMetadataTypes::String, QStringLiteral("blue"));
        loader.addEntry(locked, QStringLiteral("note"), nkMetadataTypes::String, QStringLiteral("fixed"));
        for (quint64 object : {root, camera, red}) {
            loader.assign(common, object);
        }
        for (quint64 object : {camera, plate}) {
            loader.assign(second, object);
        }
    }
};
