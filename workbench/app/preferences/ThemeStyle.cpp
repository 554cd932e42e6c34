#include "ThemeStyle.h"

#include "TitleButtonIcon.h"

#include <QPainter>
#include <QStyleFactory>
#include <QStyleOption>

namespace {

/// How much of the text's colour the outlines have.
constexpr qreal outlineShare = 0.55;
constexpr qreal fillOpacity = 0.55;
constexpr qreal fillOpacityDisabled = 0.25;
constexpr qreal corner = 2;

QColor mixed(const QColor &first, const QColor &second, qreal share)
{
    const auto part = [share](qreal a, qreal b) { return a * share + b * (1 - share); };
    return QColor::fromRgbF(part(first.redF(), second.redF()), part(first.greenF(), second.greenF()),
                            part(first.blueF(), second.blueF()));
}

bool isDark(const QPalette &colours)
{
    return colours.color(QPalette::Window).lightnessF() < 0.5;
}

QColor outlineOf(const QPalette &colours)
{
    return mixed(colours.color(QPalette::WindowText), colours.color(QPalette::Window), outlineShare);
}

/// Where a pen of one pixel fills the outermost pixels.
QRectF outlineRect(const QStyleOption *option)
{
    return QRectF(option->rect).adjusted(0.5, 0.5, -0.5, -0.5);
}

void preparePainter(QPainter *painter, const QColor &outline)
{
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(QPen(outline, 1));
    painter->setBrush(Qt::NoBrush);
}

} // namespace

ThemeStyle::ThemeStyle() : QProxyStyle(QStyleFactory::create(QStringLiteral("fusion")))
{
    setObjectName(name());
}

ThemeStyle::~ThemeStyle() = default;

QString ThemeStyle::name()
{
    return QStringLiteral("workbench");
}

QIcon ThemeStyle::standardIcon(StandardPixmap which, const QStyleOption *option, const QWidget *widget) const
{
    switch (which) {
    case SP_TitleBarCloseButton:
        return QIcon(new TitleButtonIcon(TitleButtonIcon::Close));
    case SP_TitleBarNormalButton:
        return QIcon(new TitleButtonIcon(TitleButtonIcon::Float));
    default:
        return QProxyStyle::standardIcon(which, option, widget);
    }
}

void ThemeStyle::drawPrimitive(PrimitiveElement element, const QStyleOption *option, QPainter *painter,
                               const QWidget *widget) const
{
    QProxyStyle::drawPrimitive(element, option, painter, widget);
    if (!isDark(option->palette)) {
        return;
    }
    painter->save();
    if (element == PE_IndicatorCheckBox && !(option->state & State_HasFocus)) {
        preparePainter(painter, outlineOf(option->palette));
        painter->drawRect(outlineRect(option));
    } else if (element == PE_IndicatorRadioButton && !(option->state & State_HasFocus)) {
        preparePainter(painter, outlineOf(option->palette));
        painter->drawEllipse(outlineRect(option));
    } else if (element == PE_PanelButtonTool && (option->state & State_On)) {
        QColor fill = option->palette.color(QPalette::Highlight);
        const bool isEnabled = option->state & State_Enabled;
        preparePainter(painter, isEnabled ? fill.lighter(150) : fill.darker(150));
        fill.setAlphaF(isEnabled ? fillOpacity : fillOpacityDisabled);
        painter->setBrush(fill);
        painter->drawRoundedRect(outlineRect(option), corner, corner);
    }
    painter->restore();
}
