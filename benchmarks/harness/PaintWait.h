#pragma once

#include <QObject>

class QWidget;

/// Waits until a widget has been painted: what a person calls "it is there".
///
///     PaintWait painted(view->viewport());
///     view->setModel(model);
///     painted.wait();
class PaintWait : public QObject
{
public:
    /// From now on paint events of the widget count. The widget has to outlive this.
    explicit PaintWait(QWidget *widget);

    /// Runs the event loop until a paint event has been handled since the last call, or one minute has gone.
    /// Returns whether it was painted. Returns at once where that has happened already.
    bool wait();

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    bool m_painted = false;
};
