#include "GuiScene.h"

#include <TestMain.h>
#include <nkKernelServices/nkMetadataService.h>
#include <nkKernelServices/nkScenegraphService.h>
#include <nkKernelServicesGUI/nkMetadataModuleSelection.h>
#include <nkKernelServicesGUI/nkMetadataRootModelItem.h>
#include <nkKernelServicesGUI/nkMetadataTreeModel.h>

#include <QAbstractItemModelTester>
#include <QUndoStack>

class TestTreeModel : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_scene = GuiScene::load();
        m_model = std::make_unique<nkMetadataTreeModel>();
        m_root = new nkMetadataRootModelItem;
        m_model->setRootItem(m_root);
        m_tester = std::make_unique<QAbstractItemModelTester>(
            m_model.get(), QAbstractItemModelTester::FailureReportingMode::QtTest);
    }

    void cleanup()
    {
        m_tester.reset();
        m_model.reset();
    }

    void starts_with_the_list_of_sets() { QCOMPARE(m_root->getTreeMode(), TreeMode::Sets); }
    void ignores_a_missing_root()
    {
        show(TreeMode::Sets);
        m_model->setRootItem(nullptr);
        QCOMPARE(m_model->rowCount(), 3);
    }

    void lists_by_mode_data()
    {
        QTest::addColumn<int>("mode");
        QTest::addColumn<QStringList>("names");
        QTest::newRow("sets") << 0 << QStringList{"Common", "Second", "Locked"};
        QTest::newRow("scene graph") << 1 << QStringList{"Root", "Camera", "Lamp", "Plate"};
        QTest::newRow("materials") << 2 << QStringList{"Paints", "Red"};
        QTest::newRow("cameras") << 3 << QStringList{"Camera"};
        QTest::newRow("lights") << 4 << QStringList{"Lamp"};
        QTest::newRow("sceneplates") << 5 << QStringList{"Plate"};
        QTest::newRow("all objects") << 6 << QStringList{"Root", "Camera", "Lamp", "Plate", "Paints", "Red"};
    }
    void lists_by_mode()
    {
        QFETCH(int, mode);
        show(TreeMode(mode));
        QTEST(childNames(QModelIndex()), "names");
    }

    void lists_the_last_selection_whether_it_carries_metadata_or_not()
    {
        nkScenegraphService::the().setSelection(
            {nkdNode(nkdObject(m_scene.plain)), nkdNode(nkdObject(m_scene.root))});
        nkMetadataModuleSelection::the().setLastSelectionModule(0);
        show(TreeMode::LastSelection);
        QCOMPARE(childNames(QModelIndex()), (QStringList{"Plain", "Root"}));
    }

    void an_empty_scene_has_no_rows()
    {
        kernel::Document::the().clear();
        for (int mode = 0; mode <= 7; ++mode) {
            show(TreeMode(mode));
            QCOMPARE(m_model->rowCount(), 0);
        }
    }

    void sets_have_their_objects_below_them()
    {
        show(TreeMode::Sets);
        QCOMPARE(childNames(row(0)), (QStringList{"Root", "Camera", "Red"}));
        QVERIFY(!m_model->hasChildren(row(2)));
        QVERIFY(!m_model->hasChildren(m_model->index(0, 0, row(0))));
    }

    void objects_have_their_sets_below_them_without_their_own()
    {
        show(TreeMode::AllObjects);
        QCOMPARE(childNames(row(1)), (QStringList{"Common", "Second"}));
        QVERIFY(!m_model->hasChildren(row(2)));
    }

    void children_are_made_when_they_are_looked_at()
    {
        // A tester looks at everything.
        m_tester.reset();
        show(TreeMode::Sets);
        QVERIFY(m_model->hasChildren(row(0)));
        QCOMPARE(m_model->itemFromIndex(row(0))->childCount(), 0);
        QCOMPARE(childNames(row(0)).size(), 3);
        QCOMPARE(m_model->itemFromIndex(row(0))->childCount(), 3);
        QCOMPARE(m_model->itemFromIndex(row(1))->childCount(), 0);
    }

    void row_ids_are_the_objects_ids_one_after_the_other()
    {
        show(TreeMode::Sets);
        const QString set = QString::number(m_scene.common);
        const QString child = QString::number(m_scene.camera) + set;
        QCOMPARE(m_model->indexFromId(set), row(0));
        QCOMPARE(m_model->indexFromId(child), m_model->index(1, 0, row(0)));
        QVERIFY(!m_model->indexFromId(QString::number(m_scene.camera)).isValid());

        show(TreeMode::AllObjects);
        QCOMPARE(m_model->indexFromId(QString::number(m_scene.second) + QString::number(m_scene.camera)),
                 m_model->index(1, 0, row(1)));
    }

    void rows_answer_name_icon_and_object()
    {
        show(TreeMode::Sets);
        QCOMPARE(row(1).data().toString(), QStringLiteral("Second"));
        QCOMPARE(row(1).data(Qt::EditRole).toString(), QStringLiteral("Second"));
        const QVariant object = row(1).data(nkMetadataTreeModel::ObjectRole);
        QCOMPARE(QByteArray(object.typeName()), QByteArray("nkdObject"));
        QCOMPARE(object.value<nkdObject>().getObjectId(), m_scene.second);
        const QModelIndex child = m_model->index(0, 0, row(1));
        QCOMPARE(child.data(nkMetadataTreeModel::ObjectRole).value<nkdObject>().getObjectId(),
                 m_scene.camera);
    }

    void only_what_is_not_editable_is_shown_in_the_disabled_colour()
    {
        show(TreeMode::Sets);
        const QColor disabled = QApplication::palette().color(QPalette::Disabled, QPalette::Text);
        QVERIFY(!row(0).data(Qt::ForegroundRole).isValid());
        QCOMPARE(row(2).data(Qt::ForegroundRole).value<QBrush>().color(), disabled);
    }

    void a_lock_shows_after_the_next_reload()
    {
        show(TreeMode::Sets);
        QVERIFY(!row(0).data(Qt::ForegroundRole).isValid());
        nkdMetadataSet(m_scene.common).setLocked(true);
        m_model->reload();
        QVERIFY(row(0).data(Qt::ForegroundRole).isValid());
        QVERIFY(!(row(0).flags() & Qt::ItemIsEditable));
    }

    void renames_a_set_as_one_undo_step()
    {
        show(TreeMode::Sets);
        const int before = undoCount();
        QVERIFY(m_model->setData(row(0), QStringLiteral("Other")));
        QCOMPARE(nkdMetadataSet(m_scene.common).getName(), QStringLiteral("Other"));
        QCOMPARE(row(0).data().toString(), QStringLiteral("Other"));
        QCOMPARE(undoCount(), before + 1);
        QVERIFY(kernel::Document::the().undo());
        QCOMPARE(nkdMetadataSet(m_scene.common).getName(), QStringLiteral("Common"));
    }

    void renames_objects_in_every_place_they_stand()
    {
        show(TreeMode::Sets);
        const QModelIndex child = m_model->index(1, 0, row(0));
        QVERIFY(m_model->setData(child, QStringLiteral("Main camera")));
        QCOMPARE(nkdSceneObject(nkdObject(m_scene.camera)).getName(), QStringLiteral("Main camera"));
        m_model->reload();
        QCOMPARE(childNames(row(1)).first(), QStringLiteral("Main camera"));
    }

    void shows_the_name_that_the_host_made_of_the_wanted_one()
    {
        show(TreeMode::Sets);
        QVERIFY(m_model->setData(row(0), QStringLiteral("Second")));
        QCOMPARE(row(0).data().toString(), nkdMetadataSet(m_scene.common).getName());
        QVERIFY(row(0).data().toString() != QStringLiteral("Second"));
        QCOMPARE(row(0).data(Qt::EditRole), row(0).data());
    }

    void a_refused_name_is_put_back()
    {
        show(TreeMode::Sets);
        const int before = undoCount();
        m_model->setData(row(0), QString());
        QCOMPARE(row(0).data().toString(), QStringLiteral("Common"));
        QCOMPARE(row(0).data(Qt::EditRole).toString(), QStringLiteral("Common"));
        QCOMPARE(undoCount(), before);
    }

    void the_same_name_changes_nothing()
    {
        show(TreeMode::Sets);
        const int before = undoCount();
        m_model->setData(row(0), QStringLiteral("Common"));
        QCOMPARE(undoCount(), before);
    }

    void locked_sets_are_not_renamed()
    {
        show(TreeMode::Sets);
        QVERIFY(!(row(2).flags() & Qt::ItemIsEditable));
        QVERIFY(!m_model->setData(row(2), QStringLiteral("Other")));
        QCOMPARE(nkdMetadataSet(m_scene.locked).getName(), QStringLiteral("Locked"));
    }

    void locked_objects_are_not_renamed()
    {
        nkdSceneObject(nkdObject(m_scene.root)).setLocked(true);
        show(TreeMode::AllObjects);
        QVERIFY(!m_model->setData(row(0), QStringLiteral("Other")));
    }

    void a_lock_counts_at_once()
    {
        show(TreeMode::Sets);
        nkdMetadataSet(m_scene.common).setLocked(true);
        QVERIFY(!m_model->setData(row(0), QStringLiteral("Other")));
    }

    void a_rename_survives_a_reload_from_inside()
    {
        show(TreeMode::Sets);
        const auto reload = [this] { m_model->reload(); };
        connect(&nkMetadataService::the(), &nkMetadataService::metadataChanged, m_model.get(), reload);
        QVERIFY(m_model->setData(row(0), QStringLiteral("Other")));
        QCOMPARE(childNames(QModelIndex()).first(), QStringLiteral("Other"));
    }

    void a_rename_survives_the_end_of_its_row()
    {
        show(TreeMode::Sets);
        bool deleted = false;
        const auto deleteSet = [&] {
            if (!deleted) {
                deleted = true;
                nkMetadataService::the().deleteSets({nkdMetadataSet(m_scene.common)});
                m_model->reload();
            }
        };
        connect(&nkMetadataService::the(), &nkMetadataService::metadataChanged, m_model.get(), deleteSet);
        m_model->setData(row(0), QStringLiteral("Other"));
        QCOMPARE(childNames(QModelIndex()), (QStringList{"Second", "Locked"}));
    }

    void a_change_of_mode_lists_anew()
    {
        show(TreeMode::Sets);
        show(TreeMode::Cameras);
        show(TreeMode::Sets);
        QCOMPARE(m_model->rowCount(), 3);
    }

    void lists_nodes_thousands_deep()
    {
        m_tester.reset();
        kernel::DocumentLoader loader;
        quint64 parent = 0;
        for (int depth = 0; depth < 20000; ++depth) {
            parent = loader.addObject(nkObjectType::Node, QStringLiteral("n"), parent);
        }
        loader.addTag(loader.objectSet(parent), QStringLiteral("deep"));
        QVERIFY(loader.commit());
        show(TreeMode::Scenegraph);
        QCOMPARE(m_model->rowCount(), 1);
    }

    void a_hundred_thousand_assignments_make_no_rows_before_they_are_looked_at()
    {
        m_tester.reset();
        kernel::DocumentLoader loader;
        const quint64 set = loader.addSet(QStringLiteral("Large"));
        for (int i = 0; i < 100000; ++i) {
            loader.assign(set, loader.addObject(nkObjectType::Node, QStringLiteral("n")));
        }
        QVERIFY(loader.commit());
        show(TreeMode::Sets);
        QVERIFY(m_model->hasChildren(row(0)));
        QCOMPARE(m_model->itemFromIndex(row(0))->childCount(), 0);
        QCOMPARE(m_model->rowCount(row(0)), 100000);
    }

private:
    void show(TreeMode mode)
    {
        m_root->setTreeMode(mode);
        m_model->reload();
    }

    QModelIndex row(int row) const { return m_model->index(row, 0); }

    QStringList childNames(const QModelIndex &parent) const
    {
        while (m_model->canFetchMore(parent)) {
            m_model->fetchMore(parent);
        }
        QStringList names;
        for (int i = 0; i < m_model->rowCount(parent); ++i) {
            names.append(m_model->index(i, 0, parent).data().toString());
        }
        return names;
    }

    static int undoCount() { return kernel::Document::the().undoStack()->count(); }

    GuiScene m_scene;
    std::unique_ptr<nkMetadataTreeModel> m_model;
    std::unique_ptr<QAbstractItemModelTester> m_tester;
    nkMetadataRootModelItem *m_root = nullptr;
};

NK_TEST_MAIN(TestTreeModel)
#include "test_tree_model.moc"
