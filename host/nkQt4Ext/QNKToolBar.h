#pragma once

#include "nkQt4ExtExport.h"

#include <QToolBar>

/// The host's tool bar: icons at 24 device-independent pixels.
class NK_QT4EXT_EXPORT QNKToolBar : public QToolBar
{
    Q_OBJECT
public:
    explicit QNKToolBar(const QString &title, QWidget *parent = nullptr);
    explicit QNKToolBar(QWidget *parent = nullptr);
    ~QNKToolBar() override;

protected:
    void actionEvent(QActionEvent *event) override;
};
