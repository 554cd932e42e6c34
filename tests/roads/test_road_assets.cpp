#include "Hands.h"
#include "MainWindow.h"
#include "Road.h"
#include "RoadScene.h"

#include <ModalAnswer.h>
#include <TestMain.h>

#include <QAbstractItemView>
#include <QJsonArray>
#include <QMenuBar>

/// The road of a set that two scenes share.
class TestRoadAssets : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init() { m_road = std::make_unique<Road>(); }
    void cleanup() { m_road.reset(); }

    void an_asset_published_stored_and_reloaded_is_the_same_in_both_files();

private:
    QAbstractItemView *assets() const
    {
        return m_road->window()->findChild<QAbstractItemView *>(QStringLiteral("assets"));
    }
    void showAssets() const
    {
        if (assets()->visibleRegion().isEmpty()) {
            Hands::choose(m_road->window()->menuBar(), {QStringLiteral("View"), QStringLiteral("Assets")});
        }
        QTRY_VERIFY(!assets()->visibleRegion().isEmpty());
    }
    void command(const QString &name) const
    {
        Hands::clickCell(m_road->upper(), QStringLiteral("Alpha"));
        Road::menuKey({QStringLiteral("Asset"), name});
    }
    QJsonObject annexOf(const char *name) const
    {
        return RoadScene::annex(m_road->read(QLatin1String(name)));
    }
    static QJsonObject asset(const QJsonObject &annex)
    {
        return annex.value(QStringLiteral("assets")).toArray().at(0).toObject();
    }

    std::unique_ptr<Road> m_road;
};

void TestRoadAssets::an_asset_published_stored_and_reloaded_is_the_same_in_both_files()
{
    const QByteArray before = RoadScene::withSets(
        {RoadScene::set("Alpha", {RoadScene::text("wood", "oak")})});
    m_road->write(QStringLiteral("first.gltf"), before);
    m_road->write(QStringLiteral("second.gltf"), RoadScene::plain());
    m_road->start(QStringLiteral("first.gltf"));
    showAssets();
    Hands::clickCell(m_road->upper(), QStringLiteral("Alpha"));
    Hands::click(m_road->button(QStringLiteral("Publish")));
    QTRY_COMPARE(assets()->model()->rowCount(), 1);
    m_road->save();

    m_road->open(QStringLiteral("second.gltf"));
    showAssets();
    Hands::clickCell(assets(), QStringLiteral("Alpha"));
    Hands::click(m_road->button(QStringLiteral("Place")));
    m_road->save();

    m_road->open(QStringLiteral("first.gltf"));
    command(QStringLiteral("Modify"));
    m_road->editValue(QStringLiteral("wood"), QStringLiteral("ash"));
    command(QStringLiteral("Save in Asset Manager"));
    m_road->save();

    m_road->open(QStringLiteral("second.gltf"));
    command(QStringLiteral("Reload from Asset Manager"));
    m_road->save();

    const QByteArray first = m_road->read(QStringLiteral("first.gltf"));
    const QString id = asset(annexOf("first.gltf")).value(QStringLiteral("id")).toString();
    QCOMPARE(id.size(), 36);
    const QByteArray link = R"("assets":[{"set":0,"state":"atRest","id":")" + id.toUtf8()
                            + R"(","version":2}])";
    QCOMPARE(first, QByteArray(before).replace("\"oak\"", "\"ash\"").replace("\"assets\":[]", link));
    QCOMPARE(annexOf("second.gltf").value(QStringLiteral("sets")),
             annexOf("first.gltf").value(QStringLiteral("sets")));
    QCOMPARE(asset(annexOf("second.gltf")), asset(annexOf("first.gltf")));
}

NK_TEST_MAIN(TestRoadAssets)
#include "test_road_assets.moc"
