#include "nkQt4Ext/QNKComboBox.h"

#include <QAbstractItemView>
#include <QWheelEvent>

namespace {

/// Qt's list acts on these keys already when they are announced as possible shortcuts.
bool isKeyOfTheList(int key)
{
    switch (key) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Escape:
    case Qt::Key_Back:
    case Qt::Key_Down:
    case Qt::Key_F4:
        return true;
    default:
        return false;
    }
}

} // namespace

QNKComboBox::QNKComboBox(QWidget *parent) : QComboBox(parent)
{
    // Qt's own policy gives the focus to a combo box under the wheel, which would defeat wheelEvent().
    setFocusPolicy(Qt::StrongFocus);
    setAccessibleName(tr("Choice"));
}

QNKComboBox::~QNKComboBox() = default;

void QNKComboBox::showPopup()
{
    // The list is a window of its own inside the parent's reach: without this, keys pressed in it would set
    // off the shortcuts of the table that the box edits.
    view()->installEventFilter(this);
    QComboBox::showPopup();
}

bool QNKComboBox::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::ShortcutOverride && watched == view()
        && !isKeyOfTheList(static_cast<QKeyEvent *>(event)->key())) {
        event->accept();
        return true;
    }
    return QComboBox::eventFilter(watched, event);
}

bool QNKComboBox::event(QEvent *event)
{
    if (event->type() == QEvent::ShortcutOverride && isCellEditor()) {
        const auto *key = static_cast<QKeyEvent *>(event);
        if (key->matches(QKeySequence::Delete) || key->matches(QKeySequence::Copy)
            || key->matches(QKeySequence::Paste)) {
            event->accept();
            return true;
        }
    }
    return QComboBox::event(event);
}

void QNKComboBox::wheelEvent(QWheelEvent *event)
{
    if (hasFocus())
        QComboBox::wheelEvent(event);
    else
        event->ignore();
}

bool QNKComboBox::isCellEditor() const
{
    const QWidget *viewport = parentWidget();
    return viewport && qobject_cast<const QAbstractItemView *>(viewport->parentWidget());
}
