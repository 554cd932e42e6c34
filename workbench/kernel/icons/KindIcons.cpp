#include "KindIcons.h"

#include "IconSource.h"

namespace kernel {

namespace {

QString objectIconName(nkObjectType kind)
{
    switch (kind) {
    case nkObjectType::Node:
        return QStringLiteral("Node");
    case nkObjectType::Camera:
        return QStringLiteral("Camera");
    case nkObjectType::Light:
        return QStringLiteral("Light");
    case nkObjectType::Sceneplate:
        return QStringLiteral("Sceneplate");
    case nkObjectType::MaterialGroup:
        return QStringLiteral("MaterialGroup");
    case nkObjectType::Material:
        return QStringLiteral("Material");
    default:
        return QString();
    }
}

QString setIconName(KindIcons::SetState state)
{
    switch (state) {
    case KindIcons::SetState::Shared:
        return QStringLiteral("MetadataSet");
    case KindIcons::SetState::Locked:
        return QStringLiteral("MetadataSetLocked");
    case KindIcons::SetState::AssetAtRest:
        return QStringLiteral("MetadataSetAsset");
    case KindIcons::SetState::EditedAsset:
        return QStringLiteral("MetadataSetEditedAsset");
    case KindIcons::SetState::ObjectSet:
        break;
    }
    return QStringLiteral("ObjectSet");
}

QString entryIconName(bool tag, bool onObject)
{
    if (tag) {
        return onObject ? QStringLiteral("TagOnObjectOffNormal") : QStringLiteral("TagInSetOffNormal");
    }
    return onObject ? QStringLiteral("EntryOnObjectOffNormal") : QStringLiteral("EntryInSetOffNormal");
}

QIcon metadataIcon(const QString &name)
{
    return IconSource::the().icon(name, QStringLiteral("MetadataEditor"));
}

} // namespace

QIcon KindIcons::ofObject(nkObjectType kind)
{
    const QString name = objectIconName(kind);
    return name.isEmpty() ? QIcon() : IconSource::the().icon(name, QStringLiteral("General"));
}

QIcon KindIcons::ofEntry(bool tag, bool onObject)
{
    return metadataIcon(entryIconName(tag, onObject));
}

QIcon KindIcons::ofSet(SetState state)
{
    return metadataIcon(setIconName(state));
}

} // namespace kernel
