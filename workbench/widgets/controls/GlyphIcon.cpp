#include "GlyphIcon.h"

#include <QGuiApplication>
#include <QIconEngine>
#include <QPainter>
#include <QPainterPath>
#include <QPalette>

namespace {

using GlyphIcon::Sign;

using Polyline = std::initializer_list<QPointF>;

QPainterPath lines(std::initializer_list<Polyline> polylines)
{
    QPainterPath path;
    for (const Polyline &polyline : polylines)
        path.addPolygon(QPolygonF(QVector<QPointF>(polyline)));
    return path;
}

QPainterPath searchPath()
{
    QPainterPath path = lines({{{10.2, 10.2}, {13.5, 13.5}}});
    path.addEllipse(QPointF(7.0, 7.0), 4.5, 4.5);
    return path;
}

/// A parent and its two children, the way a search goes down the tree.
QPainterPath depthPath()
{
    QPainterPath path = lines({{{4.0, 5.5}, {4.0, 12.5}, {8.5, 12.5}}, {{4.0, 8.5}, {8.5, 8.5}}});
    path.addRect(2.5, 2.5, 3.0, 3.0);
    path.addRect(8.5, 7.0, 3.0, 3.0);
    path.addRect(8.5, 11.0, 3.0, 3.0);
    return path;
}

QPainterPath funnelPath()
{
    QPainterPath path = lines({{{2.5, 3.0}, {13.5, 3.0}, {9.5, 8.0}, {9.5, 12.0}, {6.5, 13.5}, {6.5, 8.0}}});
    path.closeSubpath();
    return path;
}

QPainterPath columnsPath()
{
    QPainterPath path = lines({{{6.5, 3.0}, {6.5, 13.0}}, {{9.5, 3.0}, {9.5, 13.0}}});
    path.addRect(3.0, 3.0, 10.0, 10.0);
    return path;
}

/// The outline of a sign on a grid of 16 × 16.
QPainterPath pathOf(Sign sign)
{
    switch (sign) {
    case Sign::Clear:
        return lines({{{4.5, 4.5}, {11.5, 11.5}}, {{11.5, 4.5}, {4.5, 11.5}}});
    case Sign::Search:
        return searchPath();
    case Sign::Depth:
        return depthPath();
    case Sign::Funnel:
    case Sign::FunnelActive:
        return funnelPath();
    case Sign::Columns:
        return columnsPath();
    case Sign::Plus:
        return lines({{{3.5, 8.0}, {12.5, 8.0}}, {{8.0, 3.5}, {8.0, 12.5}}});
    case Sign::Minus:
        return lines({{{3.5, 8.0}, {12.5, 8.0}}});
    case Sign::Up:
        return lines({{{4.0, 9.5}, {8.0, 5.5}, {12.0, 9.5}}});
    case Sign::Down:
        return lines({{{4.0, 6.5}, {8.0, 10.5}, {12.0, 6.5}}});
    }
    return {};
}

class GlyphEngine : public QIconEngine
{
public:
    explicit GlyphEngine(Sign sign) : m_sign(sign) {}

    void paint(QPainter *painter, const QRect &rect, QIcon::Mode mode, QIcon::State) override
    {
        const qreal scale = qMin(rect.width(), rect.height()) / qreal(GlyphIcon::extent);
        const qreal inset = GlyphIcon::extent * scale / 2.0;
        painter->save();
        painter->setRenderHint(QPainter::Antialiasing);
        painter->translate(QRectF(rect).center() - QPointF(inset, inset));
        painter->scale(scale, scale);
        const QPalette palette = QGuiApplication::palette();
        const auto group = mode == QIcon::Disabled ? QPalette::Disabled : QPalette::Active;
        const bool active = m_sign == Sign::FunnelActive && mode != QIcon::Disabled;
        const QColor colour = palette.color(group, active ? QPalette::Highlight : QPalette::ButtonText);
        painter->setPen(QPen(colour, 1.3, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        painter->setBrush(active ? QBrush(colour) : QBrush(Qt::NoBrush));
        painter->drawPath(pathOf(m_sign));
        painter->restore();
    }

    QPixmap pixmap(const QSize &size, QIcon::Mode mode, QIcon::State state) override
    {
        QPixmap picture(size);
        picture.fill(Qt::transparent);
        QPainter painter(&picture);
        paint(&painter, QRect(QPoint(), size), mode, state);
        return picture;
    }

    QIconEngine *clone() const override { return new GlyphEngine(m_sign); }

private:
    Sign m_sign;
};

} // namespace

QIcon GlyphIcon::make(Sign sign)
{
    return QIcon(new GlyphEngine(sign));
}
