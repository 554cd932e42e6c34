#include "SelectionIconEngine.h"

#include <QGuiApplication>
#include <QPainter>
#include <QPalette>
#include <QPixmapCache>

namespace kernel {

namespace {

/// Sizes of an icon in use at once are few: those of trees, tables and tool bars on one or two kinds of screen.
constexpr size_t maxKeptSizes = 8;

qreal resolutionOf(const QPainter *painter)
{
    return painter->device() ? painter->device()->devicePixelRatioF() : 1.0;
}

} // namespace

SelectionIconEngine::SelectionIconEngine(const QIcon &drawing) : m_drawing(drawing) {}

SelectionIconEngine::~SelectionIconEngine() = default;

void SelectionIconEngine::paint(QPainter *painter, const QRect &rect, QIcon::Mode mode, QIcon::State state)
{
    if (mode == QIcon::Selected) {
        painter->drawPixmap(rect, selected(rect.size() * resolutionOf(painter), state));
    } else {
        m_drawing.paint(painter, rect, Qt::AlignCenter, mode, state);
    }
}

QPixmap SelectionIconEngine::pixmap(const QSize &size, QIcon::Mode mode, QIcon::State state)
{
    if (mode == QIcon::Normal) {
        return normal(size, state);
    }
    return mode == QIcon::Selected ? selected(size, state) : draw(size, mode, state);
}

QString SelectionIconEngine::key() const
{
    return QStringLiteral("selection");
}

QIconEngine *SelectionIconEngine::clone() const
{
    return new SelectionIconEngine(*this);
}

QPixmap SelectionIconEngine::normal(const QSize &size, QIcon::State state)
{
    for (const Drawn &drawn : m_drawn) {
        if (drawn.size == size && drawn.state == state) {
            return drawn.pixmap;
        }
    }
    if (m_drawn.size() >= maxKeptSizes) {
        m_drawn.clear();
    }
    m_drawn.push_back({size, state, draw(size, QIcon::Normal, state)});
    return m_drawn.back().pixmap;
}

/// Painted, because the pixmaps an icon hands out are larger than asked for where screens are sharp, and here the
/// size is in pixels already.
QPixmap SelectionIconEngine::draw(const QSize &size, QIcon::Mode mode, QIcon::State state) const
{
    QPixmap canvas(size);
    canvas.fill(Qt::transparent);
    QPainter painter(&canvas);
    m_drawing.paint(&painter, canvas.rect(), Qt::AlignCenter, mode, state);
    return canvas;
}

QPixmap SelectionIconEngine::selected(const QSize &size, QIcon::State state) const
{
    const QColor colour = QGuiApplication::palette().color(QPalette::HighlightedText);
    const QString key = QStringLiteral("kernel::SelectionIconEngine %1 %2x%3 %4 %5")
                            .arg(m_drawing.cacheKey())
                            .arg(size.width())
                            .arg(size.height())
                            .arg(int(state))
                            .arg(colour.rgba());
    QPixmap canvas;
    if (!QPixmapCache::find(key, &canvas)) {
        canvas = draw(size, QIcon::Normal, state);
        QPainter painter(&canvas);
        painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
        painter.fillRect(canvas.rect(), colour);
        painter.end();
        QPixmapCache::insert(key, canvas);
    }
    return canvas;
}

} // namespace kernel
