#include "WindowFixture.h"

#include "actions/nkMetadataActions.h"

#include <TestMain.h>
#include <nkKernelServices/nkdMetadata.h>
#include <nkQt4Ext/QNKViewBase.h>

#include <QAction>
#include <QFrame>
#include <QGridLayout>
#include <QLineEdit>
#include <QSplitter>
#include <QStatusBar>

class TestEditorWindow : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { m_editor = std::make_unique<WindowFixture>(); }
    void cleanup() { m_editor.reset(); }

    void registers_with_the_host()
    {
        QCOMPARE(m_editor->host.modules.size(), 1);
        const RecordingMainWindow::Module module = m_editor->host.modules.first();
        QCOMPARE(module.name, QStringLiteral("Metadata Editor"));
        QCOMPARE(module.group, QStringLiteral("Scene"));
        QCOMPARE(module.window, m_editor->window.get());
        QCOMPARE(module.toolClipName, QStringLiteral("Toolclip_Metadata"));
        QCOMPARE(module.shortTitle, QStringLiteral("Metadata"));
        QVERIFY(!module.startHidden);
    }

    void is_the_one_instance_while_it_lives()
    {
        QCOMPARE(nkMetadataEditorModule::instance(), m_editor->window.get());
        m_editor->window.reset();
        QVERIFY(!nkMetadataEditorModule::instance());
    }

    void is_named_by_its_form_unless_it_has_a_name()
    {
        QCOMPARE(m_editor->window->objectName(), QStringLiteral("nkMetadataEditorGUI"));
        m_editor->window.reset();
        const nkMetadataEditorModule named(nullptr, QStringLiteral("Named"));
        QCOMPARE(named.objectName(), QStringLiteral("Named"));
    }

    void is_laid_out_as_its_form_says()
    {
        const QMainWindow *window = m_editor->window.get();
        QCOMPARE(window->size(), QSize(1088, 630));
        QCOMPARE(window->windowTitle(), QStringLiteral("MainWindow"));
        auto *grid = window->centralWidget()->findChild<QGridLayout *>(QStringLiteral("gridLayout"));
        auto *splitter = window->findChild<QSplitter *>(QStringLiteral("m_horizontalSplitter"));
        QVERIFY(grid && splitter);
        QCOMPARE(grid->itemAtPosition(1, 0)->widget(), splitter);
        QCOMPARE(splitter->orientation(), Qt::Horizontal);
        QCOMPARE(splitter->widget(0)->objectName(), QStringLiteral("m_verticalTreeSplitter"));
        QCOMPARE(splitter->widget(1)->objectName(), QStringLiteral("m_verticalTableSplitter"));
        QVERIFY(window->findChild<QStatusBar *>(QStringLiteral("statusbar")));
    }

    void frames_are_bare_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<int>("horizontal");
        QTest::addColumn<int>("vertical");
        QTest::newRow("upper") << "m_upperTreeFrame" << int(QSizePolicy::Preferred)
                               << int(QSizePolicy::Expanding);
        QTest::newRow("lower") << "m_lowerTreeFrame" << int(QSizePolicy::Preferred)
                               << int(QSizePolicy::Expanding);
        QTest::newRow("table") << "m_keyValueFrame" << int(QSizePolicy::Expanding)
                               << int(QSizePolicy::Expanding);
        QTest::newRow("property") << "m_propertyFrame" << int(QSizePolicy::Expanding)
                                  << int(QSizePolicy::Fixed);
    }
    void frames_are_bare()
    {
        QFETCH(QString, name);
        const auto *frame = m_editor->window->findChild<QFrame *>(name);
        QVERIFY(frame);
        QCOMPARE(frame->frameShape(), QFrame::NoFrame);
        QCOMPARE(frame->frameShadow(), QFrame::Plain);
        QCOMPARE(frame->lineWidth(), 0);
        QTEST(int(frame->sizePolicy().horizontalPolicy()), "horizontal");
        QTEST(int(frame->sizePolicy().verticalPolicy()), "vertical");
    }

    void actions_of_the_form_stand_in_no_menu()
    {
        const QMainWindow *window = m_editor->window.get();
        const auto *scene = window->findChild<QAction *>(QStringLiteral("m_querySceneAction"));
        const auto *material = window->findChild<QAction *>(QStringLiteral("actionMaterial_Editor"));
        const auto *live = window->findChild<QAction *>(QStringLiteral("m_liveSearch"));
        QVERIFY(scene && material && live);
        QCOMPARE(scene->text(), QStringLiteral("Scene"));
        QCOMPARE(material->text(), QStringLiteral("Material Editor"));
        QCOMPARE(live->text(), QStringLiteral("Live Search"));
        QVERIFY(live->isCheckable() && live->isChecked());
        QVERIFY(scene->associatedWidgets().isEmpty());
    }

    void table_columns_are_named_and_explained()
    {
        const QAbstractItemModel *model = m_editor->view()->model();
        const auto header = [model](int column, int role) {
            return model->headerData(column, Qt::Horizontal, role).toString();
        };
        QCOMPARE(model->columnCount(), 5);
        const QStringList titles{"", "Assignment", "Key", "Value", "Type"};
        for (int column = 0; column < 5; ++column) {
            QCOMPARE(header(column, Qt::DisplayRole), titles.at(column));
        }
        QCOMPARE(header(0, Qt::UserRole), QStringLiteral("Icon"));
        QCOMPARE(header(0, Qt::ToolTipRole),
                 QStringLiteral("Icon Column - lists 4 different icon types:<br>&#x2022; Tag on Object"
                                "<br>&#x2022; Entry on Object<br>&#x2022; Tag inside Set"
                                "<br>&#x2022; Entry inside Set"));
        QCOMPARE(
            header(1, Qt::ToolTipRole),
            QStringLiteral("Assignment Column - lists the Set or Object where entries are assigned to."));
        QCOMPARE(header(2, Qt::ToolTipRole),
                 QStringLiteral("Metadata Key Column - lists the chosen names of the Keys."));
        QCOMPARE(header(3, Qt::ToolTipRole),
                 QStringLiteral("Metadata Value Column - lists the defined Value of its type."));
        QCOMPARE(header(4, Qt::ToolTipRole),
                 QStringLiteral("Metadata Type Column - indicates the type of the entry."));
    }

    void lists_the_sets_when_it_is_shown()
    {
        m_editor->show();
        QCOMPARE(m_editor->treeNames(), (QStringList{"Alpha", "Beta", "Gamma"}));
        QVERIFY(m_editor->tree()->hasLastFocus());
        QCOMPARE(m_editor->view()->horizontalScrollBarPolicy(), Qt::ScrollBarAlwaysOff);
    }

    void shows_the_entries_of_what_is_selected()
    {
        m_editor->show();
        m_editor->select({m_editor->alpha});
        QCOMPARE(m_editor->keys(), (QStringList{"name", "count", "checked"}));
        m_editor->select({m_editor->beta});
        QCOMPARE(m_editor->keys(), (QStringList{"name"}));
        m_editor->tree()->clearSelection();
        QVERIFY(m_editor->keys().isEmpty());
    }

    void a_selection_reaches_host_and_table()
    {
        m_editor->show();
        QSignalSpy told(m_editor->tree(), &nkMetadataTreeWidget::metadataSelectionChanged);
        m_editor->select({m_editor->beta});
        QCOMPARE(told.count(), 1);
        QCOMPARE(told.first().first().value<QList<nkdMetadataSet>>(), QList<nkdMetadataSet>{m_editor->beta});
        QCOMPARE(nkMetadataService::the().getSelection(), QList<nkdObject>{m_editor->beta});
    }

    void an_empty_selection_is_told_too()
    {
        m_editor->show();
        m_editor->select({m_editor->beta});
        QSignalSpy told(m_editor->tree(), &nkMetadataTreeWidget::metadataSelectionChanged);
        QSignalSpy host(&nkMetadataService::the(), &nkMetadataService::selectionChanged);
        m_editor->tree()->clearSelection();
        QCOMPARE(told.count(), 1);
        QVERIFY(told.first().first().value<QList<nkdMetadataSet>>().isEmpty());
        QCOMPARE(host.count(), 1);
        QVERIFY(nkMetadataService::the().getSelection().isEmpty());
    }

    void an_object_below_a_set_stands_for_the_set()
    {
        m_editor->show();
        nkMetadataTreeView *view = m_editor->tree()->getTreeView();
        const QModelIndex set = view->model()->index(0, 0);
        const QModelIndex object = view->model()->index(0, 0, set);
        QCOMPARE(view->getObject(object), nkdObject(m_editor->chair));
        QSignalSpy told(m_editor->tree(), &nkMetadataTreeWidget::metadataSelectionChanged);
        view->selectionModel()->select(object, QItemSelectionModel::ClearAndSelect);
        QCOMPARE(toldSets(told), QList<nkdMetadataSet>{m_editor->alpha});
        QCOMPARE(nkMetadataService::the().getSelection(), QList<nkdObject>{m_editor->chair});
        view->selectionModel()->select(set, QItemSelectionModel::Select);
        QCOMPARE(toldSets(told), QList<nkdMetadataSet>{m_editor->alpha});
    }

    void an_object_shows_its_own_entries_and_then_its_sets()
    {
        m_editor->show();
        m_editor->tree()->setMode(TreeMode::Scenegraph);
        QCOMPARE(m_editor->tree()->getMode(), TreeMode::Scenegraph);
        QSignalSpy told(m_editor->tree(), &nkMetadataTreeWidget::metadataSelectionChanged);
        m_editor->select({m_editor->chair});
        const nkdMetadataSet own = nkdMetadata::fromObject(m_editor->chair).getObjectSet();
        QCOMPARE(toldSets(told), (QList<nkdMetadataSet>{own, m_editor->alpha, m_editor->beta}));
        QCOMPARE(m_editor->keys(), (QStringList{"weight", "name", "count", "checked", "name"}));
    }

    void a_selection_made_elsewhere_is_followed()
    {
        m_editor->show();
        nkMetadataService::the().setSelection({m_editor->beta});
        QCOMPARE(m_editor->keys(), QStringList{"name"});
        QCOMPARE(m_editor->tree()->getTreeView()->getSelectedObjects(4), QList<nkdObject>{m_editor->beta});
    }

    void its_own_echo_is_not_followed()
    {
        m_editor->show();
        nkMetadataTreeView *view = m_editor->tree()->getTreeView();
        const QModelIndex object = view->model()->index(0, 0, view->model()->index(0, 0));
        view->selectionModel()->select(object, QItemSelectionModel::ClearAndSelect);
        // The echo names the object, whose first row stands under another parent or nowhere.
        QCOMPARE(view->selectionModel()->selectedIndexes(), QModelIndexList{object});
    }

    void a_selection_changed_under_the_announcement_is_the_one_shown()
    {
        m_editor->show();
        QObject context;
        bool isInside = false;
        connect(&nkMetadataService::the(), &nkMetadataService::selectionChanged, &context, [&] {
            if (!isInside) {
                isInside = true;
                nkMetadataTreeView *view = m_editor->tree()->getTreeView();
                view->selectionModel()->select(view->model()->index(1, 0),
                                               QItemSelectionModel::ClearAndSelect);
            }
        });
        m_editor->select({m_editor->alpha});
        context.disconnect();
        QCOMPARE(m_editor->keys(), QStringList{"name"});
        QCOMPARE(nkMetadataService::the().getSelection(), QList<nkdObject>{m_editor->beta});
        // The guard stood until the outermost announcement was over, and no longer.
        nkMetadataService::the().setSelection({m_editor->alpha});
        QCOMPARE(m_editor->keys().size(), 3);
    }

    void a_reload_under_the_announcement_is_survived()
    {
        m_editor->show();
        QObject context;
        connect(&nkMetadataService::the(), &nkMetadataService::selectionChanged, &context, [&] {
            m_editor->tree()->reload();
            m_editor->window->onUpdateScheduled(31);
        });
        m_editor->select({m_editor->alpha, m_editor->beta});
        QCOMPARE(m_editor->keys().size(), 4);
    }

    void a_set_deleted_under_the_announcement_is_survived()
    {
        m_editor->show();
        QObject context;
        connect(&nkMetadataService::the(), &nkMetadataService::selectionChanged, &context,
                [&] { nkMetadataService::the().deleteSets({m_editor->alpha}); });
        m_editor->select({m_editor->alpha});
        context.disconnect();
        WindowFixture::settle();
        QVERIFY(m_editor->keys().isEmpty());
        QCOMPARE(m_editor->treeNames(), (QStringList{"Beta", "Gamma"}));
    }

    void commands_create_sets_and_entries()
    {
        m_editor->show();
        m_editor->select({m_editor->alpha});
        const int entries = m_editor->alpha.getEntries().size();
        nkMetadataActions::instance()->createTagEntryAction()->trigger();
        QCOMPARE(m_editor->alpha.getEntries().size(), entries + 1);
        // The new key is typed at once.
        auto *keyEditor = m_editor->view()->viewport()->findChild<QLineEdit *>();
        QVERIFY(keyEditor);
        QTest::keyClicks(keyEditor, QStringLiteral("checked by hand"));
        QNKViewBase::commitOpenEditors();
        QVERIFY(m_editor->alpha.getEntries().find(QStringLiteral("checked by hand")).isTag());
    }

    void a_context_menu_is_asked_for_in_screen_coordinates()
    {
        m_editor->show();
        QSignalSpy asked(m_editor->tree(), &nkMetadataTreeWidget::showContextMenu);
        QWidget *view = m_editor->tree()->getTreeView();
        const ModalAnswer closed = ModalAnswer::menu(QString());
        Q_EMIT view->customContextMenuRequested(QPoint(3, 4));
        QVERIFY(closed.given());
        QVERIFY(closed.record().buttons.contains(QStringLiteral("Create Set")));
        QCOMPARE(asked.count(), 1);
        QCOMPARE(asked.first().first().toPoint(),
                 m_editor->tree()->getTreeView()->viewport()->mapToGlobal(QPoint(3, 4)));
    }

private:
    static QList<nkdMetadataSet> toldSets(const QSignalSpy &spy)
    {
        return spy.isEmpty() ? QList<nkdMetadataSet>() : spy.last().first().value<QList<nkdMetadataSet>>();
    }

    std::unique_ptr<WindowFixture> m_editor;
};

NK_TEST_MAIN(TestEditorWindow)
#include "test_editor_window.moc"
