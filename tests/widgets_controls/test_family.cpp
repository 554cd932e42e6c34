#include "TestMain.h"

#include <nkQt4Ext/QNKCollapsibleFrame.h>
#include <nkQt4Ext/QNKColorDialog.h>
#include <nkQt4Ext/QNKComboBox.h>
#include <nkQt4Ext/QNKDoubleSpiner.h>
#include <nkQt4Ext/QNKFilterBar.h>
#include <nkQt4Ext/QNKInlineButton.h>
#include <nkQt4Ext/QNKListWidget.h>
#include <nkQt4Ext/QNKSearchBox.h>
#include <nkQt4Ext/QNKSpiner.h>
#include <nkQt4Ext/QNKStringCompleterLineEdit.h>
#include <nkQt4Ext/QNKTreeExpandSlider.h>
#include <nkQt4Ext/QNKVariantListWidget.h>
#include <nkQt4Ext/nkHeaderViewBase.h>

#include <QAbstractButton>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QStyleFactory>

#include <memory>
#include <vector>

namespace {

using Controls = std::vector<std::unique_ptr<QWidget>>;

Controls allControls()
{
    Controls controls;
    controls.push_back(std::make_unique<QNKCollapsibleFrame>());
    controls.push_back(std::make_unique<QNKColorDialog>());
    controls.push_back(std::make_unique<QNKComboBox>());
    controls.push_back(std::make_unique<QNKDoubleSpiner>());
    controls.push_back(std::make_unique<QNKFilterBar>());
    controls.push_back(std::make_unique<QNKListWidget>());
    controls.push_back(std::make_unique<QNKSearchBox>());
    controls.push_back(std::make_unique<QNKSpiner>());
    controls.push_back(std::make_unique<QNKStringCompleterLineEdit>());
    controls.push_back(std::make_unique<QNKTreeExpandSlider>(nullptr));
    controls.push_back(std::make_unique<QNKVariantListWidget>());
    auto header = std::make_unique<nkHeaderViewBase>();
    header->setShowToolButton(true);
    controls.push_back(std::move(header));
    return controls;
}

QPalette darkPalette()
{
    QPalette palette(QColor(53, 53, 53), QColor(53, 53, 53));
    palette.setColor(QPalette::Base, QColor(35, 35, 35));
    palette.setColor(QPalette::Highlight, QColor(42, 130, 218));
    for (const auto role : {QPalette::Text, QPalette::WindowText, QPalette::ButtonText, QPalette::BrightText})
        palette.setColor(role, Qt::white);
    return palette;
}

/// The greatest difference in lightness between the pixels of a picture.
int contrast(const QImage &image)
{
    int least = 255;
    int greatest = 0;
    for (int y = 3; y < image.height() - 3; ++y) {
        for (int x = 3; x < image.width() - 3; ++x) {
            const int lightness = image.pixelColor(x, y).lightness();
            least = qMin(least, lightness);
            greatest = qMax(greatest, lightness);
        }
    }
    return greatest - least;
}

bool isOfQt(const QWidget *widget)
{
    return widget->objectName().startsWith(QLatin1String("qt_"));
}

} // namespace

class TestFamily : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion"))); }

    void whateverTakesTheKeyboardHasAName();
    void everyButtonTakesTheKeyboardOrIsPartOfAField();
    void fieldsInALineAreEquallyHigh();
    void aLineTakesNoRoomFromTheListBelowIt();
    void signsAreSeenInBothPalettes_data();
    void signsAreSeenInBothPalettes();
};

void TestFamily::whateverTakesTheKeyboardHasAName()
{
    const Controls controls = allControls();
    for (const auto &control : controls) {
        QList<QWidget *> widgets = control->findChildren<QWidget *>();
        widgets.append(control.get());
        for (const QWidget *widget : qAsConst(widgets)) {
            const bool partOfSpinner = qobject_cast<const QAbstractSpinBox *>(widget->parentWidget());
            const bool takesKeys = widget->focusPolicy() & Qt::TabFocus;
            if (!takesKeys || partOfSpinner || isOfQt(widget))
                continue;
            const auto *button = qobject_cast<const QAbstractButton *>(widget);
            const bool named = !widget->accessibleName().isEmpty() || (button && !button->text().isEmpty())
                               || qobject_cast<const QDialog *>(widget);
            QVERIFY2(named, qPrintable(QStringLiteral("%1 in %2")
                                           .arg(QLatin1String(widget->metaObject()->className()),
                                                QLatin1String(control->metaObject()->className()))));
        }
    }
}

void TestFamily::everyButtonTakesTheKeyboardOrIsPartOfAField()
{
    const Controls controls = allControls();
    for (const auto &control : controls) {
        const auto buttons = control->findChildren<QAbstractButton *>();
        for (const QAbstractButton *button : buttons) {
            const bool partOfField = qobject_cast<const QLineEdit *>(button->parentWidget());
            const bool display = button->testAttribute(Qt::WA_TransparentForMouseEvents);
            if (partOfField || display || isOfQt(button))
                continue;
            QVERIFY2(button->focusPolicy() & Qt::TabFocus, qPrintable(button->accessibleName()));
        }
    }
}

void TestFamily::fieldsInALineAreEquallyHigh()
{
    QWidget line;
    auto *row = new QHBoxLayout(&line);
    auto *search = new QNKSearchBox(&line);
    auto *bar = new QNKFilterBar(&line);
    row->addWidget(search);
    row->addWidget(bar);
    line.show();
    QVERIFY(QTest::qWaitForWindowExposed(&line));
    const int height = search->lineEdit()->height();
    QCOMPARE(bar->searchLineEdit()->height(), height);
    const auto buttons = line.findChildren<QNKInlineButton *>();
    QCOMPARE(buttons.size(), 3);
    for (const QNKInlineButton *button : buttons)
        QCOMPARE(button->height(), height);
    QVERIFY(qAbs(QNKSpiner().sizeHint().height() - QLineEdit().sizeHint().height()) <= 2);
    QVERIFY(qAbs(QNKComboBox().sizeHint().height() - QLineEdit().sizeHint().height()) <= 2);
}

void TestFamily::aLineTakesNoRoomFromTheListBelowIt()
{
    QWidget window;
    auto *column = new QVBoxLayout(&window);
    auto *bar = new QNKFilterBar(&window);
    auto *mode = new QWidget(&window);
    auto *row = new QHBoxLayout(mode);
    row->addWidget(new QNKComboBox(mode));
    row->addWidget(new QNKInlineButton(mode));
    auto *list = new QNKListWidget(&window);
    column->addWidget(bar);
    column->addWidget(mode);
    column->addWidget(list);
    window.resize(300, 600);
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    QCOMPARE(bar->height(), bar->sizeHint().height());
    QCOMPARE(mode->height(), mode->sizeHint().height());
    QVERIFY(list->height() > 400);
}

void TestFamily::signsAreSeenInBothPalettes_data()
{
    QTest::addColumn<QPalette>("palette");
    QTest::newRow("light") << QApplication::style()->standardPalette();
    QTest::newRow("dark") << darkPalette();
}

void TestFamily::signsAreSeenInBothPalettes()
{
    QFETCH(QPalette, palette);
    const QPalette before = QApplication::palette();
    QApplication::setPalette(palette);
    QNKFilterBar bar;
    bar.setRecursiveFilteringEnabled(true);
    bar.show();
    const auto buttons = bar.findChildren<QNKInlineButton *>();
    QCOMPARE(buttons.size(), 2);
    for (QNKInlineButton *button : buttons)
        QVERIFY(contrast(button->grab().toImage()) > 80);
    QApplication::setPalette(before);
}

NK_TEST_MAIN(TestFamily)

#include "test_family.moc"
