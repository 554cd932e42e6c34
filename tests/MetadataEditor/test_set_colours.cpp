#include "EditingFixture.h"
#include "TestIcons.h"

#include "table/nkMetadataIconDelegate.h"
#include "table/nkMetadataPickedColor.h"

#include <TestMain.h>
#include <nkQt4Ext/QNKColorDialog.h>

#include <QBitmap>
#include <QMouseEvent>
#include <QPainter>

namespace {

/// Draws an icon without a view.
class OpenDelegate : public nkMetadataIconDelegate
{
public:
    using nkMetadataIconDelegate::drawDecoration;
};

/// What is drawn into a cell of 40 × 40 with a place for an icon of 16 × 16 in its middle.
QRect drawnBy(const OpenDelegate &delegate, const QPixmap &pixmap, QStyle::State state)
{
    QImage image(40, 40, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    QStyleOptionViewItem option;
    option.rect = image.rect();
    option.state = state;
    option.decorationAlignment = Qt::AlignCenter;
    delegate.drawDecoration(&painter, option, QRect(12, 12, 16, 16), pixmap);
    painter.end();
    return QRegion(QBitmap::fromImage(image.createAlphaMask())).boundingRect();
}

} // namespace

/// The icon column: the click that opens the colour dialog, the cursor over the icon, what the dialog writes.
class TestSetColours : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { TestIcons::install(); }
    void cleanupTestCase() { TestIcons::remove(); }

    void init()
    {
        m_editor = std::make_unique<EditingFixture>();
        m_editor->showTypes();
        view()->viewport()->grab();
        WindowFixture::settle();
    }
    void cleanup()
    {
        const QList<QNKColorDialog *> open = dialogs();
        for (QNKColorDialog *dialog : open) {
            dialog->reject();
        }
        m_editor.reset();
        m_mainWindow.reset();
    }

    void a_click_on_the_icon_opens_the_dialog()
    {
        click(onIcon("string"), onIcon("string"));
        QCOMPARE(dialogs().size(), 1);
        QVERIFY(dialogs().first()->isWindow());
        QCOMPARE(dialogs().first()->getColor().getGammaQColor(), QColor(0, 160, 80));
    }

    void the_icon_of_a_selected_row_stands_out_from_the_highlight()
    {
        const QModelIndex cell = m_editor->cellOf("string", 0);
        view()->selectionModel()->select(cell, QItemSelectionModel::ClearAndSelect);
        // Without the column's separator.
        const QRect ground = view()->visualRect(cell).adjusted(0, 0, -2, 0);
        const QImage image = view()->viewport()->grab(ground).toImage();
        const int highlight = qGray(image.pixel(1, 1));
        int farthest = 0;
        for (int x = 0; x < image.width(); ++x) {
            farthest = qMax(farthest, qAbs(qGray(image.pixel(x, image.height() / 2)) - highlight));
        }
        QVERIFY2(farthest > 60, qPrintable(QString::number(farthest)));
    }

    void an_icon_of_a_sharper_display_stays_in_its_place_data()
    {
        QTest::addColumn<bool>("isSelected");
        QTest::newRow("plain") << false;
        QTest::newRow("selected") << true;
    }
    void an_icon_of_a_sharper_display_stays_in_its_place()
    {
        QFETCH(bool, isSelected);
        QPixmap pixmap(32, 32);
        pixmap.setDevicePixelRatio(2);
        pixmap.fill(Qt::red);
        const QStyle::State state = QStyle::State_Enabled
                                    | (isSelected ? QStyle::State_Selected : QStyle::State_None);
        QCOMPARE(drawnBy(OpenDelegate(), pixmap, state), QRect(12, 12, 16, 16));
    }

    void the_dialog_is_made_without_a_parent()
    {
        const nkMetadataIconDelegate delegate;
        const std::unique_ptr<QWidget> editor(
            delegate.createEditor(view(), QStyleOptionViewItem(), QModelIndex()));
        QVERIFY(qobject_cast<QNKColorDialog *>(editor.get()));
        QVERIFY(!editor->parentWidget());
    }

    void other_clicks_open_nothing_data()
    {
        QTest::addColumn<int>("click");
        const QStringList clicks{
            "beside the icon",  "from beside onto the icon", "from the icon to beside it",
            "from another row", "with a move between",       "right button",
            "locked set"};
        for (int i = 0; i < clicks.size(); ++i) {
            QTest::newRow(qPrintable(clicks.at(i))) << i;
        }
    }
    void other_clicks_open_nothing()
    {
        QFETCH(int, click);
        const QPoint icon = onIcon("string");
        switch (click) {
        case 0:
            this->click(besideIcon("string"), besideIcon("string"));
            break;
        case 1:
            this->click(besideIcon("string"), icon);
            break;
        case 2:
            this->click(icon, besideIcon("string"));
            break;
        case 3:
            this->click(onIcon("integer"), icon);
            break;
        case 4:
            send(QEvent::MouseButtonPress, icon, Qt::LeftButton);
            send(QEvent::MouseMove, icon + QPoint(1, 0), Qt::NoButton, Qt::LeftButton);
            send(QEvent::MouseButtonRelease, icon, Qt::LeftButton);
            break;
        case 5:
            this->click(icon, icon, Qt::RightButton);
            break;
        default:
            this->click(onIcon("fixed"), onIcon("fixed"));
        }
        QVERIFY(dialogs().isEmpty());
    }

    void the_chosen_colour_is_written_to_the_set()
    {
        QNKColorDialog *dialog = open();
        dialog->reinit(nkMetadataPickedColor::fromColor(QColor(10, 20, 30)));
        dialog->accept();
        QCOMPARE(m_editor->types.getColor(), QColor(10, 20, 30));
        QCOMPARE(EditingFixture::undoStack()->count(), 1);
        QVERIFY(dialogs().isEmpty());
    }

    void cancel_writes_nothing()
    {
        QNKColorDialog *dialog = open();
        dialog->reinit(nkMetadataPickedColor::fromColor(QColor(10, 20, 30)));
        dialog->reject();
        QCOMPARE(m_editor->types.getColor(), QColor(0, 160, 80));
        QCOMPARE(EditingFixture::undoStack()->count(), 0);
        QVERIFY(dialogs().isEmpty());
    }

    void an_untouched_colour_writes_nothing()
    {
        open()->accept();
        QCOMPARE(EditingFixture::undoStack()->count(), 0);
    }

    void the_chosen_colour_survives_a_change_from_elsewhere()
    {
        QNKColorDialog *dialog = open();
        dialog->reinit(nkMetadataPickedColor::fromColor(QColor(10, 20, 30)));
        m_editor->types.setColor(Qt::red);
        WindowFixture::settle();
        QCOMPARE(dialog->getColor().getGammaQColor(), QColor(10, 20, 30));
        dialog->accept();
        QCOMPARE(m_editor->types.getColor(), QColor(10, 20, 30));
    }

    void the_dialog_stands_in_the_middle_of_the_main_window()
    {
        m_mainWindow = std::make_unique<QWidget>();
        m_mainWindow->setGeometry(100, 120, 601, 503);
        m_editor->host.mainWindow = m_mainWindow.get();
        const QNKColorDialog *dialog = open();
        QCOMPARE(dialog->pos(), QPoint(100 + 300 - dialog->width() / 2, 120 + 251 - dialog->height() / 2));
    }

    void the_cursor_picks_over_icons_that_can_be_coloured()
    {
        hover(onIcon("string"));
        QCOMPARE(view()->cursor().hotSpot(), QPoint(6, 26));
        QCOMPARE(view()->cursor().pixmap().size(), QSize(32, 32));
        hover(besideIcon("string"));
        QVERIFY(!view()->testAttribute(Qt::WA_SetCursor));
        hover(onIcon("fixed"));
        QVERIFY(!view()->testAttribute(Qt::WA_SetCursor));
    }

    void the_cursor_is_given_back_when_the_mouse_goes_elsewhere()
    {
        hover(onIcon("string"));
        QVERIFY(view()->testAttribute(Qt::WA_SetCursor));
        view()->viewport()->grab();
        QVERIFY(!view()->testAttribute(Qt::WA_SetCursor));
    }

    void colours_survive_the_way_through_hue_and_value()
    {
        QList<QColor> colours{Qt::black, Qt::white, Qt::red, Qt::green, Qt::blue, Qt::yellow, Qt::magenta};
        for (int i = 0; i < 4096; ++i) {
            colours.append(QColor((i * 37) % 256, (i * 91) % 256, (i * 151) % 256));
        }
        for (const QColor &colour : qAsConst(colours)) {
            QCOMPARE(nkMetadataPickedColor::fromColor(colour).getGammaQColor().rgb(), colour.rgb());
        }
    }

private:
    nkMetadataKeyValueTreeView *view() const { return m_editor->view(); }

    QPoint onIcon(const char *key) const
    {
        return view()->visualRect(m_editor->cellOf(key, 0)).topLeft() + QPoint(9, 5);
    }

    QPoint besideIcon(const char *key) const
    {
        const QRect cell = view()->visualRect(m_editor->cellOf(key, 0));
        return QPoint(cell.right() - 1, cell.center().y());
    }

    void send(QEvent::Type type, const QPoint &place, Qt::MouseButton button,
              Qt::MouseButtons buttons = Qt::NoButton)
    {
        const Qt::MouseButtons held = type == QEvent::MouseButtonPress ? Qt::MouseButtons(button) : buttons;
        QMouseEvent event(type, place, view()->viewport()->mapToGlobal(place), button, held, Qt::NoModifier);
        QCoreApplication::sendEvent(view()->viewport(), &event);
    }

    void click(const QPoint &from, const QPoint &to, Qt::MouseButton button = Qt::LeftButton)
    {
        send(QEvent::MouseButtonPress, from, button);
        send(QEvent::MouseButtonRelease, to, button);
    }

    void hover(const QPoint &place) { send(QEvent::MouseMove, place, Qt::NoButton); }

    QNKColorDialog *open()
    {
        click(onIcon("string"), onIcon("string"));
        return dialogs().value(0);
    }

    static QList<QNKColorDialog *> dialogs()
    {
        QList<QNKColorDialog *> found;
        const QWidgetList windows = QApplication::topLevelWidgets();
        for (QWidget *window : windows) {
            auto *dialog = qobject_cast<QNKColorDialog *>(window);
            if (dialog && dialog->isVisible()) {
                found.append(dialog);
            }
        }
        return found;
    }

    std::unique_ptr<EditingFixture> m_editor;
    std::unique_ptr<QWidget> m_mainWindow;
};

NK_TEST_MAIN(TestSetColours)
#include "test_set_colours.moc"
