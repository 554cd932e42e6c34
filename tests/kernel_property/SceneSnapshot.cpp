#include "SceneSnapshot.h"

#include <nkKernelServices/nkMetadataService.h>
#include <nkKernelServices/nkdMetadata.h>

namespace {

EntrySnapshot snapshot(const nkdMetadataEntry &entry)
{
    return {entry.getObjectId(), entry.getKey(), entry.isTag(), entry.getValueType(), entry.getValue()};
}

SetSnapshot snapshot(const nkdMetadataSet &set)
{
    SetSnapshot result{set.getObjectId(), set.getName(), set.getColor().rgb(), set.isLocked(), {}, {}};
    for (const nkdMetadataEntry &entry : set.getEntries()) {
        result.entries.append(snapshot(entry));
    }
    if (!set.isObjectSet()) {
        for (const nkdSceneObject &object : set.getObjects()) {
            result.objects.append(object.getObjectId());
        }
    }
    return result;
}

QString describe(const SetSnapshot &set)
{
    QStringList entries;
    for (const EntrySnapshot &entry : set.entries) {
        entries.append(QStringLiteral("%1 %2:%3=%4%5")
                           .arg(entry.id)
                           .arg(entry.key)
                           .arg(int(entry.type))
                           .arg(entry.value.toString(), entry.tag ? QStringLiteral(" tag") : QString()));
    }
    return QStringLiteral("%1 '%2' #%3%4 {%5} on %6 objects")
        .arg(set.id)
        .arg(set.name, QString::number(set.color, 16), set.locked ? QStringLiteral(" locked") : QString(),
             entries.join(QStringLiteral(", ")))
        .arg(set.objects.size());
}

QString firstDifference(const QList<SetSnapshot> &left, const QList<SetSnapshot> &right)
{
    if (left.size() != right.size()) {
        return QStringLiteral("%1 sets against %2").arg(left.size()).arg(right.size());
    }
    for (int i = 0; i < left.size(); ++i) {
        if (!(left.at(i) == right.at(i))) {
            return QStringLiteral("set %1:\n  %2\n  %3")
                .arg(i)
                .arg(describe(left.at(i)), describe(right.at(i)));
        }
    }
    return QString();
}

} // namespace

SceneSnapshot SceneSnapshot::take(const QList<quint64> &objects)
{
    SceneSnapshot result;
    for (const nkdMetadataSet &set : nkMetadataService::the().getAllSets()) {
        result.sets.append(snapshot(set));
    }
    for (quint64 id : objects) {
        const nkdMetadata metadata(id);
        result.objectSets.append(snapshot(metadata.getObjectSet()));
        QList<quint64> sets;
        for (const nkdMetadataSet &set : metadata.getSets()) {
            sets.append(set.getObjectId());
        }
        result.setsOfObjects.append(sets);
    }
    return result;
}

QString SceneSnapshot::differenceFrom(const SceneSnapshot &other) const
{
    const QString shared = firstDifference(sets, other.sets);
    if (!shared.isEmpty()) {
        return shared;
    }
    const QString own = firstDifference(objectSets, other.objectSets);
    if (!own.isEmpty()) {
        return QStringLiteral("object ") + own;
    }
    return setsOfObjects == other.setsOfObjects ? QString()
                                                : QStringLiteral("the sets of the objects differ");
}
