#include "ModuleFrame.h"

ModuleFrame::ModuleFrame(const QString &name, const QString &shortTitle, QWidget *window, QWidget *parent)
    : QDockWidget(shortTitle, parent), m_name(name)
{
    setObjectName(name);
    setWidget(window);
}

ModuleFrame::~ModuleFrame()
{
    release();
}

void ModuleFrame::release()
{
    if (QWidget *window = widget()) {
        window->hide();
        // The dock's layout lets go of a widget that gets another parent.
        window->setParent(nullptr);
    }
}
