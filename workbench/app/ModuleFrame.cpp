#include "ModuleFrame.h"

#include <QScrollArea>

ModuleFrame::ModuleFrame(const QString &name, const QString &shortTitle, QWidget *window, QWidget *parent)
    : QDockWidget(shortTitle, parent), m_name(name), m_area(new QScrollArea(this))
{
    setObjectName(name);
    m_area->setFrameShape(QFrame::NoFrame);
    m_area->setFocusPolicy(Qt::NoFocus);
    m_area->setWidgetResizable(true);
    m_area->setWidget(window);
    setWidget(m_area);
}

ModuleFrame::~ModuleFrame()
{
    release();
}

void ModuleFrame::release()
{
    if (QWidget *window = m_area->takeWidget()) {
        window->hide();
    }
}
