#include "../interchange_foreign/IfcText.h"
#include "Hands.h"
#include "MainWindow.h"
#include "Road.h"
#include "RoadScene.h"

#include <TestMain.h>

#include <QAbstractItemView>

namespace {

const char houseSidecar[] =
    R"({"format":"metadata-sidecar","version":1,"sets":{"format":"metadata-sets","version":1,"sets":[
{"name":"Pset_WallCommon","color":"#7f8c9b","entries":[
{"key":"Reference","type":"string","value":"W2"},
{"key":"IsExternal","type":"boolean","value":true}
]},
{"name":"Pset_DoorCommon","color":"#7f8c9b","entries":[
{"key":"Width","type":"float","value":0.9}
]}
]}
,"assets":[],"objects":[
{"node":"0000000000000000000010","name":"House"},
{"node":"0000000000000000000011","name":"Site"},
{"node":"0000000000000000000012","name":"Home"},
{"node":"0000000000000000000013","name":"Ground floor"},
{"node":"0000000000000000000020","name":"Wall"},
{"node":"0000000000000000000023","name":"Hole"},
{"node":"0000000000000000000021","name":"Wall"},
{"node":"0000000000000000000022","name":"Door 22"},
{"node":"0000000000000000000024","name":"Zone"},
{"material":"Oak","name":"Oak"}
],"assigned":[
{"set":0,"objects":[4,6]},
{"set":1,"objects":[7]}
]}
)";

const char crateSidecar[] =
    R"({"format":"metadata-sidecar","version":1,"sets":{"format":"metadata-sets","version":1,"sets":[]}
,"assets":[],"objects":[
{"node":"[]","name":"crate.obj"},
{"node":"[]/Crate","name":"Crate","own":{"name":"","color":"#7f8c9b","entries":[
{"key":"mass","type":"float","value":2.5}
]}},
{"material":"DefaultMaterial","name":"DefaultMaterial"}
],"assigned":[]}
)";

} // namespace

/// Roads through files that are never written: what is edited stands beside them.
class TestRoadForeign : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init() { m_road = std::make_unique<Road>(); }
    void cleanup() { m_road.reset(); }

    void a_building_keeps_its_file_and_gets_its_edits_beside_it();
    void a_mesh_from_the_importer_gets_an_entry_beside_it();

private:
    std::unique_ptr<Road> m_road;
};

void TestRoadForeign::a_building_keeps_its_file_and_gets_its_edits_beside_it()
{
    const QByteArray model = IfcText::file(IfcText::taggedHouse());
    m_road->write(QStringLiteral("house.ifc"), model);
    m_road->start();
    m_road->open(QStringLiteral("house.ifc"));
    Hands::clickCell(m_road->upper(), QStringLiteral("Pset_WallCommon"));
    m_road->editValue(QStringLiteral("Reference"), QStringLiteral("W2"));
    m_road->save();
    m_road->expect(QStringLiteral("house.ifc"), model);
    const QByteArray sidecar(houseSidecar);
    m_road->expect(QStringLiteral("house.ifc.metadata.json"), sidecar);

    m_road->stop();
    m_road->start(QStringLiteral("house.ifc"));
    Hands::clickCell(m_road->upper(), QStringLiteral("Pset_DoorCommon"));
    m_road->editValue(QStringLiteral("Width"), QStringLiteral("1.25"));
    m_road->save();
    m_road->expect(QStringLiteral("house.ifc"), model);
    m_road->expect(QStringLiteral("house.ifc.metadata.json"), QByteArray(sidecar).replace("0.9", "1.25"));
}

void TestRoadForeign::a_mesh_from_the_importer_gets_an_entry_beside_it()
{
    const QByteArray model("o Crate\nv 0 0 0\nv 1 0 0\nv 0 1 0\nf 1 2 3\n");
    m_road->write(QStringLiteral("crate.obj"), model);
    m_road->start();
    m_road->open(QStringLiteral("crate.obj"));
    Hands::clickCell(m_road->objects(), QStringLiteral("Crate"));
    Hands::clickCell(m_road->lower(), QStringLiteral("Crate"));
    Road::createEntry(QStringLiteral("Float"), QStringLiteral("mass"), QStringLiteral("2.5"));
    m_road->save();
    m_road->expect(QStringLiteral("crate.obj"), model);
    const QByteArray sidecar(crateSidecar);
    m_road->expect(QStringLiteral("crate.obj.metadata.json"), sidecar);

    m_road->stop();
    m_road->start(QStringLiteral("crate.obj"));
    m_road->saveAs(QStringLiteral("copy.obj"));
    m_road->expect(QStringLiteral("copy.obj"), model);
    m_road->expect(QStringLiteral("copy.obj.metadata.json"), sidecar);
}

NK_TEST_MAIN(TestRoadForeign)
#include "test_road_foreign.moc"
