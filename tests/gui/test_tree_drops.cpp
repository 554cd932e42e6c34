#include "GuiScene.h"

#include <TestMain.h>
#include <nkKernelServices/nkMetadataEntryMime.h>
#include <nkKernelServices/nkMetadataService.h>
#include <nkKernelServicesGUI/nkMetadataRootModelItem.h>
#include <nkKernelServicesGUI/nkMetadataTreeModel.h>
#include <nkKernelServicesGUI/nkMetadataTreeView.h>

#include <QAbstractButton>
#include <QDropEvent>
#include <QMimeData>
#include <QTreeWidget>
#include <QUndoStack>

class TestTreeDrops : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_scene = GuiScene::load();
        m_model = std::make_unique<nkMetadataTreeModel>();
        m_root = new nkMetadataRootModelItem;
        m_model->setRootItem(m_root);
        show(TreeMode::Sets);
    }

    void cleanup() { m_model.reset(); }

    void rows_are_dragged_as_object_items()
    {
        QCOMPARE(m_model->mimeTypes().first(), QStringLiteral("application/calyx-metadata-object-item"));
        QVERIFY(m_model->flags(row(0)) & Qt::ItemIsDragEnabled);
        QVERIFY(m_model->flags(row(0)) & Qt::ItemIsDropEnabled);
    }

    void a_set_dropped_on_an_object_is_assigned()
    {
        const auto data = dragged({row(2)});
        show(TreeMode::AllObjects);
        const int before = undoCount();
        QVERIFY(drop(data, row(0)));
        QCOMPARE(setsOf(m_scene.root), (QList<quint64>{m_scene.common, m_scene.locked}));
        QCOMPARE(undoCount(), before + 1);
    }

    void several_sets_are_assigned_as_one_step()
    {
        const auto data = dragged({row(1), row(2)});
        show(TreeMode::AllObjects);
        const int before = undoCount();
        QVERIFY(drop(data, row(0)));
        QCOMPARE(setsOf(m_scene.root), (QList<quint64>{m_scene.common, m_scene.second, m_scene.locked}));
        QCOMPARE(undoCount(), before + 1);
        QVERIFY(kernel::Document::the().undo());
        QCOMPARE(setsOf(m_scene.root), QList<quint64>{m_scene.common});
    }

    void objects_dropped_on_a_set_are_assigned()
    {
        show(TreeMode::AllObjects);
        const auto data = dragged({row(0), row(3)});
        show(TreeMode::Sets);
        QVERIFY(drop(data, row(2)));
        QCOMPARE(setsOf(m_scene.root), (QList<quint64>{m_scene.common, m_scene.locked}));
        QCOMPARE(setsOf(m_scene.plate), (QList<quint64>{m_scene.second, m_scene.locked}));
    }

    void an_assigned_set_is_moved_on_request()
    {
        show(TreeMode::AllObjects);
        const auto data = dragged({m_model->index(0, 0, row(1))}); // Common below Camera
        const int before = undoCount();
        QVERIFY(drop(data, row(3), Qt::MoveAction));
        QCOMPARE(setsOf(m_scene.camera), QList<quint64>{m_scene.second});
        QCOMPARE(setsOf(m_scene.plate), (QList<quint64>{m_scene.second, m_scene.common}));
        QCOMPARE(undoCount(), before + 1);
    }

    void an_assigned_object_is_moved_on_request()
    {
        const auto data = dragged({m_model->index(0, 0, row(0))}); // Root below Common
        QVERIFY(drop(data, row(1), Qt::MoveAction));
        QCOMPARE(setsOf(m_scene.root), QList<quint64>{m_scene.second});
    }

    void a_set_that_hangs_nowhere_is_assigned_by_a_move()
    {
        const auto data = dragged({row(2)});
        show(TreeMode::AllObjects);
        QVERIFY(drop(data, row(0), Qt::MoveAction));
        QCOMPARE(setsOf(m_scene.root), (QList<quint64>{m_scene.common, m_scene.locked}));
    }

    void a_copy_keeps_the_old_assignment()
    {
        const auto data = dragged({m_model->index(0, 0, row(0))});
        QVERIFY(drop(data, row(1), Qt::CopyAction));
        QCOMPARE(setsOf(m_scene.root), (QList<quint64>{m_scene.common, m_scene.second}));
    }

    void what_cannot_be_assigned_is_refused()
    {
        const auto set = dragged({row(0)});
        QVERIFY(!canDrop(set, row(1)));
        show(TreeMode::AllObjects);
        const auto object = dragged({row(0)});
        QVERIFY(!canDrop(object, row(1)));
        QVERIFY(!canDrop(object, QModelIndex()));
    }

    void a_drop_where_it_came_from_is_refused()
    {
        const auto child = dragged({m_model->index(0, 0, row(0))});
        QVERIFY(!canDrop(child, row(0)));
    }

    void dead_objects_are_not_dropped()
    {
        const auto data = dragged({row(2)});
        nkMetadataService::the().deleteSets({nkdMetadataSet(m_scene.locked)});
        show(TreeMode::AllObjects);
        QVERIFY(!canDrop(data, row(0)));
    }

    void the_view_takes_a_drop_anywhere_on_a_row_data()
    {
        QTest::addColumn<int>("fromTop");
        QTest::newRow("top edge") << 1;
        QTest::newRow("middle") << 8;
    }
    void the_view_takes_a_drop_anywhere_on_a_row()
    {
        QFETCH(int, fromTop);
        const auto data = dragged({row(2)});
        show(TreeMode::AllObjects);
        nkMetadataTreeView view;
        view.setModel(m_model.get());
        view.resize(200, 200);
        view.show();
        QVERIFY(QTest::qWaitForWindowExposed(&view));
        const QRect target = view.visualRect(row(3));
        QVERIFY(dropAt(&view, data, target.topLeft() + QPoint(20, fromTop)));
        QCOMPARE(setsOf(m_scene.plate), (QList<quint64>{m_scene.second, m_scene.locked}));
        QVERIFY(!dropAt(&view, data, QPoint(20, 190)));
    }

    void damaged_and_foreign_data_is_refused_data()
    {
        QTest::addColumn<QString>("type");
        QTest::addColumn<QByteArray>("bytes");
        const QString objects = QStringLiteral("application/calyx-metadata-object-item");
        const QString entries = QStringLiteral("application/calyx-metadata-entry-item");
        QTest::newRow("no objects") << objects << QByteArray();
        QTest::newRow("cut objects") << objects << QByteArray(7, '\1');
        QTest::newRow("strange objects") << objects << QByteArray(25, '\7');
        QTest::newRow("no entries") << entries << QByteArray();
        QTest::newRow("cut entries") << entries << QByteArray(3, '\1');
        QTest::newRow("strange entries") << entries << QByteArray(100, '\377');
        QTest::newRow("text") << QStringLiteral("text/plain") << QByteArray("hello");
    }
    void damaged_and_foreign_data_is_refused()
    {
        QFETCH(QString, type);
        QFETCH(QByteArray, bytes);
        QMimeData data;
        data.setData(type, bytes);
        QVERIFY(!m_model->canDropMimeData(&data, Qt::CopyAction, -1, -1, row(0)));
        QVERIFY(!m_model->dropMimeData(&data, Qt::CopyAction, -1, -1, row(0)));
    }

    void records_of_another_process_are_refused()
    {
        auto data = dragged({row(2)});
        const QString type = QStringLiteral("application/calyx-metadata-object-item");
        QByteArray bytes = data->data(type);
        bytes[8] = char(bytes.at(8) ^ 1); // the last byte of the process number
        data->setData(type, bytes);
        show(TreeMode::AllObjects);
        QVERIFY(!canDrop(data, row(0)));
    }

    void entries_dropped_on_a_set_are_copied_as_one_step()
    {
        const auto data = draggedEntries(
            {GuiScene::entry(m_scene.common, "count"), GuiScene::entry(m_scene.common, "checked")});
        const int before = undoCount();
        QVERIFY(drop(data, row(1)));
        QCOMPARE(GuiScene::keys(m_scene.second), (QStringList{"colour", "count", "checked"}));
        QCOMPARE(GuiScene::entry(m_scene.second, "count").getValue(), QVariant(3));
        QVERIFY(GuiScene::entry(m_scene.second, "checked").isTag());
        QCOMPARE(GuiScene::keys(m_scene.common).size(), 3);
        QCOMPARE(undoCount(), before + 1);
        QVERIFY(kernel::Document::the().undo());
        QCOMPARE(GuiScene::keys(m_scene.second), QStringList{"colour"});
    }

    void entries_dropped_on_an_object_become_its_own()
    {
        const auto data = draggedEntries({GuiScene::entry(m_scene.common, "count")});
        show(TreeMode::AllObjects);
        QVERIFY(drop(data, row(0)));
        const quint64 own = nkdMetadata(m_scene.root).getObjectSet().getObjectId();
        QCOMPARE(GuiScene::keys(own), QStringList{"count"});
    }

    void entries_are_copied_as_they_were_when_dragged()
    {
        const auto data = draggedEntries({GuiScene::entry(m_scene.common, "count")});
        nkMetadataService::the().deleteSets({nkdMetadataSet(m_scene.common)});
        show(TreeMode::Sets);
        QVERIFY(drop(data, row(0)));
        QCOMPARE(GuiScene::entry(m_scene.second, "count").getValue(), QVariant(3));
    }

    void entries_are_not_copied_to_where_they_are()
    {
        const auto data = draggedEntries({GuiScene::entry(m_scene.common, "count")});
        QVERIFY(!canDrop(data, row(0)));
    }

    void locked_sets_take_no_entries()
    {
        const auto data = draggedEntries({GuiScene::entry(m_scene.common, "count")});
        QVERIFY(!canDrop(data, row(2)));
        QVERIFY(!drop(data, row(2)));
        QCOMPARE(GuiScene::keys(m_scene.locked), QStringList{"note"});
    }

    void entries_are_not_moved()
    {
        const auto data = draggedEntries({GuiScene::entry(m_scene.common, "count")});
        QVERIFY(!canDrop(data, row(1), Qt::MoveAction));
    }

    void clashing_entries_ask_and_cancel_changes_nothing()
    {
        const int before = undoCount();
        const auto answer = dropClashing(nullptr);
        QCOMPARE(answer, (QStringList{"Second", "colour", "blue", "red"}));
        QCOMPARE(GuiScene::keys(m_scene.second), QStringList{"colour"});
        QCOMPARE(undoCount(), before);
    }

    void clashing_entries_are_replaced_on_request()
    {
        const int before = undoCount();
        dropClashing("Replace");
        QCOMPARE(GuiScene::keys(m_scene.second), (QStringList{"colour", "count"}));
        QCOMPARE(GuiScene::entry(m_scene.second, "colour").getValue().toString(), QStringLiteral("red"));
        QCOMPARE(undoCount(), before + 1);
    }

    void clashing_entries_are_both_kept_on_request()
    {
        dropClashing("Paste anyway");
        QCOMPARE(GuiScene::keys(m_scene.second), (QStringList{"colour", "colour2", "count"}));
        QCOMPARE(GuiScene::entry(m_scene.second, "colour").getValue().toString(), QStringLiteral("blue"));
    }

    void a_question_that_the_scene_has_answered_is_not_asked()
    {
        const auto data = draggedEntries({GuiScene::entry(m_scene.common, "colour")});
        QVERIFY(drop(data, row(1)));
        GuiScene::entry(m_scene.second, "colour").setKey(QStringLiteral("paint"));
        QTRY_COMPARE(GuiScene::keys(m_scene.second), (QStringList{"paint", "colour"}));
        QCOMPARE(GuiScene::entry(m_scene.second, "colour").getValue().toString(), QStringLiteral("red"));
    }

    void a_target_that_is_gone_by_then_takes_nothing()
    {
        const auto data = draggedEntries({GuiScene::entry(m_scene.common, "colour")});
        QVERIFY(drop(data, row(1)));
        nkMetadataService::the().deleteSets({nkdMetadataSet(m_scene.second)});
        const int before = undoCount();
        QCoreApplication::processEvents();
        QCOMPARE(undoCount(), before);
    }

private:
    using Data = std::unique_ptr<QMimeData>;

    void show(TreeMode mode)
    {
        m_root->setTreeMode(mode);
        m_model->reload();
    }

    QModelIndex row(int row) const { return m_model->index(row, 0); }

    Data dragged(const QModelIndexList &rows) const { return Data(m_model->mimeData(rows)); }

    static Data draggedEntries(const QList<nkdMetadataEntry> &entries)
    {
        QByteArray bytes;
        QDataStream stream(&bytes, QIODevice::WriteOnly);
        stream.setVersion(QDataStream::Qt_5_15);
        for (const nkdMetadataEntry &entry : entries) {
            stream << nkMetadataEntryMime(entry);
        }
        Data data(new QMimeData);
        data->setData(QStringLiteral("application/calyx-metadata-entry-item"), bytes);
        return data;
    }

    static bool dropAt(nkMetadataTreeView *view, const Data &data, const QPoint &position)
    {
        const auto send = [view](QDropEvent *event) {
            QCoreApplication::sendEvent(view->viewport(), event);
            return event->isAccepted();
        };
        QDragEnterEvent enter(position, Qt::CopyAction, data.get(), Qt::LeftButton, Qt::NoModifier);
        QDragMoveEvent move(position, Qt::CopyAction, data.get(), Qt::LeftButton, Qt::NoModifier);
        QDropEvent drop(position, Qt::CopyAction, data.get(), Qt::LeftButton, Qt::NoModifier);
        return send(&enter) && send(&move) && send(&drop);
    }

    bool canDrop(const Data &data, const QModelIndex &target, Qt::DropAction action = Qt::CopyAction) const
    {
        return m_model->canDropMimeData(data.get(), action, -1, -1, target);
    }

    bool drop(const Data &data, const QModelIndex &target, Qt::DropAction action = Qt::CopyAction)
    {
        return m_model->dropMimeData(data.get(), action, -1, -1, target);
    }

    // Drops Common's "colour" and "count" on Second and presses the button; none: closes the question.
    // Returns what the question listed first.
    QStringList dropClashing(const char *button)
    {
        const auto data = draggedEntries(
            {GuiScene::entry(m_scene.common, "colour"), GuiScene::entry(m_scene.common, "count")});
        QStringList listed;
        const ModalAnswer answer([&](QDialog *dialog) {
            const QTreeWidgetItem *first = dialog->findChild<QTreeWidget *>()->topLevelItem(0);
            for (int column = 0; column < 4; ++column) {
                listed.append(first->text(column));
            }
            press(dialog, button);
        });
        drop(data, row(1));
        [&] { QTRY_VERIFY(answer.given()); }();
        return listed;
    }

    static void press(QDialog *dialog, const char *text)
    {
        const QList<QAbstractButton *> buttons = dialog->findChildren<QAbstractButton *>();
        for (QAbstractButton *button : buttons) {
            if (text && button->text().remove(QLatin1Char('&')) == QLatin1String(text)) {
                return button->click();
            }
        }
        dialog->reject();
    }

    static QList<quint64> setsOf(quint64 object)
    {
        QList<quint64> ids;
        for (const nkdMetadataSet &set : nkdMetadata(object).getSets()) {
            ids.append(set.getObjectId());
        }
        return ids;
    }

    static int undoCount() { return kernel::Document::the().undoStack()->count(); }

    GuiScene m_scene;
    std::unique_ptr<nkMetadataTreeModel> m_model;
    nkMetadataRootModelItem *m_root = nullptr;
};

NK_TEST_MAIN(TestTreeDrops)
#include "test_tree_drops.moc"
