#pragma once

#include "nkQt4ExtExport.h"

#include <QSpinBox>

/// The host's integer spinner, over the whole range of int.
class NK_QT4EXT_EXPORT QNKSpiner : public QSpinBox
{
    Q_OBJECT
public:
    explicit QNKSpiner(QWidget *parent = nullptr);
    ~QNKSpiner() override;

    void stepBy(int steps) override;

protected:
    QString textFromValue(int value) const override;
    void wheelEvent(QWheelEvent *event) override;
};
