#include "FaultyFileCalls.h"
#include "SavingFixture.h"
#include "SceneVariety.h"
#include "TestMain.h"

#include <kernel/services/Progress.h>

using namespace Fixtures;
using Saved = SceneFile::Saved;

/// A save that goes wrong leaves the old file or the new one, whole, and says so.
class TestSceneSavingDurability : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void whicheverCallFailsOneFileIsThereWhole_data();
    void whicheverCallFailsOneFileIsThereWhole();
    void nothingIsWrittenWhereNothingHasChanged();
    void aFileChangedBySomebodyElseIsNotOverwritten_data();
    void aFileChangedBySomebodyElseIsNotOverwritten();
    void aFileThatIsGoneIsWrittenAgain_data();
    void aFileThatIsGoneIsWrittenAgain();
    void oldTextIsNeverMixedWithNewGeometry();
    void aReadOnlyFileIsRefused();
    void cancellingLeavesTheOldFile();
    void copiesKeepTheirKindOrSayWhyNot();
    void aNewSceneBecomesAFile();
    void namesWhatDoesNotGoAlongIntoAnotherFolder();

private:
    static bool edit() { return editTo(QStringLiteral("new")); }
    static bool editTo(const QString &value)
    {
        SavingFixture::ownSet(QStringLiteral("Part")).setValue(QStringLiteral("k"), value);
        return true;
    }
    static QByteArray content(bool isBinary)
    {
        const QByteArray text = gltfWithExtras(R"({"k":"old"})");
        return isBinary ? glbOf(text) : text;
    }
    static void addKinds()
    {
        QTest::addColumn<bool>("isBinary");
        QTest::newRow("text") << false;
        QTest::newRow("binary") << true;
    }
};

void TestSceneSavingDurability::whicheverCallFailsOneFileIsThereWhole_data()
{
    QTest::addColumn<bool>("isBinary");
    QTest::addColumn<int>("fault");
    for (const bool isBinary : {false, true}) {
        QTest::addRow("%s, error", isBinary ? "binary" : "text") << isBinary << int(FaultyFileCalls::Error);
        QTest::addRow("%s, short write", isBinary ? "binary" : "text")
            << isBinary << int(FaultyFileCalls::ShortThenFail);
    }
}

void TestSceneSavingDurability::whicheverCallFailsOneFileIsThereWhole()
{
    QFETCH(bool, isBinary);
    QFETCH(int, fault);
    SavingFixture scene;
    const QByteArray old = content(isBinary);
    QVERIFY(scene.openContent(old) && edit());
    const QByteArray wanted = scene.saved();
    QVERIFY(wanted != old);
    int failures = 0;
    for (int at = 1;; ++at) {
        QVERIFY(scene.openContent(old) && edit());
        FaultyFileCalls calls;
        calls.at = at;
        calls.fault = FaultyFileCalls::Fault(fault);
        const Saved saved = scene.save();
        const int made = calls.made;
        kernel::FileCalls::install(nullptr);
        const QByteArray found = SavingFixture::read(scene.path);
        QCOMPARE(found, saved.outcome == Saved::Done ? wanted : old);
        if (saved.outcome != Saved::Done) {
            ++failures;
            QVERIFY2(saved.error.contains(scene.path) && saved.error.endsWith(QLatin1Char('.')),
                     qPrintable(saved.error));
            // What failed once can be done again.
            QCOMPARE(scene.saved(), wanted);
        }
        // A temporary file stays only where it could not be removed.
        QVERIFY2(scene.files().size() <= (saved.outcome == Saved::Done ? 1 : 2),
                 qPrintable(scene.files().join(' ')));
        for (const QString &file : scene.files()) {
            if (file != QLatin1String("scene"))
                QVERIFY(QFile::remove(scene.folder.filePath(file)));
        }
        if (made < at)
            break;
    }
    QVERIFY(failures >= (fault == FaultyFileCalls::Error ? 6 : 1));
}

void TestSceneSavingDurability::nothingIsWrittenWhereNothingHasChanged()
{
    for (const bool isBinary : {false, true}) {
        SavingFixture scene;
        QVERIFY(scene.openContent(content(isBinary)));
        FaultyFileCalls calls;
        calls.fault = FaultyFileCalls::Error;
        calls.at = 3; // behind the look at what is there
        QCOMPARE(scene.save().outcome, Saved::Done);
    }
}

void TestSceneSavingDurability::aFileChangedBySomebodyElseIsNotOverwritten_data()
{
    addKinds();
}

void TestSceneSavingDurability::aFileChangedBySomebodyElseIsNotOverwritten()
{
    QFETCH(bool, isBinary);
    SavingFixture scene;
    QVERIFY(scene.openContent(content(isBinary)) && edit());
    // As most programs save: another file takes the place.
    QVERIFY(QFile::remove(scene.path));
    const QByteArray theirs = QByteArray(content(isBinary)).replace("old", "why");
    scene.write(QStringLiteral("scene"), theirs);
    const Saved saved = scene.save();
    QCOMPARE(saved.outcome, Saved::ChangedElsewhere);
    QVERIFY(saved.error.isEmpty() && !saved.source);
    QCOMPARE(SavingFixture::read(scene.path), theirs);
    QCOMPARE(scene.save(SceneFile::IfChanged::Overwrite).outcome, Saved::Done);
    QCOMPARE(SavingFixture::read(scene.path), QByteArray(content(isBinary)).replace("old", "new"));
    // From now on the file is ours again.
    QVERIFY(editTo(QStringLiteral("own")));
    QCOMPARE(scene.save().outcome, Saved::Done);
}

void TestSceneSavingDurability::aFileThatIsGoneIsWrittenAgain_data()
{
    addKinds();
}

void TestSceneSavingDurability::aFileThatIsGoneIsWrittenAgain()
{
    QFETCH(bool, isBinary);
    SavingFixture scene;
    QVERIFY(scene.openContent(content(isBinary)));
    QVERIFY(QFile::remove(scene.path));
    QCOMPARE(scene.saved(), content(isBinary));
    QVERIFY(edit() && QFile::remove(scene.path));
    QCOMPARE(scene.saved(), QByteArray(content(isBinary)).replace("old", "new"));
}

void TestSceneSavingDurability::oldTextIsNeverMixedWithNewGeometry()
{
    SavingFixture scene;
    QVERIFY(scene.openContent(content(true)) && edit());
    // Written over in place, so that the file held open has changed, too.
    const QByteArray theirs = QByteArray(content(true)).replace("xxxxxxxx", "theirown");
    QVERIFY(theirs != content(true));
    scene.write(QStringLiteral("scene"), theirs);
    QCOMPARE(scene.save().outcome, Saved::ChangedElsewhere);
    const Saved saved = scene.save(SceneFile::IfChanged::Overwrite);
    QCOMPARE(saved.outcome, Saved::Failed);
    QVERIFY2(saved.error.contains(QStringLiteral("geometry")), qPrintable(saved.error));
    QCOMPARE(SavingFixture::read(scene.path), theirs);
}

void TestSceneSavingDurability::aReadOnlyFileIsRefused()
{
    SavingFixture scene;
    QVERIFY(scene.openContent(content(false)) && edit());
    QVERIFY(QFile::setPermissions(scene.path, QFile::ReadOwner));
    const Saved saved = scene.save();
    QCOMPARE(saved.outcome, Saved::Failed);
    QVERIFY(saved.error.contains(QStringLiteral("read-only")));
    QCOMPARE(SavingFixture::read(scene.path), content(false));
}

namespace {

class Canceller : public kernel::ProgressDisplay
{
public:
    void begin(const QString &text) override { said = text; }
    bool advance(double share) override { return share <= until; }
    int interval() const override { return 0; }
    void end() override { ++ended; }

    QString said;
    double until = 0;
    int ended = 0;
};

} // namespace

void TestSceneSavingDurability::cancellingLeavesTheOldFile()
{
    SavingFixture scene;
    QVERIFY(scene.openContent(content(true)) && edit());
    Canceller person;
    kernel::ProgressDisplay::install(&person);
    for (int tenth = 0; tenth < 10; ++tenth) {
        person.until = tenth / 10.0;
        QCOMPARE(scene.save().outcome, Saved::Cancelled);
        QCOMPARE(SavingFixture::read(scene.path), content(true));
        QCOMPARE(scene.files(), QStringList("scene"));
    }
    QCOMPARE(person.ended, 10);
    QVERIFY(person.said.contains(QStringLiteral("scene")));
    kernel::ProgressDisplay::install(nullptr);
}

void TestSceneSavingDurability::copiesKeepTheirKindOrSayWhyNot()
{
    SavingFixture scene;
    const auto saveAs = [&scene](const char *name) {
        return SceneFile::save(scene.folder.filePath(QLatin1String(name)), scene.source);
    };
    QVERIFY(scene.openContent(content(true)));
    const QString before = SavingFixture::dump();
    QVERIFY(saveAs("copy.gltf").error.contains(QStringLiteral(".glb")));
    QCOMPARE(saveAs("copy.glb").outcome, Saved::Done);
    QCOMPARE(SavingFixture::read(scene.folder.filePath(QStringLiteral("copy.glb"))), content(true));
    QVERIFY(scene.openContent(content(false)));
    const Saved saved = saveAs("other.GLB");
    QVERIFY(saved.outcome == Saved::Done && saved.source->isBinary);
    QVERIFY(scene.open(scene.folder.filePath(QStringLiteral("other.GLB"))));
    QCOMPARE(SavingFixture::dump(), before);
    QVERIFY(edit());
    QVERIFY(scene.saved().startsWith("glTF"));
}

void TestSceneSavingDurability::aNewSceneBecomesAFile()
{
    for (const char *name : {"new.gltf", "new.glb"}) {
        SavingFixture scene;
        QVERIFY(SavingFixture::document().clear());
        nkMetadataService::the()
            .createSet(QStringLiteral("Set"), {})
            .setValue(QStringLiteral("k"), QDate(2024, 1, 2));
        const QString expected = SavingFixture::dump();
        const QString path = scene.folder.filePath(QLatin1String(name));
        const Saved saved = SceneFile::save(path, nullptr);
        QVERIFY2(saved.outcome == Saved::Done, qPrintable(saved.error));
        QVERIFY(scene.open(path));
        QCOMPARE(SavingFixture::dump(), expected);
        QVERIFY(scene.report.isClean());
    }
}

void TestSceneSavingDurability::namesWhatDoesNotGoAlongIntoAnotherFolder()
{
    SavingFixture scene;
    QVERIFY(QDir(scene.folder.path()).mkdir(QStringLiteral("sub")));
    const QByteArray buffers = R"("buffers":[{"uri":"a%20b.bin"},{"uri":"data:;base64,AA=="},{}],)";
    const QByteArray images =
        R"("images":[{"uri":"x.png"},{"uri":"x.png"},{"uri":"https:\/\/example.org/y.png"}])";
    QVERIFY(scene.openContent(gltf(buffers + images)));
    QCOMPARE(scene.save().leftBehind, QStringList());
    QCOMPARE(SceneFile::save(scene.folder.filePath(QStringLiteral("b.gltf")), scene.source).leftBehind,
             QStringList());
    QCOMPARE(SceneFile::save(scene.folder.filePath(QStringLiteral("sub/b.gltf")), scene.source).leftBehind,
             (QStringList{QStringLiteral("a%20b.bin"), QStringLiteral("x.png")}));
}

NK_TEST_MAIN(TestSceneSavingDurability)
#include "test_scene_saving_durability.moc"
