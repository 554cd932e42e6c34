#pragma once

#include <QWidget>

/// A small "is not equal" sign in the highlight colour: the values beside it differ.
class DifferingMark : public QWidget
{
    Q_OBJECT
public:
    explicit DifferingMark(QWidget *parent = nullptr);
    ~DifferingMark() override;

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;
};
