#include "TestMain.h"

#include <nkQt4Ext/QNKDoubleSpiner.h>

#include <QLineEdit>
#include <QRandomGenerator>
#include <QSignalSpy>

#include <cfloat>
#include <cmath>
#include <cstring>

namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();

bool sameBits(double left, double right)
{
    return std::memcmp(&left, &right, sizeof left) == 0;
}

float anySingle(QRandomGenerator &random)
{
    float single = 0.0F;
    do {
        const quint32 bits = random.generate();
        std::memcpy(&single, &bits, sizeof single);
    } while (!std::isfinite(single));
    return single;
}

double anyDouble(QRandomGenerator &random)
{
    double value = 0.0;
    do {
        const quint64 bits = random.generate64();
        std::memcpy(&value, &bits, sizeof value);
    } while (!std::isfinite(value));
    return value;
}

void type(QNKDoubleSpiner &spiner, const QString &text)
{
    auto *edit = spiner.findChild<QLineEdit *>();
    edit->selectAll();
    QTest::keyClicks(edit, text);
}

} // namespace

class TestDoubleSpiner : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup() { QLocale::setDefault(QLocale::c()); }

    void printsTheShortestTextOfTheSingle_data();
    void printsTheShortestTextOfTheSingle();
    void everySingleComesBackFromItsText();
    void textIsNeverLongerThanNineDigitsNeed();
    void beyondTheSingleTheTextGivesTheDoubleBack();
    void printsWhatIsNoNumber();
    void usesTheDefaultLocalesPointWithoutGroups();
    void staticTextIsWhatTheWidgetShows();

    void anUntouchedEditorHoldsWhatWasSet_data();
    void anUntouchedEditorHoldsWhatWasSet();
    void whatIsTypedIsKeptAsItPrints_data();
    void whatIsTypedIsKeptAsItPrints();
    void bothPointsAreTaken();
    void refusesWhatIsNoNumber();
    void halfANumberGivesTheOldValueBack();
    void aRangeIsKept();
    void readsBehindPrefixAndSuffix();
    void stepsKeepTheirPrintedDigits();
    void wheelTurnsItOnlyWithFocus();
    void usualNumbersFitIntoTheSizeHint();
};

void TestDoubleSpiner::printsTheShortestTextOfTheSingle_data()
{
    QTest::addColumn<double>("value");
    QTest::addColumn<QString>("text");
    QTest::newRow("tenth") << 0.1 << "0.1";
    QTest::newRow("tenth from a single") << double(0.1F) << "0.1";
    QTest::newRow("nine digits") << 0.123456789 << "0.12345679";
    QTest::newRow("zero") << 0.0 << "0";
    QTest::newRow("negative zero") << -0.0 << "-0";
    QTest::newRow("one") << 1.0 << "1";
    QTest::newRow("negative") << -2.5 << "-2.5";
    QTest::newRow("hundred") << 100.0 << "100";
    QTest::newRow("million") << 1e6 << "1000000";
    QTest::newRow("hundred million") << 1e8 << "100000000";
    QTest::newRow("thousand million") << 1e9 << "1e+09";
    QTest::newRow("past the whole numbers of a single") << 16777217.0 << "16777216";
    QTest::newRow("just below") << 16777215.0 << "16777215";
    QTest::newRow("ten thousandth") << 0.0001 << "0.0001";
    QTest::newRow("hundred thousandth") << 0.00001 << "1e-05";
    QTest::newRow("digits before and after the point") << 1234.5 << "1234.5";
    QTest::newRow("small digits") << 0.00123 << "0.00123";
    QTest::newRow("greatest single") << double(FLT_MAX) << "3.4028235e+38";
    QTest::newRow("least normal single") << double(FLT_MIN) << "1.1754944e-38";
    QTest::newRow("least single") << double(FLT_TRUE_MIN) << "1e-45";
    QTest::newRow("beyond the single") << 1e300 << "1e+300";
    QTest::newRow("beyond the single, negative") << -1.2345678901234567e300 << "-1.2345678901234567e+300";
    QTest::newRow("below the single") << 1e-300 << "1e-300";
    QTest::newRow("greatest double") << DBL_MAX << "1.7976931348623157e+308";
    QTest::newRow("least double") << DBL_TRUE_MIN << "5e-324";
}

void TestDoubleSpiner::printsTheShortestTextOfTheSingle()
{
    QFETCH(double, value);
    QFETCH(QString, text);
    QCOMPARE(QNKDoubleSpiner::text(value), text);
}

void TestDoubleSpiner::everySingleComesBackFromItsText()
{
    QRandomGenerator random(4711);
    for (int count = 0; count < 20000; ++count) {
        const float single = anySingle(random);
        const QString text = QNKDoubleSpiner::text(double(single));
        const float back = float(QLocale::c().toDouble(text));
        QVERIFY2(std::memcmp(&back, &single, sizeof single) == 0, qPrintable(text));
    }
}

void TestDoubleSpiner::textIsNeverLongerThanNineDigitsNeed()
{
    QRandomGenerator random(4712);
    for (int count = 0; count < 20000; ++count) {
        const double single = double(anySingle(random));
        const QString text = QNKDoubleSpiner::text(single);
        QVERIFY2(text.size() <= QString::number(single, 'g', 9).size(), qPrintable(text));
    }
}

void TestDoubleSpiner::beyondTheSingleTheTextGivesTheDoubleBack()
{
    QRandomGenerator random(4713);
    int tested = 0;
    while (tested < 5000) {
        const double value = anyDouble(random);
        if (std::abs(value) <= double(FLT_MAX) * 1.1 && std::abs(value) >= double(FLT_TRUE_MIN) / 3.0)
            continue;
        ++tested;
        const QString text = QNKDoubleSpiner::text(value);
        QVERIFY2(sameBits(QLocale::c().toDouble(text), value), qPrintable(text));
    }
}

void TestDoubleSpiner::printsWhatIsNoNumber()
{
    QCOMPARE(QNKDoubleSpiner::text(std::nan("")), QStringLiteral("nan"));
    QCOMPARE(QNKDoubleSpiner::text(infinity), QStringLiteral("inf"));
    QCOMPARE(QNKDoubleSpiner::text(-infinity), QStringLiteral("-inf"));
}

void TestDoubleSpiner::usesTheDefaultLocalesPointWithoutGroups()
{
    QLocale::setDefault(QLocale(QLocale::German));
    QCOMPARE(QNKDoubleSpiner::text(0.1), QStringLiteral("0,1"));
    QCOMPARE(QNKDoubleSpiner::text(1234567.5), QStringLiteral("1234567,5"));
    QCOMPARE(QNKDoubleSpiner::text(1.5e30), QStringLiteral("1,5e+30"));
}

void TestDoubleSpiner::staticTextIsWhatTheWidgetShows()
{
    QRandomGenerator random(4714);
    QNKDoubleSpiner spiner;
    for (int count = 0; count < 500; ++count) {
        const double value = double(anySingle(random));
        spiner.setValue(value);
        QCOMPARE(spiner.cleanText(), QNKDoubleSpiner::text(value));
        QCOMPARE(spiner.textFromValue(value), QNKDoubleSpiner::text(value));
    }
}

void TestDoubleSpiner::anUntouchedEditorHoldsWhatWasSet_data()
{
    QTest::addColumn<double>("value");
    const QVector<double> values{0.1,       double(0.1F), 0.123456789, 0.0,     16777217.0, 1e-300,
                                 1e300,     DBL_MAX,      1.5e-306,    FLT_MAX, FLT_MIN,    FLT_TRUE_MIN,
                                 1.0 / 3.0, -1.0 / 3e30,  1e15 + 0.3,  -1e-40,  infinity,   -infinity};
    for (const double value : values)
        QTest::newRow(qPrintable(QString::number(value, 'g', 17))) << value;
}

void TestDoubleSpiner::anUntouchedEditorHoldsWhatWasSet()
{
    QFETCH(double, value);
    QNKDoubleSpiner spiner;
    spiner.setValue(5.0);
    spiner.setValue(value);
    QVERIFY(sameBits(spiner.value(), value));
    spiner.interpretText();
    QVERIFY(sameBits(spiner.value(), value));
    QTest::keyClick(&spiner, Qt::Key_Return);
    QVERIFY(sameBits(spiner.value(), value));
}

void TestDoubleSpiner::whatIsTypedIsKeptAsItPrints_data()
{
    QTest::addColumn<QString>("typed");
    QTest::addColumn<double>("value");
    QTest::newRow("tenth") << "0.1" << 0.1;
    QTest::newRow("no leading zero") << ".5" << 0.5;
    QTest::newRow("point at the end") << "5." << 5.0;
    QTest::newRow("plus") << "+7" << 7.0;
    QTest::newRow("exponent") << "1e-3" << 0.001;
    QTest::newRow("capital exponent") << "2E+4" << 20000.0;
    QTest::newRow("digits a single cannot hold") << "16777217" << 16777216.0;
    QTest::newRow("more digits than a single has") << "0.123456789" << 0.12345679;
    QTest::newRow("beyond the single") << "1e300" << 1e300;
    QTest::newRow("below the single") << "-1e-300" << -1e-300;
    QTest::newRow("negative zero") << "-0" << -0.0;
}

void TestDoubleSpiner::whatIsTypedIsKeptAsItPrints()
{
    QFETCH(QString, typed);
    QFETCH(double, value);
    QNKDoubleSpiner spiner;
    spiner.setValue(42.0);
    type(spiner, typed);
    spiner.interpretText();
    QVERIFY2(sameBits(spiner.value(), value), qPrintable(QString::number(spiner.value(), 'g', 17)));
}

void TestDoubleSpiner::bothPointsAreTaken()
{
    QLocale::setDefault(QLocale(QLocale::German));
    QNKDoubleSpiner spiner;
    type(spiner, QStringLiteral("1.5"));
    spiner.interpretText();
    QCOMPARE(spiner.value(), 1.5);
    QCOMPARE(spiner.cleanText(), QStringLiteral("1,5"));
    type(spiner, QStringLiteral("2,25"));
    spiner.interpretText();
    QCOMPARE(spiner.value(), 2.25);
    type(spiner, QStringLiteral("1234.5"));
    spiner.interpretText();
    QCOMPARE(spiner.value(), 1234.5);
}

void TestDoubleSpiner::refusesWhatIsNoNumber()
{
    QNKDoubleSpiner spiner;
    const QStringList refused{"abc",   "1.2.3", "1,000", "1e5e", "--1",      "0x10",
                              "1 000", "e5",    "1e999", "nan",  "infinity", QStringLiteral("\u0663")};
    for (QString text : refused) {
        int position = 0;
        QVERIFY2(spiner.validate(text, position) != QValidator::Acceptable, qPrintable(text));
    }
    type(spiner, QStringLiteral("1x2"));
    QCOMPARE(spiner.cleanText(), QStringLiteral("12"));
}

void TestDoubleSpiner::halfANumberGivesTheOldValueBack()
{
    const QStringList halves{"", "-", "+", ".", "-."};
    for (const QString &half : halves) {
        QNKDoubleSpiner spiner;
        spiner.setValue(0.123456789);
        auto *edit = spiner.findChild<QLineEdit *>();
        edit->selectAll();
        QTest::keyClick(edit, Qt::Key_Delete);
        QTest::keyClicks(edit, half);
        QCOMPARE(edit->text(), half);
        spiner.interpretText();
        QVERIFY2(sameBits(spiner.value(), 0.123456789), qPrintable(half));
    }
    QNKDoubleSpiner spiner;
    type(spiner, QStringLiteral("2.5e-"));
    spiner.interpretText();
    QCOMPARE(spiner.value(), 2.5);
}

void TestDoubleSpiner::aRangeIsKept()
{
    QNKDoubleSpiner spiner;
    spiner.setRange(0.0, 1.0);
    spiner.setValue(0.5);
    type(spiner, QStringLiteral("7"));
    spiner.interpretText();
    QCOMPARE(spiner.value(), 0.5);
    spiner.setValue(7.0);
    QCOMPARE(spiner.value(), 1.0);
}

void TestDoubleSpiner::readsBehindPrefixAndSuffix()
{
    QNKDoubleSpiner spiner;
    spiner.setPrefix(QStringLiteral("x = "));
    spiner.setSuffix(QStringLiteral(" mm"));
    spiner.setValue(1.5);
    QCOMPARE(spiner.findChild<QLineEdit *>()->text(), QStringLiteral("x = 1.5 mm"));
    spiner.findChild<QLineEdit *>()->setText(QStringLiteral("x = 2.5 mm"));
    spiner.interpretText();
    QCOMPARE(spiner.value(), 2.5);
}

void TestDoubleSpiner::stepsKeepTheirPrintedDigits()
{
    QNKDoubleSpiner spiner;
    spiner.setValue(double(0.1F));
    QSignalSpy changed(&spiner, QOverload<double>::of(&QDoubleSpinBox::valueChanged));
    QTest::keyClick(&spiner, Qt::Key_Up);
    QVERIFY(sameBits(spiner.value(), 1.1));
    QCOMPARE(changed.count(), 1);
    type(spiner, QStringLiteral("5"));
    QTest::keyClick(&spiner, Qt::Key_Down);
    QVERIFY(sameBits(spiner.value(), 4.0));
    spiner.setRange(0.0, 10.0);
    QTest::keyClick(&spiner, Qt::Key_PageUp);
    QCOMPARE(spiner.value(), 10.0);
}

void TestDoubleSpiner::wheelTurnsItOnlyWithFocus()
{
    QWidget window;
    QNKDoubleSpiner spiner(&window);
    QLineEdit other(&window);
    window.show();
    QVERIFY(QTest::qWaitForWindowActive(&window));
    const auto turn = [&spiner] {
        QWheelEvent event(QPointF(5, 5), spiner.mapToGlobal(QPoint(5, 5)), {}, {0, 120}, Qt::NoButton,
                          Qt::NoModifier, Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(&spiner, &event);
    };
    QVERIFY2(spiner.focusPolicy() == Qt::StrongFocus, "the wheel gives no focus");
    other.setFocus();
    turn();
    QCOMPARE(spiner.value(), 0.0);
    QVERIFY(!spiner.hasFocus());
    spiner.setFocus();
    turn();
    QCOMPARE(spiner.value(), 1.0);
}

void TestDoubleSpiner::usualNumbersFitIntoTheSizeHint()
{
    QNKDoubleSpiner spiner;
    spiner.resize(spiner.sizeHint());
    const int room = spiner.findChild<QLineEdit *>()->width();
    QVERIFY(room >= spiner.fontMetrics().horizontalAdvance(QStringLiteral("-1.2345679e+38")));
}

NK_TEST_MAIN(TestDoubleSpiner)

#include "test_double_spiner.moc"
