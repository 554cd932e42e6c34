#include "FaultyFileCalls.h"
#include "SetFileFixture.h"

#include <TestMain.h>
#include <kernel/services/FileCalls.h>

#include <fcntl.h>
#include <functional>
#include <memory>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

/// Whatever goes wrong while sets are saved, the file is the old one or the new one, whole. A writer that simply
/// writes goes through the same tests, which show that they would find out.
class TestSetFileDurability : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup() { m_fixture.reset(); }

    void a_process_killed_at_any_call_leaves_a_whole_file_data();
    void a_process_killed_at_any_call_leaves_a_whole_file();
    void an_error_of_any_call_leaves_a_whole_file_data();
    void an_error_of_any_call_leaves_a_whole_file();
    void a_write_that_takes_half_is_continued();
    void a_disk_that_holds_something_else_is_noticed();
    void a_naive_writer_is_caught();
    void the_file_is_synced_before_it_is_renamed_and_the_folder_after();
    void permissions_and_links_stay();
    void a_new_file_gets_the_usual_permissions();
    void read_only_files_are_left_alone();
    void folders_that_are_not_there_are_told();

private:
    using Writer = std::function<void()>;

    void saveNew() { f().service().saveSets(m_sets, f().path()); }
    void naiveWrite() const;
    void restore();
    bool isWhole() const;
    int callsOf(const Writer &writer);
    int killedAt(const Writer &writer, FaultyFileCalls::Fault fault);
    SetFileFixture &f() const { return *m_fixture; }

    std::unique_ptr<SetFileFixture> m_fixture;
    QList<nkdMetadataSet> m_sets;
    QByteArray m_old;
    QByteArray m_new;
};

void TestSetFileDurability::init()
{
    m_fixture = std::make_unique<SetFileFixture>();
    m_old = SetFileFixture::file("{\"key\":\"old\",\"type\":\"tag\"}");
    // Large enough for several writes and reads.
    kernel::DocumentLoader loader(kernel::DocumentLoader::Mode::Add);
    m_sets.clear();
    for (int i = 0; i < 3; ++i) {
        const quint64 set = loader.addSet(QStringLiteral("Set %1").arg(i));
        loader.addEntry(set, QStringLiteral("k"), nkMetadataTypes::String,
                        QString((1 << 20) + i, QLatin1Char('x')));
        m_sets.append(nkdMetadataSet(set));
    }
    loader.commit();
    m_new = f().save(m_sets);
    QVERIFY(QFile::remove(f().path("save.json")));
    QVERIFY(m_new.size() > (3 << 20));
}

/// Puts the old file back, and nothing beside it; nothing at all where there is to be no old file.
void TestSetFileDurability::restore()
{
    for (const QString &name : f().files())
        QVERIFY(QFile::remove(f().folder.filePath(name)));
    if (!m_old.isEmpty())
        SetFileFixture::write(f().path(), m_old);
}

bool TestSetFileDurability::isWhole() const
{
    const QByteArray content = SetFileFixture::read(f().path());
    const QByteArray old = m_old.isEmpty() ? QByteArray("no such file") : m_old;
    return content == old || content == m_new;
}

void TestSetFileDurability::naiveWrite() const
{
    kernel::FileCalls &calls = kernel::FileCalls::the();
    const int file = calls.open(QFile::encodeName(f().path()).constData(), O_WRONLY | O_CREAT | O_TRUNC,
                                0666);
    const char *at = m_new.constData();
    const char *const end = at + m_new.size();
    for (ssize_t count = 1; count > 0 && at < end; at += std::max<ssize_t>(count, 0))
        count = calls.write(file, at, size_t(std::min<qint64>(end - at, 1 << 20)));
    calls.close(file);
}

int TestSetFileDurability::callsOf(const Writer &writer)
{
    restore();
    FaultyFileCalls calls;
    writer();
    return calls.made;
}

/// Has a process of its own killed at each call in turn. @return how often the file was neither old nor new
int TestSetFileDurability::killedAt(const Writer &writer, FaultyFileCalls::Fault fault)
{
    const int count = callsOf(writer);
    int broken = 0;
    int kills = 0;
    for (int at = 1; at <= count; ++at) {
        restore();
        const pid_t child = ::fork();
        if (child == 0) {
            FaultyFileCalls calls;
            calls.at = at;
            calls.fault = fault;
            writer();
            ::_exit(0);
        }
        int status = 0;
        ::waitpid(child, &status, 0);
        kills += WIFSIGNALED(status) && WTERMSIG(status) == SIGKILL ? 1 : 0;
        broken += isWhole() ? 0 : 1;
    }
    // Half a write can only be done by writes.
    return fault == FaultyFileCalls::Kill && kills != count ? -1 : kills == 0 ? -1 : broken;
}

void TestSetFileDurability::a_process_killed_at_any_call_leaves_a_whole_file_data()
{
    QTest::addColumn<bool>("hasOld");
    QTest::addColumn<int>("fault");
    QTest::newRow("old file") << true << int(FaultyFileCalls::Kill);
    QTest::newRow("old file, amid writes") << true << int(FaultyFileCalls::KillHalfway);
    QTest::newRow("new file") << false << int(FaultyFileCalls::Kill);
    QTest::newRow("new file, amid writes") << false << int(FaultyFileCalls::KillHalfway);
}

void TestSetFileDurability::a_process_killed_at_any_call_leaves_a_whole_file()
{
    QFETCH(bool, hasOld);
    QFETCH(int, fault);
    m_old = hasOld ? m_old : QByteArray();
    QCOMPARE(killedAt([this] { saveNew(); }, FaultyFileCalls::Fault(fault)), 0);
}

void TestSetFileDurability::a_naive_writer_is_caught()
{
    QVERIFY(killedAt([this] { naiveWrite(); }, FaultyFileCalls::Kill) > 0);
    QVERIFY(killedAt([this] { naiveWrite(); }, FaultyFileCalls::KillHalfway) > 0);
    const int count = callsOf([this] { naiveWrite(); });
    int broken = 0;
    for (int at = 1; at <= count; ++at) {
        restore();
        FaultyFileCalls calls;
        calls.at = at;
        calls.fault = FaultyFileCalls::Error;
        naiveWrite();
        broken += isWhole() ? 0 : 1;
    }
    QVERIFY(broken > 0);
}

void TestSetFileDurability::an_error_of_any_call_leaves_a_whole_file_data()
{
    QTest::addColumn<bool>("hasOld");
    QTest::addColumn<int>("fault");
    QTest::addColumn<int>("code");
    QTest::newRow("disk") << true << int(FaultyFileCalls::Error) << EIO;
    QTest::newRow("full") << true << int(FaultyFileCalls::Error) << ENOSPC;
    QTest::newRow("rights") << true << int(FaultyFileCalls::Error) << EACCES;
    QTest::newRow("full amid writes") << true << int(FaultyFileCalls::ShortThenFail) << ENOSPC;
    QTest::newRow("new file") << false << int(FaultyFileCalls::Error) << EIO;
}

void TestSetFileDurability::an_error_of_any_call_leaves_a_whole_file()
{
    QFETCH(bool, hasOld);
    QFETCH(int, fault);
    QFETCH(int, code);
    m_old = hasOld ? m_old : QByteArray();
    const int count = callsOf([this] { saveNew(); });
    QVERIFY(count > 15);
    int failures = 0;
    for (int at = 1; at <= count; ++at) {
        restore();
        f().reports.clear();
        FaultyFileCalls calls;
        calls.at = at;
        calls.fault = FaultyFileCalls::Fault(fault);
        calls.code = code;
        saveNew();
        QVERIFY2(isWhole(), qPrintable(QString::number(at)));
        const bool isNew = SetFileFixture::read(f().path()) == m_new;
        failures += f().reports.size();
        // Said to be saved, it is; said not to be, it is not; and no temporary file stays.
        const QString report = f().reports.isEmpty() ? QString() : f().takeReport();
        QCOMPARE(isNew, report.isEmpty() || report.contains(QStringLiteral("was saved, but")));
        QVERIFY(report.isEmpty() || report.contains(f().path()));
        QCOMPARE(f().files().size(), isNew || hasOld ? 1 : 0);
    }
    QVERIFY(failures >= (fault == FaultyFileCalls::Error ? 12 : 3));
}

void TestSetFileDurability::a_write_that_takes_half_is_continued()
{
    const int count = callsOf([this] { saveNew(); });
    for (int at = 1; at <= count; ++at) {
        restore();
        FaultyFileCalls calls;
        calls.at = at;
        calls.fault = FaultyFileCalls::ShortThenOk;
        saveNew();
        QCOMPARE(SetFileFixture::read(f().path()), m_new);
    }
    QVERIFY(f().reports.isEmpty());
}

void TestSetFileDurability::a_disk_that_holds_something_else_is_noticed()
{
    restore();
    FaultyFileCalls calls;
    calls.readsGarbage = true;
    saveNew();
    QVERIFY(f().takeReport().contains(QStringLiteral("something else than was written")));
    QCOMPARE(SetFileFixture::read(f().path()), m_old);
    QCOMPARE(f().files().size(), 1);
}

/// What only a power cut would show.
void TestSetFileDurability::the_file_is_synced_before_it_is_renamed_and_the_folder_after()
{
    restore();
    FaultyFileCalls calls;
    saveNew();
    const QStringList &names = calls.names;
    const int lastWrite = names.lastIndexOf(QStringLiteral("write"));
    const int renamed = names.indexOf(QStringLiteral("rename"));
    QCOMPARE(names.at(lastWrite + 1), QStringLiteral("fsync"));
    QCOMPARE(names.at(lastWrite + 2), QStringLiteral("close"));
    QVERIFY(names.mid(lastWrite, renamed - lastWrite).contains(QStringLiteral("read")));
    QCOMPARE(names.mid(renamed), QStringList({QStringLiteral("rename"), QStringLiteral("open"),
                                              QStringLiteral("fsync"), QStringLiteral("close")}));
}

void TestSetFileDurability::permissions_and_links_stay()
{
    restore();
    const QByteArray path = QFile::encodeName(f().path());
    const QByteArray link = QFile::encodeName(f().path("link.json"));
    QCOMPARE(::chmod(path.constData(), 0640), 0);
    QCOMPARE(::symlink("sets.json", link.constData()), 0);
    f().service().saveSets(m_sets, f().path("link.json"));
    QVERIFY(f().reports.isEmpty());
    struct stat state = {};
    QCOMPARE(::lstat(link.constData(), &state), 0);
    QVERIFY(S_ISLNK(state.st_mode));
    QCOMPARE(::lstat(path.constData(), &state), 0);
    QVERIFY(S_ISREG(state.st_mode));
    QCOMPARE(int(state.st_mode & 07777), 0640);
    QCOMPARE(SetFileFixture::read(f().path()), m_new);
}

void TestSetFileDurability::a_new_file_gets_the_usual_permissions()
{
    const mode_t mask = ::umask(027);
    saveNew();
    ::umask(mask);
    struct stat state = {};
    QCOMPARE(::stat(QFile::encodeName(f().path()).constData(), &state), 0);
    QCOMPARE(int(state.st_mode & 07777), 0640);
}

void TestSetFileDurability::read_only_files_are_left_alone()
{
    restore();
    QCOMPARE(::chmod(QFile::encodeName(f().path()).constData(), 0444), 0);
    saveNew();
    QVERIFY(f().takeReport().contains(QStringLiteral("the file is read-only")));
    QCOMPARE(SetFileFixture::read(f().path()), m_old);
}

void TestSetFileDurability::folders_that_are_not_there_are_told()
{
    f().service().saveSets(m_sets, f().folder.filePath(QStringLiteral("no/sets.json")));
    QVERIFY(f().takeReport().contains(QStringLiteral("No such file or directory")));
    f().service().saveSets(m_sets, f().folder.path());
    QVERIFY(f().takeReport().contains(QStringLiteral("no regular file")));
    QVERIFY(f().files().isEmpty());
}

NK_TEST_MAIN(TestSetFileDurability)
#include "test_set_file_durability.moc"
