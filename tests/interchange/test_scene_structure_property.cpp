#include "SceneTree.h"
#include "StructureVariety.h"
#include "TestMain.h"

#include <QColor>

#include <random>

using T = nkMetadataTypes;

/// Random changes of the tree with saves in between, history and all: what was saved is what is opened.
class TestSceneStructureProperty : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void everySaveIsOpenedAsItWas_data();
    void everySaveIsOpenedAsItWas();

private:
    using Edit = void (TestSceneStructureProperty::*)();

    /// A file as it was after a save, and the document then.
    struct Kept
    {
        QByteArray file;
        QString dump;
    };

    int number(int end) { return int(m_random() % quint32(end)); }
    quint64 anyObject();
    quint64 anyParent(nkObjectType type);
    QString name();

    void create();
    void createPlate();
    void change();
    void remove();
    void move();
    void rename();
    void edit();
    void assign();
    void undo();
    void redo();
    void walk(SavingFixture &scene, QVector<Kept> &kept);
    static void compareWorlds(const QByteArray &before, const QByteArray &after);

    std::mt19937 m_random;
    QString m_folder;
    int m_names = 0;
};

quint64 TestSceneStructureProperty::anyObject()
{
    const auto all = SceneTree::walk();
    return all.isEmpty() ? 0 : all.at(number(all.size())).first;
}

/// The top level, or what an object of this kind can stand below.
quint64 TestSceneStructureProperty::anyParent(nkObjectType type)
{
    const bool isMaterial = type == nkObjectType::Material || type == nkObjectType::MaterialGroup;
    for (int attempt = 0; attempt < 4; ++attempt) {
        const quint64 id = anyObject();
        const nkObjectType parent = SceneTree::document().typeOf(id);
        const bool isGroup = parent == nkObjectType::MaterialGroup;
        if (isMaterial ? isGroup : !isGroup && parent != nkObjectType::Material)
            return id;
    }
    return 0;
}

QString TestSceneStructureProperty::name()
{
    static const QStringList names{"Node 3", "Crane", "Red", "<b>&%1\n\t\"", "é 𝄞"};
    return number(3) == 0 ? names.at(number(names.size())) : QStringLiteral("New %1").arg(++m_names);
}

void TestSceneStructureProperty::create()
{
    static const QVector<nkObjectType> types{nkObjectType::Node,     nkObjectType::Node,
                                             nkObjectType::Camera,   nkObjectType::Light,
                                             nkObjectType::Material, nkObjectType::MaterialGroup};
    const nkObjectType type = types.at(number(types.size()));
    const quint64 id = SceneTree::document().createObject(type, name(), anyParent(type));
    if (number(2) == 0)
        SavingFixture::ownSet(nkdObject(id)).setValue(QStringLiteral("born"), QDate(2024, 1 + number(12), 1));
    else
        SavingFixture::ownSet(nkdObject(id)).setValue(QStringLiteral("text"), name());
}

void TestSceneStructureProperty::createPlate()
{
    const QString image = number(2) == 0 ? m_folder + QStringLiteral("/images/sky.png")
                                         : QStringLiteral("/elsewhere/ground.jpg");
    SceneTree::document().createSceneplate(name(), image,
                                           number(2) == 0 ? kernel::SceneplatePlacement::InFront
                                                          : kernel::SceneplatePlacement::Behind,
                                           anyParent(nkObjectType::Node));
}

void TestSceneStructureProperty::change()
{
    const quint64 id = anyObject();
    SceneTree::document().setSceneplatePlacement(id, kernel::SceneplatePlacement::InFront);
    SavingFixture::ownSet(nkdObject(id)).setColor(QColor(number(256), 2, 3));
}

void TestSceneStructureProperty::remove()
{
    // Scenes are to grow, so that there is something to be done.
    if (number(2) == 0)
        return;
    SceneTree::document().deleteObjects(number(3) == 0 ? QList<quint64>{anyObject(), anyObject()}
                                                       : QList<quint64>{anyObject()});
}

void TestSceneStructureProperty::move()
{
    const quint64 id = anyObject();
    const quint64 parent = number(4) == 0 ? SceneTree::document().parentOf(id)
                                          : anyParent(SceneTree::document().typeOf(id));
    SceneTree::document().moveObjects({id}, parent, number(3) - 1);
}

void TestSceneStructureProperty::rename()
{
    nkdSceneObject(nkdObject(anyObject())).setName(name());
}

void TestSceneStructureProperty::edit()
{
    nkdMetadataSet own = SavingFixture::ownSet(nkdObject(anyObject()));
    const QList<nkdMetadataEntry> entries = own.getEntries().data();
    if (number(3) == 0 && !entries.isEmpty())
        own.getEntries().remove(entries.at(number(entries.size())));
    else
        own.setValue(QStringLiteral("key %1").arg(number(4)), number(100));
}

void TestSceneStructureProperty::assign()
{
    const nkdSceneObject object{nkdObject(anyObject())};
    const QList<nkdMetadataSet> sets = nkMetadataService::the().getAllSets();
    if (sets.size() < 3)
        nkMetadataService::the().createSet(name(), {object});
    else
        nkMetadataService::the().assignSets({object}, {sets.at(number(sets.size()))});
}

void TestSceneStructureProperty::undo()
{
    for (int i = number(12); i >= 0; --i)
        SceneTree::document().undo();
}

void TestSceneStructureProperty::redo()
{
    for (int i = number(8); i >= 0; --i)
        SceneTree::document().redo();
}

/// Whatever stands in both files stands at the same place.
void TestSceneStructureProperty::compareWorlds(const QByteArray &before, const QByteArray &after)
{
    const auto old = SceneTree::worlds(before);
    const auto places = SceneTree::worlds(after, SceneTree::hiddenIn(after));
    for (auto place = places.cbegin(); place != places.cend(); ++place) {
        for (int i = 0; i < 16; ++i) {
            const float wanted = old.value(place.key()).constData()[i];
            QVERIFY2(std::abs(place.value().constData()[i] - wanted) < 1e-3f * (1 + std::abs(wanted)),
                     qPrintable(QStringLiteral("mesh %1").arg(place.key())));
        }
    }
}

void TestSceneStructureProperty::walk(SavingFixture &scene, QVector<Kept> &kept)
{
    using This = TestSceneStructureProperty;
    static const QVector<Edit> edits{&This::create, &This::create, &This::createPlate, &This::change,
                                     &This::remove, &This::remove, &This::move,        &This::move,
                                     &This::move,   &This::rename, &This::edit,        &This::assign,
                                     &This::undo,   &This::redo};
    for (int step = 0; step < 120; ++step) {
        (this->*edits.at(number(edits.size())))();
        if (number(4) > 0)
            continue;
        const SavingFixture::Saved saved = scene.save();
        QVERIFY2(saved.outcome == SavingFixture::Saved::Done, qPrintable(saved.error));
        kept.append({SavingFixture::read(scene.path), SceneTree::dump()});
        QCOMPARE(SceneTree::fault(kept.last().file), QString());
    }
}

void TestSceneStructureProperty::everySaveIsOpenedAsItWas_data()
{
    QTest::addColumn<int>("seed");
    for (int seed = 0; seed < 10; ++seed)
        QTest::addRow("seed %d", seed) << seed;
}

void TestSceneStructureProperty::everySaveIsOpenedAsItWas()
{
    QFETCH(int, seed);
    m_random.seed(quint32(seed) + 1);
    SavingFixture scene;
    m_folder = scene.folder.path();
    const QByteArray first = StructureVariety::file(seed);
    QVERIFY(scene.openContent(first));
    for (int session = 0; session < 2; ++session) {
        QVector<Kept> kept;
        walk(scene, kept);
        if (QTest::currentTestFailed())
            return;
        QVERIFY(!kept.isEmpty());
        for (const Kept &save : qAsConst(kept)) {
            QVERIFY(scene.openContent(save.file));
            QCOMPARE(SceneTree::dump(), save.dump);
            QVERIFY2(scene.report.refused().isEmpty(), qPrintable(scene.report.details(9)));
            QCOMPARE(scene.saved(), save.file);
            if (seed % StructureVariety::Count == 0)
                compareWorlds(first, save.file);
        }
    }
}

NK_TEST_MAIN(TestSceneStructureProperty)
#include "test_scene_structure_property.moc"
