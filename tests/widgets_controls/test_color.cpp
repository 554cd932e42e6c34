#include "TestMain.h"

#include <nkQt4Ext/QNKColor.h>

#include <cmath>
#include <limits>

class TestColor : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void startsBlack();
    void everyScreenValueComesBack();
    void keepsLinearLight();
    void clampsWhatIsOutOfRange();
    void comparesByValue();
};

void TestColor::startsBlack()
{
    QCOMPARE(QNKColor().getGammaQColor(), QColor(0, 0, 0));
    QCOMPARE(QNKColor().getGammaQColor().alpha(), 255);
}

void TestColor::everyScreenValueComesBack()
{
    for (int value = 0; value < 256; ++value) {
        const QColor expected(value, 255 - value, (value * 7) % 256);
        QNKColor color;
        color.setGammaRGB(float(expected.red()) / 255.0F, float(expected.green()) / 255.0F,
                          float(expected.blue()) / 255.0F);
        QCOMPARE(color.getGammaQColor(), expected);
    }
}

void TestColor::keepsLinearLight()
{
    QNKColor color;
    color.setGammaRGB(0.0F, 0.5F, 1.0F);
    QCOMPARE(color.linearRed(), 0.0F);
    QVERIFY(std::abs(color.linearGreen() - 0.2140411F) < 1e-5F);
    QCOMPARE(color.linearBlue(), 1.0F);
    // Below 0.04045 the curve is a straight line.
    color.setGammaRGB(0.04F, 0.0F, 0.0F);
    QVERIFY(std::abs(color.linearRed() - 0.04F / 12.92F) < 1e-7F);
}

void TestColor::clampsWhatIsOutOfRange()
{
    QNKColor color;
    color.setGammaRGB(-3.0F, 7.0F, std::numeric_limits<float>::quiet_NaN());
    QCOMPARE(color.getGammaQColor(), QColor(0, 255, 0));
    color.setGammaRGB(std::numeric_limits<float>::infinity(), -std::numeric_limits<float>::infinity(), 0.0F);
    QCOMPARE(color.getGammaQColor(), QColor(255, 0, 0));
}

void TestColor::comparesByValue()
{
    QNKColor one;
    QNKColor other;
    QVERIFY(one == other);
    one.setGammaRGB(0.1F, 0.2F, 0.3F);
    QVERIFY(!(one == other));
    other.setGammaRGB(0.1F, 0.2F, 0.3F);
    QVERIFY(one == other);
}

NK_TEST_MAIN(TestColor)

#include "test_color.moc"
