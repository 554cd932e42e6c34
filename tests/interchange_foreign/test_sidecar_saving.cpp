#include "FaultyFileCalls.h"
#include "SidecarFixture.h"
#include "TestMain.h"

#include <interchange/foreign/ForeignOrigin.h>
#include <kernel/document/DocumentLoader.h>

using namespace interchange;
using Saved = SceneFile::Saved;

/// Saving a scene whose file is never written.
class TestSidecarSaving : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void writesNothingWhereThereIsNothingToSay();
    void writesNothingWhereNothingChanged();
    void sameScenesGiveTheSameBytes();
    void keepsAnExistingOneTruthful();
    void asksBeforeOverwritingSomebodyElsesChanges();
    void writesAgainWhatIsGone();
    void neverOverwritesWhatItCannotRead_data();
    void neverOverwritesWhatItCannotRead();
    void savesOnceTheUnreadableOneIsMovedAway();
    void saysThatObjectsCannotBeMadeOrDeleted();
    void saysThatObjectsCannotBeMoved();
    void theTreeOfTheModelIsFixed();
    void copiesTheModelUnderAnotherName();
    void copiesBesideOldMetadataAreTruthful();
    void copiesKeepTheirKind();
    void copiesOnlyTheModelThatWasOpened();
    void everyFailingCallLeavesOldOrNew();
    void neverTouchesTheModel();

private:
    void change()
    {
        m_f->add(m_f->ownSet(QStringLiteral("Site")), "k", nkMetadataTypes::Integer, ++m_number);
    }
    Saved saveTo(const QString &path) { return SceneFile::save(path, m_f->source); }

    std::unique_ptr<SidecarFixture> m_f;
    QByteArray m_model;
    int m_number = 0;
};

void TestSidecarSaving::init()
{
    m_number = 0;
    m_f = std::make_unique<SidecarFixture>();
    QVERIFY(m_f->openHouse());
    m_model = m_f->read(m_f->path);
}

void TestSidecarSaving::cleanup()
{
    QCOMPARE(m_f->read(m_f->folder.filePath(QStringLiteral("house.ifc"))), m_model);
}

void TestSidecarSaving::writesNothingWhereThereIsNothingToSay()
{
    const Saved saved = m_f->save();
    QCOMPARE(saved.outcome, Saved::Done);
    QCOMPARE(saved.file, m_f->sidecarPath());
    change();
    m_f->document().undo();
    QCOMPARE(m_f->save().outcome, Saved::Done);
    QCOMPARE(m_f->files(), QStringList{"house.ifc"});
}

void TestSidecarSaving::writesNothingWhereNothingChanged()
{
    change();
    QCOMPARE(m_f->save().outcome, Saved::Done);
    QByteArray byHand = m_f->sidecar();
    byHand.replace("\n{", "\n {");
    m_f->writeSidecar(byHand);
    QVERIFY(m_f->reopen());
    QCOMPARE(m_f->save().outcome, Saved::Done);
    change();
    m_f->document().undo();
    QCOMPARE(m_f->save().outcome, Saved::Done);
    QCOMPARE(m_f->sidecar(), byHand);
}

void TestSidecarSaving::sameScenesGiveTheSameBytes()
{
    m_f->editEverything();
    QCOMPARE(m_f->save().outcome, Saved::Done);
    const QByteArray first = m_f->sidecar();
    QVERIFY(m_f->reopen());
    change();
    QCOMPARE(m_f->save().outcome, Saved::Done);
    QVERIFY(m_f->sidecar() != first);
    m_f->document().undoStack()->setIndex(0);
    QCOMPARE(m_f->save().outcome, Saved::Done);
    QCOMPARE(m_f->sidecar(), first);
    QCOMPARE(m_f->files(), (QStringList{"house.ifc", "house.ifc.metadata.json"}));
}

void TestSidecarSaving::keepsAnExistingOneTruthful()
{
    change();
    QCOMPARE(m_f->save().outcome, Saved::Done);
    m_f->document().undo();
    const QString plain = m_f->dump();
    QCOMPARE(m_f->save().outcome, Saved::Done);
    QVERIFY(m_f->hasSidecar());
    QVERIFY(m_f->reopen());
    QCOMPARE(m_f->dump(), plain);
}

void TestSidecarSaving::asksBeforeOverwritingSomebodyElsesChanges()
{
    change();
    QCOMPARE(m_f->save().outcome, Saved::Done);
    QByteArray theirs = m_f->sidecar();
    theirs.replace("\"value\":1", "\"value\":99");
    change();
    m_f->writeSidecar(theirs);
    QCOMPARE(m_f->save().outcome, Saved::ChangedElsewhere);
    QCOMPARE(m_f->sidecar(), theirs);
    QCOMPARE(m_f->save(SceneFile::IfChanged::Overwrite).outcome, Saved::Done);
    QVERIFY(m_f->sidecar().contains("\"value\":2"));
    // One that somebody else has made meanwhile, too.
    QVERIFY(QFile::remove(m_f->sidecarPath()));
    QVERIFY(m_f->reopen());
    change();
    m_f->writeSidecar(theirs);
    QCOMPARE(m_f->save().outcome, Saved::ChangedElsewhere);
    QCOMPARE(m_f->sidecar(), theirs);
}

void TestSidecarSaving::writesAgainWhatIsGone()
{
    change();
    QCOMPARE(m_f->save().outcome, Saved::Done);
    const QByteArray before = m_f->sidecar();
    QVERIFY(QFile::remove(m_f->sidecarPath()));
    QCOMPARE(m_f->save().outcome, Saved::Done);
    QCOMPARE(m_f->sidecar(), before);
}

void TestSidecarSaving::neverOverwritesWhatItCannotRead_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::newRow("empty") << QByteArray();
    QTest::newRow("text") << QByteArray("my notes about the house");
    QTest::newRow("of another program") << QByteArray("{\"format\":\"something\",\"version\":1}");
    QTest::newRow("sets") << QByteArray("{\"format\":\"metadata-sets\",\"version\":1,\"sets\":[]}");
    QTest::newRow("newer") << QByteArray("{\"format\":\"metadata-sidecar\",\"version\":2,\"more\":[]}");
}

void TestSidecarSaving::neverOverwritesWhatItCannotRead()
{
    QFETCH(QByteArray, content);
    const QString plain = m_f->dump();
    m_f->writeSidecar(content);
    QVERIFY(m_f->reopen());
    QCOMPARE(m_f->dump(), plain);
    QCOMPARE(m_f->report.refused().size(), 1);
    QCOMPARE(m_f->report.refused().at(0).reason, ImportReason::ForeignSidecar);
    QCOMPARE(m_f->report.refused().at(0).path, QStringLiteral("house.ifc.metadata.json"));
    // There is nothing to write as long as nothing is changed.
    QCOMPARE(m_f->save().outcome, Saved::Done);
    change();
    for (const auto ifChanged : {SceneFile::IfChanged::Refuse, SceneFile::IfChanged::Overwrite}) {
        const Saved saved = m_f->save(ifChanged);
        QCOMPARE(saved.outcome, Saved::Failed);
        QVERIFY2(saved.error.contains(QStringLiteral("house.ifc.metadata.json")), qPrintable(saved.error));
        QVERIFY2(saved.error.contains(QStringLiteral("move that file")), qPrintable(saved.error));
        QCOMPARE(m_f->sidecar(), content);
    }
    const Saved copy = saveTo(m_f->folder.filePath(QStringLiteral("copy.ifc")));
    QCOMPARE(copy.outcome, Saved::Done);
    QVERIFY(m_f->read(copy.file).contains("\"k\""));
}

void TestSidecarSaving::savesOnceTheUnreadableOneIsMovedAway()
{
    m_f->writeSidecar("notes");
    QVERIFY(m_f->reopen());
    change();
    QVERIFY(QFile::rename(m_f->sidecarPath(), m_f->folder.filePath(QStringLiteral("notes"))));
    QCOMPARE(m_f->save().outcome, Saved::Done);
    change();
    QCOMPARE(m_f->save().outcome, Saved::Done);
    QVERIFY(m_f->sidecar().contains("\"value\":2"));
}

/// The document refuses all of that; what has got past it, the saver refuses.
void TestSidecarSaving::saysThatObjectsCannotBeMadeOrDeleted()
{
    change();
    kernel::DocumentLoader more(kernel::DocumentLoader::Mode::Add);
    QVERIFY(more.addObject(nkObjectType::Node, QStringLiteral("Mine")) != 0 && more.commit());
    Saved saved = m_f->save();
    QCOMPARE(saved.outcome, Saved::Failed);
    QVERIFY2(saved.error.contains(QStringLiteral("1 objects are not in the model")), qPrintable(saved.error));
    QVERIFY2(saved.error.endsWith(QStringLiteral("change the model in the program that writes it.")),
             qPrintable(saved.error));
    kernel::DocumentLoader nothing;
    QVERIFY(nothing.commit());
    saved = m_f->save();
    QCOMPARE(saved.outcome, Saved::Failed);
    QVERIFY2(saved.error.contains(QStringLiteral("objects of the model were deleted")),
             qPrintable(saved.error));
    QVERIFY(!m_f->hasSidecar());
}

void TestSidecarSaving::saysThatObjectsCannotBeMoved()
{
    auto origin = std::make_shared<ForeignOrigin>(*m_f->source->foreign);
    auto source = std::make_shared<SceneSource>(*m_f->source);
    source->foreign = origin;
    change();
    QVERIFY(origin->objects.at(1).parentId != 0);
    origin->objects.at(1).parentId = 0;
    const Saved saved = SceneFile::save(m_f->path, source);
    QCOMPARE(saved.outcome, Saved::Failed);
    QVERIFY2(saved.error.contains(QStringLiteral("elsewhere than in the model")), qPrintable(saved.error));
    QVERIFY(!m_f->hasSidecar());
    QCOMPARE(m_f->save().outcome, Saved::Done);
}

void TestSidecarSaving::theTreeOfTheModelIsFixed()
{
    kernel::Document &document = m_f->document();
    const quint64 zone = m_f->object(QStringLiteral("Zone")).getObjectId();
    QVERIFY(document.isTreeFixed());
    QCOMPARE(document.createObject(nkObjectType::Node, QStringLiteral("Mine")), quint64(0));
    QVERIFY(!document.deleteObjects({m_f->object(QStringLiteral("Oak")).getObjectId()}));
    for (const quint64 parent : {m_f->object(QStringLiteral("Site")).getObjectId(), quint64(0)}) {
        QVERIFY(!document.moveObjects({zone}, parent, 0));
    }
    QVERIFY(!document.isModified());
    m_f->editEverything();
    QCOMPARE(m_f->save().outcome, Saved::Done);
    QVERIFY(m_f->reopen());
    QVERIFY(document.isTreeFixed());
}

void TestSidecarSaving::copiesTheModelUnderAnotherName()
{
    const QString copy = m_f->folder.filePath(QStringLiteral("a copy.IFC"));
    QCOMPARE(saveTo(copy).outcome, Saved::Done);
    QCOMPARE(m_f->files(), (QStringList{"a copy.IFC", "house.ifc"}));
    m_f->editEverything();
    const QString edited = m_f->dump();
    const Saved saved = saveTo(copy);
    QCOMPARE(saved.outcome, Saved::Done);
    QCOMPARE(m_f->read(copy), m_model);
    QVERIFY(!m_f->hasSidecar());
    QCOMPARE(saved.source->filePath, copy);
    QVERIFY(m_f->open(copy));
    QCOMPARE(m_f->dump(), edited);
    m_f->source = saved.source;
}

void TestSidecarSaving::copiesBesideOldMetadataAreTruthful()
{
    change();
    const QString copy = m_f->folder.filePath(QStringLiteral("copy.ifc"));
    QCOMPARE(saveTo(copy).outcome, Saved::Done);
    m_f->document().undo();
    const QString plain = m_f->dump();
    QCOMPARE(saveTo(copy).outcome, Saved::Done);
    QVERIFY(m_f->open(copy));
    QCOMPARE(m_f->dump(), plain);
    m_f->write(QStringLiteral("copy.ifc.metadata.json"), "notes");
    QVERIFY(m_f->open(m_f->folder.filePath(QStringLiteral("house.ifc"))));
    QCOMPARE(saveTo(copy).outcome, Saved::Failed);
    QCOMPARE(m_f->read(copy + QStringLiteral(".metadata.json")), QByteArray("notes"));
}

void TestSidecarSaving::copiesKeepTheirKind()
{
    for (const char *name : {"copy.gltf", "copy", "copy.ifc.json"}) {
        const Saved saved = saveTo(m_f->folder.filePath(QLatin1String(name)));
        QCOMPARE(saved.outcome, Saved::Failed);
        QVERIFY2(saved.error.contains(QStringLiteral("“.ifc”")), qPrintable(saved.error));
        QVERIFY(!m_f->files().contains(QLatin1String(name)));
    }
}

void TestSidecarSaving::copiesOnlyTheModelThatWasOpened()
{
    m_f->write(QStringLiteral("house.ifc"), m_model + "\n");
    const Saved saved = saveTo(m_f->folder.filePath(QStringLiteral("copy.ifc")));
    QCOMPARE(saved.outcome, Saved::Failed);
    QVERIFY2(saved.error.contains(QStringLiteral("another program")), qPrintable(saved.error));
    QCOMPARE(m_f->files(), QStringList{"house.ifc"});
    // Its metadata can be saved all the same: nothing of the model is overwritten.
    change();
    QCOMPARE(m_f->save().outcome, Saved::Done);
    m_f->write(QStringLiteral("house.ifc"), m_model);
}

void TestSidecarSaving::everyFailingCallLeavesOldOrNew()
{
    change();
    QCOMPARE(m_f->save().outcome, Saved::Done);
    int steps = 0;
    for (int at = 1; steps == 0; ++at) {
        const QByteArray before = m_f->sidecar();
        change();
        FaultyFileCalls calls;
        calls.at = at;
        calls.fault = FaultyFileCalls::Error;
        const Saved saved = m_f->save();
        if (calls.made < at) {
            steps = at;
            QCOMPARE(saved.outcome, Saved::Done);
        } else if (saved.outcome != Saved::Done) {
            QVERIFY(!saved.error.isEmpty());
            QCOMPARE(m_f->sidecar(), before);
        } else {
            QVERIFY(m_f->sidecar() != before);
        }
    }
    QVERIFY(steps > 8);
}

void TestSidecarSaving::neverTouchesTheModel()
{
    QVERIFY(QFile::setPermissions(m_f->path, QFile::ReadOwner));
    const QDateTime before = QFileInfo(m_f->path).lastModified();
    m_f->editEverything();
    QCOMPARE(m_f->save().outcome, Saved::Done);
    QVERIFY(m_f->hasSidecar());
    QCOMPARE(QFileInfo(m_f->path).lastModified(), before);
}

NK_GUILESS_TEST_MAIN(TestSidecarSaving)
#include "test_sidecar_saving.moc"
