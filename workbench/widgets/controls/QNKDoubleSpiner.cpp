#include "nkQt4Ext/QNKDoubleSpiner.h"

#include "NumberText.h"

#include <QStyle>
#include <QWheelEvent>

#include <cmath>
#include <limits>

namespace {

/// QDoubleSpinBox rounds what it is given to its decimals; this is the most it can be told: 308 and 15.
/// Every single and every double from 1e-306 on comes out as it went in. Below, digits are lost; negative
/// zero comes out as zero and what is no number, being within no range, as infinity.
constexpr int mostDecimals = 323;

/// As wide as the numbers people see; the range itself prints as "inf".
QString widestUsualText()
{
    return QStringLiteral("-1.2345679e+38");
}

/// What is kept of a number a person has entered: its text says all of it, so that cell, editor and file
/// agree on every digit.
double asPrinted(double value)
{
    double printed = value;
    NumberText::read(NumberText::shortest(value), &printed);
    return printed;
}

} // namespace

QNKDoubleSpiner::QNKDoubleSpiner(QWidget *parent) : QDoubleSpinBox(parent)
{
    setDecimals(mostDecimals);
    setRange(-std::numeric_limits<double>::infinity(), std::numeric_limits<double>::infinity());
    setFocusPolicy(Qt::StrongFocus);
    setAccessibleName(tr("Floating-point value"));
}

QNKDoubleSpiner::~QNKDoubleSpiner() = default;

QString QNKDoubleSpiner::text(double value)
{
    return NumberText::shortest(value);
}

QString QNKDoubleSpiner::textFromValue(double value) const
{
    return NumberText::shortest(value);
}

double QNKDoubleSpiner::valueFromText(const QString &text) const
{
    const QString number = withoutAffixes(text);
    // The text of the value stands for the value itself, with all the digits that it does not show.
    if (number == textFromValue(value()))
        return value();
    double read = value();
    if (NumberText::read(number, &read) != NumberText::State::Number)
        return value();
    return asPrinted(read);
}

QValidator::State QNKDoubleSpiner::validate(QString &input, int &) const
{
    const QString number = withoutAffixes(input);
    const QString present = textFromValue(value());
    if (number == present)
        return QValidator::Acceptable;
    double read = 0.0;
    switch (NumberText::read(number, &read)) {
    case NumberText::State::Number:
        return read >= minimum() && read <= maximum() ? QValidator::Acceptable : QValidator::Intermediate;
    case NumberText::State::Beginning:
        return QValidator::Intermediate;
    case NumberText::State::NoNumber:
        break;
    }
    const bool shortened = !std::isfinite(value()) && present.startsWith(number);
    return shortened ? QValidator::Intermediate : QValidator::Invalid;
}

void QNKDoubleSpiner::fixup(QString &) const
{
    // Qt would take out group separators, which where the point is a comma are the points people type.
}

void QNKDoubleSpiner::stepBy(int steps)
{
    interpretText();
    const double target = value() + steps * singleStep();
    setValue(asPrinted(qBound(minimum(), target, maximum())));
    selectAll();
}

QSize QNKDoubleSpiner::sizeHint() const
{
    const QFontMetrics metrics = fontMetrics();
    const int missing = metrics.horizontalAdvance(widestUsualText())
                        - metrics.horizontalAdvance(textFromValue(minimum()).left(18));
    return QDoubleSpinBox::sizeHint() + QSize(qMax(missing, 0), 0);
}

QString QNKDoubleSpiner::withoutAffixes(const QString &text) const
{
    QString bare = text;
    if (!prefix().isEmpty() && bare.startsWith(prefix()))
        bare.remove(0, prefix().size());
    if (!suffix().isEmpty() && bare.endsWith(suffix()))
        bare.chop(suffix().size());
    return bare.trimmed();
}

void QNKDoubleSpiner::wheelEvent(QWheelEvent *event)
{
    if (hasFocus())
        QDoubleSpinBox::wheelEvent(event);
    else
        event->ignore();
}
