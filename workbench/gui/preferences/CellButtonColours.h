#pragma once

#include <QObject>

class QAbstractButton;

/// Keeps a radio button visible in a cell of a dark list. Styles fill its circle with the colour of lists and
/// draw the ring in a shade of it, which is fine on a dialog and nothing on a list.
class CellButtonColours : public QObject
{
    Q_OBJECT
public:
    /// @param button owns it
    explicit CellButtonColours(QAbstractButton *button);

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void update();

    QAbstractButton *const m_button;
    bool m_isUpdating = false;
};
