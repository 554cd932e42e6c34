#include "AnswerFixture.h"
#include "ImporterFixture.h"
#include "TestMain.h"

#include <QProcess>

#include <cerrno>
#include <cstring>
#include <functional>

#include <fcntl.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace interchange;
using namespace ImporterFixture;

/// What happens to the importer never happens to the workbench: it says a sentence, and the process is gone.
class TestImporterProcess : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void saysWhyThereIsNoScene_data();
    void saysWhyThereIsNoScene();
    void readsWhatAnotherProgramAnswers();
    void goesOnWhereThereIsNoImporter();
    void stopsOneThatTakesTooLong();
    void stopsOneThatClosesItsOutputAndGoesOn();
    void stopsOneThatNeverEndsItsAnswer();
    void stopsAtOnceWhenThePersonCancels();
    void showsHowFarTheImporterIs();
    void bindsTheImporter();
    void endsTheImporterWithItsParent();
    void refusesToServeAnotherParent();
    void refusesFilesThatAreTooLarge();
};

namespace {

/// A program in the importer's place; $1 is the model.
QString fake(const Folder &folder, const QByteArray &script)
{
    const QString path = folder.write(QStringLiteral("fake"), "#!/bin/sh\n" + script + '\n');
    QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    return path;
}

Reading readByFake(const Folder &folder, const QByteArray &script,
                   const ImporterProcess::Limits &limits = ImporterProcess::Limits())
{
    ImporterReader reader;
    reader.setProgram(fake(folder, script));
    reader.setLimits(limits);
    return read(folder.write(QStringLiteral("model.obj"), triangleObj()), reader);
}

QByteArray hexOf(const QByteArray &bytes)
{
    QByteArray text;
    for (const char byte : bytes)
        text += "\\" + QByteArray::number(uchar(byte), 8).rightJustified(3, '0');
    return "printf '" + text + "'\n";
}

QByteArray started()
{
    return hexOf(AnswerFixture::answer([](FlatWriter &writer) { writer.progress(0.5F); }));
}

QByteArray failed(flat::Failure failure, const char *detail)
{
    return hexOf(AnswerFixture::answer([=](FlatWriter &writer) { writer.failure(failure, detail); }));
}

/// Whether the process that has written its id to the file is gone, and nobody has to clear it away.
bool isGone(const QString &file)
{
    QFile id(file);
    const bool isThere = id.open(QFile::ReadOnly);
    return isThere && kill(id.readAll().trimmed().toInt(), 0) == -1 && errno == ESRCH;
}

/// A model whose answer is much longer than a pipe takes: the importer waits for its reader.
QByteArray longObj()
{
    QByteArray obj;
    for (int i = 0; i < 30000; ++i)
        obj += "v " + QByteArray::number(i) + " 0 0\nv 0 " + QByteArray::number(i + 1) + " 1\nv 0 0 "
               + QByteArray::number(i) + ".5\nf -1 -2 -3\n";
    return obj;
}

/// Remembers the steps, and cancels as soon as something is the case.
class Display : public kernel::ProgressDisplay
{
public:
    explicit Display(std::function<bool()> isEnough) : m_isEnough(std::move(isEnough)) { install(this); }
    void begin(const QString &) override {}
    bool advance(double share) override
    {
        m_shares.append(share);
        return !m_isEnough();
    }
    int interval() const override { return 0; }
    void end() override {}
    const QVector<double> &shares() const { return m_shares; }

private:
    std::function<bool()> m_isEnough;
    QVector<double> m_shares;
};

} // namespace

void TestImporterProcess::saysWhyThereIsNoScene_data()
{
    QTest::addColumn<QByteArray>("script");
    QTest::addColumn<QString>("reason");
    const QString crashed = QStringLiteral("the importer crashed on it");
    const QString nonsense = QStringLiteral("the importer gave no answer that makes sense");
    QTest::newRow("crash") << QByteArray("kill -SEGV $$") << crashed;
    QTest::newRow("abort") << QByteArray("kill -ABRT $$") << crashed;
    QTest::newRow("killed") << started() + "kill -KILL $$" << crashed;
    QTest::newRow("computes too long")
        << QByteArray("kill -XCPU $$") << QStringLiteral("reading it takes longer than 300 seconds");
    QTest::newRow("crash behind a whole answer")
        << hexOf(AnswerFixture::answer(AnswerFixture::writeScene)) + "kill -SEGV $$" << crashed;
    QTest::newRow("memory") << QByteArray("exit 3")
                            << QStringLiteral("reading it needs more than 2 GiB of memory");
    QTest::newRow("memory in the middle")
        << started() + "exit 3" << QStringLiteral("reading it needs more than 2 GiB of memory");
    QTest::newRow("silence") << QByteArray("exit 0") << nonsense;
    QTest::newRow("begins and ends") << started() << nonsense;
    QTest::newRow("babbles") << QByteArray("echo Hello, here I am") << nonsense;
    QTest::newRow("babbles in an answer") << started() + "echo Hello" << nonsense;
    QTest::newRow("unknown failure") << failed(flat::Failure(77), "x") << nonsense;
    QTest::newRow("unknown kind") << failed(flat::Failure::UnknownKind, "")
                                  << QStringLiteral("scenes of the kind “.obj” are not known");
    QTest::newRow("empty") << failed(flat::Failure::Empty, "") << QStringLiteral("nothing was found in it");
    QTest::newRow("too deep") << failed(flat::Failure::TooMuch, "depth")
                              << QStringLiteral("its nodes are more than 1,000 levels deep");
    QTest::newRow("too many") << failed(flat::Failure::TooMuch, "nodes")
                              << QStringLiteral("it has more than 1,000,000 nodes");
    QTest::newRow("library") << failed(flat::Failure::NotUnderstood, "OBJ: Line\n\t 7 is <b>bad</b>.")
                             << QStringLiteral("OBJ: Line 7 is <b>bad</b>");
    QTest::newRow("library without words")
        << failed(flat::Failure::NotUnderstood, "vector::_M_default_append")
        << QStringLiteral("the file is damaged");
    QTest::newRow("library with many words")
        << failed(flat::Failure::NotUnderstood, QByteArray(5000, 'x').constData())
        << QString(200, QLatin1Char('x')) + QStringLiteral(" …");
}

void TestImporterProcess::saysWhyThereIsNoScene()
{
    QFETCH(QByteArray, script);
    QFETCH(QString, reason);
    const Folder folder;
    const Reading reading = readByFake(folder, script);
    QVERIFY(!reading.isRead);
    QCOMPARE(reading.error, reason);
    QVERIFY(reading.message.startsWith(QStringLiteral("“model.obj” cannot be opened: ")));
}

void TestImporterProcess::readsWhatAnotherProgramAnswers()
{
    const Folder folder;
    const Reading reading = readByFake(folder, hexOf(AnswerFixture::answer(AnswerFixture::writeScene)));
    QVERIFY2(reading.isRead, qPrintable(reading.error));
    QCOMPARE(int(reading.scene.nodes.size()), 3);
}

void TestImporterProcess::goesOnWhereThereIsNoImporter()
{
    const Folder folder;
    ImporterReader reader;
    reader.setProgram(folder.path(QStringLiteral("nowhere")));
    const Reading reading = read(folder.write(QStringLiteral("model.obj"), triangleObj()), reader);
    QVERIFY(!reading.isRead);
    QCOMPARE(reading.error, QStringLiteral("the importer for files of the kind “.obj” cannot be started"));
}

void TestImporterProcess::stopsOneThatTakesTooLong()
{
    const Folder folder;
    const Reading reading = readByFake(folder, "echo $$ > \"$1.id\"; exec sleep 1000", limitsOf(3000));
    QCOMPARE(reading.error, QStringLiteral("reading it takes longer than 3 seconds"));
    QVERIFY(isGone(folder.path(QStringLiteral("model.obj.id"))));
}

void TestImporterProcess::stopsOneThatClosesItsOutputAndGoesOn()
{
    const Folder folder;
    const Reading reading = readByFake(folder, "echo $$ > \"$1.id\"; exec sleep 1000 >&-", limitsOf(3000));
    QCOMPARE(reading.error, QStringLiteral("reading it takes longer than 3 seconds"));
    QVERIFY(isGone(folder.path(QStringLiteral("model.obj.id"))));
}

void TestImporterProcess::stopsOneThatNeverEndsItsAnswer()
{
    const Folder folder;
    ImporterProcess::Limits limits;
    limits.answerBytes = 16 << 20;
    const QByteArray endless = started() + "echo $$ > \"$1.id\"; printf '\\003'; exec cat /dev/zero";
    const Reading reading = readByFake(folder, endless, limits);
    QCOMPARE(reading.error, QStringLiteral("there is more in it than 16 MiB"));
    QVERIFY(isGone(folder.path(QStringLiteral("model.obj.id"))));
}

void TestImporterProcess::stopsAtOnceWhenThePersonCancels()
{
    const Folder folder;
    const QString id = folder.path(QStringLiteral("model.obj.id"));
    const Display display([&id] { return QFileInfo(id).size() > 0; });
    const Reading reading = readByFake(folder, "echo $$ > \"$1.id\"; exec sleep 1000");
    QVERIFY(!reading.isRead);
    QVERIFY2(reading.error.isEmpty(), "the person knows why");
    QVERIFY(isGone(id));
}

void TestImporterProcess::showsHowFarTheImporterIs()
{
    const Folder folder;
    const Display display([] { return false; });
    const QByteArray scene = hexOf(AnswerFixture::answer(AnswerFixture::writeScene).mid(8));
    QVERIFY(readByFake(folder, started() + scene).isRead);
    QVERIFY(display.shares().contains(0.4)); // a fifth of the bar is for making the scene
}

void TestImporterProcess::bindsTheImporter()
{
    const Folder folder;
    QProcess importer;
    importer.start(QStringLiteral(NK_IMPORTER), {folder.write(QStringLiteral("long.obj"), longObj()),
                                                 QString::number(QCoreApplication::applicationPid())});
    QVERIFY(importer.waitForReadyRead());
    const auto systemFile = [&importer](const char *name) {
        QFile file(QStringLiteral("/proc/%1/%2").arg(importer.processId()).arg(QLatin1String(name)));
        return file.open(QFile::ReadOnly) ? QString::fromUtf8(file.readAll().simplified()) : QString();
    };
    const QString limits = systemFile("limits");
    QVERIFY2(limits.contains(QStringLiteral("Max core file size 0 0")), qPrintable(limits));
    QVERIFY2(limits.contains(QStringLiteral("Max file size 0 0")), qPrintable(limits));
    QVERIFY2(limits.contains(QStringLiteral("Max open files 64 64")), qPrintable(limits));
    QVERIFY2(limits.contains(QStringLiteral("Max cpu time 300 301")), qPrintable(limits));
#ifndef __SANITIZE_ADDRESS__
    QVERIFY2(limits.contains(QStringLiteral("Max address space 2147483648 2147483648")), qPrintable(limits));
#endif
    QVERIFY(systemFile("status").contains(QStringLiteral("NoNewPrivs: 1")));
    importer.kill();
    QVERIFY(importer.waitForFinished());
}

void TestImporterProcess::endsTheImporterWithItsParent()
{
    const Folder folder;
    const QByteArray model = QFile::encodeName(folder.write(QStringLiteral("long.obj"), longObj()));
    int ends[2];
    QCOMPARE(pipe2(ends, O_CLOEXEC), 0);
    const pid_t parent = fork();
    if (parent == 0) {
        char id[16];
        snprintf(id, sizeof(id), "%d", int(getpid()));
        if (fork() == 0) {
            dup2(ends[1], STDOUT_FILENO);
            execl(NK_IMPORTER, NK_IMPORTER, model.constData(), id, nullptr);
            _exit(1);
        }
        for (;;)
            pause();
    }
    close(ends[1]);
    char bytes[8];
    QCOMPARE(int(read(ends[0], bytes, sizeof(bytes))), int(sizeof(bytes)));
    QCOMPARE(kill(parent, SIGKILL), 0);
    QCOMPARE(waitpid(parent, nullptr, 0), parent);
    QFile rest;
    QVERIFY(rest.open(ends[0], QFile::ReadOnly, QFile::AutoCloseHandle));
    // Had it gone on, the answer would be whole now.
    QVERIFY(!rest.readAll().endsWith("end!"));
}

void TestImporterProcess::refusesToServeAnotherParent()
{
    const Folder folder;
    const QString model = folder.write(QStringLiteral("model.obj"), triangleObj());
    QProcess importer;
    importer.start(QStringLiteral(NK_IMPORTER), {model, QStringLiteral("1")});
    QVERIFY(importer.waitForFinished());
    QCOMPARE(importer.exitCode(), 2);
    QVERIFY(importer.readAllStandardOutput().isEmpty());
    importer.start(QStringLiteral(NK_IMPORTER), QStringList());
    QVERIFY(importer.waitForFinished());
    QCOMPARE(importer.exitCode(), 2);
    QVERIFY(importer.readAllStandardError().startsWith("usage: "));
}

void TestImporterProcess::refusesFilesThatAreTooLarge()
{
    const Folder folder;
    const QString model = folder.write(QStringLiteral("large.stl"), "solid");
    QVERIFY(QFile::resize(model, importlimits::FileBytes + 1)); // a hole, which takes no room
    QCOMPARE(read(model).error, QStringLiteral("the file is larger than 1 GiB"));
}

NK_GUILESS_TEST_MAIN(TestImporterProcess)
#include "test_importer_process.moc"
