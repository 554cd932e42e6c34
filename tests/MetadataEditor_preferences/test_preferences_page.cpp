#include "PageFixture.h"

#include <TestMain.h>
#include <nkKernelServices/nkLogService.h>
#include <nkKernelServices/nkMetadataService.h>
#include <nkQt4Ext/QNKCollapsibleFrame.h>

#include <QFileInfo>
#include <QSignalSpy>

/// The page of the string libraries without its dialogs: form, defaults, load, store, apply, remove.
class TestPreferencesPage : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { m_fixture = std::make_unique<PageFixture>(); }
    void cleanup() { m_fixture.reset(); }

    void has_the_texts_and_names_of_its_form()
    {
        m_fixture->start();
        const nkMetadataPreferencesGUII &page = *m_fixture->page;
        QCOMPARE(page.windowTitle(), QStringLiteral("Form"));
        QCOMPARE(page.findChild<QNKCollapsibleFrame *>("collapsibleFrame_2")->title(),
                 QStringLiteral("String Libraries"));
        QCOMPARE(page.findChild<QNKCollapsibleFrame *>("collapsibleFrame_2")->widget()->objectName(),
                 QStringLiteral("page_2"));
        QCOMPARE(page.m_treeWidget->columnCount(), 2);
        QCOMPARE(page.m_treeWidget->headerItem()->text(0), QStringLiteral("Write"));
        QCOMPARE(page.m_treeWidget->headerItem()->text(1), QStringLiteral("File"));
        for (const char *name : {"verticalLayout_2", "page_2", "gridLayout", "verticalLayout", "m_treeWidget",
                                 "horizontalLayout", "m_addButton", "m_changeButton", "m_removeButton"}) {
            QVERIFY2(page.findChild<QObject *>(QLatin1String(name)), name);
        }
    }

    void has_the_texts_of_its_buttons()
    {
        m_fixture->start();
        const nkMetadataPreferencesGUII &page = *m_fixture->page;
        QCOMPARE(page.m_addButton->text(), QStringLiteral("Add Path..."));
        QCOMPARE(page.m_addButton->toolTip(), QStringLiteral("Add a path."));
        QCOMPARE(page.m_changeButton->text(), QStringLiteral("Change Path..."));
        QCOMPARE(page.m_changeButton->toolTip(), QStringLiteral("Change the selected path."));
        QCOMPARE(page.m_removeButton->text(), QStringLiteral("Remove Path"));
        QCOMPARE(page.m_removeButton->toolTip(), QStringLiteral("Remove selected path."));
    }

    void is_the_category_metadata_while_it_lives()
    {
        m_fixture->start();
        QCOMPARE(nkPreferencesCategory::categories().size(), 1);
        QCOMPARE(nkPreferencesCategory::categories().constFirst()->getName(), QStringLiteral("Metadata"));
        QCOMPARE(nkPreferencesCategory::categories().constFirst()->getWidget(), m_fixture->page.get());
        m_fixture->page.reset();
        QVERIFY(nkPreferencesCategory::categories().isEmpty());
    }

    void the_first_start_makes_the_default_library_and_lists_it_alone()
    {
        QVERIFY(!QFile::exists(PageFixture::defaultLibrary()));
        m_fixture->start();
        QCOMPARE(QFileInfo(PageFixture::defaultLibrary()).size(), 0);
        QVERIFY(QFile::exists(PageFixture::defaultLibrary()));
        const QStringList expected{QFileInfo(PageFixture::defaultLibrary()).canonicalFilePath()};
        QCOMPARE(PageFixture::storedPaths(), expected);
        QCOMPARE(PageFixture::storedIndex(), 0);
        QCOMPARE(m_fixture->paths(), expected);
        QCOMPARE(m_fixture->checkedRows(), QList<int>{0});
    }

    void the_first_start_puts_the_defaults_into_effect()
    {
        m_fixture->start();
        QCOMPARE(nkMetadataService::the().getStringLibraries(), PageFixture::storedPaths());
        QCOMPARE(nkMetadataService::the().getActiveStringLibraryIndex(), 0);
    }

    void a_later_start_leaves_the_default_library_and_the_values_alone()
    {
        QFile library(PageFixture::defaultLibrary());
        QVERIFY(library.open(QIODevice::WriteOnly));
        library.write("oak\n");
        library.close();
        const QStringList paths{m_fixture->file("a.txt"), m_fixture->file("b.txt")};
        m_fixture->startWith(paths, 1);
        QCOMPARE(library.size(), 4);
        QCOMPARE(m_fixture->paths(), paths);
        QCOMPARE(m_fixture->checkedRows(), QList<int>{1});
        QCOMPARE(nkMetadataService::the().getStringLibraries(), paths);
        QCOMPARE(nkMetadataService::the().getActiveStringLibraryIndex(), 1);
    }

    void a_default_library_that_cannot_be_made_is_told_once_and_the_page_works()
    {
        QSignalSpy reports(&nkLogService::the(), &nkLogService::reported);
        // A link into a folder that is not there: no file, and none can be made.
        QVERIFY(QFile::link(m_fixture->folder.filePath("missing/file"), PageFixture::defaultLibrary()));
        m_fixture->start();
        QCOMPARE(reports.size(), 1);
        QCOMPARE(reports.constFirst(), (QVariantList{2, "Metadata Preferences",
                                                     "Can't create/write default string library file."}));
        QCOMPARE(PageFixture::storedPaths(), QStringList());
        QCOMPARE(PageFixture::storedIndex(), -1);
        QVERIFY(m_fixture->checkedRows().isEmpty());
        m_fixture->add({m_fixture->file("a.txt")});
        QCOMPARE(m_fixture->checkedRows(), QList<int>{0});
    }

    void defaults_are_written_over_present_values_only_when_asked()
    {
        m_fixture->startWith({m_fixture->file("a.txt"), m_fixture->file("b.txt")}, 1);
        m_fixture->page->setDefaults(false);
        QCOMPARE(PageFixture::storedPaths().size(), 2);
        QCOMPARE(PageFixture::storedIndex(), 1);
        m_fixture->page->setDefaults(true);
        QCOMPARE(PageFixture::storedPaths(),
                 QStringList{QFileInfo(PageFixture::defaultLibrary()).canonicalFilePath()});
        QCOMPARE(PageFixture::storedIndex(), 0);
    }

    void loading_again_starts_anew()
    {
        m_fixture->startWith({"/a", "/b", "/c"}, 2);
        PageFixture::store({"/d", "/e"}, 0);
        m_fixture->page->loadToPage();
        QCOMPARE(m_fixture->paths(), (QStringList{"/d", "/e"}));
        QCOMPARE(m_fixture->group()->buttons().size(), 2);
        QCOMPARE(m_fixture->id(0), 0);
        QCOMPARE(m_fixture->id(1), 1);
        QCOMPARE(m_fixture->checkedRows(), QList<int>{0});
    }

    void an_index_without_a_row_checks_none()
    {
        for (const int index : {-1, 2, 1000}) {
            PageFixture::store({"/a", "/b"}, index);
            m_fixture->start();
            QVERIFY(m_fixture->checkedRows().isEmpty());
            m_fixture->page->storeFromPage();
            QCOMPARE(PageFixture::storedIndex(), -1);
        }
    }

    void paths_are_plain_text()
    {
        m_fixture->startWith({"/<b>bold</b> & %1.txt"}, 0);
        QCOMPARE(m_fixture->paths(), QStringList{"/<b>bold</b> & %1.txt"});
        QCOMPARE(m_fixture->button(0)->text(), QString());
        QCOMPARE(m_fixture->button(0)->accessibleName(), QStringLiteral("/<b>bold</b> & %1.txt"));
    }

    void storing_writes_the_rows_in_order_and_the_checked_id()
    {
        m_fixture->startWith({"/a", "/b", "/c"}, 0);
        m_fixture->button(2)->click();
        QCOMPARE(PageFixture::storedIndex(), 0);
        m_fixture->page->storeFromPage();
        QCOMPARE(PageFixture::storedPaths(), (QStringList{"/a", "/b", "/c"}));
        QCOMPARE(PageFixture::storedIndex(), 2);
    }

    void one_button_at_most_is_checked()
    {
        m_fixture->startWith({"/a", "/b", "/c"}, 0);
        m_fixture->button(1)->click();
        QCOMPARE(m_fixture->checkedRows(), QList<int>{1});
    }

    void applying_passes_on_only_what_is_marked_changed()
    {
        m_fixture->startWith({"/a", "/b"}, 0);
        PageFixture::store({"/c", "/d"}, 1);
        m_fixture->page->apply();
        QCOMPARE(nkMetadataService::the().getStringLibraries(), (QStringList{"/a", "/b"}));
        m_fixture->page->setChangedKeys({PageFixture::indexKey()});
        m_fixture->page->apply();
        QCOMPARE(nkMetadataService::the().getStringLibraries(), (QStringList{"/a", "/b"}));
        QCOMPARE(nkMetadataService::the().getActiveStringLibraryIndex(), 1);
        m_fixture->page->setChangedKeys({PageFixture::librariesKey()});
        m_fixture->page->apply();
        QCOMPARE(nkMetadataService::the().getStringLibraries(), (QStringList{"/c", "/d"}));
    }

    void the_buttons_follow_the_selection()
    {
        m_fixture->startWith({"/a", "/b", "/c"}, 0);
        const nkMetadataPreferencesGUII &page = *m_fixture->page;
        QVERIFY(page.m_addButton->isEnabled());
        QVERIFY(!page.m_changeButton->isEnabled() && !page.m_removeButton->isEnabled());
        m_fixture->select({1});
        QVERIFY(page.m_changeButton->isEnabled() && page.m_removeButton->isEnabled());
        m_fixture->select({0, 2});
        QVERIFY(!page.m_changeButton->isEnabled() && page.m_removeButton->isEnabled());
        m_fixture->page->loadToPage();
        QVERIFY(!page.m_changeButton->isEnabled() && !page.m_removeButton->isEnabled());
    }

    void the_active_library_is_chosen_by_keyboard()
    {
        m_fixture->startWith({"/a", "/b", "/c"}, 0);
        m_fixture->page->show();
        m_fixture->page->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(m_fixture->page.get()));
        m_fixture->page->m_treeWidget->setFocus();
        for (int i = 0; i < 10 && QApplication::focusWidget() != m_fixture->button(0); ++i) {
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        }
        QCOMPARE(QApplication::focusWidget(), m_fixture->button(0));
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Down);
        QCOMPARE(m_fixture->checkedRows(), QList<int>{1});
    }

    void removing_the_checked_library_checks_the_first_that_remains()
    {
        m_fixture->startWith({"/a", "/b", "/c"}, 1);
        m_fixture->remove({1});
        QCOMPARE(m_fixture->paths(), (QStringList{"/a", "/c"}));
        QCOMPARE(m_fixture->checkedRows(), QList<int>{0});
    }

    void removing_another_library_leaves_the_check_where_it_was()
    {
        m_fixture->startWith({"/a", "/b", "/c"}, 1);
        m_fixture->remove({2});
        QCOMPARE(m_fixture->checkedRows(), QList<int>{1});
        m_fixture->remove({0});
        QCOMPARE(m_fixture->paths(), QStringList{"/b"});
        QCOMPARE(m_fixture->checkedRows(), QList<int>{0});
    }

    void removing_several_removes_each()
    {
        for (const int active : {0, 2}) {
            m_fixture->startWith({"/a", "/b", "/c", "/d"}, active);
            m_fixture->remove({0, 2});
            QCOMPARE(m_fixture->paths(), (QStringList{"/b", "/d"}));
            QCOMPARE(m_fixture->checkedRows(), QList<int>{0});
        }
    }

    void removing_all_leaves_none_active()
    {
        m_fixture->startWith({"/a", "/b"}, 1);
        m_fixture->remove({0, 1});
        m_fixture->page->storeFromPage();
        QCOMPARE(PageFixture::storedPaths(), QStringList());
        QCOMPARE(PageFixture::storedIndex(), -1);
    }

    /// Meant so: an id is given once, and it is the id that is stored.
    void buttons_keep_their_ids_when_others_are_removed()
    {
        m_fixture->startWith({"/a", "/b", "/c"}, 2);
        m_fixture->remove({0});
        QCOMPARE(m_fixture->id(0), 1);
        QCOMPARE(m_fixture->id(1), 2);
        m_fixture->page->storeFromPage();
        QCOMPARE(PageFixture::storedIndex(), 2);
        m_fixture->page->loadToPage();
        QVERIFY2(m_fixture->checkedRows().isEmpty(), "there is no row 2 any more");
    }

    /// Meant so: a new id is the number of buttons, whether or not one has it already.
    void a_library_added_after_a_removal_gets_the_number_of_buttons_as_id()
    {
        m_fixture->startWith({"/a", "/b", "/c"}, 1);
        m_fixture->remove({0});
        m_fixture->add({m_fixture->file("d.txt")});
        QCOMPARE(m_fixture->id(0), 1);
        QCOMPARE(m_fixture->id(1), 2);
        QCOMPARE(m_fixture->id(2), 2);
    }

private:
    std::unique_ptr<PageFixture> m_fixture;
};

NK_TEST_MAIN(TestPreferencesPage)
#include "test_preferences_page.moc"
