#include "Hands.h"
#include "MainWindow.h"
#include "Road.h"
#include "RoadScene.h"

#include <ModalAnswer.h>
#include <TestMain.h>

#include <QAbstractItemView>
#include <QClipboard>
#include <QDialog>
#include <QLineEdit>
#include <QMainWindow>
#include <QMenuBar>
#include <QPushButton>

/// Roads through sets: found, edited, kept in files of their own, copied, locked.
class TestRoadSets : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init() { m_road = std::make_unique<Road>(); }
    void cleanup() { m_road.reset(); }

    void what_a_query_finds_is_edited_together_and_nothing_else_differs();
    void sets_saved_loaded_and_saved_again_are_the_same_file();
    void entries_copied_onto_the_same_keys_are_kept_beside_them();
    void a_text_that_another_program_has_copied_becomes_entries();
    void a_locked_set_withstands_every_key();

private:
    static QByteArray alpha()
    {
        return RoadScene::set("Alpha",
                              {RoadScene::text("material", "oak"), RoadScene::text("maker", "North")});
    }
    static QByteArray threeSets()
    {
        using namespace RoadScene;
        return withSets(
            {alpha(), set("Beta", {text("material", "oak")}), set("Gamma", {text("material", "elm")})});
    }
    void startWith(const QByteArray &scene)
    {
        m_road->write(QStringLiteral("room.gltf"), scene);
        m_road->start(QStringLiteral("room.gltf"));
    }
    /// An entry of a menu of the Metadata Editor that asks for a file.
    void chooseFile(const QString &menu, const QString &entry, const QString &name) const
    {
        const ModalAnswer answer([this, name](QDialog *dialog) { m_road->typeName(dialog, name); });
        Hands::choose(qobject_cast<QMainWindow *>(m_road->editor())->menuBar(), {menu, entry});
    }
    void expectFile(const QByteArray &expected) const
    {
        m_road->expect(QStringLiteral("room.gltf"), expected);
    }

    std::unique_ptr<Road> m_road;
};

void TestRoadSets::what_a_query_finds_is_edited_together_and_nothing_else_differs()
{
    startWith(threeSets());
    Hands::click(m_road->searchField());
    Hands::type(QStringLiteral("key:material and value:oak"));
    Hands::press(Qt::Key_Return);
    QTRY_COMPARE(m_road->upper()->model()->rowCount(), 2);
    Hands::clickCell(m_road->upper(), QStringLiteral("Alpha"));
    Hands::clickCell(m_road->upper(), QStringLiteral("Beta"), Qt::ShiftModifier);
    QTRY_COMPARE(m_road->table()->model()->rowCount(), 3);
    const QAbstractItemModel *rows = m_road->table()->model();
    for (int row = 0; row < rows->rowCount(); ++row) {
        const QModelIndex cell = rows->index(row, 2);
        if (cell.data().toString() == QLatin1String("material")) {
            Hands::clickCell(m_road->table(), cell, Qt::ControlModifier);
        }
    }
    QTRY_VERIFY(m_road->valueField() && m_road->valueField()->isVisible());
    Hands::click(m_road->valueField());
    Hands::retype(QStringLiteral("ash"));
    Hands::press(Qt::Key_Return);
    m_road->save();
    m_road->expect(QStringLiteral("room.gltf"), threeSets().replace("\"oak\"", "\"ash\""));
}

void TestRoadSets::sets_saved_loaded_and_saved_again_are_the_same_file()
{
    startWith(threeSets());
    Hands::clickCell(m_road->upper(), QStringLiteral("Gamma"));
    Hands::press(Qt::Key_A, Qt::ControlModifier);
    chooseFile(QStringLiteral("File"), QStringLiteral("Save Metadata Sets..."), QStringLiteral("first.json"));
    const QByteArray first = m_road->read(QStringLiteral("first.json"));
    QCOMPARE(RoadScene::parse(first), RoadScene::annex(threeSets()).value(QStringLiteral("sets")).toObject());

    Hands::press(Qt::Key_N, Qt::ControlModifier);
    QTRY_COMPARE(m_road->upper()->model()->rowCount(), 0);
    chooseFile(QStringLiteral("File"), QStringLiteral("Load Metadata Sets..."), QStringLiteral("first.json"));
    QTRY_COMPARE(m_road->upper()->model()->rowCount(), 3);
    Hands::clickCell(m_road->upper(), QStringLiteral("Beta"));
    Hands::press(Qt::Key_A, Qt::ControlModifier);
    chooseFile(QStringLiteral("File"), QStringLiteral("Save Metadata Sets..."),
               QStringLiteral("second.json"));
    m_road->expect(QStringLiteral("second.json"), first);
}

void TestRoadSets::entries_copied_onto_the_same_keys_are_kept_beside_them()
{
    startWith(threeSets());
    Hands::clickCell(m_road->upper(), QStringLiteral("Alpha"));
    Hands::clickCell(m_road->table(), Hands::cell(m_road->table(), QStringLiteral("maker"), 2));
    Hands::press(Qt::Key_A, Qt::ControlModifier);
    Hands::press(Qt::Key_C, Qt::ControlModifier);
    Hands::clickCell(m_road->upper(), QStringLiteral("Gamma"));
    Hands::clickCell(m_road->table(), Hands::cell(m_road->table(), QStringLiteral("material"), 2));
    {
        const ModalAnswer both([](QDialog *dialog) {
            for (QPushButton *button : dialog->findChildren<QPushButton *>()) {
                if (button->text() == QLatin1String("Paste anyway")) {
                    Hands::click(button);
                    return;
                }
            }
            dialog->reject();
        });
        Hands::press(Qt::Key_V, Qt::ControlModifier);
        QVERIFY(both.given());
    }
    m_road->save();
    using namespace RoadScene;
    expectFile(withSets(
        {alpha(), set("Beta", {text("material", "oak")}),
         set("Gamma", {text("material", "elm"), text("material2", "oak"), text("maker", "North")})}));
    m_road->undo();
    m_road->save();
    m_road->expect(QStringLiteral("room.gltf"), threeSets());
}

void TestRoadSets::a_text_that_another_program_has_copied_becomes_entries()
{
    startWith(threeSets());
    QGuiApplication::clipboard()->setText(QStringLiteral("finish\twaxed\nglue\tbone"));
    Hands::clickCell(m_road->upper(), QStringLiteral("Beta"));
    Hands::clickCell(m_road->table(), Hands::cell(m_road->table(), QStringLiteral("material"), 2));
    Hands::press(Qt::Key_V, Qt::ControlModifier);
    Hands::clickCell(m_road->table(), Hands::cell(m_road->table(), QStringLiteral("material"), 2));
    Hands::press(Qt::Key_Delete);
    m_road->save();
    using namespace RoadScene;
    expectFile(withSets({alpha(), set("Beta", {text("finish", "waxed"), text("glue", "bone")}),
                         set("Gamma", {text("material", "elm")})}));
}

void TestRoadSets::a_locked_set_withstands_every_key()
{
    using namespace RoadScene;
    const QByteArray scene = withSets({set("Alpha", {text("material", "oak")})});
    startWith(scene);
    Hands::clickCell(m_road->upper(), QStringLiteral("Alpha"));
    Road::menuKey({QStringLiteral("Edit"), QStringLiteral("Lock")});
    m_road->save();
    const QByteArray locked = m_road->read(QStringLiteral("room.gltf"));
    expectFile(withSets({set("Alpha", {text("material", "oak")}, R"("locked":true,)")}));

    Hands::clickCell(m_road->upper(), QStringLiteral("Alpha"));
    Hands::press(Qt::Key_F2);
    Hands::press(Qt::Key_R, Qt::ControlModifier);
    Hands::press(Qt::Key_Return);
    const QModelIndex key = Hands::cell(m_road->table(), QStringLiteral("material"), 2);
    Hands::doubleClickAt(m_road->table()->viewport(),
                         m_road->table()->visualRect(key.sibling(key.row(), 3)).center());
    Hands::type(QStringLiteral("y"));
    Hands::press(Qt::Key_Return);
    Hands::press(Qt::Key_C, Qt::ControlModifier);
    Hands::press(Qt::Key_V, Qt::ControlModifier);
    Hands::press(Qt::Key_Delete);
    m_road->save();
    m_road->expect(QStringLiteral("room.gltf"), locked);

    Hands::clickCell(m_road->upper(), QStringLiteral("Alpha"));
    Road::menuKey({QStringLiteral("Edit"), QStringLiteral("Unlock")});
    m_road->save();
    m_road->expect(QStringLiteral("room.gltf"), scene);
}

NK_TEST_MAIN(TestRoadSets)
#include "test_road_sets.moc"
