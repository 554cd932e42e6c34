#include "TestMain.h"
#include "preferences/Theme.h"

#include <QAbstractButton>
#include <QApplication>
#include <QDockWidget>
#include <QPainter>
#include <QStyle>
#include <QStyleOptionButton>
#include <QStyleOptionToolButton>
#include <QtTest>

#include <cmath>
#include <memory>

/// What the themes draw, by its pixels.
class TestTheme : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup() { applyTheme(Theme::System); }

    void signs_in_titles_of_docks_stand_out()
    {
        for (const Theme theme : {Theme::Light, Theme::Dark}) {
            applyTheme(theme);
            for (const auto which : {QStyle::SP_TitleBarCloseButton, QStyle::SP_TitleBarNormalButton}) {
                const QIcon icon = QApplication::style()->standardIcon(which);
                for (const int size : {10, 16, 24}) {
                    QVERIFY2(mostContrast(onWindow(icon, size)) >= 4, qPrintable(QString::number(size)));
                }
            }
        }
    }

    void a_sign_made_in_one_theme_stands_out_in_the_other()
    {
        applyTheme(Theme::Light);
        const QIcon icon = QApplication::style()->standardIcon(QStyle::SP_TitleBarCloseButton);
        QVERIFY(mostContrast(onWindow(icon, 24)) >= 8);
        applyTheme(Theme::Dark);
        QVERIFY(mostContrast(onWindow(icon, 24)) >= 8);
    }

    void the_close_button_of_a_dock_that_was_there_before_stands_out()
    {
        QDockWidget dock(QStringLiteral("Dock"));
        auto *button = dock.findChild<QAbstractButton *>(QStringLiteral("qt_dockwidget_closebutton"));
        QVERIFY(button);
        applyTheme(Theme::Dark);
        dock.show();
        QVERIFY(QTest::qWaitForWindowExposed(&dock));
        QVERIFY(mostContrast(onWindow(button->icon(), 24)) >= 8);
    }

    void boxes_that_are_not_checked_are_seen()
    {
        for (const Theme theme : {Theme::Light, Theme::Dark}) {
            applyTheme(theme);
            for (const auto element : {QStyle::PE_IndicatorCheckBox, QStyle::PE_IndicatorRadioButton}) {
                QStyleOptionButton option;
                option.state = QStyle::State_Enabled | QStyle::State_Off;
                const double contrast = mostContrast(drawn(element, &option));
                // The light theme is Fusion's own.
                QVERIFY2(contrast >= (theme == Theme::Dark ? 3 : 1.3), qPrintable(QString::number(contrast)));
            }
        }
    }

    void checked_tool_buttons_differ_from_others()
    {
        applyTheme(Theme::Dark);
        QStyleOptionToolButton off;
        off.state = QStyle::State_Enabled | QStyle::State_Raised | QStyle::State_MouseOver;
        QStyleOptionToolButton on;
        on.state = QStyle::State_Enabled | QStyle::State_On;
        const QColor shownOff = drawn(QStyle::PE_PanelButtonTool, &off).pixelColor(10, 10);
        const QColor shownOn = drawn(QStyle::PE_PanelButtonTool, &on).pixelColor(10, 10);
        QVERIFY2(shownOn.blue() - shownOn.red() >= 40, qPrintable(shownOn.name()));
        QVERIFY2(qAbs(shownOff.blue() - shownOff.red()) < 10, qPrintable(shownOff.name()));
    }

private:
    static QImage windowColoured(int size)
    {
        QImage image(size, size, QImage::Format_RGB32);
        image.fill(QApplication::palette().color(QPalette::Window));
        return image;
    }

    static QImage onWindow(const QIcon &icon, int size)
    {
        QImage image = windowColoured(size);
        QPainter painter(&image);
        painter.drawPixmap(0, 0, icon.pixmap(size, size));
        return image;
    }

    static QImage drawn(QStyle::PrimitiveElement element, QStyleOption *option)
    {
        QImage image = windowColoured(20);
        QPainter painter(&image);
        option->rect = image.rect().adjusted(2, 2, -2, -2);
        option->palette = QApplication::palette();
        QApplication::style()->drawPrimitive(element, option, &painter);
        return image;
    }

    static double luminance(const QColor &colour)
    {
        const auto linear = [](double part) {
            return part <= 0.03928 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
        };
        return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF())
               + 0.0722 * linear(colour.blueF());
    }

    /// Of any pixel to the colour of windows.
    static double mostContrast(const QImage &image)
    {
        const double ground = luminance(QApplication::palette().color(QPalette::Window));
        double most = 1;
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x) {
                const double light = luminance(image.pixelColor(x, y));
                most = qMax(most, (qMax(light, ground) + 0.05) / (qMin(light, ground) + 0.05));
            }
        }
        return most;
    }
};

NK_TEST_MAIN(TestTheme)
#include "test_theme.moc"
