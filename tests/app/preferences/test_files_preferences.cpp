#include "PageCheck.h"
#include "TestMain.h"
#include "files/RecentFiles.h"
#include "preferences/FilesPreferences.h"
#include "preferences/Options.h"

#include <ModalAnswer.h>

#include <QCheckBox>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSpinBox>

/// The page of the files: recent files, backups, the default folder.
class TestFilesPreferences : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_page = std::make_unique<FilesPreferences>();
        m_page->setDefaults(true);
        RecentFiles::clear();
        for (int i = 0; i < 12; ++i) {
            RecentFiles::add(QStringLiteral("/scenes/%1.gltf").arg(i));
        }
        m_page->loadToPage();
    }
    void cleanup() { m_page.reset(); }

    void shows_what_is_chosen_and_stores_nothing_else()
    {
        QCOMPARE(m_page->getName(), QStringLiteral("Files"));
        QCOMPARE(number()->value(), 10);
        QVERIFY(!backup()->isChecked() && folder()->text().isEmpty());
        const QByteArray before = PageCheck::storedBytes();
        m_page->storeFromPage();
        QCOMPARE(PageCheck::storedBytes(), before);
    }

    void as_many_recent_files_are_kept_as_was_chosen_data()
    {
        QTest::addColumn<int>("kept");
        QTest::newRow("none") << 0;
        QTest::newRow("fewer") << 3;
        QTest::newRow("more") << 11;
    }
    void as_many_recent_files_are_kept_as_was_chosen()
    {
        QFETCH(int, kept);
        number()->setValue(kept);
        QCOMPARE(RecentFiles::files().size(), 10);
        m_page->storeFromPage();
        QCOMPARE(RecentFiles::files().size(), qMin(kept, 10));
        RecentFiles::add(QStringLiteral("/scenes/new.gltf"));
        QCOMPARE(RecentFiles::files().size(), kept);
        QVERIFY(kept == 0 || RecentFiles::files().first().endsWith(QLatin1String("new.gltf")));
    }

    void the_list_is_emptied_with_ok_and_not_before()
    {
        clearButton()->click();
        QVERIFY(!clearButton()->isEnabled());
        QVERIFY(PageCheck::says(*m_page, QStringLiteral("emptied with OK")));
        QCOMPARE(RecentFiles::files().size(), 10);
        // Cancelled: the next time that the page is seen, nothing was asked for.
        m_page->loadToPage();
        QVERIFY(clearButton()->isEnabled());
        m_page->storeFromPage();
        QCOMPARE(RecentFiles::files().size(), 10);
        clearButton()->click();
        m_page->storeFromPage();
        QVERIFY(RecentFiles::files().isEmpty());
        QVERIFY(!clearButton()->isEnabled());
        QVERIFY(PageCheck::says(*m_page, QStringLiteral("The list is empty.")));
    }

    void backup_and_folder_are_stored_and_come_back()
    {
        backup()->setChecked(true);
        folder()->setText(QDir::tempPath());
        m_page->storeFromPage();
        QCOMPARE(Options::backup.value(), 1);
        QCOMPARE(Options::defaultFolder.value(), QDir::tempPath());
        m_page->setDefaults(true);
        m_page->loadToPage();
        QVERIFY(!backup()->isChecked() && folder()->text().isEmpty());
    }

    void a_folder_that_is_not_there_is_told_on_the_page()
    {
        m_page->show();
        folder()->setText(QStringLiteral("/no/such/folder"));
        QVERIFY(PageCheck::says(*m_page, QStringLiteral("There is no such folder")));
        folder()->setText(QStringLiteral("."));
        QVERIFY2(PageCheck::says(*m_page, QStringLiteral("There is no such folder")), "not absolute");
        folder()->setText(QDir::tempPath());
        QVERIFY(!PageCheck::says(*m_page, QStringLiteral("There is no such folder")));
        folder()->clear();
        QVERIFY(!PageCheck::says(*m_page, QStringLiteral("There is no such folder")));
    }

    void the_folder_can_be_browsed_for()
    {
        const ModalAnswer answer = ModalAnswer::file(QDir::tempPath());
        PageCheck::button(*m_page, QStringLiteral("Browse..."))->click();
        QCOMPARE(QFileInfo(folder()->text()), QFileInfo(QDir::tempPath()));
        QVERIFY2(Options::defaultFolder.value().isEmpty(), "not before OK");
    }

    void values_out_of_range_are_the_defaults()
    {
        Options::recentFiles.store(-4);
        Options::backup.store(7);
        m_page->loadToPage();
        QCOMPARE(number()->value(), 10);
        QVERIFY(!backup()->isChecked());
    }

    void every_control_has_a_name_and_is_reached_by_keyboard()
    {
        QCOMPARE(PageCheck::unnamed(*m_page), QStringList());
        QCOMPARE(PageCheck::unreached(*m_page), QStringList());
    }

private:
    QSpinBox *number() const { return m_page->findChild<QSpinBox *>(); }
    QCheckBox *backup() const { return m_page->findChild<QCheckBox *>(); }
    QLineEdit *folder() const
    {
        return m_page->findChild<QLineEdit *>(QString(), Qt::FindDirectChildrenOnly);
    }
    QPushButton *clearButton() const
    {
        return PageCheck::button(*m_page, QStringLiteral("Clear Recent Files"));
    }

    std::unique_ptr<FilesPreferences> m_page;
};

NK_TEST_MAIN(TestFilesPreferences)
#include "test_files_preferences.moc"
