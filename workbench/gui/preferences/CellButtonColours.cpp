#include "CellButtonColours.h"

#include <QAbstractButton>
#include <QApplication>
#include <QEvent>
#include <QPalette>

CellButtonColours::CellButtonColours(QAbstractButton *button) : QObject(button), m_button(button)
{
    button->installEventFilter(this);
    update();
}

bool CellButtonColours::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::PaletteChange && !m_isUpdating) {
        update();
    }
    return QObject::eventFilter(watched, event);
}

void CellButtonColours::update()
{
    m_isUpdating = true;
    const QPalette present = QApplication::palette(m_button);
    QPalette own;
    if (present.color(QPalette::Base).lightness() < present.color(QPalette::Text).lightness()) {
        own.setColor(QPalette::Base, present.color(QPalette::Button).lighter(140));
    }
    m_button->setPalette(own);
    m_isUpdating = false;
}
