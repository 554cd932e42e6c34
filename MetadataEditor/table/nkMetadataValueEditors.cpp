#include "table/nkMetadataValueEditors.h"

#include <nkKernelServicesGUI/nkMetadataGUIUtils.h>
#include <nkKernelServicesGUI/nkMetadataVariantDelegate.h>
#include <nkQt4Ext/QNKComboBox.h>
#include <nkQt4Ext/QNKDoubleSpiner.h>
#include <nkQt4Ext/QNKSpiner.h>
#include <nkQt4Ext/QNKStringCompleterLineEdit.h>
#include <nkQt4Ext/QNKVariantListWidget.h>

#include <QDateTimeEdit>

#include <cmath>
#include <limits>

namespace {

/// The first date a date edit of Qt can hold; its default begins in 1752.
const QDate firstDate(100, 1, 1);

/// Without its frame a spin box leaves the ground under its buttons to the cell, which is highlighted.
void takeFrame(QAbstractSpinBox *editor)
{
    editor->setFrame(false);
    editor->setBackgroundRole(QPalette::Base);
    editor->setAutoFillBackground(true);
}

QWidget *createSpiner(QWidget *parent)
{
    auto *editor = new QNKSpiner(parent);
    takeFrame(editor);
    return editor;
}

QWidget *createDoubleSpiner(QWidget *parent)
{
    auto *editor = new QNKDoubleSpiner(parent);
    takeFrame(editor);
    editor->setAlignment(Qt::AlignLeft);
    return editor;
}

QWidget *createBooleanCombo(QWidget *parent)
{
    auto *editor = new QNKComboBox(parent);
    editor->addItem(QStringLiteral("false"), false);
    editor->addItem(QStringLiteral("true"), true);
    return editor;
}

QWidget *createTimeEdit(QWidget *parent)
{
    auto *editor = new QTimeEdit(parent);
    editor->setDisplayFormat(QStringLiteral("HH:mm"));
    return editor;
}

QWidget *createDateEdit(QWidget *parent)
{
    auto *editor = new QDateEdit(parent);
    editor->setMinimumDate(firstDate);
    editor->setCalendarPopup(true);
    editor->setDisplayFormat(QStringLiteral("MMMM dd, yyyy"));
    return editor;
}

QWidget *createDateTimeEdit(QWidget *parent)
{
    auto *editor = new QDateTimeEdit(parent);
    editor->setMinimumDate(firstDate);
    editor->setDisplayFormat(QStringLiteral("MMMM dd, yyyy hh:mm:ss"));
    editor->setCalendarPopup(true);
    return editor;
}

QWidget *createListEditor(QWidget *parent)
{
    auto *editor = new QNKVariantListWidget(parent, Qt::Popup);
    editor->setItemDelegate(new nkMetadataVariantDelegate(editor));
    return editor;
}

/// The number as the float editor works with it: in single precision, and as it is where that has no room.
double singlePrecision(const QVariant &value)
{
    const double whole = value.toDouble();
    const double single = double(value.toFloat());
    const bool isLost = (std::isinf(single) && !std::isinf(whole)) || (single == 0.0 && whole != 0.0);
    return isLost ? whole : single;
}

void fillDateTimeEdit(QDateTimeEdit *editor, const QVariant &value)
{
    // The edit keeps no time zone; what is written later takes it from here.
    editor->setTimeSpec(value.toDateTime().timeSpec() == Qt::UTC ? Qt::UTC : Qt::LocalTime);
    editor->setDateTime(value.toDateTime());
}

QTime withoutSeconds(const QTime &time)
{
    return QTime(time.hour(), time.minute());
}

} // namespace

QWidget *nkMetadataValueEditors::create(nkMetadataTypes::ValueType type, QWidget *parent)
{
    switch (type) {
    case nkMetadataTypes::Integer:
        return createSpiner(parent);
    case nkMetadataTypes::Float:
        return createDoubleSpiner(parent);
    case nkMetadataTypes::Boolean:
        return createBooleanCombo(parent);
    case nkMetadataTypes::Time:
        return createTimeEdit(parent);
    case nkMetadataTypes::Date:
        return createDateEdit(parent);
    case nkMetadataTypes::DateTime:
        return createDateTimeEdit(parent);
    case nkMetadataTypes::List:
        return createListEditor(parent);
    default:
        return createLineEdit(parent);
    }
}

QLineEdit *nkMetadataValueEditors::createLineEdit(QWidget *parent)
{
    QLineEdit *editor = nkMetadataGUIUtils::createMetadataLineEdit(parent);
    // By default a line edit cuts what it is filled with at 32,767 characters.
    editor->setMaxLength(std::numeric_limits<int>::max());
    return editor;
}

void nkMetadataValueEditors::fill(QWidget *editor, const QVariant &value)
{
    if (auto *line = qobject_cast<QLineEdit *>(editor)) {
        line->setText(value.toString());
    } else if (auto *spiner = qobject_cast<QNKSpiner *>(editor)) {
        spiner->setValue(value.toInt());
    } else if (auto *doubleSpiner = qobject_cast<QNKDoubleSpiner *>(editor)) {
        doubleSpiner->setValue(singlePrecision(value));
    } else if (auto *combo = qobject_cast<QNKComboBox *>(editor)) {
        combo->setCurrentIndex(value.toBool() ? 1 : 0);
    } else if (auto *time = qobject_cast<QTimeEdit *>(editor)) {
        time->setTime(value.toTime());
    } else if (auto *date = qobject_cast<QDateEdit *>(editor)) {
        date->setDate(value.toDate());
    } else if (auto *dateTime = qobject_cast<QDateTimeEdit *>(editor)) {
        fillDateTimeEdit(dateTime, value);
    } else if (auto *list = qobject_cast<QNKVariantListWidget *>(editor)) {
        list->setValues(value.toList());
    }
}

QVariant nkMetadataValueEditors::shown(QWidget *editor)
{
    if (auto *spiner = qobject_cast<QAbstractSpinBox *>(editor)) {
        spiner->interpretText();
        return spiner->text();
    }
    return value(editor);
}

QVariant nkMetadataValueEditors::value(QWidget *editor)
{
    if (auto *line = qobject_cast<QLineEdit *>(editor)) {
        return line->text();
    }
    if (auto *box = qobject_cast<QAbstractSpinBox *>(editor)) {
        box->interpretText();
    }
    if (auto *spiner = qobject_cast<QNKSpiner *>(editor)) {
        return spiner->value();
    }
    if (auto *doubleSpiner = qobject_cast<QNKDoubleSpiner *>(editor)) {
        return doubleSpiner->value();
    }
    if (auto *combo = qobject_cast<QNKComboBox *>(editor)) {
        return combo->currentData();
    }
    if (auto *time = qobject_cast<QTimeEdit *>(editor)) {
        return withoutSeconds(time->time());
    }
    if (auto *date = qobject_cast<QDateEdit *>(editor)) {
        return date->date();
    }
    if (auto *dateTime = qobject_cast<QDateTimeEdit *>(editor)) {
        return dateTime->dateTime();
    }
    if (auto *list = qobject_cast<QNKVariantListWidget *>(editor)) {
        return list->values();
    }
    return QVariant();
}
