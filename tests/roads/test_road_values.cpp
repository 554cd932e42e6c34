#include "Hands.h"
#include "MainWindow.h"
#include "Road.h"
#include "RoadScene.h"
#include "panels/EditorPanel.h"

#include <ModalAnswer.h>
#include <TestMain.h>
#include <WindowFocus.h>

#include <QAbstractItemView>
#include <QAction>
#include <QDialog>
#include <QDialogButtonBox>
#include <QImage>
#include <QJsonArray>
#include <QListWidget>
#include <QMenuBar>
#include <QPushButton>
#include <QRadioButton>
#include <QToolButton>

/// Roads through what comes from other files: images and lists of words.
class TestRoadValues : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init() { m_road = std::make_unique<Road>(); }
    void cleanup() { m_road.reset(); }

    void an_image_becomes_a_sceneplate_of_the_file();
    void a_word_of_a_library_completes_what_is_typed_into_a_value();

private:
    std::unique_ptr<Road> m_road;
};

void TestRoadValues::an_image_becomes_a_sceneplate_of_the_file()
{
    QImage sky(40, 30, QImage::Format_RGB32);
    sky.fill(Qt::blue);
    QVERIFY(sky.save(m_road->path(QStringLiteral("sky.png"))));
    m_road->write(QStringLiteral("room.gltf"), RoadScene::plain());
    m_road->start(QStringLiteral("room.gltf"));
    EditorPanel *panel = m_road->panel(4);
    Hands::choose(m_road->window()->menuBar(), {QStringLiteral("View"), panel->text().title});
    QTRY_VERIFY(!panel->visibleRegion().isEmpty());
    QToolButton *make = nullptr;
    for (QToolButton *button : panel->findChildren<QToolButton *>()) {
        const QAction *action = button->defaultAction();
        make = action && action->objectName() == QLatin1String("newSceneplate") ? button : make;
    }
    {
        const ModalAnswer image(
            [this](QDialog *dialog) { m_road->typeName(dialog, QStringLiteral("sky.png")); });
        Hands::click(make);
    }
    Hands::retype(QStringLiteral("Evening"));
    Hands::press(Qt::Key_Return);
    m_road->save();
    const QByteArray saved = m_road->read(QStringLiteral("room.gltf"));
    const QJsonArray nodes = RoadScene::parse(saved).value(QStringLiteral("nodes")).toArray();
    QCOMPARE(nodes.size(), 5);
    QCOMPARE(nodes.at(4).toObject(), RoadScene::parse(R"({"name":"Evening"})"));
    QCOMPARE(RoadScene::annex(saved), RoadScene::parse(R"({"version":1,
"sets":{"format":"metadata-sets","version":1,"sets":[]},"assets":[],
"objects":[{"node":4,"name":"Evening","sceneplate":{"image":"sky.png","placement":"behind"}}],
"assigned":[]})"));

    m_road->undo(2);
    m_road->save();
    m_road->expect(QStringLiteral("room.gltf"), RoadScene::plain());

    // A scene that is opened then shows its nodes, though the last thing selected was a sceneplate.
    m_road->open(QStringLiteral("room.gltf"));
    Hands::clickCell(m_road->lower(), QStringLiteral("Lamp"));
    m_road->editValue(QStringLiteral("part"), QStringLiteral("X-1"));
    m_road->save();
    m_road->expect(QStringLiteral("room.gltf"), RoadScene::plain().replace("X-9", "X-1"));
}

void TestRoadValues::a_word_of_a_library_completes_what_is_typed_into_a_value()
{
    m_road->write(QStringLiteral("words.txt"), "mahogany\nmaple\nwalnut\n");
    m_road->write(QStringLiteral("room.gltf"), RoadScene::plain());
    m_road->start(QStringLiteral("room.gltf"));
    {
        const ModalAnswer preferences([this](QDialog *dialog) {
            QVERIFY(WindowFocus::waitFor(dialog));
            Hands::clickCell(dialog->findChild<QListWidget *>(), QStringLiteral("Metadata"));
            const ModalAnswer file(
                [this](QDialog *chooser) { m_road->typeName(chooser, QStringLiteral("words.txt")); });
            Hands::click(dialog->findChild<QPushButton *>(QStringLiteral("m_addButton")));
            for (QRadioButton *active : dialog->findChildren<QRadioButton *>()) {
                if (active->accessibleName() == m_road->path(QStringLiteral("words.txt"))) {
                    Hands::click(active);
                }
            }
            Hands::click(dialog->findChild<QDialogButtonBox *>()->button(QDialogButtonBox::Ok));
        });
        Hands::press(Qt::Key_Comma, Qt::ControlModifier);
    }
    Hands::clickCell(m_road->lower(), QStringLiteral("Lamp"));
    const QModelIndex key = Hands::cell(m_road->table(), QStringLiteral("part"), 2);
    Hands::doubleClickAt(m_road->table()->viewport(),
                         m_road->table()->visualRect(key.sibling(key.row(), 3)).center());
    // The list is read by a thread; until it has been, nothing is offered.
    const auto isOffered = [] {
        Hands::retype(QStringLiteral("mah"));
        return qobject_cast<QAbstractItemView *>(QApplication::activePopupWidget()) != nullptr;
    };
    QTRY_VERIFY(isOffered());
    Hands::press(Qt::Key_Down);
    Hands::press(Qt::Key_Return);
    Hands::press(Qt::Key_Return);
    m_road->save();
    m_road->expect(QStringLiteral("room.gltf"), RoadScene::plain().replace("X-9", "mahogany"));
}

NK_TEST_MAIN(TestRoadValues)
#include "test_road_values.moc"
