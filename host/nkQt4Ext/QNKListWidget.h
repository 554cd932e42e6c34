#pragma once

#include "nkQt4ExtExport.h"

#include <QListWidget>

/// The host's list of items, reordered by dragging or with Alt+Up and Alt+Down.
class NK_QT4EXT_EXPORT QNKListWidget : public QListWidget
{
    Q_OBJECT
public:
    explicit QNKListWidget(QWidget *parent = nullptr);
    ~QNKListWidget() override;

    /// Moves the current item by offset rows, as far as there is room.
    void moveCurrent(int offset);

Q_SIGNALS:
    /// Items changed places.
    void reordered();

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void dropEvent(QDropEvent *event) override;
};
