#include "EditorPanels.h"

#include "EditorPanel.h"

#include <nkQt4Ext/nkIconManager.h>

#include <QAction>
#include <QDockWidget>
#include <QMainWindow>

namespace {

QDockWidget *makeDock(EditorPanel *panel, QMainWindow *window)
{
    const EditorText &text = panel->text();
    auto *dock = new QDockWidget(text.title, window);
    dock->setObjectName(text.objectName);
    dock->setWidget(panel);
    QAction *toggle = dock->toggleViewAction();
    toggle->setIcon(nkIconManager::getIcon(text.icon, QStringLiteral("General")));
    // One that stands behind others comes to the front when it is asked for.
    QObject::connect(toggle, &QAction::triggered, dock, [dock](bool shown) {
        if (shown) {
            dock->raise();
            dock->widget()->setFocus(Qt::OtherFocusReason);
        }
    });
    return dock;
}

} // namespace

EditorPanels::EditorPanels(QMainWindow *window)
{
    for (const EditorModule module : {EditorModule::Scenegraph, EditorModule::Material, EditorModule::Camera,
                                      EditorModule::Light, EditorModule::Sceneplate}) {
        m_panels.append(new EditorPanel(module));
        m_docks.append(makeDock(m_panels.constLast(), window));
    }
    window->addDockWidget(Qt::LeftDockWidgetArea, m_docks.at(0));
    window->addDockWidget(Qt::LeftDockWidgetArea, m_docks.at(1));
    for (int i = 2; i < m_docks.size(); ++i) {
        window->tabifyDockWidget(m_docks.at(1), m_docks.at(i));
    }
    m_docks.at(1)->raise();
}
