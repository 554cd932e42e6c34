#include "Hands.h"
#include "MainWindow.h"
#include "Road.h"
#include "RoadScene.h"
#include "Workbench.h"
#include "files/Autosave.h"

#include <ModalAnswer.h>
#include <TestMain.h>

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QMessageBox>
#include <QProcess>

namespace {

void press(QDialog *dialog, const QString &text)
{
    for (QAbstractButton *button : dialog->findChildren<QAbstractButton *>()) {
        if (QString(button->text()).remove(QLatin1Char('&')) == text) {
            Hands::click(button);
            return;
        }
    }
    Hands::fail(QStringLiteral("nobody offers ") + text);
    dialog->reject();
}

void editLamp(Road &road)
{
    Hands::clickCell(road.lower(), QStringLiteral("Lamp"));
    road.editValue(QStringLiteral("part"), QStringLiteral("mine"));
}

QByteArray edited()
{
    return RoadScene::plain().replace("\"X-9\"", "\"mine\"");
}

} // namespace

/// Roads on which something goes wrong.
class TestRoadTrouble : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void a_file_that_somebody_else_has_changed_is_left_alone_and_the_work_saved_elsewhere();
    void files_that_are_no_scenes_are_refused_and_the_open_scene_goes_on();
    void work_of_a_program_that_was_killed_is_restored_and_saved();
};

/// A person whose workbench is killed in the middle of their work; a process of its own.
class Victim : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void works()
    {
        Road road;
        qputenv("XDG_DATA_HOME", qgetenv("NK_ROAD_DATA"));
        road.start(QString::fromLocal8Bit(qgetenv("NK_ROAD_FILE")));
        editLamp(road);
        // The minutes until the next copy have gone by.
        QVERIFY(road.workbench()->autosave()->write());
        fputs("kept\n", stdout);
        fflush(stdout);
        QTest::qWait(60000);
    }
};

void TestRoadTrouble::a_file_that_somebody_else_has_changed_is_left_alone_and_the_work_saved_elsewhere()
{
    Road road;
    road.write(QStringLiteral("room.gltf"), RoadScene::plain());
    road.start(QStringLiteral("room.gltf"));
    editLamp(road);
    const QByteArray theirs = RoadScene::plain().replace("\"T-1\"", "\"theirs\"");
    road.write(QStringLiteral("room.gltf"), theirs);
    {
        const ModalAnswer cancel([](QDialog *dialog) { press(dialog, QStringLiteral("Cancel")); });
        road.save();
        QVERIFY(cancel.record().text.contains(QStringLiteral("changed by another program")));
    }
    road.expect(QStringLiteral("room.gltf"), theirs);
    {
        const ModalAnswer elsewhere([](QDialog *dialog) { press(dialog, QStringLiteral("Save As...")); });
        const ModalAnswer name([&](QDialog *dialog) { road.typeName(dialog, QStringLiteral("mine.gltf")); });
        road.save();
    }
    road.expect(QStringLiteral("room.gltf"), theirs);
    road.expect(QStringLiteral("mine.gltf"), edited());
}

void TestRoadTrouble::files_that_are_no_scenes_are_refused_and_the_open_scene_goes_on()
{
    Road road;
    road.write(QStringLiteral("room.gltf"), RoadScene::plain());
    road.write(QStringLiteral("words.gltf"), "This is no scene.");
    road.write(QStringLiteral("cut.gltf"), RoadScene::plain().left(300));
    road.write(QStringLiteral("cut.glb"), QByteArray("glTF\2\0\0\0\14\0\0\0", 12));
    road.write(QStringLiteral("lies.obj"), QByteArray("\x89PNG\r\n\x1a\n\0\0\0\1", 12));
    road.start(QStringLiteral("room.gltf"));
    for (const char *name : {"words.gltf", "cut.gltf", "cut.glb", "lies.obj"}) {
        // The box comes from the event loop, after the file dialog has gone.
        const ModalAnswer file([&](QDialog *dialog) { road.typeName(dialog, QLatin1String(name)); });
        const ModalAnswer told([](QDialog *dialog) { press(dialog, QStringLiteral("OK")); });
        Hands::press(Qt::Key_O, Qt::ControlModifier);
        QTRY_VERIFY(told.given());
        QVERIFY2(told.record().text.contains(QLatin1String(name)), qPrintable(told.record().text));
    }
    editLamp(road);
    road.save();
    road.expect(QStringLiteral("room.gltf"), edited());
}

void TestRoadTrouble::work_of_a_program_that_was_killed_is_restored_and_saved()
{
    Road road;
    const QString file = road.write(QStringLiteral("room.gltf"), RoadScene::plain());
    QProcess victim;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("NK_ROAD_DATA"), qEnvironmentVariable("XDG_DATA_HOME"));
    environment.insert(QStringLiteral("NK_ROAD_FILE"), file);
    // Its own folders go with those of this one: it cannot clean up.
    environment.insert(QStringLiteral("TMPDIR"), QFileInfo(file).path());
    victim.setProcessEnvironment(environment);
    victim.start(QCoreApplication::applicationFilePath(), {QStringLiteral("--victim")});
    QByteArray told;
    QTRY_VERIFY_WITH_TIMEOUT((told += victim.readAllStandardOutput()).contains("kept"), 30000);
    victim.kill();
    QVERIFY(victim.waitForFinished());
    QCOMPARE(victim.exitStatus(), QProcess::CrashExit);
    road.expect(QStringLiteral("room.gltf"), RoadScene::plain());

    road.start();
    const ModalAnswer restore([](QDialog *dialog) { press(dialog, QStringLiteral("Restore")); });
    road.workbench()->offerRecovery();
    QVERIFY(road.window()->isWindowModified());
    road.save();
    road.expect(QStringLiteral("room.gltf"), edited());
}

int main(int argc, char **argv)
{
    const bool isVictim = argc > 1 && qstrcmp(argv[1], "--victim") == 0;
    return isVictim ? TestMain::run<QApplication, Victim>(1, argv)
                    : TestMain::run<QApplication, TestRoadTrouble>(argc, argv);
}
#include "test_road_trouble.moc"
