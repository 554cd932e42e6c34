#include "SidecarFixture.h"
#include "TestMain.h"

#include <interchange/sidecar/SidecarReader.h>
#include <interchange/sidecar/SidecarText.h>

using namespace interchange;
using namespace IfcText;
using Saved = SceneFile::Saved;

/// A model with a sidecar: what comes from which of them, also when the model has changed.
class TestSidecarOpening : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void comesBackAsItWasSaved();
    void deletedSetsDoNotComeBack();
    void newObjectsHaveTheMetadataOfTheModel();
    void newObjectsTakeChangedSetsAsTheModelHasThem();
    void objectsThatAreGoneAreKept();
    void renamedObjectsFollowTheModelUnlessThePersonRenamedThem();
    void knowsObjectsByKeyWhateverTheirPlace();
    void thePublishedExampleIsASidecar();

private:
    static QByteArray houseWith(const QByteArray &records) { return file(taggedHouse() + records); }
    QStringList pathsOf(const QVector<ImportReport::Item> &items, ImportReason reason) const;

    std::unique_ptr<SidecarFixture> m_f;
};

void TestSidecarOpening::init()
{
    m_f = std::make_unique<SidecarFixture>();
    QVERIFY(m_f->openHouse());
}

QStringList TestSidecarOpening::pathsOf(const QVector<ImportReport::Item> &items, ImportReason reason) const
{
    QStringList paths;
    for (const ImportReport::Item &item : items) {
        if (item.reason == reason)
            paths.append(item.path);
    }
    return paths;
}

void TestSidecarOpening::comesBackAsItWasSaved()
{
    const QByteArray model = m_f->read(m_f->path);
    m_f->editEverything();
    const QString edited = m_f->dump();
    QCOMPARE(m_f->save().outcome, Saved::Done);
    QCOMPARE(m_f->read(m_f->path), model);
    QVERIFY(m_f->reopen());
    QCOMPARE(m_f->dump(), edited);
    QVERIFY(edited.contains(QStringLiteral("Residence <b>&amp;"))
            && edited.contains(QStringLiteral("chairs/12")));
    QVERIFY(m_f->report.refused().isEmpty() && m_f->report.notes().isEmpty());
    QVERIFY(!m_f->document().isModified());
}

void TestSidecarOpening::deletedSetsDoNotComeBack()
{
    nkMetadataService::the().deleteSets({m_f->sharedSet("Pset_WallCommon")});
    QCOMPARE(m_f->save().outcome, Saved::Done);
    QVERIFY(m_f->reopen());
    QVERIFY(m_f->sharedSet("Pset_WallCommon").isNull());
    QCOMPARE(m_f->namesOf(m_f->sharedSet("Pset_DoorCommon").getObjects()), QStringList{"Door 22"});
}

void TestSidecarOpening::newObjectsHaveTheMetadataOfTheModel()
{
    m_f->editEverything();
    QCOMPARE(m_f->save().outcome, Saved::Done);
    const QByteArray more = object("IFCWALL", 80, "Third") + assignment(81, "#80", 50)
                            + single(82, "n", "IFCREAL(1.)") + propertySet(83, "New set", "#82")
                            + assignment(84, "#80,#20", 83)
                            + "#85= IFCQUANTITYLENGTH('Length',$,$,2.);\n#86= IFCELEMENTQUANTITY('" + id(86)
                            + "',#5,'Base',$,$,(#85));\n" + assignment(87, "#80,#20", 86);
    QVERIFY(m_f->openHouse(houseWith(more)));
    QCOMPARE(pathsOf(m_f->report.notes(), ImportReason::NewObject), QStringList{"Third"});
    // The set on the walls was renamed, so the model's is another one; what is on a known wall now stays off.
    QCOMPARE(m_f->namesOf(m_f->sharedSet("Pset_WallCommon").getObjects()), QStringList{"Third"});
    QCOMPARE(m_f->namesOf(m_f->sharedSet("Walls").getObjects()), (QStringList{"Wall", "Wall"}));
    QCOMPARE(m_f->namesOf(m_f->sharedSet("New set").getObjects()), QStringList{"Third"});
    QCOMPARE(m_f->ownSet(QStringLiteral("Third")).getEntries().size(), 1);
    QCOMPARE(m_f->ownSet(QStringLiteral("Wall")).getEntries().size(), 0);
}

void TestSidecarOpening::newObjectsTakeChangedSetsAsTheModelHasThem()
{
    m_f->sharedSet("Pset_DoorCommon").getEntries().find(QStringLiteral("Width")).setValue(1.5);
    QCOMPARE(m_f->save().outcome, Saved::Done);
    QVERIFY(m_f->openHouse(houseWith(object("IFCWALL", 80, "Third") + object("IFCDOOR", 81, "Gate")
                                     + assignment(82, "#80", 50) + assignment(83, "#81", 51))));
    // Unchanged: the same set. Changed by the person: one more, as the model has it.
    QCOMPARE(m_f->namesOf(m_f->sharedSet("Pset_WallCommon").getObjects()),
             (QStringList{"Wall", "Wall", "Third"}));
    QCOMPARE(m_f->namesOf(m_f->sharedSet("Pset_DoorCommon").getObjects()), QStringList{"Door 22"});
    const nkdMetadataSet gate = m_f->sharedSet("Pset_DoorCommon2");
    QCOMPARE(m_f->namesOf(gate.getObjects()), QStringList{"Gate"});
    QCOMPARE(gate.getValue(QStringLiteral("Width")), QVariant(0.9));
}

void TestSidecarOpening::objectsThatAreGoneAreKept()
{
    m_f->editEverything();
    m_f->add(m_f->ownSet(QStringLiteral("Hole")), "deep", nkMetadataTypes::Integer, 7);
    QCOMPARE(m_f->save().outcome, Saved::Done);
    const QString whole = m_f->dump();
    QByteArray smaller = file(taggedHouse());
    smaller.replace(object("IFCOPENINGELEMENT", 23, "Hole"), "").replace(object("IFCWALL", 20, "Wall"), "");
    QVERIFY(m_f->openHouse(smaller));
    QCOMPARE(pathsOf(m_f->report.refused(), ImportReason::GoneObject), (QStringList{id(20), id(23)}));
    m_f->sharedSet("Walls").setName(QStringLiteral("Outer walls"));
    const QByteArray before = m_f->sidecar();
    QCOMPARE(m_f->save().outcome, Saved::Done);
    QVERIFY(m_f->sidecar() != before);
    const QByteArray kept = m_f->sidecar();
    // Once more: they stay in the same place.
    QVERIFY(m_f->reopen());
    m_f->sharedSet("Outer walls").setName(QStringLiteral("Walls"));
    QCOMPARE(m_f->save().outcome, Saved::Done);
    m_f->document().undo();
    QCOMPARE(m_f->save().outcome, Saved::Done);
    QCOMPARE(m_f->sidecar(), kept);
    QVERIFY(m_f->openHouse());
    QCOMPARE(m_f->dump().replace(QStringLiteral("Outer walls"), QStringLiteral("Walls")).split('\n').size(),
             whole.split('\n').size());
    QCOMPARE(m_f->entry(QStringLiteral("Hole"), QStringLiteral("deep")).getValue(), QVariant(7));
    QCOMPARE(m_f->sharedSet("Outer walls").getObjects().size(), 2);
    QVERIFY(m_f->report.refused().isEmpty());
}

void TestSidecarOpening::renamedObjectsFollowTheModelUnlessThePersonRenamedThem()
{
    m_f->object(QStringLiteral("Home")).setName(QStringLiteral("Mine"));
    QCOMPARE(m_f->save().outcome, Saved::Done);
    QByteArray renamed = file(taggedHouse());
    renamed.replace("'Home'", "'Their home'").replace("'Site'", "'Their site'");
    QVERIFY(m_f->openHouse(renamed));
    QVERIFY(!m_f->object(QStringLiteral("Mine")).isNull());
    QVERIFY(!m_f->object(QStringLiteral("Their site")).isNull());
}

void TestSidecarOpening::knowsObjectsByKeyWhateverTheirPlace()
{
    m_f->add(m_f->ownSet(QStringLiteral("Zone")), "mine", nkMetadataTypes::Tag);
    QCOMPARE(m_f->save().outcome, Saved::Done);
    QByteArray moved = file(taggedHouse());
    const QByteArray zone = object("IFCZONE", 24, "Zone");
    moved.replace(zone, "").replace("#5= ", zone.mid(0) + "#5= ").replace("#24=", "#24000=");
    QVERIFY(m_f->openHouse(moved));
    QCOMPARE(m_f->allObjects().first(), m_f->object(QStringLiteral("Zone")).getObjectId());
    QVERIFY(m_f->entry(QStringLiteral("Zone"), QStringLiteral("mine")).isTag());
}

void TestSidecarOpening::thePublishedExampleIsASidecar()
{
    const QByteArray example = SavingFixture::read(QStringLiteral(NK_DOCS_DIR "/sidecar.example.json"));
    Sidecar sidecar;
    SidecarReader reader;
    const bool isRead = reader.read(example, sidecar, [](double) { return true; });
    QVERIFY2(isRead, qPrintable(reader.error().clause()));
    QCOMPARE(textOfSidecar(sidecar), example);
    QVERIFY(!sidecar.sets.empty() && !sidecar.assets.empty() && !sidecar.runs.empty());
}

NK_GUILESS_TEST_MAIN(TestSidecarOpening)
#include "test_sidecar_opening.moc"
