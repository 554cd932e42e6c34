#pragma once

#include <kernel/document/Document.h>
#include <nkKernelServices/nkMetadataService.h>
#include <nkKernelServices/nkdMetadata.h>
#include <nkKernelServices/nkdSceneObject.h>

#include <QStringList>

/// A whole scene as lines that can be compared: structure, names, locks, images, entries and assignments.
namespace EditorScene {

inline QString metadataOf(quint64 id)
{
    const nkdMetadata metadata(id);
    QStringList texts;
    for (const nkdMetadataEntry &entry : metadata.getObjectSet().getEntries()) {
        texts << entry.getKey() + '=' + entry.getValue().toString();
    }
    for (const nkdMetadataSet &set : metadata.getSets()) {
        texts << '#' + set.getName();
    }
    return texts.join(',');
}

inline void describe(const QList<quint64> &ids, int depth, QStringList &lines)
{
    const kernel::Document &document = kernel::Document::the();
    for (const quint64 id : ids) {
        const nkdSceneObject object{nkdObject(id)};
        lines << QStringLiteral("%1%2 %3 %4%5 [%6] %7 %8")
                     .arg(QString(2 * depth, ' '), QString::number(id),
                          QString::number(int(document.typeOf(id))), object.getName(),
                          object.getLocked() ? QStringLiteral(" locked") : QString(), metadataOf(id),
                          document.sceneplateImage(id),
                          QString::number(int(document.sceneplatePlacement(id))));
        describe(document.childrenOf(id), depth + 1, lines);
    }
}

inline QString text()
{
    QStringList lines;
    describe(kernel::Document::the().topLevelNodes(), 0, lines);
    describe(kernel::Document::the().topLevelMaterials(), 0, lines);
    for (const nkdMetadataSet &set : nkMetadataService::the().getAllSets()) {
        lines << QStringLiteral("set %1 on %2").arg(set.getName()).arg(set.getObjects().size());
    }
    return lines.join('\n');
}

} // namespace EditorScene
