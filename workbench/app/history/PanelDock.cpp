#include "PanelDock.h"

#include <nkQt4Ext/nkIconManager.h>

#include <QAction>

PanelDock::PanelDock(const QString &title, const QString &menuText, const QString &objectName,
                     const QString &icon, QWidget *parent)
    : QDockWidget(title, parent),
      m_action(new QAction(nkIconManager::getIcon(icon, QStringLiteral("General")), menuText, this))
{
    setObjectName(objectName);
    m_action->setCheckable(true);
    connect(m_action, &QAction::triggered, this, &PanelDock::hideOrShow);
    connect(this, &QDockWidget::visibilityChanged, this, &PanelDock::tellState);
    tellState();
}

PanelDock::~PanelDock() = default;

void PanelDock::hideOrShow()
{
    // One that stands behind others is there and yet not seen.
    if (!visibleRegion().isEmpty()) {
        hide();
    } else {
        show();
        raise();
        widget()->setFocus(Qt::OtherFocusReason);
    }
    tellState();
}

void PanelDock::tellState()
{
    m_action->setChecked(!isHidden());
}
