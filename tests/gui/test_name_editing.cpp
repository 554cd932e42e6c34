#include "GuiScene.h"

#include <TestMain.h>
#include <nkKernelServicesGUI/nkMetadataRootModelItem.h>
#include <nkKernelServicesGUI/nkMetadataTreeModel.h>
#include <nkKernelServicesGUI/nkMetadataTreeView.h>

#include <QHelpEvent>
#include <QLineEdit>
#include <QStyledItemDelegate>
#include <QTextDocument>
#include <QToolTip>
#include <QUndoStack>

class TestNameEditing : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_scene = GuiScene::load();
        m_view = std::make_unique<nkMetadataTreeView>();
        m_model = new nkMetadataTreeModel(m_view.get());
        m_root = new nkMetadataRootModelItem;
        m_model->setRootItem(m_root);
        m_view->setModel(m_model);
        m_model->reload();
        m_view->show();
        m_view->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(m_view.get()));
        m_view->setFocus();
    }

    void cleanup() { m_view.reset(); }

    void a_typed_name_is_committed_by_return()
    {
        QLineEdit *edit = openEditor(0);
        QCOMPARE(edit->text(), QStringLiteral("Common"));
        QCOMPARE(edit->selectedText(), QStringLiteral("Common"));
        QTest::keyClicks(edit, QStringLiteral("Other"));
        finish(edit, Qt::Key_Return);
        QCOMPARE(commonName(), QStringLiteral("Other"));
        QCOMPARE(undoCount(), 1);
    }

    void escape_restores()
    {
        QLineEdit *edit = openEditor(0);
        QTest::keyClicks(edit, QStringLiteral("Other"));
        finish(edit, Qt::Key_Escape);
        QCOMPARE(commonName(), QStringLiteral("Common"));
        QCOMPARE(undoCount(), 0);
    }

    void an_untouched_name_is_never_written_data()
    {
        QTest::addColumn<QString>("name");
        QTest::newRow("plain") << QStringLiteral("Plain");
        QTest::newRow("line breaks") << QStringLiteral("one\ntwo\r\n\tthree");
        QTest::newRow("blanks") << QStringLiteral("  padded  ");
        QTest::newRow("control") << QStringLiteral("a\1b\177c");
        QTest::newRow("longer than a field by default") << QString(40000, QLatin1Char('x'));
        QTest::newRow("markup") << QStringLiteral("<b>&amp;</b> %1 &x");
        QTest::newRow("right to left") << QString(QChar(0x05d0)) + QChar(0x202e) + QStringLiteral("abc");
    }
    void an_untouched_name_is_never_written()
    {
        QFETCH(QString, name);
        nkdMetadataSet(m_scene.common).setName(name);
        m_model->reload();
        const int before = undoCount();
        finish(openEditor(0), Qt::Key_Return);
        QCOMPARE(commonName(), name);
        QCOMPARE(undoCount(), before);
    }

    void a_long_name_is_not_cut_by_an_edit()
    {
        const QString longName(40000, QLatin1Char('x'));
        nkdMetadataSet(m_scene.common).setName(longName);
        m_model->reload();
        QLineEdit *edit = openEditor(0);
        QTest::keyClick(edit, Qt::Key_End);
        QTest::keyClicks(edit, QStringLiteral("y"));
        finish(edit, Qt::Key_Return);
        QCOMPARE(commonName(), QString(longName + QLatin1Char('y')));
    }

    void a_name_that_is_cut_off_is_shown_whole_as_a_tool_tip()
    {
        const QString name = QStringLiteral(
            "<b>Order 2024</b> of the northern plant & all of its spare parts");
        nkdMetadataSet(m_scene.common).setName(name);
        m_model->reload();
        m_view->resize(140, 200);
        askForToolTip(m_model->index(0, 0));
        QTextDocument shown;
        shown.setHtml(QToolTip::text());
        QCOMPARE(shown.toPlainText(), name);
        // Tool tips leave with a delay.
        askForToolTip(m_model->index(1, 0));
        QTRY_COMPARE(QToolTip::text(), QString());
        m_view->resize(1200, 200);
        askForToolTip(m_model->index(0, 0));
        QCOMPARE(QToolTip::text(), QString());
    }

    void a_touched_editor_is_not_filled_anew()
    {
        QLineEdit *edit = openEditor(0);
        QTest::keyClicks(edit, QStringLiteral("Typed"));
        m_view->itemDelegate()->setEditorData(edit, m_model->index(1, 0));
        QCOMPARE(edit->text(), QStringLiteral("Typed"));
    }

    void an_untouched_editor_follows_the_name()
    {
        QLineEdit *edit = openEditor(0);
        m_view->itemDelegate()->setEditorData(edit, m_model->index(1, 0));
        QCOMPARE(edit->text(), QStringLiteral("Second"));
    }

    void a_name_that_changed_meanwhile_is_not_put_back_by_an_untouched_editor()
    {
        QLineEdit *edit = openEditor(0);
        nkdMetadataSet(m_scene.common).setName(QStringLiteral("Elsewhere"));
        finish(edit, Qt::Key_Return);
        QCOMPARE(commonName(), QStringLiteral("Elsewhere"));
    }

    void typed_text_outlives_a_change_of_the_name()
    {
        QLineEdit *edit = openEditor(0);
        QTest::keyClicks(edit, QStringLiteral("Typed"));
        nkdMetadataSet(m_scene.common).setName(QStringLiteral("Elsewhere"));
        m_model->reload();
        QPointer<QLineEdit> open = m_view->findChild<QLineEdit *>();
        QVERIFY(open);
        QCOMPARE(open->text(), QStringLiteral("Typed"));
    }

    void locked_rows_open_no_editor()
    {
        m_view->setCurrentIndex(m_model->index(2, 0));
        QTest::keyClick(m_view.get(), Qt::Key_F2);
        QVERIFY(!m_view->findChild<QLineEdit *>());
    }

    void names_are_drawn_in_one_line_without_control_characters()
    {
        const auto *delegate = qobject_cast<QStyledItemDelegate *>(m_view->itemDelegate());
        QVERIFY(delegate);
        QCOMPARE(delegate->displayText(QStringLiteral("a\nb\tc\1d"), QLocale::c()),
                 QStringLiteral("a b c d"));
        QVERIFY(delegate->displayText(QString(1 << 20, QLatin1Char('x')), QLocale::c()).size() < 2000);
    }

private:
    /// As a mouse does that rests on the row.
    void askForToolTip(const QModelIndex &index) const
    {
        const QPoint place = m_view->visualRect(index).center();
        QHelpEvent event(QEvent::ToolTip, place, m_view->viewport()->mapToGlobal(place));
        QCoreApplication::sendEvent(m_view->viewport(), &event);
    }

    QLineEdit *openEditor(int row)
    {
        const QModelIndex index = m_model->index(row, 0);
        m_view->setCurrentIndex(index);
        m_view->edit(index);
        return qobject_cast<QLineEdit *>(m_view->indexWidget(index));
    }

    void finish(QLineEdit *edit, Qt::Key key)
    {
        QVERIFY(edit);
        const QPointer<QLineEdit> open(edit);
        QTest::keyClick(edit, key);
        QTRY_VERIFY(!open);
    }

    QString commonName() const { return nkdMetadataSet(m_scene.common).getName(); }
    static int undoCount() { return kernel::Document::the().undoStack()->count(); }

    GuiScene m_scene;
    std::unique_ptr<nkMetadataTreeView> m_view;
    nkMetadataTreeModel *m_model = nullptr;
    nkMetadataRootModelItem *m_root = nullptr;
};

NK_TEST_MAIN(TestNameEditing)
#include "test_name_editing.moc"
