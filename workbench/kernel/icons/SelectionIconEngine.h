#pragma once

#include <QIcon>
#include <QIconEngine>
#include <QPixmap>

#include <vector>

namespace kernel {

/// An icon in its own colours, but on a selected row in the colour of the selected text, which the palette of the
/// moment makes legible on the highlight; in their own colours most icons drown in it. Strokes and areas keep their
/// opacity, so that the drawing stays readable in one colour.
class SelectionIconEngine final : public QIconEngine
{
public:
    /// @param drawing the icon in its own colours, sharp at every size
    explicit SelectionIconEngine(const QIcon &drawing);
    ~SelectionIconEngine() override;

    void paint(QPainter *painter, const QRect &rect, QIcon::Mode mode, QIcon::State state) override;
    QPixmap pixmap(const QSize &size, QIcon::Mode mode, QIcon::State state) override;
    QString key() const override;
    QIconEngine *clone() const override;

private:
    struct Drawn
    {
        QSize size;
        QIcon::State state;
        QPixmap pixmap;
    };

    QPixmap normal(const QSize &size, QIcon::State state);
    QPixmap draw(const QSize &size, QIcon::Mode mode, QIcon::State state) const;
    QPixmap selected(const QSize &size, QIcon::State state) const;

    QIcon m_drawing;
    /// In its own colours, which no palette changes: a view asks for the same few sizes row after row.
    std::vector<Drawn> m_drawn;
};

} // namespace kernel
