#include "ViewportIcons.h"

#include <QGuiApplication>
#include <QIconEngine>
#include <QPainter>
#include <QPainterPath>
#include <QPalette>

namespace {

using ViewportIcons::Shape;

// Shapes are drawn on a square of this many units.
constexpr qreal units = 24;

void addArrow(QPainterPath &path, const QPointF &tip, const QPointF &way)
{
    const QPointF across(-way.y(), way.x());
    path.moveTo(tip - way + across);
    path.lineTo(tip);
    path.lineTo(tip - way - across);
}

void addCorners(QPainterPath &path, const QRectF &rect, qreal length)
{
    for (const int x : {-1, 1}) {
        for (const int y : {-1, 1}) {
            const QPointF corner(x < 0 ? rect.left() : rect.right(), y < 0 ? rect.top() : rect.bottom());
            path.moveTo(corner - QPointF(0, y * length));
            path.lineTo(corner);
            path.lineTo(corner - QPointF(x * length, 0));
        }
    }
}

QPainterPath selectPath()
{
    QPainterPath path(QPointF(6, 3));
    for (const QPointF &point : {QPointF(18, 13), QPointF(12.5, 13.8), QPointF(15.5, 20), QPointF(12.8, 21.2),
                                 QPointF(10, 15), QPointF(6, 18.5)}) {
        path.lineTo(point);
    }
    path.closeSubpath();
    return path;
}

QPainterPath orbitPath()
{
    QPainterPath path;
    path.addEllipse(QPointF(12, 12), 3, 3);
    path.arcMoveTo(QRectF(2.5, 6.5, 19, 11), 70);
    path.arcTo(QRectF(2.5, 6.5, 19, 11), 70, 310);
    addArrow(path, QPointF(15.5, 6.8), QPointF(2.4, -1.2));
    return path;
}

QPainterPath panPath()
{
    QPainterPath path;
    path.moveTo(12, 3);
    path.lineTo(12, 21);
    path.moveTo(3, 12);
    path.lineTo(21, 12);
    addArrow(path, {12, 3}, {0, -3});
    addArrow(path, {12, 21}, {0, 3});
    addArrow(path, {3, 12}, {-3, 0});
    addArrow(path, {21, 12}, {3, 0});
    return path;
}

QPainterPath fitPath()
{
    QPainterPath path;
    addCorners(path, QRectF(3, 3, 18, 18), 5);
    path.addRect(QRectF(8.5, 8.5, 7, 7));
    return path;
}

QPainterPath allPath()
{
    QPainterPath path;
    addCorners(path, QRectF(3, 3, 18, 18), 5);
    path.addRect(QRectF(6.5, 12.5, 5, 5));
    path.addEllipse(QPointF(14.5, 9), 3, 3);
    return path;
}

QPainterPath cameraPath()
{
    QPainterPath path;
    path.addRoundedRect(QRectF(2.5, 7, 12, 10), 1.5, 1.5);
    path.moveTo(14.5, 12);
    path.lineTo(21.5, 7.5);
    path.lineTo(21.5, 16.5);
    path.closeSubpath();
    return path;
}

QPainterPath lightPath()
{
    QPainterPath path;
    path.addEllipse(QPointF(12, 12), 4, 4);
    for (const QPointF &way : {QPointF(1, 0), QPointF(0, 1), QPointF(-1, 0), QPointF(0, -1), QPointF(.7, .7),
                               QPointF(-.7, .7), QPointF(.7, -.7), QPointF(-.7, -.7)}) {
        path.moveTo(QPointF(12, 12) + way * 6.5);
        path.lineTo(QPointF(12, 12) + way * 9.5);
    }
    return path;
}

QPainterPath pathOf(Shape shape)
{
    switch (shape) {
    case Shape::Select:
        return selectPath();
    case Shape::Orbit:
        return orbitPath();
    case Shape::Pan:
        return panPath();
    case Shape::Fit:
        return fitPath();
    case Shape::All:
        return allPath();
    case Shape::Camera:
        return cameraPath();
    case Shape::Light:
        break;
    }
    return lightPath();
}

class Engine : public QIconEngine
{
public:
    explicit Engine(Shape shape) : m_shape(shape) {}

    void paint(QPainter *painter, const QRect &rect, QIcon::Mode mode, QIcon::State) override
    {
        const auto group = mode == QIcon::Disabled ? QPalette::Disabled : QPalette::Active;
        const QColor color = QGuiApplication::palette().color(group, QPalette::ButtonText);
        painter->save();
        painter->setRenderHint(QPainter::Antialiasing);
        painter->translate(rect.topLeft());
        painter->scale(rect.width() / units, rect.height() / units);
        painter->setPen(QPen(color, 1.6, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        painter->drawPath(pathOf(m_shape));
        painter->restore();
    }

    QPixmap pixmap(const QSize &size, QIcon::Mode mode, QIcon::State state) override
    {
        QPixmap pixmap(size);
        pixmap.fill(Qt::transparent);
        QPainter painter(&pixmap);
        paint(&painter, QRect(QPoint(), size), mode, state);
        return pixmap;
    }

    QIconEngine *clone() const override { return new Engine(m_shape); }

private:
    const Shape m_shape;
};

} // namespace

QIcon ViewportIcons::icon(Shape shape)
{
    return QIcon(new Engine(shape));
}
