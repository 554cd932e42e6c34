#include "ChoiceControl.h"

#include <nkQt4Ext/QNKComboBox.h>

#include <QCoreApplication>

ChoiceControl::ChoiceControl(const QString &property, QWidget *parent)
    : PropertyControl(property, parent), m_box(new QNKComboBox(this))
{
    setEditor(m_box);
    connect(m_box, QOverload<int>::of(&QComboBox::activated), this, &ChoiceControl::touchAndCommit);
}

ChoiceControl::~ChoiceControl() = default;

ChoiceControl *ChoiceControl::ofBooleans(const QString &property, QWidget *parent)
{
    ChoiceControl *control = new ChoiceControl(property, parent);
    control->addChoice(QCoreApplication::translate("Metadata", "false"), false);
    control->addChoice(QCoreApplication::translate("Metadata", "true"), true);
    return control;
}

ChoiceControl *ChoiceControl::ofValueTypes(const QString &property, QWidget *parent)
{
    static const char *const names[] = {
        QT_TRANSLATE_NOOP("Metadata", "String"),        QT_TRANSLATE_NOOP("Metadata", "Integer"),
        QT_TRANSLATE_NOOP("Metadata", "Float"),         QT_TRANSLATE_NOOP("Metadata", "Boolean"),
        QT_TRANSLATE_NOOP("Metadata", "Time"),          QT_TRANSLATE_NOOP("Metadata", "Date"),
        QT_TRANSLATE_NOOP("Metadata", "Date and Time"), QT_TRANSLATE_NOOP("Metadata", "List"),
    };
    ChoiceControl *control = new ChoiceControl(property, parent);
    int type = 0;
    for (const char *name : names) {
        control->addChoice(QCoreApplication::translate("Metadata", name), type++);
    }
    return control;
}

void ChoiceControl::addChoice(const QString &text, const QVariant &value)
{
    m_box->addItem(text, value);
}

void ChoiceControl::showValue(const QVariant &value)
{
    // Choices are numbers; the value may come as an enumeration.
    int found = -1;
    for (int i = 0; i < m_box->count() && value.isValid(); ++i) {
        if (m_box->itemData(i).toInt() == value.toInt()) {
            found = i;
        }
    }
    m_box->setCurrentIndex(found);
}

QVariant ChoiceControl::editedValue() const
{
    return m_box->currentData();
}

void ChoiceControl::beginEditing(const QString &)
{
    m_box->showPopup();
}
