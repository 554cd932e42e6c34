#include <SceneFixture.h>
#include <TestMain.h>
#include <interchange/libraries/StringLibraries.h>
#include <kernel/services/DurableFile.h>
#include <nkKernelServices/nkLogService.h>
#include <nkKernelServices/nkMetadataService.h>

#include <QFile>
#include <QSignalSpy>
#include <QTemporaryDir>

using interchange::StringLibraries;

/// Which words are offered: of the active library as it is on disk, or of the scene's keys.
class TestStringLibraries : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        SceneFixture::reset();
        m_folder = std::make_unique<QTemporaryDir>();
        nkMetadataService::the().setStringLibraries({});
        nkMetadataService::the().setActiveStringLibraryIndex(-1);
        m_libraries = std::make_unique<StringLibraries>();
        m_settled = std::make_unique<QSignalSpy>(m_libraries.get(), &StringLibraries::settled);
        m_reports = std::make_unique<QSignalSpy>(&nkLogService::the(), &nkLogService::reported);
    }
    void cleanup() { m_libraries.reset(); }

    void nothing_is_read_before_the_start()
    {
        use({m_folder->filePath("missing.txt")}, 0);
        QCoreApplication::processEvents();
        QCOMPARE(m_settled->size(), 0);
        QCOMPARE(m_reports->size(), 0);
        m_libraries->start();
        QTRY_COMPARE(m_settled->size(), 1);
        QCOMPARE(m_reports->size(), 1);
    }

    void the_active_library_is_offered_and_no_other()
    {
        start({write("a.txt", "oak"), write("b.txt", "oaken")}, 1);
        QCOMPARE(offered(), QStringList{"oaken"});
        nkMetadataService::the().setActiveStringLibraryIndex(0);
        QTRY_COMPARE(offered(), QStringList{"oak"});
    }

    void the_scenes_keys_are_offered_when_no_library_is_active_data()
    {
        QTest::addColumn<int>("index");
        QTest::newRow("none") << -1;
        QTest::newRow("beyond the list") << 1;
        QTest::newRow("far beyond") << 2147483647;
        QTest::newRow("far below") << -2147483647;
    }
    void the_scenes_keys_are_offered_when_no_library_is_active()
    {
        QFETCH(int, index);
        addEntry("key");
        start({write("a.txt", "oak")}, index);
        QCOMPARE(m_libraries->activeLibrary(), QString());
        QCOMPARE(offered(), QStringList{"key"});
    }

    void the_scenes_keys_are_offered_when_the_library_has_no_word()
    {
        addEntry("key");
        start({write("a.txt", "# nothing yet\n")}, 0);
        QCOMPARE(offered(), QStringList{"key"});
        QVERIFY(m_libraries->canAdd("oak"));
    }

    void the_scenes_keys_follow_the_scene()
    {
        start({}, -1);
        QVERIFY(offered().isEmpty());
        nkdMetadataSet set = addEntry("key");
        QCOMPARE(offered(), QStringList{"key"});
        nkdMetadataEntry entry = set.getEntries().find("key");
        entry.setKey("name");
        QCOMPARE(offered(), QStringList{"name"});
        kernel::Document::the().undo();
        QCOMPARE(offered(), QStringList{"key"});
        nkMetadataService::the().deleteSets({set});
        QVERIFY(offered().isEmpty());
        kernel::Document::the().undo();
        QCOMPARE(offered(), QStringList{"key"});
        SceneFixture::reset();
        QVERIFY(offered().isEmpty());
        addEntry("other");
        QCOMPARE(offered(), QStringList{"other"});
        // The first key of each scene has the same number.
        SceneFixture::reset();
        addEntry("third");
        QCOMPARE(offered(), QStringList{"third"});
    }

    void the_keys_of_objects_are_the_scenes_too()
    {
        start({}, -1);
        nkdMetadata::fromObject(SceneFixture::node("Chair"))
            .getObjectSet()
            .createEntry(nkMetadataTypes::Integer);
        QCOMPARE(offered().size(), 1);
    }

    void a_library_that_cannot_be_read_is_told_once_and_skipped()
    {
        addEntry("key");
        const QString path = write("a.txt", QByteArray("a\0b", 3));
        start({path}, 0);
        QCOMPARE(m_reports->size(), 1);
        QCOMPARE(m_reports->first().at(0).toInt(), 1);
        QVERIFY(m_reports->first().at(2).toString().contains(path));
        QCOMPARE(offered(), QStringList{"key"});
        QVERIFY(!m_libraries->canAdd("oak"));
        change([&] { write("a.txt", QByteArray("b\0c", 3)); });
        QCOMPARE(m_reports->size(), 1);
        change([&] { write("a.txt", "oak"); });
        QCOMPARE(offered(), QStringList{"oak"});
        change([&] { write("a.txt", QByteArray("a\0b", 3)); });
        QCOMPARE(m_reports->size(), 2);
    }

    void a_library_written_anew_is_read_again()
    {
        start({write("a.txt", "oak")}, 0);
        change([&] { write("a.txt", "oak\nash"); });
        QCOMPARE(offered(), (QStringList{"ash", "oak"}));
        change([&] { write("a.txt", "ash"); });
        QCOMPARE(offered(), QStringList{"ash"});
    }

    void a_library_replaced_again_and_again_is_read_each_time()
    {
        const QString path = write("a.txt", "oak");
        start({path}, 0);
        for (const char *word : {"ash", "elm", "fir"}) {
            change([&] { QCOMPARE(kernel::DurableFile::replace(path, word), QString()); });
            QCOMPARE(offered(), QStringList{word});
        }
        change([&] { write("a.txt", "written"); });
        QCOMPARE(offered(), QStringList{"written"});
    }

    void a_library_that_goes_and_comes_back_is_followed()
    {
        const QString path = write("a.txt", "oak");
        start({path}, 0);
        change([&] { QVERIFY(QFile::remove(path)); });
        QCOMPARE(m_reports->size(), 1);
        QVERIFY(offered().isEmpty());
        change([&] { write("a.txt", "ash"); });
        QCOMPARE(offered(), QStringList{"ash"});
    }

    void what_else_happens_in_the_folder_does_not_matter()
    {
        interchange::StringLibraryWatch one;
        interchange::StringLibraryWatch other;
        one.watch(write("a.txt", "oak"));
        other.watch(write("b.txt", "ash"));
        const QSignalSpy changesOfOne(&one, &interchange::StringLibraryWatch::changed);
        const QSignalSpy changesOfOther(&other, &interchange::StringLibraryWatch::changed);
        // Twice: when the second is told, whatever the first brought about is over.
        for (int told = 1; told <= 2; ++told) {
            QVERIFY(QFile::remove(m_folder->filePath("b.txt")));
            write("b.txt", QByteArray("elm").repeated(told));
            QTRY_COMPARE(changesOfOther.size(), told);
        }
        QCOMPARE(changesOfOne.size(), 0);
    }

    void a_word_is_added_to_the_active_library()
    {
        const QString path = write("a.txt", "oak\n");
        start({path, write("b.txt", "ash\n")}, 0);
        QVERIFY(!m_libraries->canAdd("oak"));
        QVERIFY(m_libraries->canAdd("Oak"));
        QVERIFY(m_libraries->canAdd("ash"));
        change([&] { m_libraries->add("ash"); });
        QCOMPARE(offered(), (QStringList{"ash", "oak"}));
        QVERIFY(!m_libraries->canAdd("ash"));
        m_libraries->add("ash");
        QFile file(path);
        QVERIFY(file.open(QIODevice::ReadOnly));
        QCOMPARE(file.readAll(), QByteArray("oak\nash\n"));
    }

    void a_word_that_cannot_be_added_is_told()
    {
        const QString path = write("a.txt", "oak\n");
        start({path}, 0);
        QVERIFY(QFile::remove(path));
        m_libraries->add("ash");
        QCOMPARE(m_reports->size(), 1);
        QCOMPARE(m_reports->first().at(0).toInt(), 2);
        QVERIFY(!QFile::exists(path));
    }

    void may_go_while_it_reads()
    {
        write("a.txt", QByteArray("some words\n").repeated(100000));
        use({m_folder->filePath("a.txt")}, 0);
        m_libraries->start();
        m_libraries.reset();
        QCoreApplication::processEvents();
    }

    void no_library_chosen_while_one_is_read_wins()
    {
        use({write("a.txt", "oak")}, 0);
        m_libraries->start();
        nkMetadataService::the().setActiveStringLibraryIndex(-1);
        QCOMPARE(m_settled->size(), 1);
        QTRY_COMPARE(m_settled->size(), 2);
        QVERIFY(offered().isEmpty());
        QVERIFY(!m_libraries->canAdd("ash"));
    }

    void another_library_chosen_while_one_is_read_wins()
    {
        const QString slow = write("slow.txt", QByteArray("some words\n").repeated(100000));
        use({slow, write("a.txt", "oak")}, 0);
        m_libraries->start();
        nkMetadataService::the().setActiveStringLibraryIndex(1);
        QTRY_COMPARE(m_settled->size(), 1);
        QCOMPARE(offered(), QStringList{"oak"});
    }

private:
    QString write(const QString &name, const QByteArray &text) const
    {
        QFile file(m_folder->filePath(name));
        return file.open(QIODevice::WriteOnly) && file.write(text) == text.size() ? file.fileName()
                                                                                  : QString();
    }

    static void use(const QStringList &paths, int index)
    {
        nkMetadataService::the().setStringLibraries(paths);
        nkMetadataService::the().setActiveStringLibraryIndex(index);
    }

    void start(const QStringList &paths, int index) const
    {
        use(paths, index);
        m_libraries->start();
        if (!m_libraries->activeLibrary().isEmpty()) {
            QTRY_COMPARE(m_settled->size(), 1);
        }
    }

    /// Changes the active library on disk and waits until it was read again.
    void change(const std::function<void()> &action) const
    {
        const int before = m_settled->size();
        action();
        QTRY_VERIFY(m_settled->size() > before);
    }

    QStringList offered() const { return m_libraries->completions(QString(), 12); }

    static nkdMetadataSet addEntry(const QString &key)
    {
        nkdMetadataSet set = nkMetadataService::the().createSet(QStringLiteral("Set"), {});
        nkdMetadataEntry entry = set.createEntry(nkMetadataTypes::String);
        entry.setKey(key);
        return set;
    }

    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<StringLibraries> m_libraries;
    std::unique_ptr<QSignalSpy> m_settled;
    std::unique_ptr<QSignalSpy> m_reports;
};

NK_GUILESS_TEST_MAIN(TestStringLibraries)
#include "test_string_libraries.moc"
