#include "GuiScene.h"

#include <TestMain.h>
#include <nkKernelServicesGUI/nkMetadataRootModelItem.h>
#include <nkKernelServicesGUI/nkMetadataTreeModel.h>
#include <nkKernelServicesGUI/nkMetadataTreeView.h>
#include <nkQt4Ext/QNKCustomFilterProxyModel.h>

#include <QLineEdit>
#include <QMenu>
#include <QSignalSpy>
#include <QVBoxLayout>

class TestTreeView : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_scene = GuiScene::load();
        m_window = std::make_unique<QWidget>();
        m_model = new nkMetadataTreeModel(m_window.get());
        m_root = new nkMetadataRootModelItem;
        m_model->setRootItem(m_root);
        m_proxy = new QNKCustomFilterProxyModel(m_window.get());
        m_proxy->setSourceModel(m_model);
        m_view = new nkMetadataTreeView(m_window.get());
        m_view->setModel(m_proxy);
        m_other = new QLineEdit(m_window.get());
        QVBoxLayout *column = new QVBoxLayout(m_window.get());
        column->addWidget(m_view);
        column->addWidget(m_other);
        show(TreeMode::Sets);
    }

    void cleanup() { m_window.reset(); }

    void answers_the_object_of_a_row()
    {
        QCOMPARE(m_view->getObject(row(1)).getObjectId(), m_scene.second);
        QCOMPARE(m_view->getObject(m_proxy->index(0, 0, row(1))).getObjectId(), m_scene.camera);
        QVERIFY(m_view->getObject(QModelIndex()).isNull());
    }

    void answers_the_set_of_a_row()
    {
        QCOMPARE(m_view->getMetadataSet(row(1)).getObjectId(), m_scene.second);
        QVERIFY(m_view->getMetadataSet(m_proxy->index(0, 0, row(1))).isNull());
        QVERIFY(m_view->getMetadataSet(QModelIndex()).isNull());
    }

    void a_view_without_a_model_holds_nothing()
    {
        nkMetadataTreeView view;
        QVERIFY(view.getAllMetadataSets().isEmpty());
        QVERIFY(view.getSelectedObjects(4).isEmpty());
        view.selectObjects({nkdObject(m_scene.common)});
        QVERIFY(view.getObject(QModelIndex()).isNull());
    }

    void all_sets_of_the_list_of_sets_are_its_rows()
    {
        QCOMPARE(idsOf(m_view->getAllMetadataSets()),
                 (QList<quint64>{m_scene.common, m_scene.second, m_scene.locked}));
    }

    void all_sets_of_a_list_of_objects_come_once_own_sets_first()
    {
        show(TreeMode::AllObjects);
        const quint64 lampsOwn = nkdMetadata(m_scene.lamp).getObjectSet().getObjectId();
        const quint64 paintsOwn = nkdMetadata(m_scene.paints).getObjectSet().getObjectId();
        QCOMPARE(idsOf(m_view->getAllMetadataSets()),
                 (QList<quint64>{m_scene.common, m_scene.second, lampsOwn, paintsOwn}));
    }

    void rows_that_are_filtered_out_do_not_count()
    {
        m_proxy->setFilterWildcard(QStringLiteral("Sec"));
        QCOMPARE(idsOf(m_view->getAllMetadataSets()), QList<quint64>{m_scene.second});
    }

    void selected_objects_come_once_and_by_kind()
    {
        m_view->expandAll();
        select({m_proxy->index(1, 0, row(0)), row(1), m_proxy->index(0, 0, row(1))});
        QCOMPARE(idsOf(m_view->getSelectedObjects(4)), QList<quint64>{m_scene.second});
        QCOMPARE(idsOf(m_view->getSelectedObjects(3)), QList<quint64>{m_scene.camera});
        QCOMPARE(idsOf(m_view->getSelectedObjects(0)), (QList<quint64>{m_scene.camera, m_scene.second}));
    }

    void selects_the_rows_of_objects_and_no_others()
    {
        select({row(0)});
        QSignalSpy changes(m_view->selectionModel(), &QItemSelectionModel::selectionChanged);
        m_view->selectObjects(objects({m_scene.locked, m_scene.second}));
        QCOMPARE(idsOf(m_view->getSelectedObjects(4)), (QList<quint64>{m_scene.locked, m_scene.second}));
        QCOMPARE(m_view->getObject(m_view->currentIndex()).getObjectId(), m_scene.locked);
        QCOMPARE(changes.count(), 1);
    }

    void objects_without_a_row_are_skipped()
    {
        select({row(0)});
        m_view->selectObjects(objects({m_scene.plain, 0, m_scene.second}));
        QCOMPARE(idsOf(m_view->getSelectedObjects(0)), QList<quint64>{m_scene.second});
        m_view->selectObjects(objects({m_scene.plain}));
        QVERIFY(!m_view->selectionModel()->hasSelection());
    }

    void rows_that_are_filtered_out_are_not_selected()
    {
        m_proxy->setFilterWildcard(QStringLiteral("Sec"));
        m_view->selectObjects(objects({m_scene.common, m_scene.second}));
        QCOMPARE(idsOf(m_view->getSelectedObjects(0)), QList<quint64>{m_scene.second});
    }

    void an_object_without_a_row_of_its_own_is_selected_below_its_sets()
    {
        m_view->selectObjects(objects({m_scene.camera}));
        QCOMPARE(m_view->selectionModel()->selectedIndexes().size(), 2);
        QCOMPARE(m_view->currentIndex().parent(), row(0));
    }

    void a_top_level_row_comes_before_the_rows_below_others()
    {
        show(TreeMode::AllObjects);
        m_view->expandAll();
        m_view->selectObjects(objects({m_scene.camera, m_scene.common}));
        const QModelIndexList selected = m_view->selectionModel()->selectedIndexes();
        QCOMPARE(selected.first(), row(1));
        QCOMPARE(selected.size(), 1 + 3); // Common below Root, Camera and Red
    }

    void the_first_selected_row_is_scrolled_to()
    {
        kernel::DocumentLoader loader;
        QList<quint64> sets;
        for (int i = 0; i < 500; ++i) {
            sets.append(loader.addSet(QStringLiteral("Set")));
        }
        QVERIFY(loader.commit());
        show(TreeMode::Sets);
        showWindow();
        m_view->selectObjects(objects({sets.at(400)}));
        QVERIFY(m_view->viewport()->rect().intersects(m_view->visualRect(row(400))));
    }

    void many_rows_are_selected_in_few_ranges()
    {
        kernel::DocumentLoader loader;
        QList<quint64> sets;
        for (int i = 0; i < 5000; ++i) {
            sets.prepend(loader.addSet(QStringLiteral("Set")));
        }
        QVERIFY(loader.commit());
        show(TreeMode::Sets);
        m_view->selectObjects(objects(sets));
        QCOMPARE(m_view->getSelectedObjects(4).size(), 5000);
        QCOMPARE(m_view->selectionModel()->selection().size(), 1);
        QCOMPARE(m_view->getObject(m_view->currentIndex()).getObjectId(), sets.first());
    }

    void a_selection_survives_a_reload_from_inside()
    {
        connect(m_view->selectionModel(), &QItemSelectionModel::selectionChanged, m_model,
                [this] { m_model->reload(); });
        m_view->selectObjects(objects({m_scene.second}));
        QCOMPARE(idsOf(m_view->getSelectedObjects(0)), QList<quint64>{m_scene.second});
    }

    void focus_that_comes_and_goes_is_told()
    {
        showWindow();
        m_other->setFocus();
        QSignalSpy told(m_view, &nkMetadataTreeView::focusChanged);
        m_view->setFocus();
        QCOMPARE(told.takeFirst().first().toBool(), true);
        m_other->setFocus();
        QCOMPARE(told.takeFirst().first().toBool(), false);
        QVERIFY(told.isEmpty());
    }

    void pop_ups_do_not_take_the_focus()
    {
        showWindow();
        m_view->setFocus();
        QSignalSpy told(m_view, &nkMetadataTreeView::focusChanged);
        QMenu menu;
        menu.addAction(QStringLiteral("Entry"));
        menu.popup(m_view->mapToGlobal(QPoint()));
        QTRY_VERIFY(menu.isVisible());
        menu.close();
        QCOMPARE(told.count(), 0);
    }

    void borrowed_focus_is_not_told_data()
    {
        QTest::addColumn<int>("reason");
        QTest::newRow("pop-up") << int(Qt::PopupFocusReason);
        QTest::newRow("menu bar") << int(Qt::MenuBarFocusReason);
        QTest::newRow("window") << int(Qt::ActiveWindowFocusReason);
    }
    void borrowed_focus_is_not_told()
    {
        QFETCH(int, reason);
        QSignalSpy told(m_view, &nkMetadataTreeView::focusChanged);
        for (QEvent::Type type : {QEvent::FocusIn, QEvent::FocusOut}) {
            QFocusEvent event(type, Qt::FocusReason(reason));
            QCoreApplication::sendEvent(m_view, &event);
        }
        QCOMPARE(told.count(), 0);
    }

    void another_window_does_not_take_the_focus()
    {
        showWindow();
        m_view->setFocus();
        QSignalSpy told(m_view, &nkMetadataTreeView::focusChanged);
        visitAnotherWindow([] {});
        QVERIFY(m_view->hasFocus());
        QCOMPARE(told.count(), 0);
    }

    void focus_lost_while_the_window_was_inactive_is_told()
    {
        showWindow();
        m_view->setFocus();
        QSignalSpy told(m_view, &nkMetadataTreeView::focusChanged);
        visitAnotherWindow([this] { m_other->setFocus(); });
        QCOMPARE(told.count(), 1);
        QCOMPARE(told.first().first().toBool(), false);
    }

    void focus_gained_while_the_window_was_inactive_is_told()
    {
        showWindow();
        m_other->setFocus();
        bool hadFocus = false;
        QSignalSpy told(m_view, &nkMetadataTreeView::focusChanged);
        connect(m_view, &nkMetadataTreeView::focusChanged, this,
                [&hadFocus, this] { hadFocus = m_view->hasFocus(); });
        visitAnotherWindow([this] { m_view->setFocus(); });
        QCOMPARE(told.count(), 1);
        QCOMPARE(told.first().first().toBool(), true);
        QVERIFY(hadFocus);
    }

private:
    void show(TreeMode mode)
    {
        m_root->setTreeMode(mode);
        m_model->reload();
    }

    void showWindow()
    {
        m_window->resize(300, 300);
        m_window->show();
        m_window->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
    }

    template <typename Function>
    void visitAnotherWindow(Function function)
    {
        QWidget another;
        another.setFocusPolicy(Qt::StrongFocus);
        another.show();
        another.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&another));
        function();
        m_window->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
    }

    QModelIndex row(int row) const { return m_proxy->index(row, 0); }

    void select(const QModelIndexList &rows)
    {
        m_view->selectionModel()->clearSelection();
        for (const QModelIndex &index : rows) {
            m_view->selectionModel()->select(index, QItemSelectionModel::Select);
        }
    }

    static QList<nkdObject> objects(const QList<quint64> &ids)
    {
        QList<nkdObject> objects;
        for (quint64 id : ids) {
            objects.append(nkdObject(id));
        }
        return objects;
    }

    template <typename Handle>
    static QList<quint64> idsOf(const QList<Handle> &handles)
    {
        QList<quint64> ids;
        for (const Handle &handle : handles) {
            ids.append(handle.getObjectId());
        }
        return ids;
    }

    GuiScene m_scene;
    std::unique_ptr<QWidget> m_window;
    nkMetadataTreeModel *m_model = nullptr;
    nkMetadataRootModelItem *m_root = nullptr;
    QNKCustomFilterProxyModel *m_proxy = nullptr;
    nkMetadataTreeView *m_view = nullptr;
    QLineEdit *m_other = nullptr;
};

NK_TEST_MAIN(TestTreeView)
#include "test_tree_view.moc"
