#include "TestMain.h"

#include <kernel/document/Document.h>
#include <nkKernelServices/nkMaterialService.h>
#include <nkKernelServices/nkScopedUndo.h>

using kernel::Document;

namespace {

using Entries = QList<nkMaterialEntryId>;

nkdMaterial material(const QString &name, quint64 group = 0)
{
    return nkdMaterial(nkdObject(Document::the().createObject(nkObjectType::Material, name, group)));
}

nkdMaterialGroupNode group(const QString &name, quint64 parent = 0)
{
    return nkdMaterialGroupNode(
        nkdObject(Document::the().createObject(nkObjectType::MaterialGroup, name, parent)));
}

} // namespace

/// The selection of the material editor and its items.
class TestMaterialSelection : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup() { Document::the().clear(); }

    void itemsTellWhatTheyStandFor();
    void keepsMaterialsAndGroups();
    void passesItsFlagsOn();
    void skipsDeadAndForeignItems();
    void deletedItemsLeave();
    void clearingTheSceneEmptiesIt();
    void listsTheScene();
};

void TestMaterialSelection::itemsTellWhatTheyStandFor()
{
    const nkdMaterial paint = material(QStringLiteral("Paint"));
    const nkdMaterialGroupNode metals = group(QStringLiteral("Metals"));
    const nkMaterialEntryId nothing;
    QCOMPARE(nkMaterialEntryId(paint).getEntryType(), nkMaterialEntryId::Material);
    QCOMPARE(nkMaterialEntryId(paint).getEntry().getMaterial(), paint);
    QVERIFY(nkMaterialEntryId(paint).getEntry().getGroupNode().isNull());
    QCOMPARE(nkMaterialEntryId(metals).getEntryType(), nkMaterialEntryId::Group);
    QCOMPARE(nkMaterialEntryId(metals).getEntry().getGroupNode(), nkdNode(metals));
    QVERIFY(nkMaterialEntryId(metals).getEntry().getMaterial().isNull());
    QCOMPARE(nothing.getEntryType(), nkMaterialEntryId::Invalid);
    QCOMPARE(nkMaterialEntryId(nkdMaterial()).getEntryType(), nkMaterialEntryId::Invalid);
    QVERIFY(nothing.getEntry().getMaterial().isNull());
    QVERIFY(nothing.getEntry().getGroupNode().isNull());
}

void TestMaterialSelection::keepsMaterialsAndGroups()
{
    const nkdMaterial paint = material(QStringLiteral("Paint"));
    const nkdMaterialGroupNode metals = group(QStringLiteral("Metals"));
    nkMaterialService::the().setSelection({metals, paint, metals}, true, false);
    QCOMPARE(nkMaterialService::the().getSelectedMaterials(), Entries({metals, paint}));
    QCOMPARE(nkMaterialService::the().getSelectedMaterials().first().getEntryType(),
             nkMaterialEntryId::Group);
}

void TestMaterialSelection::passesItsFlagsOn()
{
    const nkdMaterial paint = material(QStringLiteral("Paint"));
    QSignalSpy spy(&nkMaterialService::the(), &nkMaterialService::selectionChanged);
    nkMaterialService::the().setSelection({paint}, true, false);
    nkMaterialService::the().setSelection({paint}, false, true);
    QCOMPARE(spy.size(), 2);
    QCOMPARE(spy.at(0).at(0).value<Entries>(), Entries({paint}));
    QCOMPARE(spy.at(0).mid(1), QVariantList({true, false}));
    QCOMPARE(spy.at(1).mid(1), QVariantList({false, true}));
}

void TestMaterialSelection::skipsDeadAndForeignItems()
{
    const nkdMaterial paint = material(QStringLiteral("Paint"));
    const nkdMaterial dead = material(QStringLiteral("Dead"));
    QVERIFY(Document::the().deleteObjects({dead.getObjectId()}));
    const quint64 node = Document::the().createObject(nkObjectType::Node, QString());
    const nkdMaterial disguised(nkdObject(node, nkObjectType::Material));
    nkMaterialService::the().setSelection({nkMaterialEntryId(), dead, disguised, paint}, true, false);
    QCOMPARE(nkMaterialService::the().getSelectedMaterials(), Entries({paint}));
}

void TestMaterialSelection::deletedItemsLeave()
{
    const nkdMaterialGroupNode metals = group(QStringLiteral("Metals"));
    const nkdMaterial steel = material(QStringLiteral("Steel"), metals.getObjectId());
    const nkdMaterial paint = material(QStringLiteral("Paint"));
    nkMaterialService::the().setSelection({steel, paint, metals}, true, true);
    QSignalSpy spy(&nkMaterialService::the(), &nkMaterialService::selectionChanged);
    QVERIFY(Document::the().deleteObjects({metals.getObjectId()}));
    QCOMPARE(spy.size(), 1);
    QCOMPARE(spy.first().at(0).value<Entries>(), Entries({paint}));
    QCOMPARE(spy.first().mid(1), QVariantList({false, false}));
    QVERIFY(Document::the().undo());
    QCOMPARE(nkMaterialService::the().getSelectedMaterials(), Entries({paint}));
}

void TestMaterialSelection::clearingTheSceneEmptiesIt()
{
    nkMaterialService::the().setSelection({material(QStringLiteral("Paint"))}, true, false);
    QSignalSpy spy(&nkMaterialService::the(), &nkMaterialService::selectionChanged);
    QVERIFY(Document::the().clear());
    QCOMPARE(spy.size(), 1);
    QVERIFY(nkMaterialService::the().getSelectedMaterials().isEmpty());
}

void TestMaterialSelection::listsTheScene()
{
    const nkdMaterial paint = material(QStringLiteral("Paint"));
    const nkdMaterialGroupNode outer = group(QStringLiteral("Outer"));
    const nkdMaterialGroupNode inner = group(QStringLiteral("Inner"), outer.getObjectId());
    const nkdMaterial steel = material(QStringLiteral("Steel"), inner.getObjectId());
    const nkdMaterial last = material(QStringLiteral("Last"));
    QCOMPARE(nkMaterialService::the().getAllMaterials(), QList<nkdMaterial>({paint, steel, last}));
    QCOMPARE(nkMaterialService::the().getAllGroups(), QList<nkdMaterialGroupNode>({outer, inner}));
}

NK_GUILESS_TEST_MAIN(TestMaterialSelection)
#include "test_material_selection.moc"
