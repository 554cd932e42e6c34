#include "LogDock.h"

#include "LogPanel.h"

LogDock::LogDock(QWidget *parent)
    : PanelDock(tr("Log"), tr("L&og"), QStringLiteral("LogPanel"), QStringLiteral("Log"), parent),
      m_panel(new LogPanel(this))
{
    setWidget(m_panel);
}

LogDock::~LogDock() = default;
