#include "VariantEditor.h"

#include "nkQt4Ext/QNKComboBox.h"
#include "nkQt4Ext/QNKDoubleSpiner.h"
#include "nkQt4Ext/QNKSpiner.h"
#include "nkQt4Ext/QNKVariantListWidget.h"

#include <QCoreApplication>
#include <QDateTimeEdit>
#include <QLineEdit>

#include <limits>

namespace {

QString translated(const char *text)
{
    return QCoreApplication::translate("VariantEditor", text);
}

QWidget *makeLineEdit(QWidget *parent)
{
    auto *edit = new QLineEdit(parent);
    // Qt cuts at 32,767 characters otherwise, and the cut text would be written back.
    edit->setMaxLength(std::numeric_limits<int>::max());
    edit->setFrame(false);
    edit->setAccessibleName(translated("Text"));
    return edit;
}

/// Without its frame a spin box leaves the ground under its buttons to what lies below, a highlighted row.
void takeFrame(QAbstractSpinBox *editor)
{
    editor->setFrame(false);
    editor->setBackgroundRole(QPalette::Base);
    editor->setAutoFillBackground(true);
}

QWidget *makeSpiner(QWidget *parent)
{
    auto *spiner = new QNKSpiner(parent);
    takeFrame(spiner);
    return spiner;
}

QWidget *makeDoubleSpiner(QWidget *parent)
{
    auto *spiner = new QNKDoubleSpiner(parent);
    takeFrame(spiner);
    return spiner;
}

QWidget *makeBooleanBox(QWidget *parent)
{
    auto *box = new QNKComboBox(parent);
    box->addItem(translated("false"), false);
    box->addItem(translated("true"), true);
    box->setAccessibleName(translated("Boolean"));
    return box;
}

template <typename Edit>
QWidget *makeDateTimeEdit(QWidget *parent, const QString &format, bool calendar, const QString &name)
{
    auto *edit = new Edit(parent);
    edit->setDisplayFormat(format);
    edit->setCalendarPopup(calendar);
    // Qt begins in 1752 unless told otherwise, and moves earlier dates there.
    edit->setDateRange(QDate(1, 1, 1), QDate(9999, 12, 31));
    // Wall-clock time as it stands: no hour is missing in spring, whatever the zone.
    edit->setTimeSpec(Qt::UTC);
    takeFrame(edit);
    edit->setAccessibleName(name);
    return edit;
}

QWidget *makeListEditor(QWidget *parent)
{
    return new QNKVariantListWidget(parent, Qt::Popup);
}

/// The date and time shown, in the time zone that the present value is in.
QDateTime inZoneOf(const QDateTime &present, const QDateTime &shown)
{
    if (!present.isValid())
        return QDateTime(shown.date(), shown.time());
    QDateTime moved = present;
    moved.setDate(shown.date());
    moved.setTime(shown.time());
    return moved;
}

} // namespace

QWidget *VariantEditor::create(QWidget *parent, const QVariant &value)
{
    switch (value.userType()) {
    case QMetaType::Bool:
        return makeBooleanBox(parent);
    case QMetaType::Int:
        return makeSpiner(parent);
    case QMetaType::Double:
    case QMetaType::Float:
        return makeDoubleSpiner(parent);
    case QMetaType::QTime:
        return makeDateTimeEdit<QTimeEdit>(parent, QStringLiteral("HH:mm"), false, translated("Time"));
    case QMetaType::QDate:
        return makeDateTimeEdit<QDateEdit>(parent, QStringLiteral("MMMM dd, yyyy"), true, translated("Date"));
    case QMetaType::QDateTime:
        return makeDateTimeEdit<QDateTimeEdit>(parent, QStringLiteral("MMMM dd, yyyy hh:mm:ss"), true,
                                               translated("Date and time"));
    case QMetaType::QVariantList:
    case QMetaType::QStringList:
        return makeListEditor(parent);
    case QMetaType::UnknownType:
        return makeLineEdit(parent);
    default:
        return QVariant(QString()).canConvert(value.userType()) ? makeLineEdit(parent) : nullptr;
    }
}

void VariantEditor::fill(QWidget *editor, const QVariant &value)
{
    if (auto *line = qobject_cast<QLineEdit *>(editor))
        line->setText(value.toString());
    else if (auto *spiner = qobject_cast<QNKSpiner *>(editor))
        spiner->setValue(value.toInt());
    else if (auto *doubleSpiner = qobject_cast<QNKDoubleSpiner *>(editor))
        doubleSpiner->setValue(value.toDouble());
    else if (auto *box = qobject_cast<QNKComboBox *>(editor))
        box->setCurrentIndex(box->findData(value));
    else if (auto *time = qobject_cast<QTimeEdit *>(editor))
        time->setTime(value.toTime());
    else if (auto *date = qobject_cast<QDateEdit *>(editor))
        date->setDate(value.toDate());
    else if (auto *dateTime = qobject_cast<QDateTimeEdit *>(editor))
        dateTime->setDateTime(QDateTime(value.toDateTime().date(), value.toDateTime().time(), Qt::UTC));
    else if (auto *list = qobject_cast<QNKVariantListWidget *>(editor))
        list->setValues(value.toList());
}

QVariant VariantEditor::content(QWidget *editor)
{
    if (auto *spinBox = qobject_cast<QAbstractSpinBox *>(editor))
        spinBox->interpretText();
    if (auto *line = qobject_cast<QLineEdit *>(editor))
        return line->text();
    if (auto *spiner = qobject_cast<QNKSpiner *>(editor))
        return spiner->value();
    if (auto *doubleSpiner = qobject_cast<QNKDoubleSpiner *>(editor))
        return doubleSpiner->value();
    if (auto *box = qobject_cast<QNKComboBox *>(editor))
        return box->currentData();
    if (auto *time = qobject_cast<QTimeEdit *>(editor))
        return time->time();
    if (auto *date = qobject_cast<QDateEdit *>(editor))
        return date->date();
    if (auto *dateTime = qobject_cast<QDateTimeEdit *>(editor))
        return dateTime->dateTime();
    if (auto *list = qobject_cast<QNKVariantListWidget *>(editor))
        return list->values();
    return {};
}

QVariant VariantEditor::likeValue(const QVariant &content, const QVariant &present)
{
    if (!present.isValid() || !content.isValid() || content.userType() == present.userType()) {
        const bool dateTime = content.userType() == QMetaType::QDateTime;
        return dateTime ? QVariant(inZoneOf(present.toDateTime(), content.toDateTime())) : content;
    }
    QVariant converted = content;
    return converted.convert(present.userType()) ? converted : QVariant();
}
