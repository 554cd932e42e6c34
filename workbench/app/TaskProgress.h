#pragma once

#include "kernel/services/Progress.h"

#include <QElapsedTimer>
#include <QPointer>

class QProgressDialog;
class QWidget;

/// Shows long work of the kernel in a box over the main window, from the moment on in which it takes long. The
/// box keeps the person from everything but cancelling.
class TaskProgress : public kernel::ProgressDisplay
{
    Q_OBJECT
public:
    /// @param window not owned; where the box is shown
    explicit TaskProgress(QWidget *window);
    ~TaskProgress() override;

    void begin(const QString &text) override;
    bool advance(double share) override;
    void end() override;

private:
    void standStill();

    QPointer<QWidget> m_window;
    QPointer<QProgressDialog> m_dialog;
    QElapsedTimer m_begun;
};
