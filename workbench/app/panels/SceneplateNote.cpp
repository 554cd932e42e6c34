#include "SceneplateNote.h"

#include "gui/dialogs/ValueText.h"
#include "kernel/document/Document.h"

#include <QCoreApplication>
#include <QFileInfo>

using kernel::Document;
using kernel::SceneplatePlacement;

namespace SceneplateNote {

namespace {

QString tr(const char *text)
{
    return QCoreApplication::translate("SceneplateNote", text);
}

} // namespace

QString text(quint64 id)
{
    const QString image = Document::the().sceneplateImage(id);
    if (image.isEmpty()) {
        return tr("no image");
    }
    if (!QFileInfo(image).isFile()) {
        return tr("image missing");
    }
    return Document::the().sceneplatePlacement(id) == SceneplatePlacement::InFront ? tr("in front")
                                                                                   : tr("behind");
}

QString toolTip(quint64 id)
{
    const QString image = Document::the().sceneplateImage(id);
    return image.isEmpty() ? QString() : ValueText::literal(image);
}

QString accessibleText(const QString &name, quint64 id)
{
    return QStringLiteral("%1, %2").arg(ValueText::oneLine(name), text(id));
}

} // namespace SceneplateNote
