#pragma once

#include "nkQt4ExtExport.h"

#include <QToolButton>

/// A small checkable button that stands in line with a field.
class NK_QT4EXT_EXPORT QNKInlineButton : public QToolButton
{
    Q_OBJECT
public:
    explicit QNKInlineButton(QWidget *parent = nullptr);
    ~QNKInlineButton() override;

    /// The button is the last of its line: its right edge is closed and rounded like the field's. Default
    /// off.
    void setTerminated(bool terminated);
    bool isTerminated() const { return m_terminated; }

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    bool m_terminated = false;
};
