#include "ImporterFixture.h"
#include "SavingFixture.h"
#include "SceneTexts.h"
#include "TestMain.h"

#include <interchange/foreign/ForeignReaders.h>
#include <interchange/importer/ImportKinds.h>

#include <nkKernelServices/nkdMetadataEntry.h>
#include <nkKernelServices/nkdMetadataEntryList.h>
#include <nkKernelServices/nkdMetadataSet.h>

using namespace interchange;
using namespace SceneTexts;

/// Scenes of the importer in the document: opened, edited, kept beside the file, and safe from files that are bad.
class TestImporterSceneFile : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void opensNodesMaterialsAndMetadata();
    void keepsMetadataInTheSidecar();
    void findsItsObjectsInACopyOfAnotherName();
    void findsItsObjectsInANewerFile();
    void keepsTheOpenSceneWhereAFileIsBad_data();
    void keepsTheOpenSceneWhereAFileIsBad();
    void asksTheImporterForEveryKindOnce();
    void leavesGltfToItsReader();

private:
    static QByteArray yard(const QByteArray &more = QByteArray());

    std::unique_ptr<SavingFixture> m_f;
};

void TestImporterSceneFile::init()
{
    m_f = std::make_unique<SavingFixture>();
    kernel::Document::the().clear();
}

QByteArray TestImporterSceneFile::yard(const QByteArray &more)
{
    return collada(more + colladaNode("n1", "Car", colladaNode("n2", "Wheel") + colladaNode("n3", "Wheel"))
                   + colladaNode("n4", "Tree"));
}

void TestImporterSceneFile::opensNodesMaterialsAndMetadata()
{
    QVERIFY(m_f->open(m_f->write(QStringLiteral("pump.fbx"), fbx(fbxProperty("count", "int", "42")))));
    nkdMetadataSet own = SavingFixture::ownSet(QStringLiteral("Pump"));
    QCOMPARE(own.getEntries().find(QStringLiteral("count")).getValue(), QVariant(42));
    QVERIFY(m_f->source->geometry);
    m_f->write(QStringLiteral("paint.mtl"), "newmtl Paint\nKd 1 0 0\n");
    QVERIFY(m_f->open(m_f->write(QStringLiteral("box.obj"),
                                 ImporterFixture::triangleObj("mtllib paint.mtl\nusemtl Paint\n"))));
    QVERIFY(SavingFixture::document()
                .objects(nkObjectType::Material)
                .contains(SavingFixture::object(QStringLiteral("Paint")).getObjectId()));
    QCOMPARE(int(m_f->source->geometry->meshes.size()), 1);
}

void TestImporterSceneFile::keepsMetadataInTheSidecar()
{
    const QString path = m_f->write(QStringLiteral("yard.dae"), yard());
    QVERIFY(m_f->open(path));
    SavingFixture::ownSet(QStringLiteral("Tree"))
        .createEntry(nkMetadataTypes::String)
        .setValue(QStringLiteral("oak"));
    QCOMPARE(m_f->save().outcome, SavingFixture::Saved::Done);
    QCOMPARE(SavingFixture::read(path), yard());
    const QByteArray sidecar = SavingFixture::read(path + QStringLiteral(".metadata.json"));
    QVERIFY2(sidecar.contains("\"Yard/Car/Wheel[2]\""), sidecar.constData());
    QVERIFY(m_f->open(path));
    QCOMPARE(SavingFixture::ownSet(QStringLiteral("Tree")).getEntries().at(1).getValue(),
             QVariant(QStringLiteral("oak")));
}

/// The library names the root of some kinds after the file.
void TestImporterSceneFile::findsItsObjectsInACopyOfAnotherName()
{
    QVERIFY(m_f->open(m_f->write(QStringLiteral("box.obj"), ImporterFixture::triangleObj())));
    const QList<quint64> ids = SavingFixture::allObjects();
    for (const quint64 id : ids)
        SavingFixture::ownSet(nkdObject(id)).setColor(QColor(1, 2, 3));
    const QString copy = m_f->folder.filePath(QStringLiteral("copy.obj"));
    QCOMPARE(SceneFile::save(copy, m_f->source).outcome, SavingFixture::Saved::Done);
    QVERIFY(m_f->open(copy));
    QVERIFY(m_f->report.refused().isEmpty() && m_f->report.notes().isEmpty());
    QCOMPARE(SavingFixture::allObjects().size(), ids.size());
    for (const quint64 id : SavingFixture::allObjects())
        QCOMPARE(SavingFixture::ownSet(nkdObject(id)).getColor(), QColor(1, 2, 3));
}

void TestImporterSceneFile::findsItsObjectsInANewerFile()
{
    const QString path = m_f->write(QStringLiteral("yard.dae"), yard());
    QVERIFY(m_f->open(path));
    SavingFixture::ownSet(QStringLiteral("Tree")).setColor(QColor(1, 2, 3));
    QCOMPARE(m_f->save().outcome, SavingFixture::Saved::Done);
    m_f->write(QStringLiteral("yard.dae"), yard(colladaNode("n0", "Gate")));
    QVERIFY(m_f->open(path));
    QCOMPARE(SavingFixture::ownSet(QStringLiteral("Tree")).getColor(), QColor(1, 2, 3));
    QVERIFY(SavingFixture::ownSet(QStringLiteral("Gate")).getColor() != QColor(1, 2, 3));
}

void TestImporterSceneFile::keepsTheOpenSceneWhereAFileIsBad_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QByteArray>("content");
    QTest::newRow("another kind") << "model.fbx" << ImporterFixture::triangleObj();
    QTest::newRow("nothing in it") << "model.obj" << QByteArray("# nothing but words\n# and more of them\n");
    QTest::newRow("memory") << "model.off" << QByteArray("OFF\n2000000000 2000000000 0\n0 0 0\n");
    QTest::newRow("empty") << "model.obj" << QByteArray();
}

void TestImporterSceneFile::keepsTheOpenSceneWhereAFileIsBad()
{
    QFETCH(QString, name);
    QFETCH(QByteArray, content);
    QVERIFY(m_f->open(m_f->write(QStringLiteral("yard.dae"), yard())));
    SavingFixture::object(QStringLiteral("Tree")).setName(QStringLiteral("Oak"));
    const int objects = kernel::Document::the().objectCount();
    const SceneFile::Result result = SceneFile::open(m_f->write(name, content));
    QVERIFY(!result.isOpen() && !result.isCancelled);
    QVERIFY2(result.error.contains(name) && result.error.endsWith(QLatin1Char('.')),
             qPrintable(result.error));
    QCOMPARE(kernel::Document::the().objectCount(), objects);
    QVERIFY(kernel::Document::the().isModified());
    QVERIFY(SavingFixture::object(QStringLiteral("Oak")).getObjectId() != 0);
}

void TestImporterSceneFile::asksTheImporterForEveryKindOnce()
{
    QStringList suffixes;
    for (const ForeignReaders::Kind &kind : ForeignReaders::kinds())
        suffixes += kind.suffixes;
    for (const char *suffix : importkinds::Models)
        QCOMPARE(suffixes.count(QLatin1String(suffix)), 1);
    QVERIFY(ForeignReaders::readerFor(QStringLiteral("stl"), "solid"));
    QVERIFY(!ForeignReaders::readerFor(QStringLiteral("irr"), "<?xml"));
}

/// Whatever its name says.
void TestImporterSceneFile::leavesGltfToItsReader()
{
    QVERIFY(m_f->open(
        m_f->write(QStringLiteral("scene.obj"), R"({"asset":{"version":"2.0"},"nodes":[{"name":"A"}]})")));
    QCOMPARE(kernel::Document::the().objectCount(), 1);
}

NK_GUILESS_TEST_MAIN(TestImporterSceneFile)
#include "test_importer_scene_file.moc"
