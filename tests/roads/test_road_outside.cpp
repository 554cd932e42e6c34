#include "RoadScene.h"

#include <TestMain.h>

#include <QProcess>
#include <QTemporaryDir>

/// The road of somebody who has nothing but the program's window: the executable, driven from another process by keys
/// and mouse of the window system.
class TestRoadOutside : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void a_node_renamed_in_the_executable_is_all_that_differs_in_the_file();

private:
    /// One command of the person's hands; what it prints.
    static QString hand(const QStringList &words)
    {
        QProcess process;
        process.start(QStringLiteral("xdotool"), words);
        return process.waitForFinished(30000) ? QString::fromUtf8(process.readAllStandardOutput()).trimmed()
                                              : QString();
    }
    static QByteArray read(const QString &path)
    {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("no such file");
    }
    static void key(const char *name) { hand({QStringLiteral("key"), QLatin1String(name)}); }
};

void TestRoadOutside::a_node_renamed_in_the_executable_is_all_that_differs_in_the_file()
{
    QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("room.gltf"));
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly) && file.write(RoadScene::plain()) > 0);
    file.close();
    QProcess program;
    program.start(QStringLiteral(WORKBENCH), {path});
    QVERIFY(program.waitForStarted());
    const QString window = hand({QStringLiteral("search"), QStringLiteral("--sync"),
                                 QStringLiteral("--onlyvisible"), QStringLiteral("--name"),
                                 QStringLiteral("^room.gltf - Workbench$")});
    QVERIFY(!window.isEmpty());
    const auto title = [&] { return hand({QStringLiteral("getwindowname"), window}); };
    QTRY_COMPARE(hand({QStringLiteral("getwindowfocus")}), window);

    // Somewhere in the scene graph, which stands at the upper left of the window; then its first row.
    hand({QStringLiteral("mousemove"), QStringLiteral("--window"), window, QStringLiteral("150"),
          QStringLiteral("230"), QStringLiteral("click"), QStringLiteral("1")});
    key("Home");
    key("F2");
    key("ctrl+a");
    hand({QStringLiteral("type"), QStringLiteral("Bench")});
    key("Return");
    QTRY_COMPARE(title(), QStringLiteral("room.gltf* - Workbench"));
    key("ctrl+s");
    QTRY_COMPARE(title(), QStringLiteral("room.gltf - Workbench"));
    key("ctrl+q");
    QVERIFY(program.waitForFinished());
    QCOMPARE(program.exitCode(), 0);
    QCOMPARE(QString::fromUtf8(program.readAllStandardError()), QString());
    QCOMPARE(read(path), RoadScene::plain().replace("\"Table\"", "\"Bench\""));
}

NK_TEST_MAIN(TestRoadOutside)
#include "test_road_outside.moc"
