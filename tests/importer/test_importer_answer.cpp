#include "AnswerFixture.h"
#include "TestMain.h"

#include <QSet>

#include <algorithm>
#include <limits>
#include <random>

using namespace interchange;
using namespace AnswerFixture;

/// The flat form of the importer's answers: what the workbench reads out of a true one, and that it believes nothing.
class TestImporterAnswer : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void readsEveryPartOfAScene();
    void readsEveryTypeOfEntry();
    void takesTheAnswerInPiecesOfAnySize();
    void keepsTheLargestShare();
    void refusesAnotherVersion();
    void refusesMoreThanTheLimit();
    void refusesAnAnswerCutAtAnyByte();
    void refusesWhatStandsBehindTheEnd();
    void refusesLies_data();
    void refusesLies();
    void refusesNodesBelowThemselves();
    void refusesNodesThatAreTooDeep();
    void survivesTwentyThousandDamagedAnswers();
    void tellsNodesApartByTheirPaths();
    void keepsKeysDifferentWhateverTheNames();
    void boundsTheLengthOfKeys();
    void showsBrokenTextAndSaysSo();
    void makesKeysOfEntriesUnique();
};

void TestImporterAnswer::readsEveryPartOfAScene()
{
    const auto scene = sceneOf(answer(writeScene));
    QVERIFY(scene);
    QCOMPARE(int(scene->nodes.size()), 3);
    QCOMPARE(scene->nodes[1].name, QStringLiteral("Eye"));
    QCOMPARE(scene->nodes[1].kind, SceneNodeKind::Camera);
    QCOMPARE(scene->nodes[2].kind, SceneNodeKind::Light);
    QCOMPARE(scene->nodes[2].parent, 0);
    QCOMPARE(scene->materials.at(0).name, QStringLiteral("Steel"));
    const SceneGeometry &geometry = *scene->geometry;
    QCOMPARE(geometry.nodes[0].mesh, 0);
    QCOMPARE(int(geometry.meshes.at(0).parts.at(0).positions.size()), 9);
    QCOMPARE(geometry.meshes.at(0).parts.at(0).indices, (std::vector<uint32_t>{0, 1, 2}));
    QCOMPARE(geometry.cameras.at(0).verticalAngle, 0.7F);
    QCOMPARE(geometry.lights.at(0).type, SceneGeometry::Light::Type::Spot);
    QCOMPARE(geometry.lights.at(0).intensity, 3.0F);
    QVERIFY(geometry.materials.at(0).isDoubleSided);
    QCOMPARE(qRound(geometry.materials.at(0).color.alphaF() * 100), 75);
    QCOMPARE(scene->report.refused().at(0).path, QStringLiteral("../secret.mtl"));
}

void TestImporterAnswer::readsEveryTypeOfEntry()
{
    const auto scene = sceneOf(answer(writeScene));
    QVERIFY(scene);
    const auto entry = [&scene](int i) { return scene->entries.at(size_t(i)); };
    QVERIFY(entry(0).isTag && !entry(0).value.isValid());
    QCOMPARE(entry(1).value, QVariant(true));
    QCOMPARE(entry(2).value, QVariant(-42));
    QCOMPARE(entry(2).type, nkMetadataTypes::Integer);
    QCOMPARE(entry(3).value, QVariant(QStringLiteral("18446744073709551615")));
    QCOMPARE(entry(3).type, nkMetadataTypes::String);
    QCOMPARE(entry(4).value, QVariant(0.5));
    QCOMPARE(entry(5).value, QVariant(0.1));
    QCOMPARE(entry(6).value, QVariant(QString::fromUtf8("caf\xc3\xa9")));
    QCOMPARE(entry(7).value, QVariant(QVariantList{1.0, 2.0, 3.0}));
    QCOMPARE(scene->report.keptCount(), 7);
    QCOMPARE(scene->report.converted().size(), 1);
    QCOMPARE(scene->report.converted().at(0).path, QStringLiteral("Root, large"));
    QCOMPARE(scene->report.converted().at(0).reason, ImportReason::LongInteger);
}

void TestImporterAnswer::takesTheAnswerInPiecesOfAnySize()
{
    const QByteArray whole = answer([](FlatWriter &writer) {
        writer.progress(0.25F);
        writer.progress(0.5F);
        writeScene(writer);
    });
    for (int size = 1; size < 40; ++size) {
        AnswerStream stream;
        stream.setLimit(whole.size());
        for (int at = 0; at < whole.size(); at += size)
            QVERIFY(stream.add(whole.mid(at, size)));
        ForeignScene scene;
        QVERIFY(stream.hasRecord());
        QVERIFY(AnswerReader(stream.record()).read(scene));
        QCOMPARE(stream.share(), 0.5);
    }
}

void TestImporterAnswer::keepsTheLargestShare()
{
    AnswerStream stream;
    stream.setLimit(1000);
    QVERIFY(stream.add(answer([](FlatWriter &writer) {
        writer.progress(0.5F);
        writer.progress(-3);
        writer.progress(7);
    })));
    QCOMPARE(stream.share(), 1.0);
    QVERIFY(!stream.hasRecord());
    AnswerStream odd;
    odd.setLimit(1000);
    QVERIFY(!odd.add(
        answer([](FlatWriter &writer) { writer.progress(std::numeric_limits<float>::quiet_NaN()); })));
}

void TestImporterAnswer::refusesAnotherVersion()
{
    for (const int byte : {0, 3, 4, 7}) {
        QByteArray bytes = answer(writeScene);
        bytes[byte] = char(bytes.at(byte) + 1);
        QVERIFY(!sceneOf(bytes));
    }
}

void TestImporterAnswer::refusesMoreThanTheLimit()
{
    const QByteArray bytes = answer(writeScene);
    AnswerStream stream;
    stream.setLimit(bytes.size() - 1);
    QVERIFY(!stream.add(bytes));
    QVERIFY(stream.isTooLong());
}

void TestImporterAnswer::refusesAnAnswerCutAtAnyByte()
{
    const QByteArray bytes = answer(writeScene);
    for (int size = 0; size < bytes.size(); ++size)
        QVERIFY2(!sceneOf(bytes.left(size)), qPrintable(QString::number(size)));
}

void TestImporterAnswer::refusesWhatStandsBehindTheEnd()
{
    QVERIFY(!sceneOf(answer(writeScene) + '\0'));
    QVERIFY(!sceneOf(answer(writeScene) + answer(writeScene)));
}

namespace {

/// A scene of one node and one mesh in which one number is another.
struct Lie
{
    uint32_t materials = 0;
    int material = -1;
    uint32_t vertices = 3;
    float position = 0;
    float normal = 1;
    uint32_t indices = 3;
    uint32_t corner = 2;
    int parent = -1;
    float matrix = 1;
    int kind = 0;
    int mesh = 0;
    int camera = -1;
    uint32_t entries = 0;
    uint32_t troubles = 0;

    QByteArray told() const
    {
        return answer([this](FlatWriter &writer) { write(writer); });
    }
    void write(FlatWriter &writer) const;
    void writePart(FlatWriter &writer) const;
};

void Lie::writePart(FlatWriter &writer) const
{
    writer.index(material);
    writer.word(vertices);
    writer.byte(1);
    singles(writer, {position, 0, 0, 1, 0, 0, 0, 1, 0});
    singles(writer, {0, 0, normal, 0, 0, 1, 0, 0, 1});
    writer.word(indices);
    const uint32_t corners[] = {0, 1, corner};
    for (uint32_t i = 0; i < std::min(indices, 3U); ++i)
        writer.word(corners[i]);
}

void Lie::write(FlatWriter &writer) const
{
    writer.record(flat::Record::Scene);
    writer.word(materials);
    writer.word(1);
    writer.word(1);
    writePart(writer);
    writer.word(0);
    writer.word(0);
    writer.word(1);
    writer.text("Node");
    writer.index(parent);
    for (int i = 0; i < 16; ++i)
        writer.single(i == 0 ? matrix : i % 5 == 0 ? 1 : 0);
    writer.byte(uint8_t(kind));
    writer.index(mesh);
    writer.index(camera);
    writer.index(-1);
    writer.word(entries);
    writer.word(troubles);
    writer.word(flat::EndMark);
}

} // namespace

void TestImporterAnswer::refusesLies_data()
{
    constexpr float infinite = std::numeric_limits<float>::infinity();
    QTest::addColumn<QByteArray>("bytes");
    const auto row = [](const char *name, const std::function<void(Lie &)> &change) {
        Lie lie;
        change(lie);
        QTest::newRow(name) << lie.told();
    };
    row("materials that are not there", [](Lie &lie) { lie.materials = 0xffffffff; });
    row("material", [](Lie &lie) { lie.material = 0; });
    row("material below none", [](Lie &lie) { lie.material = -2; });
    row("fewer vertices", [](Lie &lie) { lie.vertices = 2; });
    row("vertices without end", [](Lie &lie) { lie.vertices = 0x55555556; });
    row("position", [](Lie &lie) { lie.position = infinite; });
    row("long normal", [](Lie &lie) { lie.normal = 2; });
    row("normal that is no number", [](Lie &lie) { lie.normal = std::numeric_limits<float>::quiet_NaN(); });
    row("indices without end", [](Lie &lie) { lie.indices = 0x80000001; });
    row("half a triangle", [](Lie &lie) { lie.indices = 2; });
    row("corner", [](Lie &lie) { lie.corner = 3; });
    row("parent", [](Lie &lie) { lie.parent = 0; });
    row("parent below none", [](Lie &lie) { lie.parent = -2; });
    row("matrix", [](Lie &lie) { lie.matrix = -infinite; });
    row("kind", [](Lie &lie) { lie.kind = 3; });
    row("mesh", [](Lie &lie) { lie.mesh = 1; });
    row("camera", [](Lie &lie) { lie.camera = 0; });
    row("entries", [](Lie &lie) { lie.entries = importlimits::Entries + 1; });
    row("troubles", [](Lie &lie) { lie.troubles = 1; });
}

void TestImporterAnswer::refusesLies()
{
    QFETCH(QByteArray, bytes);
    QVERIFY(sceneOf(Lie().told()));
    QVERIFY(!sceneOf(bytes));
}

void TestImporterAnswer::refusesNodesBelowThemselves()
{
    QVERIFY(sceneOf(answerOfNodes({{"A", -1}, {"B", 0}, {"C", 0}})));
    QVERIFY(!sceneOf(answerOfNodes({{"A", -1}, {"B", 1}})));
    QVERIFY(!sceneOf(answerOfNodes({{"A", 1}, {"B", -1}})));
    QVERIFY(!sceneOf(answerOfNodes({})));
}

void TestImporterAnswer::refusesNodesThatAreTooDeep()
{
    std::vector<std::pair<QByteArray, int>> nodes;
    for (int i = 0; i < importlimits::Depth; ++i)
        nodes.emplace_back("N", i - 1);
    QVERIFY(sceneOf(answerOfNodes(nodes)));
    nodes.emplace_back("N", importlimits::Depth - 1);
    QVERIFY(!sceneOf(answerOfNodes(nodes)));
}

namespace {

void damage(QByteArray &bytes, std::mt19937 &random)
{
    const int at = int(random() % uint(bytes.size()));
    switch (random() % 5) {
    case 0:
        bytes[at] = char(random());
        break;
    case 1:
        bytes.remove(at, 1 + int(random() % 8));
        break;
    case 2:
        bytes.insert(at, bytes.mid(int(random() % uint(bytes.size())), int(random() % 30)));
        break;
    case 3: // a whole number at its bounds
        bytes.replace(at, 4, QByteArray::fromHex(random() % 2 ? "ffffffff" : "ffffff7f"));
        break;
    default:
        bytes[at] = char(bytes.at(at) ^ (1 << random() % 8));
    }
}

bool isSound(const ForeignScene &scene)
{
    const SceneGeometry &geometry = *scene.geometry;
    for (const SceneGeometry::Mesh &mesh : geometry.meshes)
        for (const SceneGeometry::Part &part : mesh.parts)
            for (const uint32_t corner : part.indices)
                if (3 * size_t(corner) + 2 >= part.positions.size())
                    return false;
    QSet<QString> keys;
    for (size_t i = 0; i < scene.nodes.size(); ++i) {
        keys.insert(scene.nodes[i].key);
        if (scene.nodes[i].parent >= int(i) || geometry.nodes[i].mesh >= int(geometry.meshes.size())
            || scene.nodes[i].entries.end() > scene.entries.size() || scene.nodes[i].name.isEmpty())
            return false;
    }
    return size_t(keys.size()) == scene.nodes.size();
}

} // namespace

void TestImporterAnswer::survivesTwentyThousandDamagedAnswers()
{
    const QByteArray whole = answer(writeScene);
    std::mt19937 random(20240229);
    int read = 0;
    for (int i = 0; i < 20000; ++i) {
        QByteArray bytes = whole;
        for (uint changes = 1 + random() % 3; changes > 0; --changes)
            damage(bytes, random);
        const auto scene = sceneOf(bytes);
        QVERIFY2(!scene || isSound(*scene), qPrintable(QString::number(i)));
        read += scene ? 1 : 0;
    }
    // Damage within a text or a colour leaves a scene.
    QVERIFY2(read > 1000 && read < 19000, qPrintable(QString::number(read)));
}

void TestImporterAnswer::tellsNodesApartByTheirPaths()
{
    const auto scene = sceneOf(
        answerOfNodes({{"Car", -1}, {"Wheel", 0}, {"Wheel", 0}, {"Nut", 2}, {"", 0}, {"", 0}, {"a/b", 0}}));
    QVERIFY(scene);
    QStringList keys, names;
    for (const ForeignScene::Node &node : scene->nodes) {
        keys.append(node.key);
        names.append(node.name);
    }
    QCOMPARE(keys.join(QLatin1Char(' ')),
             QStringLiteral("Car Car/Wheel Car/Wheel[2] Car/Wheel[2]/Nut Car/[] Car/[][2] Car/a\\/b"));
    QCOMPARE(names.mid(4),
             (QStringList{QStringLiteral("Node 4"), QStringLiteral("Node 5"), QStringLiteral("a/b")}));
}

void TestImporterAnswer::keepsKeysDifferentWhateverTheNames()
{
    const auto scene = sceneOf(answerOfNodes({{"a", -1},
                                              {"a", -1},
                                              {"a[2]", -1},
                                              {"b", 0},
                                              {"a/b", -1},
                                              {"[]", -1},
                                              {"", -1},
                                              {"a\\/b", -1},
                                              {"a\\", -1},
                                              {"b", 8}}));
    QVERIFY(scene);
    QSet<QString> keys;
    for (const ForeignScene::Node &node : scene->nodes)
        keys.insert(node.key);
    QCOMPARE(size_t(keys.size()), scene->nodes.size());
}

void TestImporterAnswer::boundsTheLengthOfKeys()
{
    std::vector<std::pair<QByteArray, int>> nodes;
    for (int i = 0; i < 900; ++i)
        nodes.emplace_back(QByteArray(1000, 'x'), i - 1);
    const auto scene = sceneOf(answerOfNodes(nodes));
    QVERIFY(scene);
    QSet<QString> keys;
    for (const ForeignScene::Node &node : scene->nodes) {
        QVERIFY(node.key.size() <= 1024);
        keys.insert(node.key);
    }
    QCOMPARE(keys.size(), 900);
}

void TestImporterAnswer::showsBrokenTextAndSaysSo()
{
    const auto scene = sceneOf(answerOfNodes({{"caf\xe9 <b>\t\n", -1}, {"caf\xc3", 0}, {"\xef\xbb\xbf", 0}}));
    QVERIFY(scene);
    QCOMPARE(scene->nodes[0].name, QStringLiteral("caf\uFFFD <b>\t\n"));
    QCOMPARE(scene->nodes[1].name, QStringLiteral("caf\uFFFD"));
    QCOMPARE(scene->nodes[2].name, QStringLiteral("\uFEFF"));
    QCOMPARE(scene->report.converted().size(), 2);
    QCOMPARE(scene->report.converted().at(0).reason, ImportReason::InvalidText);
}

void TestImporterAnswer::makesKeysOfEntriesUnique()
{
    const auto scene = sceneOf(answer([](FlatWriter &writer) {
        writer.record(flat::Record::Scene);
        for (int lists = 0; lists < 4; ++lists)
            writer.word(0);
        writer.word(1);
        writeNode(writer, "Node", -1, flat::Kind::Node, -1, -1, -1);
        writer.word(5);
        for (const char *key : {"size", "size", "", "size2", "Key"}) {
            writer.text(key);
            writer.byte(uint8_t(flat::Value::Text));
            writer.text(std::string(*key == '\0' ? 1023 : 3, 'x'));
        }
        writer.word(0);
        writer.word(flat::EndMark);
    }));
    QVERIFY(scene);
    QStringList keys;
    for (const ForeignScene::Entry &entry : scene->entries)
        keys.append(entry.key);
    QCOMPARE(keys.join(QLatin1Char(' ')), QStringLiteral("size size2 Key size22 Key2"));
    QCOMPARE(scene->report.keptCount(), 1);
    QStringList reasons;
    for (const ImportReport::Item &item : scene->report.converted())
        reasons.append(item.path + QLatin1Char(' ') + QString::number(int(item.reason)));
    const QString renamed = QString::number(int(ImportReason::RenamedKey));
    QCOMPARE(reasons.at(0), QStringLiteral("Node, size2 ") + renamed);
    QCOMPARE(reasons.at(2), QStringLiteral("Node, Key ") + QString::number(int(ImportReason::CutText)));
}

NK_GUILESS_TEST_MAIN(TestImporterAnswer)
#include "test_importer_answer.moc"
