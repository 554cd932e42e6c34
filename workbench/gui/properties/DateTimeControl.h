#pragma once

#include "SpinControl.h"

#include <nkKernelServices/nkMetadataTypes.h>

#include <QDateTime>

class QDateTimeEdit;

/// Edits a time, a date, or both, in the formats of the key/value table.
class DateTimeControl : public SpinControl
{
    Q_OBJECT
public:
    /// @param type Time, Date or DateTime
    DateTimeControl(const QString &property, nkMetadataTypes::ValueType type, QWidget *parent);
    ~DateTimeControl() override;

protected:
    void showValue(const QVariant &value) override;
    QVariant editedValue() const override;

private:
    QDateTime editedMoment() const;

    nkMetadataTypes::ValueType m_type;
    QDateTimeEdit *m_box;
    QDateTime m_shown;
};
