#include "PanelFixture.h"

#include "panels/EditorCommands.h"

#include <TestMain.h>

#include <QAction>
#include <QElapsedTimer>

using kernel::Document;

/// The commands of the panels in a large scene.
class TestPanelScale : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void tenThousandOfAHundredThousandAreDeletedAndMoved_data();
    void tenThousandOfAHundredThousandAreDeletedAndMoved();
};

void TestPanelScale::tenThousandOfAHundredThousandAreDeletedAndMoved_data()
{
    QTest::addColumn<int>("parents");
    QTest::newRow("all side by side") << 0;
    QTest::newRow("below a hundred") << 100;
}

/// No figures are asked for: what is not linear takes minutes.
void TestPanelScale::tenThousandOfAHundredThousandAreDeletedAndMoved()
{
    QFETCH(int, parents);
    constexpr int count = 100000;
    PanelFixture f(EditorModule::Scenegraph);
    f.show();
    QList<quint64> groups{0};
    QList<quint64> chosen;
    {
        kernel::DocumentLoader loader;
        for (int i = 0; i < parents; ++i) {
            groups << loader.addObject(nkObjectType::Node, QStringLiteral("group"));
        }
        for (int i = 0; i < count; ++i) {
            const quint64 id = loader.addObject(nkObjectType::Node, QString::number(i),
                                                groups.at(parents == 0 ? 0 : 1 + i % parents));
            if (i % 10 == 3) {
                chosen << id;
            }
        }
        loader.commit();
    }
    f.view->expandAll();
    f.panel->selectObjects(chosen);
    QElapsedTimer timer;
    timer.start();
    f.panel->commands()->action(EditorCommand::Delete)->trigger();
    f.view->grab();
    qInfo("deleting 10,000 of 100,000: %lld ms", timer.restart());
    QCOMPARE(Document::the().objectCount(), count + parents - chosen.size());
    QVERIFY(Document::the().undo());
    f.view->grab();
    qInfo("undoing that: %lld ms", timer.restart());
    f.panel->selectObjects(chosen);
    f.panel->commands()->action(EditorCommand::GroupSelected)->trigger();
    f.view->grab();
    qInfo("moving 10,000 of 100,000: %lld ms", timer.restart());
    QCOMPARE(Document::the().childrenOf(f.service.selection().value(0)).size(), chosen.size());
    QVERIFY(Document::the().undo());
    f.view->grab();
    qInfo("undoing that: %lld ms", timer.restart());
}

NK_TEST_MAIN(TestPanelScale)
#include "test_panel_scale.moc"
