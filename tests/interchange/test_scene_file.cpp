#include "Fixtures.h"
#include "TestMain.h"

#include <interchange/SceneFile.h>

#include <kernel/document/Document.h>
#include <nkKernelServices/nkMetadataService.h>
#include <nkKernelServices/nkScopedUndo.h>
#include <nkKernelServices/nkdMaterial.h>
#include <nkKernelServices/nkdMetadata.h>
#include <nkKernelServices/nkdMetadataEntry.h>
#include <nkKernelServices/nkdMetadataEntryList.h>
#include <nkKernelServices/nkdMetadataSet.h>
#include <nkKernelServices/nkdNode.h>

#include <QFile>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QUndoStack>

using namespace interchange;
using namespace Fixtures;
using kernel::Document;

/// From a file to the document: what stands there afterwards, and that a bad file changes nothing.
class TestSceneFile : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void opensTheSampleScene();
    void keepsHierarchyKindsAndOrder();
    void makesTypedEntries();
    void listsMaterialsWithTheirEntries();
    void opensTextAndBinaryAlike();
    void cannotBeUndoneAndIsAnnouncedOnce();
    void takesThePlaceOfTheSceneBefore();
    void knowsWhereEveryEntryStandsInTheFile_data();
    void knowsWhereEveryEntryStandsInTheFile();
    void knowsWhereObjectsStandInTheFile();
    void keepsOddKeysApart();
    void reportsWhatItLeftAlone();
    void badFilesLeaveTheSceneAlone_data();
    void badFilesLeaveTheSceneAlone();
    void placesInBinaryFilesCountFromTheFile();
    void refusesWhileAChangeIsBeingMade();

private:
    QString write(const QString &name, const QByteArray &content);
    SceneFile::Result openText(const QByteArray &json);

    std::unique_ptr<QTemporaryDir> m_folder;
};

namespace {

const QString Sample = QStringLiteral(NK_SAMPLES_DIR "/showroom.gltf");

QByteArray contentOf(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        qWarning("cannot read %s", qPrintable(path));
    return file.readAll();
}

QString nameOf(quint64 id)
{
    const nkObjectType type = Document::the().typeOf(id);
    return type == nkObjectType::Material ? nkdMaterial(nkdObject(id)).getName()
                                          : nkdNode(nkdObject(id)).getName();
}

nkdMetadataSet ownSet(quint64 id)
{
    return nkdMetadata::fromObject(nkdSceneObject(nkdObject(id))).getObjectSet();
}

/// The first object of this name below these, depth first; 0 when there is none.
quint64 findBelow(const QList<quint64> &ids, const QString &name)
{
    for (const quint64 id : ids) {
        const quint64 found = nameOf(id) == name ? id : findBelow(Document::the().childrenOf(id), name);
        if (found != 0)
            return found;
    }
    return 0;
}

quint64 node(const char *name)
{
    return findBelow(Document::the().topLevelNodes(), QString::fromUtf8(name));
}

nkdMetadataEntry entryOf(quint64 object, const char *key)
{
    return ownSet(object).getEntries().find(QString::fromUtf8(key));
}

/// Everything of a scene as text: names, kinds, keys, types and values, indented by level.
QString dump(const QList<quint64> &ids, const QString &indent = QString())
{
    QString text;
    for (const quint64 id : ids) {
        text += indent + nameOf(id) + QStringLiteral(" : %1\n").arg(quint64(Document::the().typeOf(id)));
        const QList<nkdMetadataEntry> entries = ownSet(id).getEntries().data();
        for (const nkdMetadataEntry &entry : entries) {
            QString value;
            QDebug(&value) << entry.getKey() << entry.isTag() << int(entry.getValueType())
                           << entry.getValue();
            text += indent + QStringLiteral("  ") + value + QLatin1Char('\n');
        }
        text += dump(Document::the().childrenOf(id), indent + QStringLiteral("    "));
    }
    return text;
}

QString dumpScene()
{
    return dump(Document::the().topLevelNodes()) + dump(Document::the().topLevelMaterials());
}

} // namespace

void TestSceneFile::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
    QVERIFY(m_folder->isValid());
    QVERIFY(Document::the().clear());
}

QString TestSceneFile::write(const QString &name, const QByteArray &content)
{
    QFile file(m_folder->filePath(name));
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
        qWarning("cannot write %s", qPrintable(name));
    return file.fileName();
}

SceneFile::Result TestSceneFile::openText(const QByteArray &json)
{
    const SceneFile::Result result = SceneFile::open(write(QStringLiteral("scene.gltf"), json));
    if (!result.isOpen())
        qWarning("%s", qPrintable(result.error));
    return result;
}

void TestSceneFile::opensTheSampleScene()
{
    const SceneFile::Result result = SceneFile::open(Sample);
    QVERIFY2(result.isOpen(), qPrintable(result.error));
    QVERIFY(result.source);
    QCOMPARE(result.source->filePath, Sample);
    QVERIFY(!result.source->isBinary);
    Document &document = Document::the();
    QCOMPARE(document.objects(nkObjectType::Node).size(), 63);
    QCOMPARE(document.objects(nkObjectType::Camera).size(), 3);
    QCOMPARE(document.objects(nkObjectType::Light).size(), 4);
    QCOMPARE(document.objects(nkObjectType::Material).size(), 9);
    QCOMPARE(result.source->objectCount(), 81);
    QVERIFY(result.source->entryCount() > 150);
    QCOMPARE(result.report.keptCount() + result.report.converted().size(), result.source->entryCount());
}

void TestSceneFile::keepsHierarchyKindsAndOrder()
{
    QVERIFY(SceneFile::open(Sample).isOpen());
    Document &document = Document::the();
    QCOMPARE(document.topLevelNodes().size(), 1);
    QCOMPARE(nameOf(document.topLevelNodes().first()), QStringLiteral("Showroom"));
    QStringList names;
    for (const quint64 child : document.childrenOf(node("Body")))
        names.append(nameOf(child));
    QCOMPARE(names, (QStringList{"Chassis", "Cabin", "Windscreen", "Cargo Box", "Door", "Door"}));
    QCOMPARE(document.typeOf(node("Overview")), nkObjectType::Camera);
    QCOMPARE(document.typeOf(node("Daylight")), nkObjectType::Light);
    QCOMPARE(document.typeOf(node("Wheel")), nkObjectType::Node);
    QCOMPARE(document.parentOf(node("Rim")), node("Wheel"));
}

void TestSceneFile::makesTypedEntries()
{
    openText(gltfWithExtras(
        R"({"text":"a","int":-3,"float":1.0,"bool":true,"list":["a",1,2.5,false,null],"tag":null,
        "long":9007199254740993,"huge":1e400,"in":{"side":{"w":2}}})"));
    const quint64 part = node("Part");
    const auto has = [part](const char *key, nkMetadataTypes::ValueType type, const QVariant &value) {
        const nkdMetadataEntry found = entryOf(part, key);
        return found.getValueType() == type && found.getValue().userType() == value.userType()
               && found.getValue() == value;
    };
    QVERIFY(has("text", nkMetadataTypes::String, QStringLiteral("a")));
    QVERIFY(has("int", nkMetadataTypes::Integer, -3));
    QVERIFY(has("float", nkMetadataTypes::Float, 1.0));
    QVERIFY(has("bool", nkMetadataTypes::Boolean, true));
    QVERIFY(has("list", nkMetadataTypes::List, QVariantList({"a", 1, 2.5, false, QVariant()})));
    QVERIFY(has("long", nkMetadataTypes::String, QStringLiteral("9007199254740993")));
    QVERIFY(has("huge", nkMetadataTypes::String, QStringLiteral("1e400")));
    QVERIFY(has("in.side.w", nkMetadataTypes::Integer, 2));
    QVERIFY(entryOf(part, "tag").isTag());
    QVERIFY(!entryOf(part, "text").isTag());
    QVERIFY(Document::the().isNumberText(entryOf(part, "long").getObjectId()));
    QVERIFY(Document::the().isNumberText(entryOf(part, "huge").getObjectId()));
    QVERIFY(!Document::the().isNumberText(entryOf(part, "text").getObjectId()));
}

void TestSceneFile::listsMaterialsWithTheirEntries()
{
    QVERIFY(SceneFile::open(Sample).isOpen());
    const quint64 paint = findBelow(Document::the().topLevelMaterials(), QStringLiteral("Paint Petrol"));
    QVERIFY(paint != 0);
    QCOMPARE(Document::the().typeOf(paint), nkObjectType::Material);
    QCOMPARE(entryOf(paint, "layers").getValue(), QVariant(3));
    QCOMPARE(entryOf(paint, "thickness.primer").getValue(), QVariant(0.02));
}

void TestSceneFile::opensTextAndBinaryAlike()
{
    QVERIFY(SceneFile::open(Sample).isOpen());
    const QString fromText = dumpScene();
    // The suffix says nothing: what counts is how the file begins.
    const SceneFile::Result result = SceneFile::open(
        write(QStringLiteral("b.gltf"), glbOf(contentOf(Sample))));
    QVERIFY2(result.isOpen(), qPrintable(result.error));
    QVERIFY(result.source->isBinary);
    QCOMPARE(result.source->jsonOffset, 20);
    QCOMPARE(dumpScene(), fromText);
    QVERIFY(fromText.contains(QStringLiteral("Delivery Van")));
}

void TestSceneFile::cannotBeUndoneAndIsAnnouncedOnce()
{
    QSignalSpy announced(&nkMetadataService::the(), &nkMetadataService::metadataChanged);
    QVERIFY(SceneFile::open(Sample).isOpen());
    QCOMPARE(announced.count(), 1);
    QCOMPARE(Document::the().undoStack()->count(), 0);
    QVERIFY(!Document::the().isModified());
}

void TestSceneFile::takesThePlaceOfTheSceneBefore()
{
    openText(gltfWithExtras(R"({"a":1})"));
    const quint64 old = node("Part");
    Document::the().createObject(nkObjectType::Node, QStringLiteral("Mine"));
    openText(gltf(R"("nodes":[{"name":"New"}])"));
    QCOMPARE(Document::the().objectCount(), 1);
    QVERIFY(node("New") != 0 && node("Mine") == 0);
    QVERIFY(!nkdObject(old).isAlive());
    QCOMPARE(Document::the().undoStack()->count(), 0);
}

void TestSceneFile::knowsWhereEveryEntryStandsInTheFile_data()
{
    QTest::addColumn<bool>("binary");
    QTest::newRow("text") << false;
    QTest::newRow("binary") << true;
}

void TestSceneFile::knowsWhereEveryEntryStandsInTheFile()
{
    QFETCH(bool, binary);
    const QByteArray content = binary ? glbOf(contentOf(Sample)) : contentOf(Sample);
    const SceneFile::Result result = SceneFile::open(write(QStringLiteral("scene"), content));
    QVERIFY2(result.isOpen(), qPrintable(result.error));
    const QByteArray json = content.mid(int(result.source->jsonOffset), int(result.source->jsonLength));
    int seen = 0;
    for (const auto kind :
         {nkObjectType::Node, nkObjectType::Camera, nkObjectType::Light, nkObjectType::Material}) {
        for (const quint64 object : Document::the().objects(kind)) {
            const QList<nkdMetadataEntry> entries = ownSet(object).getEntries().data();
            for (const nkdMetadataEntry &entry : entries) {
                const SceneSource::EntryOrigin *origin = result.source->entry(entry.getObjectId());
                QVERIFY(origin);
                JsonTree tree;
                QVERIFY(JsonReader().read('{' + bytesAt(json, origin->memberSpan()) + '}', tree));
                const JsonValue member = *tree.root().children().begin();
                const QString last = origin->isPath ? ExtrasKey::split(entry.getKey()).last()
                                                    : entry.getKey();
                QCOMPARE(member.key(), last);
                if (member.isString())
                    QCOMPARE(member.toText(), entry.getValue().toString());
                ++seen;
            }
        }
    }
    QCOMPARE(seen, result.source->entryCount());
    QVERIFY(!result.source->entry(1));
}

void TestSceneFile::knowsWhereObjectsStandInTheFile()
{
    const QByteArray json = gltf(R"("nodes":[{"name":"a","children":[1]},{"name":"b","extras":{"k":1}}],
        "materials":[{"name":"m"}],"extras":{"x":1})");
    const SceneFile::Result result = openText(json);
    const SceneSource::ObjectOrigin *b = result.source->object(node("b"));
    QVERIFY(b);
    QCOMPARE(b->index, 1u);
    QCOMPARE(b->list, SceneSource::List::Nodes);
    QCOMPARE(bytesAt(json, b->span), QByteArray(R"({"name":"b","extras":{"k":1}})"));
    QCOMPARE(bytesAt(json, b->extrasSpan), QByteArray(R"({"k":1})"));
    QVERIFY(result.source->object(node("a"))->extrasSpan.isEmpty());
    const auto *material = result.source->object(Document::the().topLevelMaterials().first());
    QCOMPARE(material->list, SceneSource::List::Materials);
    QCOMPARE(bytesAt(json, material->span), QByteArray(R"({"name":"m"})"));
    QCOMPARE(bytesAt(json, result.source->rootExtrasSpan), QByteArray(R"({"x":1})"));
    QCOMPARE(bytesAt(json, result.source->rootSpan), json);
}

void TestSceneFile::keepsOddKeysApart()
{
    const QByteArray json = gltfWithExtras(R"({"":1,"Key":2,"a.b":3,"a":{"b":4},"\ta<b>%1&":5})");
    const SceneFile::Result result = openText(json);
    const QList<nkdMetadataEntry> entries = ownSet(node("Part")).getEntries().data();
    QCOMPARE(entries.size(), 5);
    QStringList keys;
    for (int i = 0; i < entries.size(); ++i) {
        keys.append(entries.at(i).getKey());
        QCOMPARE(entries.at(i).getValue(), QVariant(i + 1));
        const auto *origin = result.source->entry(entries.at(i).getObjectId());
        QCOMPARE(bytesAt(json, origin->valueSpan), QByteArray::number(i + 1));
    }
    QCOMPARE(keys, (QStringList{R"("")", "Key", R"(a\.b)", "a.b", "\ta<b>%1&"}));
}

void TestSceneFile::reportsWhatItLeftAlone()
{
    const SceneFile::Result result = openText(gltfWithExtras(R"({"a":[[1]],"b":5000000000,"c":1})"));
    QCOMPARE(paths(result.report.untouched()), QStringList("$.nodes[0].extras.a"));
    QCOMPARE(paths(result.report.converted()), QStringList("$.nodes[0].extras.b"));
    QCOMPARE(result.report.keptCount(), 1);
}

void TestSceneFile::badFilesLeaveTheSceneAlone_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QString>("words");
    QTest::newRow("empty") << QByteArray() << "empty";
    QTest::newRow("another format") << QByteArray("%PDF-1.7\n") << "no glTF scene";
    QTest::newRow("JSON that is no object") << QByteArray("[1]") << "no glTF scene";
    QTest::newRow("JSON that is no scene") << QByteArray("{\"a\":1}") << "asset";
    QTest::newRow("blanks only") << QByteArray("  \n") << "empty";
    QTest::newRow("UTF-16") << QByteArray("\xff\xfe{\0}\0", 6) << "UTF-16";
    QTest::newRow("cut text") << contentOf(Sample).left(5000) << "line";
    QTest::newRow("wrong type") << gltf("\"nodes\":{}") << "$.nodes";
    QTest::newRow("circle") << gltf(R"("nodes":[{"children":[0]}])") << "$.nodes[0].children[0]";
    QTest::newRow("nested 10,000 deep") << gltf("\"a\":" + QByteArray(10000, '[')) << "512 levels";
    QTest::newRow("binary of 12 bytes") << glb(QByteArray()) << "byte 12";
    QTest::newRow("binary whose chunk length lies") << glb(word(4096) + "JSON{}  ") << "4096 bytes";
    QTest::newRow("binary cut") << glbOf(contentOf(Sample)).left(4000) << "4000";
    QTest::newRow("first bytes of a binary") << QByteArray("glT") << "no glTF scene";
}

void TestSceneFile::badFilesLeaveTheSceneAlone()
{
    QFETCH(QByteArray, content);
    QFETCH(QString, words);
    QVERIFY(SceneFile::open(Sample).isOpen());
    Document::the().createObject(nkObjectType::Node, QStringLiteral("Mine"));
    const QString before = dumpScene();
    const quint64 van = node("Delivery Van");
    QSignalSpy announced(&nkMetadataService::the(), &nkMetadataService::metadataChanged);
    const QString path = write(QStringLiteral("bad %1 <b>.gltf"), content);
    const SceneFile::Result result = SceneFile::open(path);
    QVERIFY(!result.isOpen());
    QVERIFY(!result.source);
    QVERIFY2(result.error.contains(path) && result.error.contains(words), qPrintable(result.error));
    QVERIFY2(result.error.endsWith(QLatin1Char('.')) && !result.error.contains(QLatin1Char('\n')),
             qPrintable(result.error));
    QCOMPARE(dumpScene(), before);
    QCOMPARE(node("Delivery Van"), van);
    QCOMPARE(Document::the().undoStack()->count(), 1);
    QVERIFY(announced.isEmpty());
    QVERIFY(!SceneFile::open(m_folder->filePath(QStringLiteral("missing.glb"))).isOpen());
    QVERIFY(!SceneFile::open(m_folder->path()).isOpen());
    QCOMPARE(dumpScene(), before);
}

void TestSceneFile::placesInBinaryFilesCountFromTheFile()
{
    const QByteArray json = gltf("\n\"nodes\":7");
    const QString path = write(QStringLiteral("bad.glb"), glbOf(json));
    const QString error = SceneFile::open(path).error;
    const int offset = 20 + json.indexOf('7');
    QVERIFY2(error.contains(QStringLiteral("line 2, column 9, byte %1,").arg(offset)), qPrintable(error));
}

void TestSceneFile::refusesWhileAChangeIsBeingMade()
{
    openText(gltfWithExtras(R"({"a":1})"));
    const QString before = dumpScene();
    nkScopedUndo scope(true);
    const SceneFile::Result result = SceneFile::open(Sample);
    QVERIFY(!result.isOpen());
    QVERIFY(!result.error.isEmpty());
    QCOMPARE(dumpScene(), before);
}

NK_TEST_MAIN(TestSceneFile)
#include "test_scene_file.moc"
