#include "ViewportDock.h"

#include "MainWindow.h"
#include "ViewportPanel.h"
#include "files/SceneSession.h"

#include <QAction>

ViewportDock::ViewportDock(MainWindow *window, SceneSession *session)
    : QDockWidget(tr("Viewport"), window),
      m_panel(new ViewportPanel(this)),
      m_action(new QAction(ViewportIcons::icon(ViewportIcons::Shape::Orbit), tr("&Viewport"), this))
{
    setObjectName(QStringLiteral("Viewport"));
    setWidget(m_panel);
    setFocusProxy(m_panel);
    m_action->setCheckable(true);
    connect(m_action, &QAction::triggered, this, &ViewportDock::hideOrShow);
    connect(this, &QDockWidget::visibilityChanged, this, &ViewportDock::tellState);
    connect(session, &SceneSession::sceneReplaced, m_panel,
            [this, session] { m_panel->setSource(session->source()); });
    m_panel->setSource(session->source());
    window->addPanel(this, m_action, DockLayout::Place::Middle);
    connect(m_panel, &ViewportPanel::metadataRequested, window, &MainWindow::showModules);
    tellState();
}

ViewportDock::~ViewportDock() = default;

void ViewportDock::bringToFront()
{
    show();
    raise();
    m_panel->setFocus(Qt::OtherFocusReason);
}

void ViewportDock::hideOrShow()
{
    // One that stands behind others is there and yet not seen.
    if (!visibleRegion().isEmpty()) {
        hide();
    } else {
        bringToFront();
    }
    tellState();
}

void ViewportDock::tellState()
{
    m_action->setChecked(!isHidden());
}
