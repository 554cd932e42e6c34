#include "Theme.h"

#include "ThemeStyle.h"

#include <QApplication>
#include <QPalette>
#include <QStyle>
#include <QStyleFactory>
#include <QToolTip>

namespace {

struct Look
{
    QString style;
    QPalette palette;
    QPalette toolTip;
};

QPalette palette(const QColor &window, const QColor &base, const QColor &text, const QColor &faint)
{
    QPalette colours(window, window);
    for (const QPalette::ColorRole role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText}) {
        colours.setColor(role, text);
        colours.setColor(QPalette::Disabled, role, faint);
    }
    colours.setColor(QPalette::PlaceholderText, faint);
    colours.setColor(QPalette::Base, base);
    colours.setColor(QPalette::AlternateBase, window);
    colours.setColor(QPalette::ToolTipBase, base);
    colours.setColor(QPalette::ToolTipText, text);
    colours.setColor(QPalette::BrightText, Qt::white);
    return colours;
}

void setAccents(QPalette *colours, const QColor &highlight, const QColor &highlighted, const QColor &link)
{
    colours->setColor(QPalette::Highlight, highlight);
    colours->setColor(QPalette::HighlightedText, highlighted);
    colours->setColor(QPalette::Link, link);
}

QPalette lightPalette()
{
    QPalette colours = palette(QColor(239, 239, 239), Qt::white, QColor(26, 26, 26), QColor(128, 128, 128));
    setAccents(&colours, QColor(48, 140, 198), Qt::white, QColor(0, 87, 174));
    return colours;
}

QPalette darkPalette()
{
    QPalette colours = palette(QColor(53, 53, 53), QColor(35, 35, 35), QColor(230, 230, 230),
                               QColor(140, 140, 140));
    setAccents(&colours, QColor(42, 110, 170), Qt::white, QColor(105, 176, 240));
    return colours;
}

void wear(const Look &look)
{
    if (QApplication::style()->objectName() != look.style) {
        QApplication::setStyle(look.style == ThemeStyle::name() ? new ThemeStyle
                                                                : QStyleFactory::create(look.style));
    }
    QApplication::setPalette(look.palette);
    QToolTip::setPalette(look.toolTip);
}

} // namespace

void applyTheme(Theme theme)
{
    static const Look atStart{QApplication::style()->objectName(), QApplication::palette(),
                              QToolTip::palette()};
    static bool isAtStart = true;
    if (theme == Theme::System) {
        // Wearing it again would take the application off later changes of the desktop.
        if (!isAtStart) {
            wear(atStart);
        }
        isAtStart = true;
        return;
    }
    isAtStart = false;
    // Styles of desktops take their colours from the desktop; this one takes them from the palette.
    const QPalette colours = theme == Theme::Dark ? darkPalette() : lightPalette();
    wear({ThemeStyle::name(), colours, colours});
}
