#include "ProgramTexts.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>

namespace {

/// A text without what stands in it for keys alone.
QString plain(QString text)
{
    text = text.section(QLatin1Char('\t'), 0, 0);
    text.replace(QLatin1String("&&"), QString(QChar::Null));
    text.remove(QLatin1Char('&'));
    text.replace(QChar::Null, QLatin1Char('&'));
    return text.remove(QLatin1String("[*]")).trimmed();
}

} // namespace

void ProgramTexts::collect()
{
    const QWidgetList widgets = QApplication::allWidgets();
    for (const QWidget *widget : widgets) {
        addWidget(widget);
        addChoices(widget);
    }
}

QStringList ProgramTexts::all() const
{
    QStringList texts(m_texts.cbegin(), m_texts.cend());
    texts.sort();
    return texts;
}

void ProgramTexts::add(const QString &text)
{
    const QString shown = plain(text);
    if (!shown.isEmpty() && !shown.contains(QLatin1Char('\n'))) {
        m_texts.insert(shown);
        // A label of a field ends with a colon that nobody quotes.
        m_texts.insert(shown.endsWith(QLatin1Char(':')) ? shown.chopped(1) : shown);
    }
}

void ProgramTexts::addWidget(const QWidget *widget)
{
    add(widget->windowTitle());
    add(widget->toolTip());
    // Some are in a menu that is made when it is asked for.
    const QList<QAction *> actions = widget->actions()
                                     + widget->findChildren<QAction *>(QString(), Qt::FindDirectChildrenOnly);
    for (const QAction *action : actions) {
        add(action->text());
    }
    if (const auto *button = qobject_cast<const QAbstractButton *>(widget)) {
        add(button->text());
    } else if (const auto *label = qobject_cast<const QLabel *>(widget)) {
        add(label->text());
    } else if (const auto *menu = qobject_cast<const QMenu *>(widget)) {
        add(menu->title());
    } else if (const auto *edit = qobject_cast<const QLineEdit *>(widget)) {
        add(edit->placeholderText());
    }
}

void ProgramTexts::addChoices(const QWidget *widget)
{
    const auto *combo = qobject_cast<const QComboBox *>(widget);
    for (int i = 0; combo && i < combo->count(); ++i) {
        add(combo->itemText(i));
    }
    const auto *list = qobject_cast<const QListWidget *>(widget);
    for (int i = 0; list && i < list->count(); ++i) {
        add(list->item(i)->text());
    }
    const auto *header = qobject_cast<const QHeaderView *>(widget);
    for (int i = 0; header && header->model() && i < header->count(); ++i) {
        add(header->model()->headerData(i, header->orientation()).toString());
    }
}
