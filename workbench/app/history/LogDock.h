#pragma once

#include "PanelDock.h"

class LogPanel;

/// The log in its dock.
class LogDock : public PanelDock
{
    Q_OBJECT
public:
    explicit LogDock(QWidget *parent = nullptr);
    ~LogDock() override;

    LogPanel *panel() const { return m_panel; }

private:
    LogPanel *m_panel;
};
