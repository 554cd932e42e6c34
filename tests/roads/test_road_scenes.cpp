#include "Hands.h"
#include "MainWindow.h"
#include "Road.h"
#include "RoadScene.h"

#include <ModalAnswer.h>
#include <TestMain.h>
#include <WindowFocus.h>

#include <QAbstractItemView>
#include <QDialog>
#include <QJsonArray>
#include <QLineEdit>
#include <QtEndian>

/// Roads through glTF files.
class TestRoadScenes : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init() { m_road = std::make_unique<Road>(); }
    void cleanup() { m_road.reset(); }

    void an_edited_text_is_all_that_differs_in_the_file();
    void a_set_made_by_keys_and_assigned_by_drag_stands_in_the_binary_file();
    void a_tag_on_several_objects_that_is_undone_leaves_the_file_as_it_was();
    void nodes_renamed_moved_and_deleted_and_half_of_it_undone_stand_in_the_file();

private:
    /// A binary file of this text and these geometry bytes.
    static QByteArray binary(const QByteArray &json, const QByteArray &bytes)
    {
        QByteArray text = json;
        text.append((4 - text.size() % 4) % 4, ' ');
        const auto number = [](quint32 value) {
            value = qToLittleEndian(value);
            return QByteArray(reinterpret_cast<const char *>(&value), 4);
        };
        return "glTF" + number(2) + number(quint32(12 + 8 + text.size() + 8 + bytes.size()))
               + number(quint32(text.size())) + "JSON" + text + number(quint32(bytes.size()))
               + QByteArray("BIN\0", 4) + bytes;
    }
    static QByteArray textOf(const QByteArray &file)
    {
        return file.mid(20, int(qFromLittleEndian<quint32>(file.constData() + 12)));
    }
    static QByteArray geometryOf(const QByteArray &file)
    {
        return file.mid(20 + int(qFromLittleEndian<quint32>(file.constData() + 12)) + 8);
    }
    /// "Table(Leg,Top),Lamp", from the lists of the file itself.
    static QString tree(const QJsonObject &gltf, const QJsonArray &nodes)
    {
        QStringList names;
        for (const QJsonValue &place : nodes) {
            const QJsonObject node =
                gltf.value(QStringLiteral("nodes")).toArray().at(place.toInt()).toObject();
            const QJsonArray below = node.value(QStringLiteral("children")).toArray();
            names.append(
                node.value(QStringLiteral("name")).toString()
                + (below.isEmpty() ? QString() : QLatin1Char('(') + tree(gltf, below) + QLatin1Char(')')));
        }
        return names.join(QLatin1Char(','));
    }
    static QString tree(const QByteArray &gltf)
    {
        const QJsonObject root = RoadScene::parse(gltf);
        const QJsonObject scene = root.value(QStringLiteral("scenes")).toArray().at(0).toObject();
        return tree(root, scene.value(QStringLiteral("nodes")).toArray());
    }
    void dragNodeToSet(const QString &node, const QString &set) const
    {
        const QModelIndex from = Hands::cell(m_road->objects(), node);
        const QModelIndex to = Hands::cell(m_road->upper(), set);
        Hands::drag(m_road->objects()->viewport(), m_road->objects()->visualRect(from).center(),
                    m_road->upper()->viewport(), m_road->upper()->visualRect(to).center());
    }

    std::unique_ptr<Road> m_road;
};

void TestRoadScenes::an_edited_text_is_all_that_differs_in_the_file()
{
    m_road->write(QStringLiteral("room.gltf"), RoadScene::plain());
    m_road->start();
    m_road->open(QStringLiteral("room.gltf"));
    Hands::clickCell(m_road->lower(), QStringLiteral("Lamp"));
    m_road->editValue(QStringLiteral("part"), QStringLiteral("X-10 'new'"));
    QVERIFY(m_road->window()->isWindowModified());
    m_road->save();
    QVERIFY(!m_road->window()->isWindowModified());
    const QByteArray expected = RoadScene::plain().replace("\"X-9\"", "\"X-10 'new'\"");
    m_road->expect(QStringLiteral("room.gltf"), expected);
}

void TestRoadScenes::a_set_made_by_keys_and_assigned_by_drag_stands_in_the_binary_file()
{
    const QByteArray geometry("\1\2\3\4\5\6\7\10", 8);
    QByteArray text = RoadScene::plain();
    text.replace("\"scene\": 0,", "\"scene\": 0, \"buffers\":[{\"byteLength\":8}],");
    m_road->write(QStringLiteral("room.glb"), binary(text, geometry));
    m_road->start();
    m_road->open(QStringLiteral("room.glb"));

    // From the search field down to the upper tree by Tab, and everything by its menu.
    Hands::click(m_road->searchField());
    for (int i = 0; i < 20 && QApplication::focusWidget() != m_road->upper(); ++i) {
        Hands::press(Qt::Key_Tab);
    }
    Road::menuKey({QStringLiteral("Create Set")});
    Hands::retype(QStringLiteral("Kit"));
    Hands::press(Qt::Key_Return);
    Road::createEntry(QStringLiteral("String"), QStringLiteral("material"), QStringLiteral("oak"));
    // The table, which has the focus now, offers the same.
    Road::createEntry(QStringLiteral("Integer"), QStringLiteral("pieces"), QStringLiteral("7"));
    Road::createEntry(QStringLiteral("Tag"), QStringLiteral("checked"));

    dragNodeToSet(QStringLiteral("Top"), QStringLiteral("Kit"));
    dragNodeToSet(QStringLiteral("Lamp"), QStringLiteral("Kit"));
    m_road->save();
    const QByteArray saved = m_road->read(QStringLiteral("room.glb"));
    QCOMPARE(geometryOf(saved), geometry);
    QCOMPARE(RoadScene::annex(textOf(saved)), RoadScene::parse(R"({"version":1,
"sets":{"format":"metadata-sets","version":1,"sets":[{"name":"Kit","color":"#7f8c9b","entries":[
  {"key":"material","type":"string","value":"oak"},
  {"key":"pieces","type":"integer","value":7},
  {"key":"checked","type":"tag"}]}]},
"assets":[],
"objects":[{"node":2,"name":"Top"},{"node":3,"name":"Lamp"}],
"assigned":[{"set":0,"objects":[0,1]}]})"));

    // Opened anew and saved elsewhere it says the same.
    m_road->stop();
    m_road->start(QStringLiteral("room.glb"));
    m_road->saveAs(QStringLiteral("copy.glb"));
    m_road->expect(QStringLiteral("copy.glb"), saved);
}

void TestRoadScenes::a_tag_on_several_objects_that_is_undone_leaves_the_file_as_it_was()
{
    m_road->write(QStringLiteral("room.gltf"), RoadScene::plain());
    m_road->start(QStringLiteral("room.gltf"));
    Hands::clickCell(m_road->objects(), QStringLiteral("Leg"));
    Hands::clickCell(m_road->objects(), QStringLiteral("Lamp"), Qt::ControlModifier);
    Hands::clickCell(m_road->objects(), QStringLiteral("Top"), Qt::ControlModifier);
    Hands::clickCell(m_road->lower(), QStringLiteral("Leg"));
    Hands::press(Qt::Key_A, Qt::ControlModifier);
    Road::menuKey({QStringLiteral("Create Set")});
    Hands::press(Qt::Key_Return);
    Road::createEntry(QStringLiteral("Tag"), QStringLiteral("checked"));
    m_road->save();
    const QJsonObject annex = RoadScene::annex(m_road->read(QStringLiteral("room.gltf")));
    QCOMPARE(annex, RoadScene::parse(R"({"version":1,
"sets":{"format":"metadata-sets","version":1,"sets":[{"name":"MetadataSet","color":"#7f8c9b","entries":[
  {"key":"checked","type":"tag"}]}]},
"assets":[],
"objects":[{"node":1,"name":"Leg"},{"node":2,"name":"Top"},{"node":3,"name":"Lamp"}],
"assigned":[{"set":0,"objects":[2,0,1]}]})"));
    m_road->undo(3);
    m_road->save();
    m_road->expect(QStringLiteral("room.gltf"), RoadScene::plain());
}

void TestRoadScenes::nodes_renamed_moved_and_deleted_and_half_of_it_undone_stand_in_the_file()
{
    m_road->write(QStringLiteral("room.gltf"), RoadScene::plain());
    m_road->start(QStringLiteral("room.gltf"));
    const auto rename = [this](const QString &from, const QString &to) {
        Hands::clickCell(m_road->objects(), from);
        Hands::press(Qt::Key_F2);
        Hands::retype(to);
        Hands::press(Qt::Key_Return);
    };
    rename(QStringLiteral("Leg"), QStringLiteral("Foot"));
    Hands::clickCell(m_road->objects(), QStringLiteral("Top"));
    {
        const ModalAnswer below([](QDialog *dialog) {
            QVERIFY(WindowFocus::waitFor(dialog));
            Hands::clickCell(dialog->findChild<QAbstractItemView *>(), QStringLiteral("Lamp"));
            Hands::press(Qt::Key_Return);
        });
        Hands::press(Qt::Key_M, Qt::ControlModifier | Qt::ShiftModifier);
    }
    rename(QStringLiteral("Table"), QStringLiteral("Desk"));
    Hands::clickCell(m_road->objects(), QStringLiteral("Foot"));
    Hands::press(Qt::Key_Delete);
    m_road->save();
    QCOMPARE(tree(m_road->read(QStringLiteral("room.gltf"))), QStringLiteral("Desk,Lamp(Top)"));
    m_road->undo(2);
    m_road->save();
    const QByteArray half = m_road->read(QStringLiteral("room.gltf"));
    QCOMPARE(tree(half), QStringLiteral("Table(Foot),Lamp(Top)"));

    // What was saved is what is opened, and the other half is undone by hand.
    m_road->stop();
    m_road->start(QStringLiteral("room.gltf"));
    rename(QStringLiteral("Foot"), QStringLiteral("Leg"));
    m_road->save();
    m_road->expect(QStringLiteral("room.gltf"), QByteArray(half).replace("Foot", "Leg"));
}

NK_TEST_MAIN(TestRoadScenes)
#include "test_road_scenes.moc"
