#include "EditorText.h"

#include <QCoreApplication>

namespace {

QString words(const char *text)
{
    return QCoreApplication::translate("EditorPanel", text);
}

} // namespace

EditorText EditorText::of(EditorModule module)
{
    switch (module) {
    case EditorModule::Material:
        return {words(QT_TRANSLATE_NOOP("EditorPanel", "Materials")),
                words(QT_TRANSLATE_NOOP("EditorPanel", "&Materials")),
                QStringLiteral("MaterialsPanel"),
                QStringLiteral("ModuleMaterialEditor"),
                words(QT_TRANSLATE_NOOP("EditorPanel", "Search materials")),
                words(QT_TRANSLATE_NOOP("EditorPanel", "This scene has no materials.\n"
                                                       "Create one with New Material above, or open a file "
                                                       "that has some with File > Open."))};
    case EditorModule::Light:
        return {words(QT_TRANSLATE_NOOP("EditorPanel", "Lights")),
                words(QT_TRANSLATE_NOOP("EditorPanel", "&Lights")),
                QStringLiteral("LightsPanel"),
                QStringLiteral("ModuleLights"),
                words(QT_TRANSLATE_NOOP("EditorPanel", "Search lights")),
                words(QT_TRANSLATE_NOOP("EditorPanel", "This scene has no lights.\n"
                                                       "Create one with New Light above, or open a file "
                                                       "that has some with File > Open."))};
    case EditorModule::Camera:
        return {words(QT_TRANSLATE_NOOP("EditorPanel", "Cameras")),
                words(QT_TRANSLATE_NOOP("EditorPanel", "&Cameras")),
                QStringLiteral("CamerasPanel"),
                QStringLiteral("Camera"),
                words(QT_TRANSLATE_NOOP("EditorPanel", "Search cameras")),
                words(QT_TRANSLATE_NOOP("EditorPanel", "This scene has no cameras.\n"
                                                       "Create one with New Camera above, or open a file "
                                                       "that has some with File > Open."))};
    case EditorModule::Sceneplate:
        return {words(QT_TRANSLATE_NOOP("EditorPanel", "Sceneplates")),
                words(QT_TRANSLATE_NOOP("EditorPanel", "Scene&plates")),
                QStringLiteral("SceneplatesPanel"),
                QStringLiteral("Sceneplate"),
                words(QT_TRANSLATE_NOOP("EditorPanel", "Search sceneplates")),
                words(QT_TRANSLATE_NOOP("EditorPanel", "This scene has no sceneplates.\n"
                                                       "Create one from an image file with New Sceneplate "
                                                       "above."))};
    case EditorModule::Scenegraph:
        break;
    }
    return {words(QT_TRANSLATE_NOOP("EditorPanel", "Scene Graph")),
            words(QT_TRANSLATE_NOOP("EditorPanel", "Scene &Graph")),
            QStringLiteral("ScenegraphPanel"),
            QStringLiteral("Node"),
            words(QT_TRANSLATE_NOOP("EditorPanel", "Search nodes")),
            words(QT_TRANSLATE_NOOP("EditorPanel", "This scene has no nodes.\n"
                                                   "Open a file that has some with File > Open, or create a "
                                                   "group above."))};
}
