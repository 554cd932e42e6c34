#pragma once

#include <QLabel>
#include <QTimer>

/// How much there is in the scene, and how much of it is selected in the editor of the last selection; for the right
/// end of a status line. Counted once for all that happens in one turn of the event loop.
class SceneStatus : public QLabel
{
    Q_OBJECT
public:
    explicit SceneStatus(QWidget *parent = nullptr);
    ~SceneStatus() override;

private:
    void listen();
    void count();

    QTimer m_soon;
};
