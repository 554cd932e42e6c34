#include "EditingFixture.h"
#include "TestIcons.h"

#include "table/nkMetadataKeyValueHeader.h"

#include <ModalAnswer.h>
#include <TestMain.h>
#include <WindowFocus.h>
#include <nkQt4Ext/QNKColorDialog.h>
#include <nkQt4Ext/QNKDoubleSpiner.h>

#include <QContextMenuEvent>
#include <QDialogButtonBox>
#include <QMenu>
#include <QPushButton>

/// The whole table driven by keyboard alone, and by mouse.
class TestTableWalks : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { TestIcons::install(); }
    void cleanupTestCase() { TestIcons::remove(); }

    void init()
    {
        kernel::Document::the().clear();
        m_editor = std::make_unique<EditingFixture>();
        m_editor->showTypes();
    }
    void cleanup()
    {
        QNKViewBase::commitOpenEditors();
        m_editor.reset();
    }

    void by_keyboard_alone()
    {
        view()->setFocus();
        goTo("string", 2);
        editByMenuKey();
        type(QStringLiteral("title"));
        key(Qt::Key_Return);
        QCOMPARE(m_editor->of("title").getValue(), QVariant(QStringLiteral("some text")));
        QCOMPARE(m_editor->window->focusWidget(), view());

        editByMenuKey();
        key(Qt::Key_Tab);
        QCOMPARE(view()->currentIndex(), m_editor->cellOf("title", 3));
        type(QStringLiteral("new text"));
        key(Qt::Key_Return);
        QCOMPARE(m_editor->of("title").getValue(), QVariant(QStringLiteral("new text")));

        goTo("integer", 3);
        editByMenuKey();
        type(QStringLiteral("12"));
        key(Qt::Key_Up);
        key(Qt::Key_Return);
        QCOMPARE(m_editor->of("integer").getValue(), QVariant(13));

        goTo("boolean", 3);
        editByMenuKey();
        key(Qt::Key_Down);
        key(Qt::Key_Return);
        QCOMPARE(m_editor->of("boolean").getValue(), QVariant(true));
        QCOMPARE(m_editor->window->focusWidget(), view());

        goTo("float", 4);
        editByMenuKey();
        key(Qt::Key_Up);
        key(Qt::Key_Return);
        QCOMPARE(m_editor->of("float").getValueType(), nkMetadataTypes::Integer);

        goTo("date", 3);
        key(Qt::Key_C, Qt::ControlModifier);
        key(Qt::Key_Delete);
        QVERIFY(m_editor->of("date").isNull());
        key(Qt::Key_V, Qt::ControlModifier);
        QVERIFY(!m_editor->of("date").isNull());
        QCOMPARE(EditingFixture::undoStack()->count(), 7);
    }

    void by_mouse()
    {
        doubleClick("string", 3);
        QVERIFY(qobject_cast<QLineEdit *>(m_editor->editor()));
        type(QStringLiteral("by mouse"));
        click("integer", 3);
        QCOMPARE(m_editor->of("string").getValue(), QVariant(QStringLiteral("by mouse")));

        doubleClick("boolean", 3);
        choose(1);
        QCOMPARE(m_editor->of("boolean").getValue(), QVariant(true));

        doubleClick("time", 4);
        choose(0);
        QCOMPARE(m_editor->of("time").getValueType(), nkMetadataTypes::String);

        view()->viewport()->grab();
        QTest::mouseClick(view()->viewport(), Qt::LeftButton, Qt::NoModifier,
                          view()->visualRect(m_editor->cellOf("date", 0)).topLeft() + QPoint(9, 5));
        QNKColorDialog *dialog = colourDialog();
        QVERIFY(dialog);
        auto *buttons = dialog->findChild<QDialogButtonBox *>();
        QTest::mouseClick(buttons->button(QDialogButtonBox::Cancel), Qt::LeftButton);
        QVERIFY(!colourDialog());

        clickHeader(2);
        QCOMPARE(m_editor->keys().first(), QStringLiteral("boolean"));
        clickHeader(2);
        QCOMPARE(m_editor->keys().last(), QStringLiteral("boolean"));
        QCOMPARE(EditingFixture::undoStack()->count(), 3);
    }

    void an_open_colour_dialog_is_committed_with_the_other_editors()
    {
        m_editor->open("string", 0);
        QNKColorDialog *dialog = colourDialog();
        QVERIFY(dialog);
        QNKColor colour;
        colour.setGammaRGB(0.0f, 0.0f, 0.0f);
        dialog->reinit(colour);
        QNKViewBase::commitOpenEditors();
        QCOMPARE(m_editor->types.getColor(), QColor(Qt::black));
        QVERIFY(!colourDialog());
    }

private:
    nkMetadataKeyValueTreeView *view() const { return m_editor->view(); }

    /// As the window system delivers it, to whatever has the focus.
    void key(int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        QWidget *popup = QApplication::activePopupWidget();
        QWidget *target = popup ? popup : m_editor->window.get();
        QVERIFY(WindowFocus::waitFor(target));
        // The press may close the window it goes to.
        const QPointer<QWindow> window = target->windowHandle();
        QTest::keyPress(window.data(), Qt::Key(key), modifiers);
        QTest::keyRelease(window ? window.data() : m_editor->window->windowHandle(), Qt::Key(key), modifiers);
        QCoreApplication::processEvents();
    }

    void type(const QString &text)
    {
        QVERIFY(WindowFocus::waitFor(m_editor->window.get()));
        for (const QChar character : text) {
            QTest::keyClick(m_editor->window->windowHandle(), character.toLatin1());
        }
    }

    /// Walks with Tab until the cell is current.
    void goTo(const char *entry, int column)
    {
        for (int i = 0; i < 60 && view()->currentIndex() != m_editor->cellOf(entry, column); ++i) {
            key(Qt::Key_Tab);
        }
        QCOMPARE(view()->currentIndex(), m_editor->cellOf(entry, column));
    }

    void editByMenuKey()
    {
        pressMenuKey();
        QVERIFY(view()->contextMenu()->isVisible());
        // The tear-off line and the sub-menu "Create Entry" stand before it.
        const QList<QAction *> entries = view()->contextMenu()->actions();
        for (int i = 0; i <= entries.size(); ++i) {
            const QAction *active = view()->contextMenu()->activeAction();
            if (active && active->text() == QLatin1String("Edit")) {
                break;
            }
            key(Qt::Key_Down);
        }
        QCOMPARE(view()->contextMenu()->activeAction()->text(), QStringLiteral("Edit"));
        key(Qt::Key_Return);
        QVERIFY(m_editor->editor());
    }

    /// The window system translates the Menu key, and asks the widget with the focus for the place.
    static void pressMenuKey()
    {
        QWidget *focus = QApplication::focusWidget();
        const QPoint at = focus->inputMethodQuery(Qt::ImCursorRectangle).toRect().center();
        QContextMenuEvent event(QContextMenuEvent::Keyboard, at, focus->mapToGlobal(at));
        QCoreApplication::sendEvent(focus, &event);
    }

    QPoint place(const char *entry, int column) const
    {
        return view()->visualRect(m_editor->cellOf(entry, column)).center();
    }

    void click(const char *entry, int column)
    {
        QTest::mouseClick(view()->viewport(), Qt::LeftButton, Qt::NoModifier, place(entry, column));
    }

    void doubleClick(const char *entry, int column)
    {
        click(entry, column);
        QTest::mouseDClick(view()->viewport(), Qt::LeftButton, Qt::NoModifier, place(entry, column));
        QCoreApplication::processEvents();
    }

    void choose(int item)
    {
        auto *combo = qobject_cast<QComboBox *>(m_editor->editor());
        QVERIFY(combo);
        QAbstractItemView *list = combo->view();
        QVERIFY(WindowFocus::waitFor(list));
        const QPoint at = list->visualRect(list->model()->index(item, combo->modelColumn())).center();
        QTest::mouseMove(list->viewport(), at);
        QTest::mouseClick(list->viewport(), Qt::LeftButton, Qt::NoModifier, at);
        QCoreApplication::processEvents();
    }

    void clickHeader(int column)
    {
        const auto *header = view()->findChild<nkMetadataKeyValueHeader *>();
        const int x = header->sectionViewportPosition(column) + header->sectionSize(column) / 2;
        QTest::mouseClick(header->viewport(), Qt::LeftButton, Qt::NoModifier, QPoint(x, 8));
    }

    static QNKColorDialog *colourDialog()
    {
        const QWidgetList windows = QApplication::topLevelWidgets();
        for (QWidget *window : windows) {
            auto *dialog = qobject_cast<QNKColorDialog *>(window);
            if (dialog && dialog->isVisible()) {
                return dialog;
            }
        }
        return nullptr;
    }

    std::unique_ptr<EditingFixture> m_editor;
};

NK_TEST_MAIN(TestTableWalks)
#include "test_table_walks.moc"
