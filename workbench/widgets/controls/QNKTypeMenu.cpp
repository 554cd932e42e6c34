#include "nkQt4Ext/QNKTypeMenu.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QScopedValueRollback>

QNKTypeMenu::QNKTypeMenu(QWidget *parent) : QMenu(parent)
{
    setAccessibleName(tr("Types"));
}

QNKTypeMenu::~QNKTypeMenu() = default;

void QNKTypeMenu::addType(int number, const QString &label, int group)
{
    if (m_types.contains(number))
        return;
    if (!m_types.isEmpty() && group != m_lastGroup)
        addSeparator();
    m_lastGroup = group;
    QString text = label.isEmpty() ? QString::number(number) : label;
    QAction *action = addAction(text.replace(QLatin1Char('&'), QLatin1String("&&")));
    action->setCheckable(true);
    m_types.insert(number, action);
    connect(action, &QAction::toggled, this, [this] {
        if (!m_settingAll)
            Q_EMIT checkedTypesChanged(checkedTypes());
    });
}

QList<int> QNKTypeMenu::checkedTypes() const
{
    QList<int> numbers;
    for (auto type = m_types.cbegin(); type != m_types.cend(); ++type) {
        if (type.value()->isChecked())
            numbers.append(type.key());
    }
    return numbers;
}

void QNKTypeMenu::setCheckedTypes(const QList<int> &numbers)
{
    const QList<int> before = checkedTypes();
    {
        const QScopedValueRollback<bool> quiet(m_settingAll, true);
        for (auto type = m_types.cbegin(); type != m_types.cend(); ++type)
            type.value()->setChecked(numbers.contains(type.key()));
    }
    const QList<int> after = checkedTypes();
    if (after != before)
        Q_EMIT checkedTypesChanged(after);
}

void QNKTypeMenu::mousePressEvent(QMouseEvent *event)
{
    m_pressedHere = actionAt(event->pos()) != nullptr;
    QMenu::mousePressEvent(event);
}

void QNKTypeMenu::mouseReleaseEvent(QMouseEvent *event)
{
    // A release that ends the press on the menu's own button must not tick what happens to lie under it.
    const bool pressedHere = m_pressedHere;
    m_pressedHere = false;
    if (!pressedHere || !triggerAndStay(actionAt(event->pos())))
        QMenu::mouseReleaseEvent(event);
}

void QNKTypeMenu::keyPressEvent(QKeyEvent *event)
{
    const bool triggers = event->key() == Qt::Key_Space || event->key() == Qt::Key_Return
                          || event->key() == Qt::Key_Enter || event->key() == Qt::Key_Select;
    if (!triggers || !triggerAndStay(activeAction()))
        QMenu::keyPressEvent(event);
}

bool QNKTypeMenu::triggerAndStay(QAction *action)
{
    if (!action || !action->isCheckable() || !action->isEnabled())
        return false;
    action->trigger();
    return true;
}
