#include "PageFixture.h"

#include <TestMain.h>

/// The dialogs of the page: adding and changing paths, and what it says about a path that is listed already.
class TestPreferencesDialogs : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_fixture = std::make_unique<PageFixture>();
        m_fixture->startWith({}, -1);
    }
    void cleanup() { m_fixture.reset(); }

    void adding_asks_for_several_text_files()
    {
        bool asked = false;
        const ModalAnswer answer(ModalAnswer::DialogAction([&](QDialog *dialog) {
            const auto *files = qobject_cast<QFileDialog *>(dialog);
            QVERIFY(files);
            asked = true;
            QCOMPARE(files->windowTitle(), QStringLiteral("Select String List File(s)"));
            QCOMPARE(files->nameFilters(), QStringList{"Text Files (*.txt *.csv)"});
            QCOMPARE(files->fileMode(), QFileDialog::ExistingFiles);
            dialog->reject();
        }));
        m_fixture->page->m_addButton->click();
        QVERIFY(asked);
        QVERIFY(m_fixture->paths().isEmpty());
    }

    void adding_three_to_an_empty_list_checks_the_first()
    {
        const QStringList files = threeFiles();
        m_fixture->add(files);
        QCOMPARE(m_fixture->paths(), files);
        QCOMPARE(m_fixture->checkedRows(), QList<int>{0});
        for (int row = 0; row < 3; ++row) {
            QCOMPARE(m_fixture->id(row), row);
        }
    }

    void adding_more_does_not_move_the_check()
    {
        m_fixture->add({threeFiles().at(0), threeFiles().at(1)});
        m_fixture->button(1)->click();
        m_fixture->add({threeFiles().at(2)});
        QCOMPARE(m_fixture->checkedRows(), QList<int>{1});
    }

    void nothing_takes_effect_by_adding()
    {
        m_fixture->add(threeFiles());
        QCOMPARE(PageFixture::storedPaths(), QStringList());
        QCOMPARE(PageFixture::storedIndex(), -1);
    }

    void a_file_that_is_listed_is_told_and_skipped()
    {
        const QStringList files = threeFiles();
        m_fixture->add({files.at(0)});
        const ModalAnswer choice = PageFixture::choose({files.at(1), files.at(0), files.at(2)});
        const ModalAnswer box = ModalAnswer::button(QMessageBox::Ok);
        m_fixture->page->m_addButton->click();
        QCOMPARE(m_fixture->paths(), (QStringList{files.at(0), files.at(1), files.at(2)}));
        verifyDuplicateBox(box.record(), files.at(0));
    }

    void a_file_chosen_twice_is_added_once_and_told()
    {
        const QString file = m_fixture->file("twice.txt");
        const ModalAnswer box = ModalAnswer::button(QMessageBox::Ok);
        // Qt's own dialog answers each file once; those of desktops need not.
        m_fixture->page->addLibraries({file, file});
        QCOMPARE(m_fixture->paths(), QStringList{file});
        QCOMPARE(m_fixture->checkedRows(), QList<int>{0});
        verifyDuplicateBox(box.record(), file);
    }

    void paths_that_differ_in_case_are_two()
    {
        m_fixture->add({m_fixture->file("words.txt"), m_fixture->file("Words.txt")});
        QCOMPARE(m_fixture->paths().size(), 2);
    }

    void changing_asks_for_one_file_from_the_present_path()
    {
        const QStringList files = threeFiles();
        m_fixture->add(files);
        m_fixture->select({1});
        bool asked = false;
        const ModalAnswer answer(ModalAnswer::DialogAction([&](QDialog *dialog) {
            const auto *chooser = qobject_cast<QFileDialog *>(dialog);
            QVERIFY(chooser);
            asked = true;
            QCOMPARE(chooser->windowTitle(), QStringLiteral("Select String List File"));
            QCOMPARE(chooser->nameFilters(), QStringList{"Text Files (*.txt *.csv)"});
            QCOMPARE(chooser->fileMode(), QFileDialog::ExistingFile);
            QCOMPARE(chooser->directory().path(), m_fixture->folder.path());
            dialog->reject();
        }));
        m_fixture->page->m_changeButton->click();
        QVERIFY(asked);
        QCOMPARE(m_fixture->paths(), files);
    }

    void changing_replaces_the_path_and_keeps_check_and_id()
    {
        const QStringList files = threeFiles();
        m_fixture->add({files.at(0), files.at(1)});
        m_fixture->select({0});
        const ModalAnswer answer = ModalAnswer::file(files.at(2));
        m_fixture->page->m_changeButton->click();
        QCOMPARE(m_fixture->paths(), (QStringList{files.at(2), files.at(1)}));
        QCOMPARE(m_fixture->checkedRows(), QList<int>{0});
        QCOMPARE(m_fixture->id(0), 0);
        QCOMPARE(m_fixture->button(0)->accessibleName(), files.at(2));
    }

    void changing_to_a_listed_path_changes_nothing_data()
    {
        QTest::addColumn<int>("chosen");
        QTest::newRow("its own") << 0;
        QTest::newRow("another's") << 1;
    }
    void changing_to_a_listed_path_changes_nothing()
    {
        QFETCH(int, chosen);
        const QStringList files = threeFiles();
        m_fixture->add(files);
        m_fixture->select({0});
        const ModalAnswer choice = ModalAnswer::file(files.at(chosen));
        const ModalAnswer box = ModalAnswer::button(QMessageBox::Ok);
        m_fixture->page->m_changeButton->click();
        QCOMPARE(m_fixture->paths(), files);
        verifyDuplicateBox(box.record(), files.at(chosen));
    }

    void a_double_click_changes_the_path()
    {
        const QStringList files = threeFiles();
        m_fixture->add({files.at(0), files.at(1)});
        m_fixture->page->resize(600, 300);
        m_fixture->page->show();
        QVERIFY(QTest::qWaitForWindowExposed(m_fixture->page.get()));
        const ModalAnswer answer = ModalAnswer::file(files.at(2));
        QTreeWidget *tree = m_fixture->page->m_treeWidget;
        const QPoint place = tree->visualRect(tree->model()->index(1, 1)).center();
        QTest::mouseClick(tree->viewport(), Qt::LeftButton, {}, place);
        QTest::mouseDClick(tree->viewport(), Qt::LeftButton, {}, place);
        QTRY_VERIFY(answer.given());
        QCOMPARE(m_fixture->paths(), (QStringList{files.at(0), files.at(2)}));
    }

    void a_page_filled_anew_behind_the_dialog_keeps_its_rows()
    {
        const QStringList files = threeFiles();
        m_fixture->add({files.at(0)});
        m_fixture->select({0});
        PageFixture::store({files.at(1)}, 0);
        const ModalAnswer answer(ModalAnswer::DialogAction([&](QDialog *dialog) {
            m_fixture->page->loadToPage();
            auto *edit = dialog->findChild<QLineEdit *>(QStringLiteral("fileNameEdit"));
            edit->setText(files.at(2));
            dialog->accept();
        }));
        m_fixture->page->m_changeButton->click();
        QCOMPARE(m_fixture->paths(), QStringList{files.at(1)});
    }

private:
    QStringList threeFiles() const
    {
        return {m_fixture->file("one.txt"), m_fixture->file("two.csv"), m_fixture->file("three.txt")};
    }

    static void verifyDuplicateBox(const ModalRecord &box, const QString &path)
    {
        QCOMPARE(box.className, QStringLiteral("QMessageBox"));
        QCOMPARE(box.title, nkPlatformService::the().getInformationTitle());
        QCOMPARE(box.text, QStringLiteral("The path already exists!\n") + path);
        QCOMPARE(box.buttons.size(), 1);
        QCOMPARE(box.icon, QMessageBox::Information);
    }

    std::unique_ptr<PageFixture> m_fixture;
};

NK_TEST_MAIN(TestPreferencesDialogs)
#include "test_preferences_dialogs.moc"
