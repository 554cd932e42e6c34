#include "../interchange/SetFileFixture.h"

#include <TestMain.h>
#include <interchange/SceneFile.h>
#include <nkKernelServices/nkMetadataService.h>
#include <nkKernelServices/nkdMetadata.h>

#include <QImage>

#include <memory>

using interchange::ImportReason;
using interchange::ImportReport;
using kernel::Document;

namespace {

const QString Folder = QStringLiteral(NK_SAMPLES_DIR "/");

/// Tags have a type too, and count as tags alone.
constexpr int TagType = 8;

QSet<int> typesOf(const QList<nkdMetadataSet> &sets)
{
    QSet<int> types;
    for (const nkdMetadataSet &set : sets) {
        for (const nkdMetadataEntry &entry : set.getEntries()) {
            types.insert(entry.isTag() ? TagType : int(entry.getValueType()));
        }
    }
    return types;
}

QSet<int> allTypes()
{
    QSet<int> types{TagType};
    for (int type = nkMetadataTypes::String; type <= nkMetadataTypes::List; ++type) {
        types.insert(type);
    }
    return types;
}

QString stateOf(const nkdMetadataSet &set)
{
    if (set.isAsset()) {
        return set.isEditedAsset() ? QStringLiteral("edited asset") : QStringLiteral("asset");
    }
    return set.isLocked() ? QStringLiteral("locked") : QStringLiteral("plain");
}

QList<nkdMetadataSet> ownSetsOfTheScene()
{
    QList<nkdMetadataSet> sets;
    for (const auto kind :
         {nkObjectType::Node, nkObjectType::Camera, nkObjectType::Light, nkObjectType::Material}) {
        for (const quint64 id : Document::the().objects(kind)) {
            sets.append(nkdMetadata::fromObject(nkdSceneObject(nkdObject(id))).getObjectSet());
        }
    }
    return sets;
}

/// All texts among the values.
QString textsOf(const QList<nkdMetadataSet> &sets)
{
    QString texts;
    for (const nkdMetadataSet &set : sets) {
        for (const nkdMetadataEntry &entry : set.getEntries()) {
            texts += entry.getValue().toString() + QLatin1Char('|');
        }
    }
    return texts;
}

QSet<int> reasonsOf(const QVector<ImportReport::Item> &items)
{
    QSet<int> reasons;
    for (const ImportReport::Item &item : items) {
        reasons.insert(int(item.reason));
    }
    return reasons;
}

} // namespace

/// The samples show what files can carry, so that whoever opens them meets all of it.
class TestSamples : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { m_fixture = std::make_unique<SetFileFixture>(); }
    void cleanup() { m_fixture.reset(); }

    void the_scene_carries_every_type_that_extras_have()
    {
        QVERIFY(SceneFile::open(Folder + QStringLiteral("showroom.gltf")).isOpen());
        QCOMPARE(
            typesOf(ownSetsOfTheScene()),
            (QSet<int>{nkMetadataTypes::String, nkMetadataTypes::Integer, nkMetadataTypes::Float,
                       nkMetadataTypes::Boolean, nkMetadataTypes::List, nkMetadataTypes::Date, TagType}));
    }

    void the_scene_carries_shared_sets_of_every_type_and_state()
    {
        QVERIFY(SceneFile::open(Folder + QStringLiteral("showroom.gltf")).isOpen());
        QList<nkdMetadataSet> sets;
        QSet<QString> states;
        QSet<int> assigned;
        for (const nkdMetadataSet &set : nkMetadataService::the().getAllSets()) {
            if (!set.isObjectSet()) {
                sets.append(set);
                states.insert(stateOf(set));
                assigned.insert(qMin(2, set.getObjects().size()));
            }
        }
        QCOMPARE(typesOf(sets), allTypes());
        QCOMPARE(states, (QSet<QString>{QStringLiteral("plain"), QStringLiteral("locked"),
                                        QStringLiteral("asset"), QStringLiteral("edited asset")}));
        QCOMPARE(assigned, (QSet<int>{0, 1, 2}));
    }

    void the_scene_has_objects_of_every_kind_and_names_that_come_twice()
    {
        QVERIFY(SceneFile::open(Folder + QStringLiteral("showroom.gltf")).isOpen());
        QSet<QString> names;
        int twice = 0;
        for (const auto kind :
             {nkObjectType::Node, nkObjectType::Camera, nkObjectType::Light, nkObjectType::Sceneplate,
              nkObjectType::Material, nkObjectType::MaterialGroup}) {
            QVERIFY(Document::the().objects(kind).size() >= 2);
            for (const quint64 id : Document::the().objects(kind)) {
                const QString name = nkdSceneObject(nkdObject(id)).getName();
                twice += int(names.contains(name));
                names.insert(name);
            }
        }
        QVERIFY(twice > 20);
        for (const quint64 plate : Document::the().objects(nkObjectType::Sceneplate)) {
            QVERIFY(!QImage(Document::the().sceneplateImage(plate)).isNull());
        }
    }

    void the_scene_carries_texts_that_are_hard_to_show()
    {
        QVERIFY(SceneFile::open(Folder + QStringLiteral("showroom.gltf")).isOpen());
        const QString texts = textsOf(ownSetsOfTheScene());
        for (const QString &part :
             {QStringLiteral("<b>"), QStringLiteral(" & "), QStringLiteral("\n\t"), QStringLiteral("\""),
              QString(QChar(0x0623)), QString(QChar(0x30da)), QString(QChar(0x00e9)), QStringLiteral("||")}) {
            QVERIFY2(texts.contains(part), qPrintable(part));
        }
    }

    void the_scene_carries_what_is_reported()
    {
        const SceneFile::Result scene = SceneFile::open(Folder + QStringLiteral("showroom.gltf"));
        QCOMPARE(reasonsOf(scene.report.converted()), QSet<int>{int(ImportReason::LongInteger)});
        QCOMPARE(reasonsOf(scene.report.untouched()),
                 (QSet<int>{int(ImportReason::EmptyObject), int(ImportReason::NestedArray),
                            int(ImportReason::ObjectInArray)}));
    }

    void the_sets_carry_every_type_and_state()
    {
        const QByteArray content = SetFileFixture::read(Folder + QStringLiteral("showroom-sets.json"));
        const QList<nkdMetadataSet> sets = m_fixture->load(content);
        QCOMPARE(sets.size(), 5);
        QCOMPARE(typesOf(sets), allTypes());
        QVERIFY(!sets.first().isLocked());
        QVERIFY(sets.at(2).isLocked());
        QCOMPARE(sets.last().getEntries().size(), 0);
        QCOMPARE(m_fixture->save(sets), content);
    }

private:
    std::unique_ptr<SetFileFixture> m_fixture;
};

NK_TEST_MAIN(TestSamples)
#include "test_samples.moc"
