#include "WindowFixture.h"
#include "actions/nkMetadataActions.h"
#include "table/nkMetadataIconFilterBar.h"
#include "table/nkMetadataTableFilterModel.h"

#include <TestMain.h>
#include <nkKernelServices/nkScenegraphService.h>
#include <nkKernelServices/nkdMetadata.h>
#include <nkQt4Ext/QNKCustomFilterProxyModel.h>

/// What the trees and the table say while they have nothing to show.
class TestEmptyLists : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init()
    {
        nkScenegraphService::the().setSelection({});
        m_editor = std::make_unique<WindowFixture>();
        m_editor->show();
    }
    void cleanup() { m_editor.reset(); }

    void a_tree_says_what_its_list_lacks_data()
    {
        QTest::addColumn<TreeMode>("mode");
        QTest::addColumn<QString>("text");
        const auto row = [](const char *name, TreeMode mode, const char *text) {
            QTest::newRow(name) << mode << QString::fromLatin1(text);
        };
        row("sets", TreeMode::Sets, "No metadata sets. Create one with Create > Create Set.");
        row("nodes", TreeMode::Scenegraph, "No nodes with metadata.");
        row("materials", TreeMode::Materials, "No materials with metadata.");
        row("cameras", TreeMode::Cameras, "No cameras with metadata.");
        row("lights", TreeMode::Lights, "No lights with metadata.");
        row("sceneplates", TreeMode::Sceneplates, "No sceneplates with metadata.");
        row("objects", TreeMode::AllObjects, "No objects with metadata.");
        row("selection", TreeMode::LastSelection, "Nothing is selected in the editors of the scene.");
    }

    void a_tree_says_what_its_list_lacks()
    {
        QFETCH(TreeMode, mode);
        QFETCH(QString, text);
        clearScene();
        lower()->setMode(TreeMode::AllObjects);
        lower()->setMode(mode);
        QCOMPARE(lower()->getTreeView()->model()->rowCount(), 0);
        QCOMPARE(lower()->getTreeView()->emptyText(), text);
        QCOMPARE(lower()->getTreeView()->accessibleDescription(), text);
    }

    void a_tree_with_rows_says_nothing()
    {
        QCOMPARE(m_editor->tree()->getTreeView()->accessibleDescription(), QString());
    }

    void a_tree_whose_rows_are_all_hidden_says_so()
    {
        const nkMetadataTreeView *view = m_editor->tree()->getTreeView();
        auto *proxy = qobject_cast<QNKCustomFilterProxyModel *>(view->model());
        proxy->setFilterWildcard(QStringLiteral("no such name"));
        QCOMPARE(view->accessibleDescription(), QStringLiteral("Nothing matches the search."));
        proxy->setFilterWildcard(QString());
        QCOMPARE(view->accessibleDescription(), QString());
        auto *states = m_editor->tree()->findChild<nkMetadataIconFilterBar *>();
        Q_EMIT states->typeFilteringToggled(true);
        Q_EMIT states->typeFilterChanged({nkMetadataFilterModel::Asset});
        QCOMPARE(view->accessibleDescription(), QStringLiteral("Nothing matches the search."));
    }

    void the_table_asks_for_a_selection()
    {
        QCOMPARE(described(), QStringLiteral("Select sets or objects to see their entries."));
        m_editor->select({m_editor->alpha});
        QCOMPARE(described(), QString());
        m_editor->tree()->clearSelection();
        QCOMPARE(described(), QStringLiteral("Select sets or objects to see their entries."));
    }

    void the_table_says_how_to_make_an_entry()
    {
        const QString text = QStringLiteral("No entries. Create one with Create > Create Entry.");
        m_editor->select({m_editor->gamma});
        QCOMPARE(described(), text);
        m_editor->select({m_editor->alpha});
        QCOMPARE(described(), QString());
    }

    void an_object_without_metadata_counts_as_selected()
    {
        nkMetadataService::the().removeAssignments({m_editor->alpha, m_editor->beta}, {m_editor->chair});
        const nkdMetadataSet own = nkdMetadata::fromObject(m_editor->chair).getObjectSet();
        own.getEntries().remove(WindowFixture::entry(own, "weight"));
        nkScenegraphService::the().setSelection({nkdNode(nkdObject(m_editor->chair.getObjectId()))});
        m_editor->tree()->setMode(TreeMode::LastSelection);
        WindowFixture::settle();
        m_editor->tree()->getTreeView()->selectAll();
        QCOMPARE(described(), QStringLiteral("No entries. Create one with Create > Create Entry."));
    }

    void the_table_whose_rows_are_all_hidden_says_so()
    {
        m_editor->select({m_editor->alpha});
        auto *filters = qobject_cast<nkMetadataTableFilterModel *>(m_editor->view()->model());
        filters->setKeyFilter(QStringLiteral("no such key"));
        QCOMPARE(described(), QStringLiteral("No entry matches the filters."));
        filters->setKeyFilter(QString());
        QCOMPARE(described(), QString());
    }

    void in_focus_mode_the_list_counts_and_not_the_selection()
    {
        clearScene();
        nkMetadataActions::instance()->focusModeAction()->setChecked(true);
        QCOMPARE(described(), QStringLiteral("The list that had the focus last has no entries."));
        nkMetadataActions::instance()->focusModeAction()->setChecked(false);
        QCOMPARE(described(), QStringLiteral("Select sets or objects to see their entries."));
    }

private:
    nkMetadataTreeWidget *lower() const { return m_editor->window->treeWidgets().last(); }
    QString described() const { return m_editor->view()->accessibleDescription(); }

    static void clearScene()
    {
        kernel::DocumentLoader().commit();
        WindowFixture::settle();
    }

    std::unique_ptr<WindowFixture> m_editor;
};

NK_TEST_MAIN(TestEmptyLists)
#include "test_empty_lists.moc"
