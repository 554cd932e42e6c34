#include <nkKernelServices/nkdMetadataSet.h>

#include "../icons/KindIcons.h"
#include "Document.h"
#include "EntryOperations.h"
#include "HandleLists.h"
#include "SetFiles.h"
#include "SetOperations.h"
#include "Store.h"
#include "ValueConversion.h"

#include <QMetaEnum>

using namespace kernel;

namespace {

const Store &openStore()
{
    return Document::the().store();
}

const SetRecord *findSet(const nkdMetadataSet &set)
{
    return openStore().findSet(set.getObjectId());
}

KindIcons::SetState iconState(const SetRecord &set)
{
    if (set.owner != NoSlot) {
        return KindIcons::SetState::ObjectSet;
    }
    if (set.asset.state != AssetState::None) {
        return set.asset.state == AssetState::Edited ? KindIcons::SetState::EditedAsset
                                                     : KindIcons::SetState::AssetAtRest;
    }
    return set.locked ? KindIcons::SetState::Locked : KindIcons::SetState::Shared;
}

QString dumpLine(const nkdMetadataEntry &entry)
{
    if (entry.isTag()) {
        return QStringLiteral("  %1 (Tag)\n").arg(entry.getKey());
    }
    const QMetaEnum types = QMetaEnum::fromType<nkMetadataTypes::ValueType>();
    return QStringLiteral("  %1 (%2) = %3\n")
        .arg(entry.getKey(), QLatin1String(types.valueToKey(entry.getValueType())),
             valueText(entry.getValue()));
}

} // namespace

nkdMetadataSet::~nkdMetadataSet() = default;

QString nkdMetadataSet::getName() const
{
    const Slot slot = openStore().setSlot(getObjectId());
    return slot == NoSlot ? QString() : openStore().setName(slot);
}

void nkdMetadataSet::setName(const QString &name)
{
    SetOperations::rename(getObjectId(), name);
}

QColor nkdMetadataSet::getColor() const
{
    const SetRecord *set = findSet(*this);
    return set ? set->color : QColor();
}

void nkdMetadataSet::setColor(const QColor &color)
{
    SetOperations::setColor(getObjectId(), color);
}

bool nkdMetadataSet::isLocked() const
{
    const SetRecord *set = findSet(*this);
    return set && set->locked;
}

void nkdMetadataSet::setLocked(bool locked)
{
    SetOperations::setLocked(getObjectId(), locked);
}

QVariant nkdMetadataSet::getValue(const QString &key) const
{
    return getEntries().find(key).getValue();
}

void nkdMetadataSet::setValue(const QString &key, const QVariant &value)
{
    EntryOperations::setValueOfKey(getObjectId(), key, value);
}

QString nkdMetadataSet::getUniqueKey(const QString &base) const
{
    const Slot slot = openStore().setSlot(getObjectId());
    if (slot == NoSlot) {
        return QString();
    }
    return openStore().uniqueKey(slot, base.isEmpty() ? defaultKey(nkMetadataTypes::String) : base);
}

nkdMetadataEntry nkdMetadataSet::createEntry(nkMetadataTypes::ValueType type)
{
    return nkdMetadataEntry(EntryOperations::create(getObjectId(), type));
}

nkdMetadataEntryList nkdMetadataSet::getEntries() const
{
    return nkdMetadataEntryList(getObjectId());
}

QIcon nkdMetadataSet::getIcon() const
{
    const SetRecord *set = findSet(*this);
    return set ? KindIcons::ofSet(iconState(*set)) : QIcon();
}

bool nkdMetadataSet::isAssigned() const
{
    const SetRecord *set = findSet(*this);
    return set && set->links.count > 0;
}

quint32 nkdMetadataSet::getAssignedKinds() const
{
    return Document::the().assignedKinds(getObjectId());
}

bool nkdMetadataSet::isAsset() const
{
    return Document::the().assetState(getObjectId()) != AssetState::None;
}

bool nkdMetadataSet::isEditedAsset() const
{
    return Document::the().assetState(getObjectId()) == AssetState::Edited;
}

bool nkdMetadataSet::isObjectSet() const
{
    const SetRecord *set = findSet(*this);
    return set && set->owner != NoSlot;
}

quint32 nkdMetadataSet::getStates() const
{
    const SetRecord *set = findSet(*this);
    if (!set) {
        return 0;
    }
    const AssetState asset = set->asset.state;
    const auto bit = [](State state, bool holds) { return holds ? quint32(state) : 0u; };
    return bit(Locked, set->locked) | bit(ObjectSet, set->owner != NoSlot)
           | bit(Asset, asset != AssetState::None) | bit(EditedAsset, asset == AssetState::Edited)
           | bit(WithEntries, !set->entries.isEmpty());
}

bool nkdMetadataSet::isEditable() const
{
    const SetRecord *set = findSet(*this);
    return set && set->isEditable();
}

QList<nkdSceneObject> nkdMetadataSet::getObjects() const
{
    const Store &store = openStore();
    const Slot slot = store.setSlot(getObjectId());
    if (slot == NoSlot) {
        return {};
    }
    const Slot owner = store.set(slot).owner;
    return objectHandles(store, owner == NoSlot ? store.linkedObjects(slot) : QVector<Slot>{owner});
}

QByteArray nkdMetadataSet::getJson() const
{
    const Slot slot = openStore().setSlot(getObjectId());
    return slot == NoSlot ? QByteArray() : SetFiles(Document::the()).textOf(slot);
}

bool nkdMetadataSet::setJson(const QByteArray &json)
{
    return isEditable() && SetFiles(Document::the()).replace(getObjectId(), json);
}

QString nkdMetadataSet::dump() const
{
    const SetRecord *set = findSet(*this);
    if (!set) {
        return QString();
    }
    QString text = QStringLiteral("%1 [%2, %3%4, %5 objects]\n")
                       .arg(getName(), QString::number(getObjectId()), set->color.name(),
                            set->locked ? QStringLiteral(", locked") : QString(),
                            QString::number(getObjects().size()));
    const QList<nkdMetadataEntry> entries = getEntries().data();
    for (const nkdMetadataEntry &entry : entries) {
        text += dumpLine(entry);
    }
    return text;
}
