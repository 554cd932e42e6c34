#pragma once

#include <QIconEngine>

/// A sign in the title of a dock, in the colour that the application's texts have at the moment of painting: so
/// it follows a change of theme, which no picture would.
class TitleButtonIcon : public QIconEngine
{
public:
    enum Sign { Close, Float };

    explicit TitleButtonIcon(Sign sign);
    ~TitleButtonIcon() override;

    void paint(QPainter *painter, const QRect &rect, QIcon::Mode mode, QIcon::State state) override;
    /// @param size in pixels of the device
    QPixmap pixmap(const QSize &size, QIcon::Mode mode, QIcon::State state) override;
    QIconEngine *clone() const override;

private:
    Sign m_sign;
};
