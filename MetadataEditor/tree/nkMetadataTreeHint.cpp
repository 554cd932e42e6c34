#include "tree/nkMetadataTreeHint.h"

#include "actions/nkMetadataActions.h"

#include <QAction>
#include <QCoreApplication>

namespace {

QString translated(const char *text)
{
    return QCoreApplication::translate("nkMetadataTreeWidget", text);
}

QString howToCreateASet()
{
    nkMetadataActions *const actions = nkMetadataActions::instance();
    if (!actions) { // a tree by itself has no commands
        return translated(QT_TRANSLATE_NOOP("nkMetadataTreeWidget", "No metadata sets."));
    }
    return translated(QT_TRANSLATE_NOOP("nkMetadataTreeWidget", "No metadata sets. Create one with %1 > %2."))
        .arg(QCoreApplication::translate("nkMetadataEditorMenubar", "Create"),
             actions->createSetAction()->text());
}

} // namespace

QString nkMetadataTreeHint::ofEmptyList(TreeMode mode)
{
    switch (mode) {
    case TreeMode::Sets:
        return howToCreateASet();
    case TreeMode::Scenegraph:
        return translated(QT_TRANSLATE_NOOP("nkMetadataTreeWidget", "No nodes with metadata."));
    case TreeMode::Materials:
        return translated(QT_TRANSLATE_NOOP("nkMetadataTreeWidget", "No materials with metadata."));
    case TreeMode::Cameras:
        return translated(QT_TRANSLATE_NOOP("nkMetadataTreeWidget", "No cameras with metadata."));
    case TreeMode::Lights:
        return translated(QT_TRANSLATE_NOOP("nkMetadataTreeWidget", "No lights with metadata."));
    case TreeMode::Sceneplates:
        return translated(QT_TRANSLATE_NOOP("nkMetadataTreeWidget", "No sceneplates with metadata."));
    case TreeMode::AllObjects:
        return translated(QT_TRANSLATE_NOOP("nkMetadataTreeWidget", "No objects with metadata."));
    case TreeMode::LastSelection:
        return translated(
            QT_TRANSLATE_NOOP("nkMetadataTreeWidget", "Nothing is selected in the editors of the scene."));
    }
    return QString();
}

QString nkMetadataTreeHint::ofHiddenRows()
{
    return translated(QT_TRANSLATE_NOOP("nkMetadataTreeWidget", "Nothing matches the search."));
}
