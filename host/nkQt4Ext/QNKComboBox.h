#pragma once

#include "nkQt4ExtExport.h"

#include <QComboBox>

/// The host's combo box: the wheel changes it only while it has focus, so scrolling past it never does.
class NK_QT4EXT_EXPORT QNKComboBox : public QComboBox
{
    Q_OBJECT
public:
    explicit QNKComboBox(QWidget *parent = nullptr);
    ~QNKComboBox() override;

    void showPopup() override;
    bool eventFilter(QObject *watched, QEvent *event) override;

protected:
    bool event(QEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;

private:
    bool isCellEditor() const;
};
