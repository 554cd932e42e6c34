#include "nkQt4Ext/QNKToolBar.h"

#include <QActionEvent>
#include <QToolButton>

namespace {

constexpr int iconExtent = 24;

} // namespace

QNKToolBar::QNKToolBar(const QString &title, QWidget *parent) : QToolBar(title, parent)
{
    setIconSize(QSize(iconExtent, iconExtent));
    if (auto *extension = findChild<QToolButton *>(QStringLiteral("qt_toolbar_ext_button"))) {
        extension->setFocusPolicy(Qt::TabFocus);
        extension->setAccessibleName(tr("More tools"));
    }
}

QNKToolBar::QNKToolBar(QWidget *parent) : QNKToolBar(QString(), parent) {}

QNKToolBar::~QNKToolBar() = default;

void QNKToolBar::actionEvent(QActionEvent *event)
{
    QToolBar::actionEvent(event);
    if (event->type() != QEvent::ActionAdded)
        return;
    // Qt's tool buttons refuse the keyboard. Tab reaches these; a click still leaves the focus where it was.
    if (auto *button = qobject_cast<QToolButton *>(widgetForAction(event->action())))
        button->setFocusPolicy(Qt::TabFocus);
}
