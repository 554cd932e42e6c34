#include "TestMain.h"

#include <nkQt4Ext/QNKColorDialog.h>

#include <QAbstractButton>
#include <QDialogButtonBox>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QSpinBox>

namespace {

QNKColor colorOf(const QColor &screen)
{
    QNKColor color;
    color.setGammaRGB(float(screen.redF()), float(screen.greenF()), float(screen.blueF()));
    return color;
}

struct Dialog
{
    explicit Dialog(const QColor &screen = QColor(200, 100, 50))
    {
        dialog.reinit(colorOf(screen));
        dialog.show();
        usable = QTest::qWaitForWindowActive(&dialog);
    }

    /// A control by the name that assistive tools read.
    template <typename Control>
    Control *control(const QString &name) const
    {
        const auto controls = dialog.findChildren<Control *>();
        for (Control *control : controls) {
            if (control->accessibleName() == name)
                return control;
        }
        return nullptr;
    }

    QWidget *field() const { return control<QWidget>(QStringLiteral("Saturation and value")); }
    QWidget *hue() const { return control<QWidget>(QStringLiteral("Hue")); }
    QLineEdit *hex() const { return control<QLineEdit>(QStringLiteral("Hexadecimal")); }
    QSpinBox *spiner(const char *name) const { return control<QSpinBox>(QLatin1String(name)); }
    QAbstractButton *swatch(const char *name) const { return control<QAbstractButton>(QLatin1String(name)); }
    QPushButton *button(QDialogButtonBox::StandardButton which) const
    {
        return dialog.findChild<QDialogButtonBox *>()->button(which);
    }
    QColor screen() const { return dialog.getColor().getGammaQColor(); }

    QNKColorDialog dialog;
    bool usable = false;
    QSignalSpy changed{&dialog, &QNKColorDialog::colorChanged};
};

/// The colour in the middle of a widget as it is painted.
QColor painted(QWidget *widget)
{
    const QImage image = widget->grab().toImage();
    return image.pixelColor(image.width() / 2, image.height() / 2);
}

} // namespace

class TestColorDialog : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void showsTheColourItIsGiven();
    void anUntouchedColourComesBackExactly();
    void spinnersChooseAColour();
    void hexFieldChoosesAColour_data();
    void hexFieldChoosesAColour();
    void halfAHexTextChoosesNothing();
    void fieldChoosesByMouse();
    void fieldChoosesByKeyboard();
    void hueStripChoosesByMouse();
    void hueStripChoosesByKeyboard();
    void greyAndBlackKeepTheirHue();
    void previousColourComesBack();
    void acceptedColoursAreRemembered();
    void cancelGivesThePreviousColourBack();
    void escapeGivesThePreviousColourBack();
    void theWholeDialogIsReachedByTab();
    void emptySwatchesShowInAnyPalette_data();
    void emptySwatchesShowInAnyPalette();
};

void TestColorDialog::showsTheColourItIsGiven()
{
    Dialog dialog(QColor(18, 52, 86));
    QCOMPARE(dialog.spiner("Red")->value(), 18);
    QCOMPARE(dialog.spiner("Green")->value(), 52);
    QCOMPARE(dialog.spiner("Blue")->value(), 86);
    QCOMPARE(dialog.hex()->text(), QStringLiteral("#123456"));
    QCOMPARE(painted(dialog.swatch("New colour")), QColor(18, 52, 86));
    QCOMPARE(painted(dialog.swatch("Previous colour")), QColor(18, 52, 86));
    QCOMPARE(dialog.changed.count(), 0);
}

void TestColorDialog::anUntouchedColourComesBackExactly()
{
    QNKColor exact;
    exact.setGammaRGB(0.1234F, 0.5678F, 0.9012F);
    QNKColorDialog dialog;
    dialog.reinit(exact);
    QVERIFY(dialog.getColor() == exact);
    dialog.accept();
    QVERIFY(dialog.getColor() == exact);
}

void TestColorDialog::spinnersChooseAColour()
{
    Dialog dialog;
    dialog.spiner("Green")->setValue(255);
    QCOMPARE(dialog.screen(), QColor(200, 255, 50));
    QCOMPARE(dialog.changed.count(), 1);
    QCOMPARE(dialog.hex()->text(), QStringLiteral("#c8ff32"));
    QCOMPARE(painted(dialog.swatch("New colour")), QColor(200, 255, 50));
    QCOMPARE(painted(dialog.swatch("Previous colour")), QColor(200, 100, 50));
}

void TestColorDialog::hexFieldChoosesAColour_data()
{
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QColor>("color");
    QTest::newRow("with hash") << "#0a0B0c" << QColor(10, 11, 12);
    QTest::newRow("without") << "ff8000" << QColor(255, 128, 0);
    QTest::newRow("short") << "#f80" << QColor(255, 136, 0);
    QTest::newRow("short without") << "abc" << QColor(170, 187, 204);
}

void TestColorDialog::hexFieldChoosesAColour()
{
    QFETCH(QString, typed);
    QFETCH(QColor, color);
    Dialog dialog;
    QVERIFY(dialog.usable);
    dialog.hex()->setFocus();
    dialog.hex()->selectAll();
    QTest::keyClicks(dialog.hex(), typed);
    QCOMPARE(dialog.hex()->text(), typed);
    QTest::keyClick(dialog.hex(), Qt::Key_Tab);
    QCOMPARE(dialog.screen(), color);
    QCOMPARE(dialog.hex()->text(), color.name());
    QCOMPARE(dialog.changed.count(), 1);
}

void TestColorDialog::halfAHexTextChoosesNothing()
{
    Dialog dialog;
    QVERIFY(dialog.usable);
    dialog.hex()->setFocus();
    dialog.hex()->selectAll();
    QTest::keyClicks(dialog.hex(), QStringLiteral("#1z2"));
    QCOMPARE(dialog.hex()->text(), QStringLiteral("#12"));
    QCOMPARE(dialog.screen(), QColor(200, 100, 50));
    QTest::keyClick(dialog.hex(), Qt::Key_Tab);
    QCOMPARE(dialog.hex()->text(), QStringLiteral("#c86432"));
    QCOMPARE(dialog.changed.count(), 0);
}

void TestColorDialog::fieldChoosesByMouse()
{
    Dialog dialog(QColor(255, 0, 0));
    QWidget *field = dialog.field();
    QTest::mouseClick(field, Qt::LeftButton, {}, QPoint(1, 1));
    QCOMPARE(dialog.screen(), QColor(255, 255, 255));
    QTest::mouseClick(field, Qt::LeftButton, {}, field->rect().bottomRight());
    QCOMPARE(dialog.screen(), QColor(0, 0, 0));
    QTest::mouseClick(field, Qt::LeftButton, {}, field->rect().topRight());
    QCOMPARE(dialog.screen(), QColor(255, 0, 0));
    QCOMPARE(dialog.changed.count(), 3);
    QTest::mouseClick(field, Qt::RightButton, {}, QPoint(1, 1));
    QCOMPARE(dialog.screen(), QColor(255, 0, 0));
}

void TestColorDialog::fieldChoosesByKeyboard()
{
    Dialog dialog(QColor(255, 0, 0));
    QTest::keyClick(dialog.field(), Qt::Key_PageDown);
    QCOMPARE(dialog.screen().value(), 230);
    QTest::keyClick(dialog.field(), Qt::Key_Up, Qt::ShiftModifier);
    QCOMPARE(dialog.screen(), QColor(255, 0, 0));
    QTest::keyClick(dialog.field(), Qt::Key_Home);
    QCOMPARE(dialog.screen(), QColor(255, 255, 255));
    QTest::keyClick(dialog.field(), Qt::Key_Left);
    QCOMPARE(dialog.screen(), QColor(255, 255, 255));
    QTest::keyClick(dialog.field(), Qt::Key_Right, Qt::ShiftModifier);
    QVERIFY(qAbs(dialog.screen().hsvSaturation() - 25) <= 1);
}

void TestColorDialog::hueStripChoosesByMouse()
{
    Dialog dialog(QColor(255, 0, 0));
    QWidget *hue = dialog.hue();
    QTest::mouseClick(hue, Qt::LeftButton, {}, hue->rect().center());
    const QColor cyan = dialog.screen();
    QVERIFY(cyan.red() == 0 && cyan.green() > 240 && cyan.blue() > 240);
}

void TestColorDialog::hueStripChoosesByKeyboard()
{
    Dialog dialog(QColor(255, 0, 0));
    for (int step = 0; step < 12; ++step)
        QTest::keyClick(dialog.hue(), Qt::Key_PageUp);
    QCOMPARE(dialog.screen(), QColor(0, 255, 0));
    QTest::keyClick(dialog.hue(), Qt::Key_End);
    QCOMPARE(dialog.screen(), QColor(255, 0, 0));
    QTest::keyClick(dialog.hue(), Qt::Key_Up);
    QCOMPARE(dialog.screen(), QColor(255, 0, 0));
}

void TestColorDialog::greyAndBlackKeepTheirHue()
{
    Dialog dialog(QColor(0, 0, 255));
    for (int step = 0; step < 10; ++step)
        QTest::keyClick(dialog.field(), Qt::Key_PageDown);
    QCOMPARE(dialog.screen(), QColor(0, 0, 0));
    for (int step = 0; step < 10; ++step)
        QTest::keyClick(dialog.field(), Qt::Key_PageUp);
    QCOMPARE(dialog.screen(), QColor(0, 0, 255));
    QTest::keyClick(dialog.field(), Qt::Key_Home);
    QTest::keyClick(dialog.field(), Qt::Key_End);
    QCOMPARE(dialog.screen(), QColor(0, 0, 255));
    dialog.hex()->selectAll();
    QTest::keyClicks(dialog.hex(), QStringLiteral("808080"));
    QTest::keyClick(dialog.field(), Qt::Key_End);
    QCOMPARE(dialog.screen(), QColor(0, 0, 128));
}

void TestColorDialog::previousColourComesBack()
{
    Dialog dialog;
    dialog.spiner("Red")->setValue(0);
    dialog.spiner("Blue")->setValue(0);
    QTest::mouseClick(dialog.swatch("Previous colour"), Qt::LeftButton);
    QVERIFY(dialog.dialog.getColor() == colorOf(QColor(200, 100, 50)));
    QCOMPARE(dialog.hex()->text(), QStringLiteral("#c86432"));
    QCOMPARE(dialog.changed.count(), 3);
    QTest::keyClick(dialog.swatch("Previous colour"), Qt::Key_Space);
    QCOMPARE(dialog.changed.count(), 3);
}

void TestColorDialog::acceptedColoursAreRemembered()
{
    for (const QColor &color : {QColor(1, 1, 1), QColor(2, 2, 2), QColor(1, 1, 1)}) {
        Dialog accepted(color);
        QTest::mouseClick(accepted.button(QDialogButtonBox::Ok), Qt::LeftButton);
        QCOMPARE(accepted.dialog.result(), int(QDialog::Accepted));
    }
    Dialog dialog;
    QCOMPARE(painted(dialog.swatch("Recent colour 1")), QColor(1, 1, 1));
    QCOMPARE(painted(dialog.swatch("Recent colour 2")), QColor(2, 2, 2));
    QTest::mouseClick(dialog.swatch("Recent colour 2"), Qt::LeftButton);
    QCOMPARE(dialog.screen(), QColor(2, 2, 2));
    QCOMPARE(dialog.changed.count(), 1);
}

void TestColorDialog::cancelGivesThePreviousColourBack()
{
    Dialog dialog;
    dialog.spiner("Red")->setValue(0);
    QTest::mouseClick(dialog.button(QDialogButtonBox::Cancel), Qt::LeftButton);
    QCOMPARE(dialog.dialog.result(), int(QDialog::Rejected));
    QVERIFY(dialog.dialog.getColor() == colorOf(QColor(200, 100, 50)));
}

void TestColorDialog::escapeGivesThePreviousColourBack()
{
    Dialog dialog;
    dialog.spiner("Red")->setValue(0);
    QTest::keyClick(&dialog.dialog, Qt::Key_Escape);
    QVERIFY(!dialog.dialog.isVisible());
    QVERIFY(dialog.dialog.getColor() == colorOf(QColor(200, 100, 50)));
}

void TestColorDialog::theWholeDialogIsReachedByTab()
{
    Dialog dialog;
    QVERIFY(dialog.usable);
    QSet<QWidget *> reached;
    for (int step = 0; step < 40; ++step) {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        reached.insert(QApplication::focusWidget());
    }
    const QVector<QWidget *> controls{dialog.field(),
                                      dialog.hue(),
                                      dialog.spiner("Red"),
                                      dialog.spiner("Green"),
                                      dialog.spiner("Blue"),
                                      dialog.hex(),
                                      dialog.swatch("Previous colour"),
                                      dialog.button(QDialogButtonBox::Ok),
                                      dialog.button(QDialogButtonBox::Cancel)};
    for (QWidget *control : controls)
        QVERIFY2(reached.contains(control), qPrintable(control->accessibleName()));
    QVERIFY(!reached.contains(dialog.swatch("New colour")));
}

void TestColorDialog::emptySwatchesShowInAnyPalette_data()
{
    QTest::addColumn<QColor>("window");
    QTest::addColumn<QColor>("text");
    QTest::newRow("light") << QColor(239, 239, 239) << QColor(190, 190, 190);
    QTest::newRow("dark") << QColor(53, 53, 53) << QColor(127, 127, 127);
}

void TestColorDialog::emptySwatchesShowInAnyPalette()
{
    QFETCH(QColor, window);
    QFETCH(QColor, text);
    const Dialog dialog;
    QPalette palette;
    palette.setColor(QPalette::Window, window);
    palette.setColor(QPalette::Disabled, QPalette::WindowText, text);
    QWidget *last = dialog.swatch("Recent colour 10");
    QVERIFY(last);
    last->setPalette(palette);
    const QImage image = last->grab().toImage();
    int farthest = 0;
    for (int x = 0; x < image.width(); ++x)
        farthest = qMax(farthest, qAbs(image.pixelColor(x, image.height() / 2).value() - window.value()));
    QVERIFY2(farthest >= 40, qPrintable(QString::number(farthest)));
}

NK_TEST_MAIN(TestColorDialog)

#include "test_color_dialog.moc"
