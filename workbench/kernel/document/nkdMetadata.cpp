#include <nkKernelServices/nkdMetadata.h>

#include "Document.h"
#include "HandleLists.h"
#include "Store.h"
#include "ValueConversion.h"

#include <QMetaEnum>

#include <algorithm>

using namespace kernel;

namespace {

const Store &openStore()
{
    return Document::the().store();
}

const ObjectRecord *findObject(const nkdMetadata &metadata)
{
    return openStore().findObject(metadata.getObjectId());
}

/// The object set, then the assigned sets in their order; none for a dead object.
QVector<Slot> setsOf(const nkdMetadata &metadata)
{
    const Slot object = openStore().objectSlot(metadata.getObjectId());
    if (object == NoSlot) {
        return {};
    }
    return QVector<Slot>{openStore().object(object).objectSet} + openStore().assignedSets(object);
}

/// Whether test holds for an entry of the object.
template <typename Test>
bool anyEntry(const nkdMetadata &metadata, Test test)
{
    const QVector<Slot> sets = setsOf(metadata);
    return std::any_of(sets.cbegin(), sets.cend(), [&test](Slot set) {
        const QVector<Slot> &entries = openStore().set(set).entries.slots();
        return std::any_of(entries.cbegin(), entries.cend(),
                           [&test](Slot entry) { return test(openStore().entry(entry).value); });
    });
}

/// What types are called in queries: as the editor shows them, in every language the same.
QString typeName(nkMetadataTypes::ValueType type)
{
    if (type == nkMetadataTypes::DateTime) {
        return QStringLiteral("Date and Time");
    }
    return QLatin1String(QMetaEnum::fromType<nkMetadataTypes::ValueType>().valueToKey(type));
}

QString quoted(QString text)
{
    text.replace(QLatin1Char('\\'), QLatin1String("\\\\"));
    text.replace(QLatin1Char('"'), QLatin1String("\\\""));
    return QLatin1Char('"') + text + QLatin1Char('"');
}

} // namespace

nkdMetadata::nkdMetadata(quint64 sceneObjectId)
    : nkdObject(openStore().findObject(sceneObjectId) ? nkdObject(sceneObjectId, nkObjectType::Metadata)
                                                      : nkdObject())
{}

nkdMetadata::~nkdMetadata() = default;

nkdMetadata nkdMetadata::fromObject(const nkdSceneObject &object)
{
    return nkdMetadata(object.getObjectId());
}

nkdSceneObject nkdMetadata::getObject() const
{
    const ObjectRecord *object = findObject(*this);
    return object ? nkdSceneObject(nkdObject(getObjectId(), object->type)) : nkdSceneObject();
}

nkdMetadataSet nkdMetadata::getObjectSet() const
{
    const ObjectRecord *object = findObject(*this);
    return object ? nkdMetadataSet(openStore().idOf(object->objectSet)) : nkdMetadataSet();
}

QList<nkdMetadataSet> nkdMetadata::getSets() const
{
    const Slot object = openStore().objectSlot(getObjectId());
    return object == NoSlot ? QList<nkdMetadataSet>()
                            : setHandles(openStore(), openStore().assignedSets(object));
}

bool nkdMetadata::hasObjectEntries() const
{
    const ObjectRecord *object = findObject(*this);
    return object && !openStore().set(object->objectSet).entries.isEmpty();
}

int nkdMetadata::entryCount() const
{
    int count = 0;
    const QVector<Slot> sets = setsOf(*this);
    for (const Slot set : sets) {
        count += openStore().set(set).entries.size();
    }
    return count;
}

QVariant nkdMetadata::getValue(const QString &key) const
{
    const QVector<Slot> sets = setsOf(*this);
    for (const Slot set : sets) {
        const Slot entry = openStore().findKey(set, key);
        if (entry != NoSlot) {
            return openStore().entry(entry).value.toVariant();
        }
    }
    return QVariant();
}

QStringList nkdMetadata::getTags() const
{
    QStringList tags;
    QSet<quint32> known;
    const QVector<Slot> sets = setsOf(*this);
    for (const Slot set : sets) {
        for (const Slot entry : openStore().set(set).entries.slots()) {
            const quint32 key = openStore().entry(entry).key;
            if (openStore().entry(entry).value.isTag() && !known.contains(key)) {
                known.insert(key);
                tags.append(openStore().key(entry));
            }
        }
    }
    return tags;
}

bool nkdMetadata::hasKey(const QString &key) const
{
    const QVector<Slot> sets = setsOf(*this);
    return std::any_of(sets.cbegin(), sets.cend(),
                       [&key](Slot set) { return openStore().findKey(set, key) != NoSlot; });
}

bool nkdMetadata::hasValue(const QVariant &value) const
{
    return value.isValid() && anyEntry(*this, [&value](const EntryValue &present) {
               return isSameValue(present.toVariant(), value);
           });
}

bool nkdMetadata::hasSet(const QString &name) const
{
    const Slot object = openStore().objectSlot(getObjectId());
    const Slot set = openStore().setByName(name);
    return object != NoSlot && set != NoSlot && openStore().findLink(set, object) != NoLink;
}

bool nkdMetadata::hasType(nkMetadataTypes::ValueType type) const
{
    return anyEntry(*this, [type](const EntryValue &present) {
        return present.isTag() ? type == nkMetadataTypes::Tag : present.type() == type;
    });
}

// Queries -----------------------------------------------------------------------------------------------

QString nkdMetadata::getKeyQuery(const QString &key)
{
    return QLatin1String("key:") + quoted(key);
}

QString nkdMetadata::getValueQuery(const QVariant &value)
{
    return QLatin1String("value:") + quoted(valueText(value));
}

QString nkdMetadata::getSetQuery(const QString &name)
{
    return QLatin1String("set:") + quoted(name);
}

QString nkdMetadata::getValueTypeQuery(nkMetadataTypes::ValueType type)
{
    return QLatin1String("type:") + quoted(typeName(type));
}

QString nkdMetadata::getKeyValueQuery(const QString &key) const
{
    const QVariant value = getValue(key);
    return value.isValid() ? quoted(key) + QLatin1String(" = ") + quoted(valueText(value)) : getKeyQuery(key);
}
