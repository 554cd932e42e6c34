#include "UnexpectedModals.h"

#include "ModalAnswer.h"
#include "TestMessages.h"

#include <QApplication>
#include <QDialog>
#include <QEvent>
#include <QMenu>
#include <QProgressDialog>
#include <QTimer>

UnexpectedModals::UnexpectedModals()
{
    if (qobject_cast<QApplication *>(QCoreApplication::instance()))
        qApp->installEventFilter(this);
}

bool UnexpectedModals::eventFilter(QObject *watched, QEvent *event)
{
    TestMessages::leaveOutPlatformNoise();
    if (event->type() != QEvent::Show || event->spontaneous() || !watched->isWidgetType())
        return false;
    // exec() starts its loop after the show event: the answer has to come from inside that loop.
    if (auto *menu = qobject_cast<QMenu *>(watched))
        QTimer::singleShot(0, menu, [menu] { ModalAnswer::answerMenu(menu); });
    auto *dialog = qobject_cast<QDialog *>(watched);
    if (dialog && dialog->isModal() && !qobject_cast<QProgressDialog *>(dialog))
        QTimer::singleShot(0, dialog, [dialog] { ModalAnswer::answerDialog(dialog); });
    return false;
}
