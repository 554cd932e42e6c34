#include "SavingFixture.h"
#include "SceneVariety.h"
#include "TestMain.h"

#include <interchange/gltf/GlbContainer.h>
#include <interchange/json/JsonReader.h>
#include <interchange/json/JsonValue.h>

#include <nkKernelServices/nkScopedUndo.h>

#include <QBuffer>
#include <QDirIterator>
#include <QUndoStack>

using namespace interchange;
using T = nkMetadataTypes;

/// Saving changes the bytes that an edit is about, and no others.
class TestSceneSaving : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void savingWithoutAChangeGivesTheSameBytes_data() { addFiles(); }
    void savingWithoutAChangeGivesTheSameBytes();
    void undoingEveryEditGivesTheSameBytes_data() { addFiles(); }
    void undoingEveryEditGivesTheSameBytes();
    void oneEditChangesItsBytesAlone_data() { addFiles(); }
    void oneEditChangesItsBytesAlone();
    void oneEditOfAGroupChangesTheAnnexAlone();
    void everyKindHasEveryTypeInTheFiles();
    void savingAgainAndAgainKeepsWhatWasSaved_data() { addFiles(); }
    void savingAgainAndAgainKeepsWhatWasSaved();
    void everythingBehindTheTextOfABinaryFileStays();

private:
    static void addFiles();
    static void editEverything();
    static QByteArray jsonOf(const QByteArray &file);
};

void TestSceneSaving::addFiles()
{
    QTest::addColumn<QByteArray>("content");
    for (int i = 0; i < SceneVariety::Count; ++i)
        QTest::addRow("made %d", i) << SceneVariety::file(i);
    QDirIterator showroom(QStringLiteral(NK_SAMPLES_DIR), {"*.gltf", "*.glb"}, QDir::Files,
                          QDirIterator::Subdirectories);
    while (showroom.hasNext()) {
        const QString path = showroom.next();
        QTest::newRow(qPrintable(QFileInfo(path).fileName())) << SavingFixture::read(path);
    }
    // Files of others that a developer may have beside the project.
    QDirIterator more(qEnvironmentVariable("NK_MORE_SAMPLES", QStringLiteral(NK_MORE_SAMPLES)),
                      {"*.gltf", "*.glb"}, QDir::Files, QDirIterator::Subdirectories);
    while (more.hasNext()) {
        const QString path = more.next();
        QTest::newRow(qPrintable(QFileInfo(path).fileName())) << SavingFixture::read(path);
    }
}

QByteArray TestSceneSaving::jsonOf(const QByteArray &file)
{
    GlbContainer container;
    QBuffer buffer;
    buffer.setData(file);
    buffer.open(QIODevice::ReadOnly);
    return container.read(buffer) ? container.json() : file;
}

/// Another value, type and key for every entry of every object, new entries, sets, colours, locks and names.
void TestSceneSaving::editEverything()
{
    nkScopedUndo step(true);
    int count = 0;
    for (nkdMetadataEntry &entry : SavingFixture::allEntries()) {
        switch (++count % 6) {
        case 0:
            entry.setValueType(entry.getValueType() == T::Boolean ? T::Date : T::Boolean);
            break;
        case 1:
            entry.setKey(entry.getKey() + QStringLiteral(" new"));
            break;
        case 2:
            entry.setValueType(T::Tag);
            break;
        case 3:
            entry.setValueType(T::String);
            entry.setValue(QStringLiteral("\"other\"\n\x01 %1").arg(count));
            break;
        case 4:
            entry.setValueType(T::List);
            entry.setValue(QVariantList{1, 2.5, QStringLiteral("c"), QDate(2024, 2, 29)});
            break;
        default:
            entry.getSet().getEntries().remove(entry);
        }
    }
    for (const quint64 id : SavingFixture::allObjects()) {
        nkdSceneObject object{nkdObject(id)};
        object.setName(object.getName() + QStringLiteral("\t<b>"));
        nkdMetadataSet own = SavingFixture::ownSet(object);
        own.createEntry(T::DateTime).setKey(QStringLiteral("moment"));
        own.setColor(QColor(1, 2, 3));
        nkdMetadataSet shared = nkMetadataService::the().createSet(QStringLiteral("Shared"), {object});
        shared.createEntry(T::Time);
    }
}

void TestSceneSaving::savingWithoutAChangeGivesTheSameBytes()
{
    QFETCH(QByteArray, content);
    SavingFixture scene;
    QVERIFY(scene.openContent(content));
    QCOMPARE(scene.saved(), content);
    const QString copy = scene.folder.filePath(QStringLiteral("copy"));
    const SceneFile::Saved saved = SceneFile::save(copy, scene.source);
    QVERIFY2(saved.outcome == SceneFile::Saved::Done, qPrintable(saved.error));
    QCOMPARE(SavingFixture::read(copy), content);
}

void TestSceneSaving::undoingEveryEditGivesTheSameBytes()
{
    QFETCH(QByteArray, content);
    SavingFixture scene;
    QVERIFY(scene.openContent(content));
    const QString before = SavingFixture::dump();
    editEverything();
    QVERIFY(SavingFixture::dump() != before);
    SavingFixture::document().undoStack()->setIndex(0);
    QCOMPARE(SavingFixture::dump(), before);
    QCOMPARE(scene.saved(), content);
}

/// The file is the old one, with another value in the place of the old value.
void TestSceneSaving::oneEditChangesItsBytesAlone()
{
    QFETCH(QByteArray, content);
    SavingFixture scene;
    QVERIFY(scene.openContent(content));
    const int entryCount = SavingFixture::allEntries().size();
    // Each save waits for the disk, and large files take their time.
    const int step = entryCount / (content.size() < 100000 ? 8 : 2) + 1;
    for (int i = 0; i < entryCount; i += step) {
        QVERIFY(scene.openContent(content));
        nkdMetadataEntry entry = SavingFixture::allEntries().at(i);
        const SceneSource::EntryOrigin *const origin = scene.source->entry(entry.getObjectId());
        if (!origin)
            continue; // of a group: it stands in the annex
        const JsonSpan span = origin->valueSpan;
        entry.setValueType(T::String);
        entry.setValue(QStringLiteral("changed"));
        QString expected = SavingFixture::dump();
        QByteArray json = jsonOf(content);
        json.replace(int(span.offset), int(span.length), "\"changed\"");
        const QByteArray saved = scene.saved();
        while (json.endsWith(' '))
            json.chop(1);
        QByteArray found = jsonOf(saved);
        while (found.endsWith(' '))
            found.chop(1);
        QCOMPARE(found, json);
        QVERIFY(scene.open(scene.path));
        QCOMPARE(SavingFixture::dump(), expected);
    }
}

void TestSceneSaving::oneEditOfAGroupChangesTheAnnexAlone()
{
    SavingFixture scene;
    const QByteArray content = SceneVariety::json(1);
    QVERIFY(scene.openContent(content));
    SavingFixture::entry(QStringLiteral("Group"), QStringLiteral("text")).setValue(QStringLiteral("ash"));
    const QString expected = SavingFixture::dump();
    const QByteArray saved = scene.saved();
    const int annex = content.indexOf("\"metadataEditor\"");
    QCOMPARE(saved.left(annex), content.left(annex));
    QVERIFY(saved.contains("\"ash\"") && !saved.contains("\"oak\""));
    QVERIFY(scene.open(scene.path));
    QCOMPARE(SavingFixture::dump(), expected);
}

/// Else the tests above would say less than they seem to.
void TestSceneSaving::everyKindHasEveryTypeInTheFiles()
{
    QMap<nkObjectType, int> carriers;
    for (int i = 0; i < SceneVariety::Count; ++i) {
        SavingFixture scene;
        QVERIFY(scene.openContent(SceneVariety::file(i)));
        for (const quint64 id : SavingFixture::allObjects()) {
            QSet<int> types;
            for (const nkdMetadataEntry &entry : SavingFixture::ownSet(nkdObject(id)).getEntries().data())
                types.insert(entry.isTag() ? int(T::Tag) : int(entry.getValueType()));
            carriers[SavingFixture::document().typeOf(id)] += types.size() >= 6 ? 1 : 0;
        }
    }
    QCOMPARE(carriers.size(), 6);
    QVERIFY(carriers[nkObjectType::Camera] == SceneVariety::Count);
    QVERIFY(carriers[nkObjectType::Light] == SceneVariety::Count);
    QVERIFY(carriers[nkObjectType::Node] >= SceneVariety::Count);
    QVERIFY(carriers[nkObjectType::Material] == SceneVariety::Count);
    QVERIFY(carriers[nkObjectType::Sceneplate] > 0 && carriers[nkObjectType::MaterialGroup] > 0);
}

void TestSceneSaving::savingAgainAndAgainKeepsWhatWasSaved()
{
    QFETCH(QByteArray, content);
    SavingFixture scene;
    QVERIFY(scene.openContent(content));
    const int rounds = content.size() < 100000 ? 3 : 1;
    for (int round = 0; round < rounds; ++round) {
        editEverything();
        const QByteArray saved = scene.saved();
        QCOMPARE(scene.saved(), saved);
        const QString expected = SavingFixture::dump();
        SavingFixture again;
        QVERIFY(again.open(scene.path));
        QCOMPARE(SavingFixture::dump(), expected);
        QCOMPARE(again.saved(), saved);
        scene.source = again.source;
    }
}

void TestSceneSaving::everythingBehindTheTextOfABinaryFileStays()
{
    SavingFixture scene;
    const QByteArray rest = Fixtures::chunk(QByteArray("BIN\0", 4), QByteArray(3000000, 'x'))
                            + Fixtures::chunk("ODD!", QByteArray(8, '\0'));
    for (int length = 0; length < 4; ++length) {
        QByteArray json = Fixtures::gltfWithExtras("{\"k\":\"v\"}") + QByteArray(length, ' ');
        json += QByteArray((4 - json.size() % 4) % 4, ' ');
        QVERIFY(scene.openContent(Fixtures::glb(Fixtures::chunk("JSON", json) + rest)));
        SavingFixture::entry(QStringLiteral("Part"), QStringLiteral("k")).setValue(QString(length + 1, 'z'));
        const QByteArray saved = scene.saved();
        QVERIFY(saved.endsWith(rest));
        QVERIFY(scene.open(scene.path));
        QCOMPARE(saved.size() % 4, 0);
    }
}

NK_TEST_MAIN(TestSceneSaving)
#include "test_scene_saving.moc"
