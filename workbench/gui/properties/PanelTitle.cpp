#include "PanelTitle.h"

#include <nkKernelServices/nkdMetadataEntry.h>
#include <nkKernelServices/nkdMetadataSet.h>
#include <nkKernelServicesGUI/nkPropertyEditorNkdObjectWrapper.h>

#include <QCoreApplication>

namespace {

QString counted(int count, const char *one, const char *many)
{
    return count == 1 ? QCoreApplication::translate("Metadata", one)
                      : QCoreApplication::translate("Metadata", many).arg(count);
}

} // namespace

QString PanelTitle::of(const QList<nkPropertyEditorNkdObjectWrapper> &objects)
{
    if (objects.isEmpty()) {
        return {};
    }
    if (!nkdMetadataEntry(objects.first().getObject()).isNull()) {
        return counted(objects.size(), QT_TRANSLATE_NOOP("Metadata", "1 entry"),
                       QT_TRANSLATE_NOOP("Metadata", "%1 entries"));
    }
    if (!nkdMetadataSet(objects.first().getObject()).isNull()) {
        return counted(objects.size(), QT_TRANSLATE_NOOP("Metadata", "1 set"),
                       QT_TRANSLATE_NOOP("Metadata", "%1 sets"));
    }
    return counted(objects.size(), QT_TRANSLATE_NOOP("Metadata", "1 object"),
                   QT_TRANSLATE_NOOP("Metadata", "%1 objects"));
}
