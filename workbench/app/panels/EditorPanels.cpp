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
    return dock;
}

void hideOrShow(QDockWidget *dock)
{
    // One that stands behind others is there and yet not seen; the tabs take no keys.
    if (!dock->visibleRegion().isEmpty()) {
        dock->hide();
    } else {
        dock->show();
        dock->raise();
        dock->widget()->setFocus(Qt::OtherFocusReason);
    }
}

QAction *makeAction(const EditorText &text, QDockWidget *dock)
{
    const QIcon icon = nkIconManager::getIcon(text.icon, QStringLiteral("General"));
    auto *action = new QAction(icon, text.menuText, dock);
    action->setCheckable(true);
    const auto tellState = [action, dock] { action->setChecked(!dock->isHidden()); };
    QObject::connect(action, &QAction::triggered, dock, [dock, tellState] {
        hideOrShow(dock);
        tellState();
    });
    QObject::connect(dock, &QDockWidget::visibilityChanged, action, tellState);
    tellState();
    return action;
}

} // namespace

EditorPanels::EditorPanels(QMainWindow *window)
{
    for (const EditorModule module : {EditorModule::Scenegraph, EditorModule::Material, EditorModule::Camera,
                                      EditorModule::Light, EditorModule::Sceneplate}) {
        m_panels.append(new EditorPanel(module));
        m_docks.append(makeDock(m_panels.constLast(), window));
        m_actions.append(makeAction(m_panels.constLast()->text(), m_docks.constLast()));
    }
    window->addDockWidget(Qt::LeftDockWidgetArea, m_docks.at(0));
    window->addDockWidget(Qt::LeftDockWidgetArea, m_docks.at(1));
    for (int i = 2; i < m_docks.size(); ++i) {
        window->tabifyDockWidget(m_docks.at(1), m_docks.at(i));
    }
    m_docks.at(1)->raise();
}
