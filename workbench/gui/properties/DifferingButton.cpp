#include "DifferingButton.h"

#include <QCoreApplication>
#include <QKeyEvent>

namespace {

bool isTyping(const QKeyEvent *event)
{
    const Qt::KeyboardModifiers others = event->modifiers() & ~(Qt::ShiftModifier | Qt::KeypadModifier);
    return others == Qt::NoModifier && event->key() != Qt::Key_Space && !event->text().isEmpty()
           && event->text().at(0).isPrint();
}

} // namespace

DifferingButton::DifferingButton(QWidget *parent)
    : QPushButton(QCoreApplication::translate("Metadata", "Multiple values"), parent)
{
    setObjectName(QStringLiteral("DifferingButton"));
    setAutoDefault(false);
    setToolTip(QCoreApplication::translate("Metadata", "The values differ. Give all of them the same one."));
    QFont slanted = font();
    slanted.setItalic(true);
    setFont(slanted);
}

DifferingButton::~DifferingButton() = default;

void DifferingButton::keyPressEvent(QKeyEvent *event)
{
    if (isTyping(event)) {
        Q_EMIT typed(event->text());
    } else {
        QPushButton::keyPressEvent(event);
    }
}
