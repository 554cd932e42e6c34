#include "TestMain.h"

#include <QImage>
#include <QProcess>
#include <QTemporaryDir>

/// The workbench as a process: it starts with a scene and leaves a picture, and says in one line why not.
class TestStart : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void leavesAPictureOfTheSampleScene();
    void opensAFile();
    void aFileThatIsMissingOrNoSceneIsOneLine_data();
    void aFileThatIsMissingOrNoSceneIsOneLine();
    void aPictureThatCannotBeWrittenIsOneLine();

private:
    struct Outcome
    {
        int status;
        QString errors;
    };
    static Outcome run(const QStringList &words)
    {
        QProcess process;
        process.start(QStringLiteral(WORKBENCH), words);
        process.waitForFinished(180000);
        const int status = process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
        return {status, QString::fromUtf8(process.readAllStandardError())};
    }
    QString write(const QString &name, const QByteArray &content)
    {
        QFile file(m_directory.filePath(name));
        return file.open(QIODevice::WriteOnly) && file.write(content) == content.size() ? file.fileName()
                                                                                        : QString();
    }
    QTemporaryDir m_directory;
};

void TestStart::leavesAPictureOfTheSampleScene()
{
    const QString picture = m_directory.filePath(QStringLiteral("sample.png"));
    const Outcome outcome = run({QStringLiteral("--screenshot"), picture});
    QCOMPARE(outcome.errors, QString());
    QCOMPARE(outcome.status, 0);
    const QImage image(picture);
    QVERIFY(image.width() >= 1000);
    // A window that was never painted is of one colour.
    QVERIFY(image.convertToFormat(QImage::Format_Indexed8).colorCount() > 10);
}

void TestStart::opensAFile()
{
    const QString scene = write(QStringLiteral("one.gltf"), R"({"asset":{"version":"2.0"},"scene":0,
        "scenes":[{"nodes":[0]}],"nodes":[{"name":"Only","extras":{"part":"A-1"}}]})");
    const QString picture = m_directory.filePath(QStringLiteral("one.png"));
    const Outcome outcome = run({QStringLiteral("--screenshot"), picture, scene});
    QCOMPARE(outcome.errors, QString());
    QCOMPARE(outcome.status, 0);
    QVERIFY(!QImage(picture).isNull());
}

void TestStart::aFileThatIsMissingOrNoSceneIsOneLine_data()
{
    QTest::addColumn<QString>("file");
    QTest::newRow("missing") << m_directory.filePath(QStringLiteral("none.glb"));
    QTest::newRow("a folder") << m_directory.path();
    QTest::newRow("empty") << write(QStringLiteral("empty.gltf"), QByteArray());
    QTest::newRow("words") << write(QStringLiteral("words.gltf"), "This is no scene.");
    QTest::newRow("header alone") << write(QStringLiteral("header.glb"),
                                           QByteArray("glTF\2\0\0\0\14\0\0\0", 12));
    QTest::newRow("another format") << write(QStringLiteral("picture.png"), "\x89PNG\r\n");
}

void TestStart::aFileThatIsMissingOrNoSceneIsOneLine()
{
    QFETCH(QString, file);
    const QString picture = m_directory.filePath(QStringLiteral("nothing.png"));
    const Outcome outcome = run({QStringLiteral("--screenshot"), picture, file});
    QCOMPARE(outcome.status, 1);
    QCOMPARE(outcome.errors.count(QLatin1Char('\n')), 1);
    QVERIFY2(outcome.errors.startsWith(QStringLiteral("workbench: ")), qPrintable(outcome.errors));
    QVERIFY2(outcome.errors.contains(QFileInfo(file).fileName()), qPrintable(outcome.errors));
    QVERIFY(!QFile::exists(picture));
}

void TestStart::aPictureThatCannotBeWrittenIsOneLine()
{
    const Outcome outcome = run(
        {QStringLiteral("--screenshot"), QStringLiteral("/no/such/folder/picture.png")});
    QCOMPARE(outcome.status, 1);
    QCOMPARE(outcome.errors.count(QLatin1Char('\n')), 1);
}

NK_TEST_MAIN(TestStart)
#include "test_start.moc"
