#include "DateTimeControl.h"

#include <QDateTimeEdit>
#include <QSignalBlocker>

namespace {

// The stock minimum is 1752; this is the smallest date the widget can be given.
const QDate earliestDate(100, 1, 1);

QDateTimeEdit *makeBox(nkMetadataTypes::ValueType type, QWidget *parent)
{
    if (type == nkMetadataTypes::Time) {
        QTimeEdit *box = new QTimeEdit(parent);
        box->setDisplayFormat(QStringLiteral("HH:mm"));
        return box;
    }
    const bool withTime = type == nkMetadataTypes::DateTime;
    QDateTimeEdit *box = withTime ? new QDateTimeEdit(parent) : new QDateEdit(parent);
    box->setDisplayFormat(withTime ? QStringLiteral("MMMM dd, yyyy hh:mm:ss")
                                   : QStringLiteral("MMMM dd, yyyy"));
    box->setCalendarPopup(true);
    box->setMinimumDate(earliestDate);
    return box;
}

} // namespace

DateTimeControl::DateTimeControl(const QString &property, nkMetadataTypes::ValueType type, QWidget *parent)
    : SpinControl(property, parent), m_type(type), m_box(makeBox(type, this))
{
    setSpinBox(m_box);
    connect(m_box, &QDateTimeEdit::dateTimeChanged, this, &DateTimeControl::onChanged);
}

DateTimeControl::~DateTimeControl() = default;

void DateTimeControl::showValue(const QVariant &value)
{
    const QSignalBlocker silence(m_box);
    switch (m_type) {
    case nkMetadataTypes::Time:
        return m_box->setTime(value.toTime());
    case nkMetadataTypes::Date:
        return m_box->setDate(value.toDate());
    default:
        m_shown = value.toDateTime();
        return m_box->setDateTime(m_shown);
    }
}

QVariant DateTimeControl::editedValue() const
{
    m_box->interpretText();
    switch (m_type) {
    case nkMetadataTypes::Time:
        // The minute that is shown, not the seconds that were hidden behind it.
        return QTime(m_box->time().hour(), m_box->time().minute());
    case nkMetadataTypes::Date:
        return m_box->date();
    default:
        return editedMoment();
    }
}

// The widget shows any moment's date and time as they are written, and answers in local time: what was
// universal time, or had an offset, stays so.
QDateTime DateTimeControl::editedMoment() const
{
    QDateTime moment = m_shown;
    moment.setDate(m_box->date());
    moment.setTime(m_box->time());
    return moment;
}
