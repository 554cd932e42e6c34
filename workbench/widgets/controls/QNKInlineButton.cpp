#include "nkQt4Ext/QNKInlineButton.h"

#include "GlyphIcon.h"
#include "InlineFrame.h"

#include <QStyleOptionToolButton>
#include <QStylePainter>

QNKInlineButton::QNKInlineButton(QWidget *parent) : QToolButton(parent)
{
    setCheckable(true);
    setIconSize(QSize(GlyphIcon::extent, GlyphIcon::extent));
    // As high as whatever it stands beside, without asking for more: an expanding height would spread to the
    // line and take room from the list below it.
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Preferred);
}

QNKInlineButton::~QNKInlineButton() = default;

void QNKInlineButton::setTerminated(bool terminated)
{
    if (terminated == m_terminated)
        return;
    m_terminated = terminated;
    update();
}

QSize QNKInlineButton::sizeHint() const
{
    const int height = InlineFrame::fieldHeight(this);
    const int textWidth = text().isEmpty() ? 0 : fontMetrics().horizontalAdvance(text()) + 4;
    const int menuWidth = menu() ? InlineFrame::menuArrowWidth : 0;
    return QSize(iconSize().width() + 8 + textWidth + menuWidth, height);
}

QSize QNKInlineButton::minimumSizeHint() const
{
    return sizeHint();
}

void QNKInlineButton::paintEvent(QPaintEvent *)
{
    QStylePainter painter(this);
    QStyleOptionToolButton option;
    initStyleOption(&option);
    // At the edge of its line nothing stands before the button whose outline it could continue.
    const bool leftToRight = layoutDirection() == Qt::LeftToRight;
    const bool leading = !parentWidget()
                         || (leftToRight ? x() <= 0 : geometry().right() >= parentWidget()->width() - 1);
    InlineFrame::draw(&painter, option, m_terminated, leading);
}
