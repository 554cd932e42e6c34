#pragma once

#include "nkQt4ExtExport.h"

#include <QDoubleSpinBox>

/// The host's spinner for floating-point numbers. It works in single precision: it prints the shortest text
/// that gives the same single back (0.1 is "0.1"), with the default locale's decimal point and without
/// group separators. A double beyond the single's range is printed as the shortest text of the double.
class NK_QT4EXT_EXPORT QNKDoubleSpiner : public QDoubleSpinBox
{
    Q_OBJECT
public:
    explicit QNKDoubleSpiner(QWidget *parent = nullptr);
    ~QNKDoubleSpiner() override;

    /// The text of a value, without a widget: what textFromValue answers.
    static QString text(double value);

    QString textFromValue(double value) const override;
    double valueFromText(const QString &text) const override;
    QValidator::State validate(QString &input, int &pos) const override;
    void fixup(QString &input) const override;
    void stepBy(int steps) override;
    QSize sizeHint() const override;

protected:
    void wheelEvent(QWheelEvent *event) override;

private:
    QString withoutAffixes(const QString &text) const;
};
