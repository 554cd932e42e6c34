#include "ImporterFixture.h"
#include "SceneTexts.h"
#include "TestMain.h"

#include <QSet>
#include <QVector3D>

using namespace interchange;
using namespace ImporterFixture;
using namespace SceneTexts;

/// What becomes of nodes, metadata, materials, cameras, lights and shapes of files that the importer reads.
class TestImporterScene : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void readsNamesAndHierarchy();
    void readsCamerasAndLights();
    void putsCamerasWhereTheyLook();
    void readsMetadataOfEveryType();
    void readsWhatTheFileSaysOfItself();
    void readsTrianglesAndMaterials();
    void turnsTheSceneUpright();
    void showsNamesAsTheyAre();
    void tellsManyEqualNamesApart();
    void refusesNodesThatAreTooDeep();
    void mendsPositionsThatAreNoNumbers();
    void readsTextInUtf16();
    void opensFilesWithOddNames();

private:
    Reading readText(const char *name, const QByteArray &text)
    {
        return read(m_folder.write(QLatin1String(name), text));
    }

    Folder m_folder;
};

namespace {

QHash<QString, ForeignScene::Entry> entriesOf(const ForeignScene &scene, const char *node)
{
    QHash<QString, ForeignScene::Entry> entries;
    const int index = indexOf(scene, QLatin1String(node));
    if (index < 0)
        return entries;
    const IndexRange range = scene.nodes[size_t(index)].entries;
    for (quint32 i = range.first; i < range.end(); ++i)
        entries.insert(scene.entries[i].key, scene.entries[i]);
    return entries;
}

/// From a node's space to the scene's.
QMatrix4x4 placeOf(const ForeignScene &scene, const char *node)
{
    QMatrix4x4 matrix;
    for (int i = indexOf(scene, QLatin1String(node)); i >= 0; i = scene.geometry->nodes[size_t(i)].parent)
        matrix = scene.geometry->nodes[size_t(i)].local * matrix;
    return matrix;
}

} // namespace

void TestImporterScene::readsNamesAndHierarchy()
{
    const Reading reading = readText(
        "yard.dae", collada(colladaNode("n1", "Car", colladaNode("n2", "Wheel") + colladaNode("n3", "Wheel"))
                            + colladaNode("n4", "Tree")));
    QVERIFY2(reading.isRead, qPrintable(reading.error));
    QStringList lines;
    for (const ForeignScene::Node &node : reading.scene.nodes)
        lines.append(QStringLiteral("%1 %2 %3").arg(node.parent).arg(node.name, node.key));
    QCOMPARE(lines.join(QLatin1Char('\n')),
             QStringLiteral("-1 Yard Yard\n0 Car Yard/Car\n1 Wheel Yard/Car/Wheel\n"
                            "1 Wheel Yard/Car/Wheel[2]\n0 Tree Yard/Tree"));
}

void TestImporterScene::readsCamerasAndLights()
{
    const QByteArray libraries =
        "<library_cameras><camera id=\"c1\" "
        "name=\"Lens\"><optics><technique_common><perspective><xfov>60</xfov>"
        "<aspect_ratio>2</aspect_ratio><znear>0.5</znear><zfar>50</zfar></perspective></technique_common></"
        "optics>"
        "</camera></library_cameras><library_lights><light id=\"l1\" name=\"Bulb\"><technique_common><spot>"
        "<color>0.5 0.25 "
        "0</color><falloff_angle>40</falloff_angle></spot></technique_common></light></library_lights>";
    const Reading reading = readText("seen.dae",
                                     collada(colladaNode("n1", "Eye", "<instance_camera url=\"#c1\"/>")
                                                 + colladaNode("n2", "Lamp", "<instance_light url=\"#l1\"/>"),
                                             libraries));
    QVERIFY2(reading.isRead, qPrintable(reading.error));
    const ForeignScene &scene = reading.scene;
    QCOMPARE(scene.nodes.at(size_t(indexOf(scene, QStringLiteral("Eye")))).kind, SceneNodeKind::Camera);
    QCOMPARE(scene.nodes.at(size_t(indexOf(scene, QStringLiteral("Lamp")))).kind, SceneNodeKind::Light);
    const SceneGeometry::Camera &camera = scene.geometry->cameras.at(0);
    QVERIFY(camera.isPerspective);
    QCOMPARE(qRound(qRadiansToDegrees(camera.verticalAngle) * 10),
             322); // 60 degrees across, twice as wide as high
    QCOMPARE(camera.aspect, 2.0F);
    QCOMPARE(camera.zNear, 0.5F);
    QCOMPARE(camera.zFar, 50.0F);
    const SceneGeometry::Light &light = scene.geometry->lights.at(0);
    QCOMPARE(light.type, SceneGeometry::Light::Type::Spot);
    QCOMPARE(light.intensity, 0.5F);
    QCOMPARE(light.color.name(), QStringLiteral("#ff8000"));
}

/// The library lets cameras look anywhere from their node; here they look along its -z, and what is below stays.
void TestImporterScene::putsCamerasWhereTheyLook()
{
    const QByteArray lens =
        "\tNodeAttribute: 1002, \"NodeAttribute::Lens\", \"Camera\" {\n\t\tTypeFlags: \"Camera\"\n"
        "\t\tProperties70:  {\n\t\t\tP: \"Position\", \"Vector\", \"\", \"A\",0,0,0\n"
        "\t\t\tP: \"InterestPosition\", \"Vector\", \"\", \"A\",1,0,0\n\t\t}\n\t}\n";
    QByteArray text = fbx("\t\t\tP: \"Lcl Translation\", \"Lcl Translation\", \"\", \"A\",5,0,0\n");
    text.replace("\"Null\"", "\"Camera\"");
    text.replace("}\nConnections:  {\n",
                 lens
                     + "\tModel: 1003, \"Model::Hood\", \"Null\" {\n\t\tVersion: 232\n\t}\n}\n"
                       "Connections:  {\n\tC: \"OO\",1002,1001\n\tC: \"OO\",1003,1001\n");
    const Reading reading = readText("camera.fbx", text);
    QVERIFY2(reading.isRead, qPrintable(reading.error));
    const QMatrix4x4 eye = placeOf(reading.scene, "Pump");
    QCOMPARE(eye.map(QVector3D()), QVector3D(5, 0, 0));
    QVERIFY(qFuzzyCompare(eye.mapVector(QVector3D(0, 0, -1)) + QVector3D(1, 1, 1), QVector3D(2, 1, 1)));
    QVERIFY(qFuzzyCompare(eye.mapVector(QVector3D(0, 1, 0)) + QVector3D(1, 1, 1), QVector3D(1, 2, 1)));
    const QMatrix4x4 hood = placeOf(reading.scene, "Hood");
    QVERIFY(qFuzzyCompare(hood.mapVector(QVector3D(1, 0, 0)) + QVector3D(1, 1, 1), QVector3D(2, 1, 1)));
}

void TestImporterScene::readsMetadataOfEveryType()
{
    const Reading reading = readText(
        "pump.fbx",
        fbx(fbxProperty("serial", "KString", "\"A-17 & <b>co</b>\"") + fbxProperty("count", "int", "42")
            + fbxProperty("total", "ULongLong", "9000000000") + fbxProperty("spare", "bool", "1")
            + fbxProperty("weight", "double", "12.5") + fbxProperty("size", "Vector3D", "1,2,3")));
    QVERIFY2(reading.isRead, qPrintable(reading.error));
    const auto entries = entriesOf(reading.scene, "Pump");
    QCOMPARE(entries.value(QStringLiteral("serial")).value, QVariant(QStringLiteral("A-17 & <b>co</b>")));
    QCOMPARE(entries.value(QStringLiteral("count")).value, QVariant(42));
    QCOMPARE(entries.value(QStringLiteral("total")).value, QVariant(QStringLiteral("9000000000")));
    QCOMPARE(entries.value(QStringLiteral("spare")).value, QVariant(true));
    QCOMPARE(entries.value(QStringLiteral("weight")).value, QVariant(12.5));
    QCOMPARE(entries.value(QStringLiteral("size")).value, QVariant(QVariantList{1.0, 2.0, 3.0}));
    QCOMPARE(entries.value(QStringLiteral("size")).type, nkMetadataTypes::List);
    QVERIFY2(!entries.contains(QStringLiteral("IsNull")), "the file does not say so");
    QVERIFY(!entries.contains(QStringLiteral("UserProperties")));
    QCOMPARE(reading.scene.report.converted().size(), 1);
    QCOMPARE(reading.scene.report.converted().at(0).path, QStringLiteral("RootNode/Pump, total"));
}

void TestImporterScene::readsWhatTheFileSaysOfItself()
{
    QByteArray text = collada(colladaNode("n1", "Car"));
    text.replace("<asset>", "<asset><contributor><author>Ada</author></contributor>");
    const Reading reading = readText("author.dae", text);
    QVERIFY2(reading.isRead, qPrintable(reading.error));
    QVERIFY(!entriesOf(reading.scene, "Yard").contains(QStringLiteral("SourceAsset_Format")));
    QCOMPARE(entriesOf(reading.scene, "Yard").value(QStringLiteral("Author")).value,
             QVariant(QStringLiteral("Ada")));
}

void TestImporterScene::readsTrianglesAndMaterials()
{
    m_folder.write(QStringLiteral("paint.mtl"), "newmtl Red Paint\nKd 1 0 0\nd 0.5\n");
    const Reading reading = readText("quad.obj",
                                     "mtllib paint.mtl\nusemtl Red Paint\no Quad\nv 0 0 0\nv 1 0 0\n"
                                     "v 1 1 0\nv 0 1 0\nvn 0 0 2\nf 1//1 2//1 3//1 4//1\nl 1 3\n");
    QVERIFY2(reading.isRead, qPrintable(reading.error));
    const SceneGeometry &geometry = *reading.scene.geometry;
    const int quad = geometry.nodes.at(size_t(indexOf(reading.scene, QStringLiteral("Quad")))).mesh;
    QCOMPARE(quad, 0);
    QCOMPARE(int(geometry.meshes.at(0).parts.size()), 1);
    const SceneGeometry::Part &part = geometry.meshes[0].parts[0];
    QCOMPARE(int(part.indices.size()), 6);
    QCOMPARE(int(part.positions.size()), 12); // the line's own ends are left out
    QCOMPARE(part.normals.at(2), 1.0F);
    QVERIFY(part.material >= 0);
    QCOMPARE(reading.scene.materials.at(size_t(part.material)).name, QStringLiteral("Red Paint"));
    const QColor color = geometry.materials.at(size_t(part.material)).color;
    QCOMPARE(color.rgb(), qRgb(255, 0, 0));
    QCOMPARE(qRound(color.alphaF() * 10), 5);
}

void TestImporterScene::turnsTheSceneUpright()
{
    const QVector3D up(0, 1, 0);
    const Reading collada = readText("z.dae",
                                     SceneTexts::collada(colladaNode("n1", "Car"), QByteArray(), "Z_UP"));
    QVERIFY2(collada.isRead, qPrintable(collada.error));
    QCOMPARE(placeOf(collada.scene, "Car").mapVector(QVector3D(0, 0, 1)), up);

    const auto axis = [](const char *name, int number, int sign) {
        return "\t\tP: \"" + QByteArray(name) + "\", \"int\", \"Integer\", \"\"," + QByteArray::number(number)
               + "\n\t\tP: \"" + name + "Sign\", \"int\", \"Integer\", \"\"," + QByteArray::number(sign)
               + '\n';
    };
    const QByteArray zUp = axis("UpAxis", 2, 1) + axis("FrontAxis", 1, -1) + axis("CoordAxis", 0, 1);
    const Reading turned = readText("z.fbx", fbx(QByteArray(), zUp));
    QVERIFY2(turned.isRead, qPrintable(turned.error));
    QCOMPARE(placeOf(turned.scene, "Pump").mapVector(QVector3D(0, 0, 1)), up);
    QCOMPARE(placeOf(turned.scene, "Pump").mapVector(QVector3D(1, 0, 0)), QVector3D(1, 0, 0));

    const QByteArray mirror = axis("UpAxis", 2, 1) + axis("FrontAxis", 1, 1) + axis("CoordAxis", 0, 1);
    QCOMPARE(placeOf(readText("m.fbx", fbx(QByteArray(), mirror)).scene, "Pump").mapVector(up), up);
    const QByteArray same = axis("UpAxis", 1, 1) + axis("FrontAxis", 1, 1) + axis("CoordAxis", 77, 1);
    QCOMPARE(placeOf(readText("s.fbx", fbx(QByteArray(), same)).scene, "Pump").mapVector(up), up);
}

void TestImporterScene::showsNamesAsTheyAre()
{
    const Reading reading = readText(
        "names.dae", collada(colladaNode("n1", "&lt;img src=&quot;x&quot;&gt; &amp;File %1")
                             + colladaNode("n2", "two\xc3\xa9\xe6\xbc\xa2") + colladaNode("n3", "bad\xff")));
    QVERIFY2(reading.isRead, qPrintable(reading.error));
    QVERIFY(indexOf(reading.scene, QStringLiteral("<img src=\"x\"> &File %1")) > 0);
    QVERIFY(indexOf(reading.scene, QString::fromUtf8("two\xc3\xa9\xe6\xbc\xa2")) > 0);
    QVERIFY(indexOf(reading.scene, QStringLiteral("bad\uFFFD")) > 0);
    QCOMPARE(reading.scene.report.converted().at(0).reason, ImportReason::InvalidText);
}

void TestImporterScene::tellsManyEqualNamesApart()
{
    QByteArray nodes;
    for (int i = 0; i < 1127; ++i)
        nodes += colladaNode('n' + QByteArray::number(i), "Part");
    const Reading reading = readText("many.dae", collada(nodes));
    QVERIFY2(reading.isRead, qPrintable(reading.error));
    QSet<QString> keys;
    int parts = 0;
    for (const ForeignScene::Node &node : reading.scene.nodes) {
        keys.insert(node.key);
        parts += node.name == QLatin1String("Part") ? 1 : 0;
    }
    QCOMPARE(parts, 1127);
    QCOMPARE(keys.size(), 1128);
}

void TestImporterScene::refusesNodesThatAreTooDeep()
{
    const auto deep = [](int levels) {
        QByteArray begin, end;
        for (int i = 0; i < levels; ++i) {
            begin += "<node id=\"n" + QByteArray::number(i) + "\" name=\"N\">";
            end += "</node>";
        }
        return collada(begin + end);
    };
    const Reading fine = readText("deep.dae", deep(importlimits::Depth - 1));
    QVERIFY2(fine.isRead, qPrintable(fine.error));
    QCOMPARE(int(fine.scene.nodes.size()), importlimits::Depth);
    QCOMPARE(readText("deep.dae", deep(importlimits::Depth)).error,
             QStringLiteral("its nodes are more than 1,000 levels deep"));
}

void TestImporterScene::mendsPositionsThatAreNoNumbers()
{
    const Reading reading = readText("nan.obj", "o Odd\nv nan 0 0\nv 1 inf 0\nv 0 1 0\nf 1 2 3\n");
    QVERIFY2(reading.isRead, qPrintable(reading.error));
    QCOMPARE(int(reading.scene.geometry->meshes.size()), 1);
    QCOMPARE(reading.scene.geometry->troubles.size(), 1);
    QVERIFY(reading.scene.geometry->troubles.at(0).contains(QStringLiteral("Odd")));
}

void TestImporterScene::readsTextInUtf16()
{
    const QString name = QString::fromUtf8("K\xc3\xa4se \xe6\xbc\xa2 \xf0\x9f\x8c\xb3");
    const QString text = QString::fromUtf8(
        collada(colladaNode("n1", name.toUtf8()) + colladaNode("n2", "Cut")));
    for (const bool isLittle : {true, false}) {
        QByteArray bytes(isLittle ? "\xff\xfe" : "\xfe\xff");
        for (const QChar letter : text)
            bytes += isLittle ? QByteArray(1, char(letter.cell())) + char(letter.row())
                              : QByteArray(1, char(letter.row())) + char(letter.cell());
        const Reading reading = readText("utf16.dae", bytes);
        QVERIFY2(reading.isRead, qPrintable(reading.error));
        QVERIFY(indexOf(reading.scene, name) > 0);
        bytes.replace(isLittle ? QByteArray("C\0u\0t\0", 6) : QByteArray("\0C\0u\0t", 6),
                      isLittle ? QByteArray("C\0\x3c\xd8t\0", 6) : QByteArray("\0C\xd8\x3c\0t", 6));
        QVERIFY(indexOf(readText("half.dae", bytes).scene, QStringLiteral("C\uFFFDt")) > 0);
    }
}

void TestImporterScene::opensFilesWithOddNames()
{
    for (const char *name : {"-h.obj", "with space & 100%.obj", "\xc3\xa9\xe6\xbc\xa2.obj", "UPPER.OBJ",
                             "a\nb.obj", "$(id).obj", "two.dots.obj"}) {
        const Reading reading = read(m_folder.write(QString::fromUtf8(name), triangleObj()));
        QVERIFY2(reading.isRead, qPrintable(reading.error));
        QVERIFY(indexOf(reading.scene, QStringLiteral("Triangle")) > 0);
    }
}

NK_GUILESS_TEST_MAIN(TestImporterScene)
#include "test_importer_scene.moc"
