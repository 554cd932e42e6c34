#include "CommandLine.h"
#include "TestMain.h"

/// What the workbench makes of its command line.
class TestCommandLine : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void nothingMeansNoScene();
    void theSampleIsAskedForOrTheOnlyThingToTakeAPictureOf();
    void aFileBecomesAbsolute();
    void aPictureAndAFile();
    void wrongUseIsToldInOneLine_data();
    void wrongUseIsToldInOneLine();
    void helpIsNoFailure();

private:
    static CommandLine parse(const QStringList &words)
    {
        return CommandLine::parse(QStringList{QStringLiteral("workbench")} + words);
    }
};

void TestCommandLine::nothingMeansNoScene()
{
    const CommandLine line = parse({});
    QVERIFY(line.file.isEmpty());
    QVERIFY(!line.sample);
    QVERIFY(line.screenshot.isEmpty());
    QVERIFY(line.message.isEmpty());
}

void TestCommandLine::theSampleIsAskedForOrTheOnlyThingToTakeAPictureOf()
{
    QVERIFY(parse({QStringLiteral("--sample")}).sample);
    QVERIFY(parse({QStringLiteral("--screenshot"), QStringLiteral("o.png")}).sample);
    QVERIFY(
        !parse({QStringLiteral("--screenshot"), QStringLiteral("o.png"), QStringLiteral("a.glb")}).sample);
}

void TestCommandLine::aFileBecomesAbsolute()
{
    QCOMPARE(parse({QStringLiteral("a b.glb")}).file,
             QDir::current().absoluteFilePath(QStringLiteral("a b.glb")));
    QCOMPARE(parse({QStringLiteral("/x/a.glb")}).file, QStringLiteral("/x/a.glb"));
}

void TestCommandLine::aPictureAndAFile()
{
    const CommandLine line = parse(
        {QStringLiteral("--screenshot"), QStringLiteral("o.png"), QStringLiteral("/a.glb")});
    QCOMPARE(line.screenshot, QStringLiteral("o.png"));
    QCOMPARE(line.file, QStringLiteral("/a.glb"));
}

void TestCommandLine::wrongUseIsToldInOneLine_data()
{
    QTest::addColumn<QStringList>("words");
    QTest::newRow("unknown option") << QStringList{QStringLiteral("--picture")};
    QTest::newRow("the sample and a file")
        << QStringList{QStringLiteral("--sample"), QStringLiteral("a.glb")};
    QTest::newRow("two files") << QStringList{QStringLiteral("a.glb"), QStringLiteral("b.glb")};
    QTest::newRow("picture without a name") << QStringList{QStringLiteral("--screenshot")};
    QTest::newRow("picture with an empty name") << QStringList{QStringLiteral("--screenshot"), QString()};
}

void TestCommandLine::wrongUseIsToldInOneLine()
{
    QFETCH(QStringList, words);
    const CommandLine line = parse(words);
    QVERIFY(!line.message.isEmpty());
    QVERIFY(!line.message.contains(QLatin1Char('\n')));
    QCOMPARE(line.status, 2);
}

void TestCommandLine::helpIsNoFailure()
{
    const CommandLine line = parse({QStringLiteral("--help")});
    QVERIFY(line.message.contains(QStringLiteral("--screenshot")));
    QCOMPARE(line.status, 0);
}

NK_GUILESS_TEST_MAIN(TestCommandLine)
#include "test_command_line.moc"
