#include "QueryFixture.h"

#include <TestMain.h>

#include <thread>

using namespace QueryFixture;

/// What queries find in a small scene:
///
///     House (node)          carries Paint; own entry "floors" = 3
///       Door (node)         carries Paint and Hardware; no own entries
///     Wood (material)       own tag "oak"
///
///     Paint       "colour" = "Deep Red", "coats" = 2, "glossy" = true, tag "approved"
///     Hardware    "colour" = "blue", "weight" = 0.5, "made" = 2024-05-01, "parts" = [hinge, 12]
///     Empty       no entries, unassigned
class TestQueryMatching : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void sets_are_found_data();
    void sets_are_found();
    void shared_sets_come_first_then_objects_in_scene_order();
    void own_sets_without_entries_are_never_found();
    void a_snapshot_does_not_change_with_the_scene();
    void a_snapshot_taken_in_slices_is_the_same();
    void a_stopped_run_ends_at_once();
    void a_regular_expression_without_end_is_stopped();
    void a_regular_expression_is_stopped_after_many_steps();
    void a_cancelled_search_of_one_large_set_ends();
    void regular_expressions_share_a_bound_of_time();
};

void TestQueryMatching::init()
{
    SceneFixture::reset();
    const nkdNode house = SceneFixture::node(QStringLiteral("House"));
    const nkdNode door = SceneFixture::node(QStringLiteral("Door"), house.getObjectId());
    const nkdMaterial wood = SceneFixture::material(QStringLiteral("Wood"));
    const nkdMetadataSet paint = set(QStringLiteral("Paint"), {house, door});
    add(paint, QStringLiteral("colour"), T::String, QStringLiteral("Deep Red"));
    add(paint, QStringLiteral("coats"), T::Integer, 2);
    add(paint, QStringLiteral("glossy"), T::Boolean, true);
    add(paint, QStringLiteral("approved"), T::Tag);
    const nkdMetadataSet hardware = set(QStringLiteral("Hardware"), {door});
    add(hardware, QStringLiteral("colour"), T::String, QStringLiteral("blue"));
    add(hardware, QStringLiteral("weight"), T::Float, 0.5);
    add(hardware, QStringLiteral("made"), T::Date, QDate(2024, 5, 1));
    add(hardware, QStringLiteral("parts"), T::List, QVariantList{QStringLiteral("hinge"), 12});
    set(QStringLiteral("Empty"));
    add(nkdMetadata::fromObject(house).getObjectSet(), QStringLiteral("floors"), T::Integer, 3);
    add(nkdMetadata::fromObject(wood).getObjectSet(), QStringLiteral("oak"), T::Tag);
}

void TestQueryMatching::sets_are_found_data()
{
    QTest::addColumn<QString>("query");
    QTest::addColumn<QString>("names");
    const auto row = [](const char *query, const char *names) {
        QTest::newRow(query) << QString::fromUtf8(query) << QString::fromUtf8(names);
    };
    row("RED", "Paint");
    row("colou", "Paint,Hardware");
    row("pai", "Paint");
    row("approved", "Paint");
    row("empty", "Empty");
    row("nowhere", "");
    row("house", "House");
    row("2024-05", "Hardware");
    row("0.5", "Hardware");
    row("tru", "Paint");
    row("hinge", "Hardware");
    row("12", "Hardware");
    row("red coats", "Paint");
    row("red blue", "");
    row("red or blue", "Paint,Hardware");
    row("colour not red", "Hardware");
    row("not colour", "Empty,House,Wood");
    row("\"deep red\"", "Paint");
    row("\"red deep\"", "");
    row("\"\"", "Paint,Hardware,Empty,House,Wood");
    row("key:colour", "Paint,Hardware");
    row("key:red", "");
    row("key:\"\"", "Paint,Hardware,House,Wood");
    row("value:red", "Paint");
    row("value:colour", "");
    row("value:approved", "");
    row("value:\"\"", "Paint,Hardware,House");
    row("set:ware", "Hardware");
    row("set:colour", "");
    row("set:empty", "Empty");
    row("set:door", "");
    row("object:door", "Paint,Hardware");
    row("object:house", "Paint,House");
    row("object:wood", "Wood");
    row("object:\"\"", "Paint,Hardware,House,Wood");
    row("not object:\"\"", "Empty");
    row("type:tag", "Paint,Wood");
    row("type:string", "Paint,Hardware");
    row("type:Float or type:Boolean", "Paint,Hardware");
    row("type:Date", "Hardware");
    row("type:Time", "");
    row("/^deep\\s/", "Paint");
    row("/^PAINT$/", "Paint");
    row("/(?-i)PAINT/", "");
    row("key:/^co/", "Paint,Hardware");
    row("value:/^\\d+$/", "Paint,House");
    row("set:/^.{5}$/", "Paint,Empty,House");
    row("object:/^d/", "Paint,Hardware");
    row("colour = blue", "Hardware");
    row("COLOUR = BLUE", "Hardware");
    row("colou = blue", "");
    row("colour != blue", "Paint");
    row("not colour = blue", "Paint,Empty,House,Wood");
    row("colour = /red$/", "Paint");
    row("colour != /red$/", "Hardware");
    row("coats = 2 and glossy = true", "Paint");
    row("coats >= 2 weight < 1", "");
    row("floors > 2", "House");
    row("approved = approved", "");
    row("approved != x", "");
    row("type:Tag not approved", "Wood");
}

void TestQueryMatching::sets_are_found()
{
    QFETCH(QString, query);
    QFETCH(QString, names);
    QCOMPARE(find(query).join(QLatin1Char(',')), names);
}

void TestQueryMatching::shared_sets_come_first_then_objects_in_scene_order()
{
    const nkdNode first = SceneFixture::node(QStringLiteral("Attic"));
    nkdNode house = SceneFixture::node(QStringLiteral("Cellar"), first.getObjectId());
    add(nkdMetadata::fromObject(house).getObjectSet(), QStringLiteral("k"), T::Tag);
    add(nkdMetadata::fromObject(first).getObjectSet(), QStringLiteral("k"), T::Tag);
    QCOMPARE(find(QStringLiteral("\"\"")),
             (QStringList{"Paint", "Hardware", "Empty", "House", "Attic", "Cellar", "Wood"}));
}

void TestQueryMatching::own_sets_without_entries_are_never_found()
{
    QCOMPARE(find(QStringLiteral("door")), QStringList());
    QCOMPARE(find(QStringLiteral("set:door or object:door")), (QStringList{"Paint", "Hardware"}));
}

void TestQueryMatching::a_snapshot_does_not_change_with_the_scene()
{
    const auto before = snapshot();
    const quint64 id = before->sets.front().id;
    nkdMetadataSet paint(id);
    paint.setName(QStringLiteral("Lacquer"));
    paint.setValue(QStringLiteral("colour"), QStringLiteral("green"));
    nkMetadataService::the().deleteSets({nkdMetadataSet(before->sets.at(1).id)});
    QCOMPARE(before->sets.front().name, QStringLiteral("Paint"));
    QCOMPARE(before->entries[0].value.toVariant(), QVariant(QStringLiteral("Deep Red")));
    QCOMPARE(int(before->sets.size()), 5);
    QCOMPARE(int(before->entries.size()), 10);
}

void TestQueryMatching::a_snapshot_taken_in_slices_is_the_same()
{
    const nkdMetadataSet big = set(QStringLiteral("Big"));
    kernel::DocumentLoader loader(kernel::DocumentLoader::Mode::Add);
    for (int index = 0; index < 50000; ++index) {
        loader.addEntry(big.getObjectId(), QStringLiteral("k%1").arg(index), T::Integer, index);
    }
    loader.commit();
    kernel::SnapshotCollector collector(kernel::Document::the(), true);
    int slices = 1;
    while (!collector.work(0)) {
        ++slices;
    }
    const auto sliced = collector.take();
    const auto whole = snapshot();
    QVERIFY(slices > 5);
    QCOMPARE(sliced->entries.size(), whole->entries.size());
    QCOMPARE(sliced->sets.size(), whole->sets.size());
    for (quint32 index = 0; index < whole->entries.size(); ++index) {
        QVERIFY(sliced->entries[index].value == whole->entries[index].value);
    }
}

namespace {

QVector<quint64> evaluated(const QString &query, kernel::QueryRun &run)
{
    kernel::QueryParser parser(query);
    const auto root = parser.parse();
    const auto scene = snapshot();
    return kernel::QueryEvaluation(*root, *scene, run).matchingSets();
}

} // namespace

void TestQueryMatching::a_stopped_run_ends_at_once()
{
    const std::atomic<bool> cancelled(true);
    kernel::QueryRun run(cancelled);
    QVERIFY(evaluated(QStringLiteral("red"), run).isEmpty());
    QVERIFY(run.isCancelled());
}

void TestQueryMatching::a_regular_expression_without_end_is_stopped()
{
    add(set(QStringLiteral("Trap")), QStringLiteral("k"), T::String,
        QString(40, QLatin1Char('a')) + QLatin1Char('!'));
    const std::atomic<bool> cancelled(false);
    kernel::QueryRun run(cancelled);
    QElapsedTimer clock;
    clock.start();
    evaluated(QStringLiteral("/^(a+)+[bc]/"), run);
    QVERIFY(run.hasRegexFailed());
    QVERIFY(clock.elapsed() < 5000);
}

/// A million steps: too many here, though they would end by themselves.
void TestQueryMatching::a_regular_expression_is_stopped_after_many_steps()
{
    add(set(QStringLiteral("Trap")), QStringLiteral("k"), T::String,
        QString(20, QLatin1Char('a')) + QLatin1Char('!'));
    const std::atomic<bool> cancelled(false);
    kernel::QueryRun run(cancelled);
    evaluated(QStringLiteral("/^(a+)+[bc]/"), run);
    QVERIFY(run.hasRegexFailed());
    kernel::QueryRun shortRun(cancelled);
    evaluated(QStringLiteral("/^(aa+)+[bc]/"), shortRun);
    QVERIFY(!shortRun.hasRegexFailed());
}

void TestQueryMatching::a_cancelled_search_of_one_large_set_ends()
{
    kernel::DocumentLoader loader;
    const quint64 large = loader.addSet(QStringLiteral("Large"));
    const QString slow = QString(13, QLatin1Char('a')) + QLatin1Char('!');
    for (int number = 0; number < 100000; ++number) {
        loader.addEntry(large, QStringLiteral("k%1").arg(number), T::String, slow);
    }
    loader.commit();
    std::atomic<bool> cancelled(false);
    const auto scene = snapshot();
    const QString query = QStringLiteral("value:/^(a+)+[bc]/");
    const auto root = kernel::QueryParser(query).parse();
    QElapsedTimer clock;
    std::atomic<bool> started(false);
    std::thread worker([&] {
        kernel::QueryRun run(cancelled, 600000);
        kernel::QueryEvaluation evaluation(*root, *scene, run);
        started = true;
        evaluation.matchingSets();
    });
    while (!started) {
        std::this_thread::yield();
    }
    clock.start();
    cancelled = true;
    worker.join();
    QVERIFY2(clock.elapsed() < 1000, qPrintable(QString::number(clock.elapsed())));
}

void TestQueryMatching::regular_expressions_share_a_bound_of_time()
{
    const std::atomic<bool> cancelled(false);
    kernel::QueryRun late(cancelled, 0);
    evaluated(QStringLiteral("/x/"), late);
    QVERIFY(late.hasRegexFailed());
    kernel::QueryRun words(cancelled, 0);
    QCOMPARE(evaluated(QStringLiteral("red"), words).size(), 1);
    QVERIFY(!words.hasRegexFailed());
}

NK_GUILESS_TEST_MAIN(TestQueryMatching)
#include "test_query_matching.moc"
