#include <TestMain.h>

#include "NewsRecorder.h"

#include <nkKernelServices/nkScopedUndo.h>
#include <nkKernelServices/nkdMetadata.h>

#include <QUndoStack>

using kernel::AssetState;
using kernel::Document;

/// Sets, assignments and the set clipboard.
class TestSets : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init();
    void newSetsGetUniqueNames();
    void renamingMakesTheNameUniqueAndFreesTheOldOne();
    void numbersOfRenamedSetsAreGivenAgain();
    void assignmentsKeepTheirOrderBothWays();
    void assigningTwiceAssignsOnce();
    void objectSetsAreNeverAssignedNorDeleted();
    void undoingARemovedAssignmentRestoresItsPlaces();
    void neighbouringRemovalsUndoInTheOppositeOrder();
    void assignmentsSurviveAnyOrderOfChangesAndUndo();
    void deletingASetTakesItsAssignments();
    void undoingADeletionRestoresTheSetWithEverything();
    void duplicatesAreUnlockedAndNoAssets();
    void theSetClipboardKeepsContentsNotHandles();
    void lockedSetsRefuseEdits();
    void assetsAtRestRefuseEdits();
    void assetStateUndoes();
    void kindsOfAssignedObjectsAreCounted();
    void deadAndNullHandlesAreSkipped();
    void emptyListsDoNothing();

private:
    nkdSceneObject node(const char *name, nkObjectType type = nkObjectType::Node);

    Document &m_document = Document::the();
    nkMetadataService &m_service = nkMetadataService::the();
};

namespace {

QStringList namesOf(const QList<nkdMetadataSet> &sets)
{
    QStringList names;
    for (const nkdMetadataSet &set : sets) {
        names << set.getName();
    }
    return names;
}

QStringList namesOf(const QList<nkdSceneObject> &objects)
{
    QStringList names;
    for (const nkdSceneObject &object : objects) {
        names << object.getName();
    }
    return names;
}

} // namespace

void TestSets::init()
{
    QVERIFY(m_document.clear());
}

nkdSceneObject TestSets::node(const char *name, nkObjectType type)
{
    return nkdSceneObject(nkdObject(m_document.createObject(type, QLatin1String(name))));
}

void TestSets::newSetsGetUniqueNames()
{
    m_service.createSet(QStringLiteral("A"), {});
    m_service.createSet(QStringLiteral("A"), {});
    m_service.createSet(QString(), {});
    m_service.createSet(QString(), {});
    m_service.createSet(QStringLiteral("a"), {});
    QCOMPARE(namesOf(m_service.getAllSets()), (QStringList{"A", "A2", "MetadataSet", "MetadataSet2", "a"}));
    QCOMPARE(m_service.getUniqueSetName(QStringLiteral("A")), QStringLiteral("A3"));
    QCOMPARE(m_service.getUniqueSetName(QString()), QStringLiteral("MetadataSet3"));
}

void TestSets::renamingMakesTheNameUniqueAndFreesTheOldOne()
{
    nkdMetadataSet a = m_service.createSet(QStringLiteral("A"), {});
    nkdMetadataSet b = m_service.createSet(QStringLiteral("B"), {});
    b.setName(QStringLiteral("A"));
    QCOMPARE(b.getName(), QStringLiteral("A2"));
    b.setName(QStringLiteral("A2"));
    b.setName(QStringLiteral("A"));
    QCOMPARE(b.getName(), QStringLiteral("A2"));
    a.setName(QString());
    QCOMPARE(a.getName(), QStringLiteral("A"));
    QCOMPARE(m_service.getUniqueSetName(QStringLiteral("B")), QStringLiteral("B"));
    m_document.undo();
    QCOMPARE(b.getName(), QStringLiteral("B"));
    QCOMPARE(m_service.getUniqueSetName(QStringLiteral("A")), QStringLiteral("A2"));
}

void TestSets::numbersOfRenamedSetsAreGivenAgain()
{
    QList<nkdMetadataSet> sets;
    for (int count = 0; count < 4; ++count) {
        sets << m_service.createSet(QStringLiteral("A"), {});
    }
    sets[1].setName(QStringLiteral("other"));
    QCOMPARE(m_service.getUniqueSetName(QStringLiteral("A")), QStringLiteral("A2"));
    m_document.undo();
    QCOMPARE(m_service.getUniqueSetName(QStringLiteral("A")), QStringLiteral("A5"));
}

void TestSets::assignmentsKeepTheirOrderBothWays()
{
    const QList<nkdSceneObject> objects{node("x"), node("y"), node("z")};
    const nkdMetadataSet a = m_service.createSet(QStringLiteral("A"), {});
    const nkdMetadataSet b = m_service.createSet(QStringLiteral("B"), {});
    m_service.assignSets({objects.at(2), objects.at(0)}, {b, a});
    m_service.assignSets({objects.at(1), objects.at(0)}, {a});
    QCOMPARE(namesOf(a.getObjects()), (QStringList{"z", "x", "y"}));
    QCOMPARE(namesOf(b.getObjects()), (QStringList{"z", "x"}));
    QCOMPARE(namesOf(nkdMetadata::fromObject(objects.at(0)).getSets()), (QStringList{"B", "A"}));
    QVERIFY(a.isAssigned());
}

void TestSets::assigningTwiceAssignsOnce()
{
    const nkdSceneObject object = node("x");
    const nkdMetadataSet a = m_service.createSet(QStringLiteral("A"), {object, object});
    QCOMPARE(a.getObjects().size(), 1);
    const int steps = m_document.undoStack()->count();
    m_service.assignSets({object, object}, {a, a});
    QCOMPARE(a.getObjects().size(), 1);
    QCOMPARE(m_document.undoStack()->count(), steps);
}

void TestSets::objectSetsAreNeverAssignedNorDeleted()
{
    const nkdSceneObject object = node("x");
    const nkdMetadataSet own = nkdMetadata::fromObject(object).getObjectSet();
    m_service.assignSets({node("y")}, {own});
    m_service.deleteSets({own});
    QVERIFY(own.isAlive() && !own.isAssigned());
    QCOMPARE(own.getObjects().size(), 1);
}

void TestSets::undoingARemovedAssignmentRestoresItsPlaces()
{
    const QList<nkdSceneObject> objects{node("x"), node("y"), node("z")};
    const nkdMetadataSet a = m_service.createSet(QStringLiteral("A"), objects);
    const nkdMetadataSet b = m_service.createSet(QStringLiteral("B"), objects);
    m_service.removeAssignments({a}, {objects.at(1), objects.at(0)});
    QCOMPARE(namesOf(a.getObjects()), QStringList{"z"});
    QCOMPARE(nkdMetadata::fromObject(objects.at(1)).getSets(), QList<nkdMetadataSet>{b});
    m_document.undo();
    QCOMPARE(namesOf(a.getObjects()), (QStringList{"x", "y", "z"}));
    QCOMPARE(nkdMetadata::fromObject(objects.at(1)).getSets(), (QList<nkdMetadataSet>{a, b}));
    m_document.redo();
    QCOMPARE(namesOf(a.getObjects()), QStringList{"z"});
}

void TestSets::neighbouringRemovalsUndoInTheOppositeOrder()
{
    QList<nkdSceneObject> objects;
    for (int count = 0; count < 6; ++count) {
        objects << node(qPrintable(QString::number(count)));
    }
    const nkdMetadataSet set = m_service.createSet(QStringLiteral("A"), objects);
    // Neighbours in the chain, taken out in one change.
    m_service.removeAssignments({set}, objects.mid(1, 4));
    QCOMPARE(namesOf(set.getObjects()), (QStringList{"0", "5"}));
    m_document.undo();
    QCOMPARE(namesOf(set.getObjects()), (QStringList{"0", "1", "2", "3", "4", "5"}));
    m_document.redo();
    QCOMPARE(namesOf(set.getObjects()), (QStringList{"0", "5"}));
    m_document.undo();
    m_service.deleteSets({set});
    m_document.undo();
    QCOMPARE(nkToObjects(set.getObjects()), nkToObjects(objects));
}

void TestSets::assignmentsSurviveAnyOrderOfChangesAndUndo()
{
    QList<nkdSceneObject> objects;
    QList<nkdMetadataSet> sets;
    for (int count = 0; count < 6; ++count) {
        objects << node(qPrintable(QString::number(count)));
        sets << m_service.createSet(QString::number(count), {});
    }
    const auto picture = [&] {
        QStringList lines;
        for (const nkdMetadataSet &set : qAsConst(sets)) {
            lines << namesOf(set.getObjects()).join(QLatin1Char(','));
        }
        for (const nkdSceneObject &object : qAsConst(objects)) {
            lines << namesOf(nkdMetadata::fromObject(object).getSets()).join(QLatin1Char(','));
        }
        return lines;
    };
    QRandomGenerator random(7);
    QList<QStringList> history{picture()};
    const int before = m_document.undoStack()->count();
    for (int step = 0; step < 300; ++step) {
        const nkdSceneObject object = objects.at(random.bounded(objects.size()));
        const QList<nkdMetadataSet> some = sets.mid(random.bounded(sets.size()), 2);
        if (random.bounded(2) == 0) {
            m_service.assignSets({object}, some);
        } else {
            m_service.removeAssignments(some, {object});
        }
        if (m_document.undoStack()->count() - before == history.size()) {
            history << picture();
        }
        QCOMPARE(picture(), history.last());
    }
    for (int step = history.size() - 2; step >= 0; --step) {
        QVERIFY(m_document.undo());
        QCOMPARE(picture(), history.at(step));
    }
    for (int step = 1; step < history.size(); ++step) {
        QVERIFY(m_document.redo());
        QCOMPARE(picture(), history.at(step));
    }
}

void TestSets::deletingASetTakesItsAssignments()
{
    const nkdSceneObject object = node("x");
    nkdMetadataSet a = m_service.createSet(QStringLiteral("A"), {object});
    a.setLocked(true);
    m_service.deleteSets({a, a});
    QVERIFY(!a.isAlive() && !a.isLocked() && !a.isEditable());
    QVERIFY(nkdMetadata::fromObject(object).getSets().isEmpty());
    QVERIFY(m_service.getAllSets().isEmpty());
    QCOMPARE(m_service.getUniqueSetName(QStringLiteral("A")), QStringLiteral("A"));
}

void TestSets::undoingADeletionRestoresTheSetWithEverything()
{
    const nkdSceneObject object = node("x");
    const nkdMetadataSet first = m_service.createSet(QStringLiteral("first"), {object});
    nkdMetadataSet set = m_service.createSet(QStringLiteral("A"), {object});
    const nkdMetadataSet last = m_service.createSet(QStringLiteral("last"), {object});
    set.setValue(QStringLiteral("k"), 1);
    set.setColor(Qt::red);
    const nkdMetadataEntry entry = set.getEntries().at(0);
    m_service.deleteSets({set});
    QVERIFY(!entry.isAlive());
    m_document.undo();
    QCOMPARE(m_service.getAllSets(), (QList<nkdMetadataSet>{first, set, last}));
    QCOMPARE(nkdMetadata::fromObject(object).getSets(), (QList<nkdMetadataSet>{first, set, last}));
    QVERIFY(entry.isAlive());
    QCOMPARE(entry.getValue(), QVariant(1));
    QCOMPARE(set.getColor(), QColor(Qt::red));
}

void TestSets::duplicatesAreUnlockedAndNoAssets()
{
    const nkdSceneObject object = node("x");
    nkdMetadataSet set = m_service.createSet(QStringLiteral("A"), {object});
    set.setColor(Qt::green);
    set.setValue(QStringLiteral("k"), QStringLiteral("v"));
    set.setLocked(true);
    m_document.setAssetState(set.getObjectId(), AssetState::AtRest, QStringLiteral("id"));
    nkdMetadataSet own = nkdMetadata::fromObject(object).getObjectSet();
    own.setValue(QStringLiteral("own"), 1);
    const QList<nkdMetadataSet> copies = m_service.duplicateSets({set, own});
    QCOMPARE(namesOf(copies), (QStringList{"A2", "x"}));
    QVERIFY(copies.first().isEditable() && !copies.first().isAsset());
    QCOMPARE(copies.first().getColor(), QColor(Qt::green));
    QCOMPARE(copies.first().getValue(QStringLiteral("k")), QVariant("v"));
    QCOMPARE(namesOf(copies.first().getObjects()), QStringList{"x"});
    QVERIFY(!copies.last().isObjectSet() && !copies.last().isAssigned());
    m_document.undo();
    QVERIFY(!copies.first().isAlive() && !copies.last().isAlive());
}

void TestSets::theSetClipboardKeepsContentsNotHandles()
{
    nkdMetadataSet set = m_service.createSet(QStringLiteral("A"), {});
    set.setValue(QStringLiteral("k"), 1);
    m_service.copySets({set});
    set.setValue(QStringLiteral("k"), 2);
    m_service.deleteSets({set});
    m_service.pasteSets({node("x"), node("y")});
    const QList<nkdMetadataSet> sets = m_service.getAllSets();
    QCOMPARE(namesOf(sets), QStringList{"A"});
    QCOMPARE(sets.first().getValue(QStringLiteral("k")), QVariant(1));
    QCOMPARE(namesOf(sets.first().getObjects()), (QStringList{"x", "y"}));
    m_service.pasteSets({});
    QCOMPARE(namesOf(m_service.getAllSets()), (QStringList{"A", "A2"}));
    QVERIFY(!m_service.getAllSets().last().isAssigned());
    // Nothing living is named: the clipboard stays.
    m_service.copySets({set});
    m_service.copySets({});
    QVERIFY(!m_service.hasNoCopiedSets());
}

void TestSets::lockedSetsRefuseEdits()
{
    nkdMetadataSet set = m_service.createSet(QStringLiteral("A"), {});
    nkdMetadataEntry entry = set.createEntry(nkMetadataTypes::Integer);
    m_service.copyEntries({entry});
    set.setLocked(true);
    const QColor color = set.getColor();
    const int steps = m_document.undoStack()->count();
    set.setName(QStringLiteral("B"));
    set.setColor(Qt::red);
    set.setValue(QStringLiteral("Key"), 5);
    set.setValue(QStringLiteral("new"), 5);
    entry.setKey(QStringLiteral("other"));
    entry.setValue(7);
    entry.setValueType(nkMetadataTypes::String);
    entry.setTag(QStringLiteral("tag"));
    entry.setValueFromColor(Qt::red);
    m_service.pasteEntries({set});
    set.getEntries().append({entry});
    QVERIFY(set.createEntry(nkMetadataTypes::String).isNull());
    QCOMPARE(m_document.undoStack()->count(), steps);
    QCOMPARE(set.getName(), QStringLiteral("A"));
    QCOMPARE(set.getColor(), color);
    QCOMPARE(entry.getValue(), QVariant(0));
    // What the editor's own rules decide is not the document's to refuse.
    m_service.assignSets({node("x")}, {set});
    QVERIFY(set.isAssigned());
    QVERIFY(set.getEntries().remove(entry));
    set.setLocked(false);
    QVERIFY(set.isEditable());
}

void TestSets::assetsAtRestRefuseEdits()
{
    nkdMetadataSet set = m_service.createSet(QStringLiteral("A"), {});
    QVERIFY(m_document.setAssetState(set.getObjectId(), AssetState::AtRest, QStringLiteral("id")));
    QVERIFY(set.isAsset() && !set.isEditedAsset() && !set.isEditable());
    QVERIFY(set.createEntry(nkMetadataTypes::String).isNull());
    QVERIFY(m_document.setAssetState(set.getObjectId(), AssetState::Edited, QStringLiteral("id")));
    QVERIFY(set.isAsset() && set.isEditedAsset() && set.isEditable());
    QVERIFY(!set.createEntry(nkMetadataTypes::String).isNull());
}

void TestSets::assetStateUndoes()
{
    nkdMetadataSet set = m_service.createSet(QStringLiteral("A"), {});
    const quint64 id = set.getObjectId();
    NewsRecorder news;
    QVERIFY(m_document.setAssetState(id, AssetState::AtRest, QStringLiteral("id")));
    QVERIFY(!m_document.setAssetState(id, AssetState::AtRest, QStringLiteral("id")));
    QCOMPARE(news.take(), QStringList{"metadata 1"});
    m_document.undo();
    QCOMPARE(m_document.assetState(id), AssetState::None);
    m_document.redo();
    QCOMPARE(m_document.assetId(id), QStringLiteral("id"));
    QVERIFY(m_document.setAssetState(id, AssetState::AtRest, QStringLiteral("id"), 3));
    QCOMPARE(m_document.assetVersion(id), 3);
    QVERIFY(m_document.undo());
    QCOMPARE(m_document.assetVersion(id), 0);
    QVERIFY(m_document.redo());
    QVERIFY(m_document.setAssetState(id, AssetState::None, QStringLiteral("id"), 3));
    QCOMPARE(m_document.assetVersion(id), 0);
    QVERIFY(m_document.undo());
    const nkdMetadataSet own = nkdMetadata::fromObject(node("x")).getObjectSet();
    QVERIFY(!m_document.setAssetState(own.getObjectId(), AssetState::AtRest));
}

void TestSets::kindsOfAssignedObjectsAreCounted()
{
    const nkdSceneObject camera = node("c", nkObjectType::Camera);
    const nkdSceneObject other = node("d", nkObjectType::Camera);
    const nkdMetadataSet set = m_service.createSet(QStringLiteral("A"), {camera, other, node("n")});
    const quint64 id = set.getObjectId();
    QVERIFY(m_document.isAssignedToKind(id, nkObjectType::Camera));
    QVERIFY(m_document.isAssignedToKind(id, nkObjectType::Node));
    QVERIFY(!m_document.isAssignedToKind(id, nkObjectType::Light));
    QVERIFY(!m_document.isAssignedToKind(id, nkObjectType::MetadataSet));
    m_service.removeAssignments({set}, {camera});
    QVERIFY(m_document.isAssignedToKind(id, nkObjectType::Camera));
    m_document.deleteObjects({other.getObjectId()});
    QVERIFY(!m_document.isAssignedToKind(id, nkObjectType::Camera));
    m_document.undo();
    QVERIFY(m_document.isAssignedToKind(id, nkObjectType::Camera));
}

void TestSets::deadAndNullHandlesAreSkipped()
{
    const nkdMetadataSet dead = m_service.createSet(QStringLiteral("dead"), {});
    const nkdMetadataSet set = m_service.createSet(QStringLiteral("A"), {});
    const nkdSceneObject object = node("x");
    m_service.deleteSets({dead});
    m_service.assignSets({nkdObject(), object, set}, {dead, nkdMetadataSet(), set});
    QCOMPARE(nkdMetadata::fromObject(object).getSets(), QList<nkdMetadataSet>{set});
    QVERIFY(m_service.duplicateSets({dead, nkdMetadataSet()}).isEmpty());
    nkdMetadataSet gone = dead;
    gone.setName(QStringLiteral("x"));
    gone.setLocked(true);
    gone.setValue(QStringLiteral("k"), 1);
    QVERIFY(gone.getName().isEmpty() && !gone.getColor().isValid() && !gone.isLocked());
    QVERIFY(gone.getEntries().isEmpty() && gone.getObjects().isEmpty() && gone.dump().isEmpty());
    QVERIFY(nkdMetadataSet().createEntry(nkMetadataTypes::String).isNull());
    QVERIFY(!nkdMetadataSet().isEditable() && !nkdMetadataSet().isLocked());
}

void TestSets::emptyListsDoNothing()
{
    const nkdMetadataSet set = m_service.createSet(QStringLiteral("A"), {});
    NewsRecorder news;
    const int steps = m_document.undoStack()->count();
    m_service.deleteSets({});
    m_service.assignSets({}, {set});
    m_service.removeAssignments({set}, {});
    m_service.pasteEntries({set});
    QVERIFY(m_service.duplicateSets({}).isEmpty());
    QCOMPARE(m_document.undoStack()->count(), steps);
    QVERIFY(news.take().isEmpty());
}

NK_GUILESS_TEST_MAIN(TestSets)
#include "test_sets.moc"
