#include "InlineFrame.h"

#include <QApplication>
#include <QPainter>
#include <QPainterPath>
#include <QStyleOptionToolButton>

namespace {

constexpr qreal cornerRadius = 2.0;
constexpr int padding = 4;

QColor mixed(const QColor &ground, const QColor &over, qreal share)
{
    const auto mix = [share](qreal a, qreal b) { return a + (b - a) * share; };
    return QColor::fromRgbF(mix(ground.redF(), over.redF()), mix(ground.greenF(), over.greenF()),
                            mix(ground.blueF(), over.blueF()));
}

QColor groundColour(const QStyleOptionToolButton &option)
{
    const QPalette &palette = option.palette;
    const QColor button = palette.color(QPalette::Button);
    if (option.state & QStyle::State_Sunken)
        return mixed(button, palette.color(QPalette::Shadow), 0.25);
    const bool on = option.state & QStyle::State_On;
    const QColor rest = on ? mixed(button, palette.color(QPalette::Highlight), 0.30) : button;
    const bool hover = (option.state & QStyle::State_MouseOver) && (option.state & QStyle::State_Enabled);
    return hover ? mixed(rest, palette.color(QPalette::BrightText), 0.12) : rest;
}

/// The rounded rectangle of the frame, reaching past the button where its edge is left to the neighbour.
QRectF frameRect(const QStyleOptionToolButton &option, bool terminated, bool leading)
{
    const bool leftToRight = option.direction == Qt::LeftToRight;
    const bool leftClosed = leftToRight ? leading : terminated;
    const bool rightClosed = leftToRight ? terminated : leading;
    const qreal beyond = 2 * cornerRadius;
    QRectF frame = QRectF(option.rect).adjusted(0.5, 0.5, -0.5, -0.5);
    frame.adjust(leftClosed ? 0.0 : -beyond, 0.0, rightClosed ? 0.0 : beyond, 0.0);
    return frame;
}

void drawFrame(QPainter *painter, const QStyleOptionToolButton &option, const QRectF &frame)
{
    const bool focused = (option.state & QStyle::State_HasFocus);
    const QColor outline = option.palette.color(QPalette::Window).darker(140);
    painter->save();
    painter->setClipRect(option.rect);
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(outline);
    painter->setBrush(groundColour(option));
    painter->drawRoundedRect(frame, cornerRadius, cornerRadius);
    if (focused) {
        painter->setPen(option.palette.color(QPalette::Highlight));
        painter->setBrush(Qt::NoBrush);
        painter->drawRoundedRect(QRectF(option.rect).adjusted(0.5, 0.5, -0.5, -0.5), cornerRadius,
                                 cornerRadius);
    }
    painter->restore();
}

void drawArrow(QPainter *painter, const QStyleOptionToolButton &option, const QRect &rect)
{
    const QPointF centre = QRectF(rect).center();
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(Qt::NoPen);
    painter->setBrush(option.palette.color(QPalette::ButtonText));
    painter->drawPolygon(
        QVector<QPointF>{centre + QPointF(-3, -1.5), centre + QPointF(3, -1.5), centre + QPointF(0, 2)});
    painter->restore();
}

void drawIcon(QPainter *painter, const QStyleOptionToolButton &option, const QRect &rect)
{
    const bool enabled = option.state & QStyle::State_Enabled;
    const bool on = option.state & QStyle::State_On;
    QRect centred(QPoint(), option.iconSize);
    centred.moveCenter(rect.center());
    option.icon.paint(painter, centred, Qt::AlignCenter, enabled ? QIcon::Normal : QIcon::Disabled,
                      on ? QIcon::On : QIcon::Off);
}

/// The text stays away where neither all of it fits nor a few letters.
bool hasRoomForText(const QStyleOptionToolButton &option, int width)
{
    const int least = qMin(option.fontMetrics.averageCharWidth() * 4,
                           option.fontMetrics.horizontalAdvance(option.text));
    return !option.text.isEmpty() && width >= least;
}

} // namespace

int InlineFrame::fieldHeight(const QWidget *widget)
{
    QStyleOptionFrame option;
    option.initFrom(widget);
    option.lineWidth = widget->style()->pixelMetric(QStyle::PM_DefaultFrameWidth, &option, widget);
    // The margins and the least height are those of QLineEdit.
    const QSize content(0, qMax(widget->fontMetrics().height(), 14) + 2);
    return widget->style()->sizeFromContents(QStyle::CT_LineEdit, &option, content, widget).height();
}

void InlineFrame::draw(QPainter *painter, const QStyleOptionToolButton &option, bool terminated, bool leading)
{
    drawFrame(painter, option, frameRect(option, terminated, leading));
    QRect room = option.rect;
    if (option.features & QStyleOptionToolButton::HasMenu) {
        QRect arrow = room;
        arrow.setLeft(room.right() - menuArrowWidth);
        drawArrow(painter, option, QStyle::visualRect(option.direction, option.rect, arrow));
        room.setRight(arrow.left());
    }
    QRect icon = room;
    const int textWidth = room.width() - option.iconSize.width() - 3 * padding;
    const bool withText = hasRoomForText(option, textWidth);
    if (withText)
        icon.setWidth(option.iconSize.width() + 2 * padding);
    drawIcon(painter, option, QStyle::visualRect(option.direction, option.rect, icon));
    if (!withText)
        return;
    const QRect text(icon.right() + 1, room.top(), textWidth, room.height());
    painter->setPen(option.palette.color(QPalette::ButtonText));
    painter->drawText(QStyle::visualRect(option.direction, option.rect, text),
                      int(Qt::AlignVCenter | QStyle::visualAlignment(option.direction, Qt::AlignLeft)),
                      option.fontMetrics.elidedText(option.text, Qt::ElideRight, textWidth));
}
