#include "SceneText.h"

#include <kernel/document/Document.h>
#include <nkKernelServices/nkMetadataService.h>
#include <nkKernelServices/nkdMetadata.h>

#include <QStringList>

using kernel::Document;

namespace {

/// @param count goes up by the number of the entries
QString entriesOf(const nkdMetadataSet &set, int &count)
{
    QStringList texts;
    count += set.getEntries().size();
    for (const nkdMetadataEntry &entry : set.getEntries()) {
        texts << QStringLiteral("%1:%2=%3")
                     .arg(entry.getObjectId())
                     .arg(entry.getKey(), entry.getValue().toString());
    }
    return texts.join(QLatin1Char(','));
}

template <typename Handle>
QString idsOf(const QList<Handle> &handles)
{
    QStringList texts;
    for (const Handle &handle : handles) {
        texts << QString::number(handle.getObjectId());
    }
    return texts.join(QLatin1Char(','));
}

void describe(const QList<quint64> &ids, const QString &indent, QStringList &lines, int &entries)
{
    const Document &document = Document::the();
    for (const quint64 id : ids) {
        const nkdSceneObject object{nkdObject(id)};
        const nkdMetadata metadata(id);
        lines << QStringLiteral("%1%2 kind %3 '%4'%5 image '%6' %7 {%8} sets %9")
                     .arg(indent, QString::number(id), QString::number(int(document.typeOf(id))),
                          object.getName(), object.getLocked() ? QStringLiteral(" locked") : QString(),
                          document.sceneplateImage(id),
                          QString::number(int(document.sceneplatePlacement(id))),
                          entriesOf(metadata.getObjectSet(), entries), idsOf(metadata.getSets()));
        describe(document.childrenOf(id), indent + QLatin1String("  "), lines, entries);
    }
}

} // namespace

QString sceneText()
{
    QStringList lines;
    int entries = 0;
    describe(Document::the().topLevelNodes(), QString(), lines, entries);
    describe(Document::the().topLevelMaterials(), QString(), lines, entries);
    for (const nkdMetadataSet &set : nkMetadataService::the().getAllSets()) {
        lines << QStringLiteral("set %1 '%2' {%3} on %4")
                     .arg(QString::number(set.getObjectId()), set.getName(), entriesOf(set, entries),
                          idsOf(set.getObjects()));
    }
    if (entries != Document::the().entryCount()) {
        lines
            << QStringLiteral("%1 entries are said to be %2").arg(entries).arg(Document::the().entryCount());
        qWarning("%s", qPrintable(lines.constLast())); // fails the test
    }
    return lines.join(QLatin1Char('\n'));
}
