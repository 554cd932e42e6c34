#include "QueryFixture.h"

#include <TestMain.h>
#include <kernel/services/QueryService.h>
#include <kernel/services/ServiceRegistry.h>

#include <functional>
#include <memory>

using namespace QueryFixture;

namespace {

/// Does something when the thread's answer has come to the service, which has not seen it yet.
class BeforeAnswer : public QObject
{
public:
    BeforeAnswer(QObject *service, std::function<void()> action) : m_action(std::move(action))
    {
        service->installEventFilter(this);
    }
    bool hasCome() const { return m_come; }

protected:
    bool eventFilter(QObject *, QEvent *event) override
    {
        if (event->type() == QEvent::MetaCall && !std::exchange(m_come, true)) {
            m_action();
        }
        return false;
    }

private:
    const std::function<void()> m_action;
    bool m_come = false;
};

} // namespace

/// Queries through the service: what is told when, and what happens to a query that is no longer wanted.
class TestQueryService : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void a_query_starts_at_once_and_finishes_from_the_event_loop();
    void a_query_that_cannot_be_read_fails_with_its_reason();
    void a_readable_query_forgets_the_reason();
    void a_new_query_takes_the_place_of_the_running_one();
    void nothing_is_told_after_cancelling();
    void cancelling_at_every_moment_tells_nothing();
    void cancelling_just_before_the_answer_tells_nothing();
    void a_new_query_just_before_the_answer_takes_its_place();
    void cancelling_without_a_query_does_nothing();
    void cancelling_inside_the_start_ends_the_query();
    void a_query_started_from_the_answer_runs();
    void sets_that_died_meanwhile_are_left_out();
    void a_change_before_the_answer_is_found();
    void a_scene_that_is_emptied_meanwhile_is_not_read();
    void a_scene_that_always_changes_is_searched();
    void the_next_query_sees_what_changed();
    void names_of_objects_are_taken_when_they_are_asked_for();
    void a_regular_expression_that_takes_too_long_is_told();
    void a_service_can_go_while_it_searches();
    void the_one_service_is_of_this_kind();
    void the_event_loop_goes_on_while_a_large_scene_is_copied();

private:
    QStringList answer()
    {
        if (m_finished->isEmpty() && !m_finished->wait(20000)) {
            return {QStringLiteral("no answer")};
        }
        QStringList names;
        const QVariantList told = m_finished->takeFirst();
        const auto sets = told.at(1).value<QList<nkdMetadataSet>>();
        for (const nkdMetadataSet &set : sets) {
            names.append(set.getName());
        }
        return told.at(0).toBool() ? names : QStringList{QStringLiteral("failed")} + names;
    }
    static void turn()
    {
        for (int round = 0; round < 60; ++round) {
            QCoreApplication::processEvents(QEventLoop::AllEvents, 1);
            QThread::yieldCurrentThread();
        }
    }
    static quint64 loadLargeScene(int sets, int entriesPerSet);

    std::unique_ptr<kernel::QueryService> m_service;
    std::unique_ptr<QSignalSpy> m_started;
    std::unique_ptr<QSignalSpy> m_finished;
};

void TestQueryService::init()
{
    SceneFixture::reset();
    const nkdNode door = SceneFixture::node(QStringLiteral("Door"));
    add(set(QStringLiteral("Paint"), {door}), QStringLiteral("colour"), T::String, QStringLiteral("red"));
    add(set(QStringLiteral("Hardware")), QStringLiteral("colour"), T::String, QStringLiteral("blue"));
    m_service = std::make_unique<kernel::QueryService>();
    m_started = std::make_unique<QSignalSpy>(m_service.get(), &nkQueryService::asyncMetadataQueryStarted);
    m_finished = std::make_unique<QSignalSpy>(m_service.get(), &nkQueryService::asyncMetadataQueryFinished);
}

void TestQueryService::cleanup()
{
    m_finished.reset();
    m_started.reset();
    m_service.reset();
}

quint64 TestQueryService::loadLargeScene(int sets, int entriesPerSet)
{
    kernel::DocumentLoader loader;
    quint64 last = 0;
    for (int number = 0; number < sets; ++number) {
        last = loader.addSet(QStringLiteral("Set %1").arg(number));
        for (int entry = 0; entry < entriesPerSet; ++entry) {
            loader.addEntry(last, QStringLiteral("key %1").arg(entry), T::String,
                            QStringLiteral("value %1 of %2").arg(entry).arg(number));
        }
    }
    loader.commit();
    return last;
}

void TestQueryService::a_query_starts_at_once_and_finishes_from_the_event_loop()
{
    m_service->startAsyncMetadataQuery(QStringLiteral("red"));
    QCOMPARE(m_started->size(), 1);
    QCOMPARE(m_finished->size(), 0);
    QCOMPARE(answer(), QStringList{"Paint"});
    QCOMPARE(m_service->getQueryError(), QString());
    turn();
    QCOMPARE(m_started->size(), 1);
    QCOMPARE(m_finished->size(), 0);
}

void TestQueryService::a_query_that_cannot_be_read_fails_with_its_reason()
{
    m_service->startAsyncMetadataQuery(QStringLiteral("(red"));
    QCOMPARE(m_started->size(), 1);
    QCOMPARE(m_finished->size(), 0);
    QCOMPARE(answer(), QStringList{"failed"});
    QCOMPARE(m_service->getQueryError(), errorOf(QStringLiteral("(red")).sentence);
    QVERIFY(!m_service->getQueryError().isEmpty());
}

void TestQueryService::a_readable_query_forgets_the_reason()
{
    m_service->startAsyncMetadataQuery(QStringLiteral("(red"));
    QCOMPARE(answer(), QStringList{"failed"});
    m_service->startAsyncMetadataQuery(QStringLiteral("red"));
    QCOMPARE(m_service->getQueryError(), QString());
    QCOMPARE(answer(), QStringList{"Paint"});
}

void TestQueryService::a_new_query_takes_the_place_of_the_running_one()
{
    m_service->startAsyncMetadataQuery(QStringLiteral("red"));
    m_service->startAsyncMetadataQuery(QStringLiteral("blue"));
    QCOMPARE(m_started->size(), 2);
    QCOMPARE(answer(), QStringList{"Hardware"});
    turn();
    QCOMPARE(m_finished->size(), 0);
}

void TestQueryService::nothing_is_told_after_cancelling()
{
    for (const char *query : {"red", "(red"}) {
        m_service->startAsyncMetadataQuery(QLatin1String(query));
        m_service->cancelAsyncMetadataQuery();
        turn();
        QCOMPARE(m_finished->size(), 0);
    }
}

void TestQueryService::cancelling_at_every_moment_tells_nothing()
{
    loadLargeScene(50, 200);
    for (int turns = 0; turns < 12; ++turns) {
        m_service->startAsyncMetadataQuery(QStringLiteral("/19/"));
        for (int count = 0; count < turns && m_finished->isEmpty(); ++count) {
            QCoreApplication::processEvents();
        }
        m_finished->clear();
        m_service->cancelAsyncMetadataQuery();
        turn();
        QCOMPARE(m_finished->size(), 0);
    }
}

void TestQueryService::cancelling_just_before_the_answer_tells_nothing()
{
    const BeforeAnswer before(m_service.get(), [this] { m_service->cancelAsyncMetadataQuery(); });
    m_service->startAsyncMetadataQuery(QStringLiteral("red"));
    QTRY_VERIFY(before.hasCome());
    turn();
    QCOMPARE(m_finished->size(), 0);
}

void TestQueryService::a_new_query_just_before_the_answer_takes_its_place()
{
    const BeforeAnswer before(m_service.get(),
                              [this] { m_service->startAsyncMetadataQuery(QStringLiteral("blue")); });
    m_service->startAsyncMetadataQuery(QStringLiteral("red"));
    QCOMPARE(answer(), QStringList{"Hardware"});
    turn();
    QCOMPARE(m_finished->size(), 0);
}

void TestQueryService::cancelling_without_a_query_does_nothing()
{
    m_service->cancelAsyncMetadataQuery();
    turn();
    QVERIFY(m_started->isEmpty() && m_finished->isEmpty());
}

void TestQueryService::cancelling_inside_the_start_ends_the_query()
{
    connect(m_service.get(), &nkQueryService::asyncMetadataQueryStarted, m_service.get(),
            &nkQueryService::cancelAsyncMetadataQuery);
    m_service->startAsyncMetadataQuery(QStringLiteral("red"));
    turn();
    QCOMPARE(m_finished->size(), 0);
}

void TestQueryService::a_query_started_from_the_answer_runs()
{
    bool again = true;
    connect(m_service.get(), &nkQueryService::asyncMetadataQueryFinished, m_service.get(), [this, &again] {
        if (std::exchange(again, false)) {
            m_service->startAsyncMetadataQuery(QStringLiteral("blue"));
        }
    });
    m_service->startAsyncMetadataQuery(QStringLiteral("red"));
    QCOMPARE(answer(), QStringList{"Paint"});
    QCOMPARE(answer(), QStringList{"Hardware"});
}

void TestQueryService::sets_that_died_meanwhile_are_left_out()
{
    const QList<nkdMetadataSet> sets = nkMetadataService::the().getAllSets();
    BeforeAnswer before(m_service.get(), [&sets] { nkMetadataService::the().deleteSets({sets.first()}); });
    m_service->startAsyncMetadataQuery(QStringLiteral("colour"));
    QCOMPARE(answer(), QStringList{"Hardware"});
    QVERIFY(before.hasCome());
}

void TestQueryService::a_change_before_the_answer_is_found()
{
    m_service->startAsyncMetadataQuery(QStringLiteral("green"));
    nkMetadataService::the().getAllSets().first().setValue(QStringLiteral("colour"), QStringLiteral("green"));
    QCOMPARE(answer(), QStringList{"Paint"});
}

void TestQueryService::a_scene_that_is_emptied_meanwhile_is_not_read()
{
    loadLargeScene(500, 200);
    m_service->startAsyncMetadataQuery(QStringLiteral("key"));
    QCoreApplication::processEvents();
    kernel::Document::the().clear();
    QCOMPARE(answer(), QStringList());
}

void TestQueryService::a_scene_that_always_changes_is_searched()
{
    const quint64 id = loadLargeScene(500, 200);
    QTimer changes;
    int count = 0;
    connect(&changes, &QTimer::timeout, this,
            [&count, id] { nkdMetadataSet(id).setValue(QStringLiteral("changing"), ++count); });
    changes.start(0);
    m_service->startAsyncMetadataQuery(QStringLiteral("\"value 7 of 499\""));
    QCOMPARE(answer(), QStringList{"Set 499"});
    QVERIFY(count > 0);
}

void TestQueryService::the_next_query_sees_what_changed()
{
    m_service->startAsyncMetadataQuery(QStringLiteral("red"));
    QCOMPARE(answer(), QStringList{"Paint"});
    nkdMetadataSet paint = nkMetadataService::the().getAllSets().first();
    paint.setValue(QStringLiteral("colour"), QStringLiteral("green"));
    m_service->startAsyncMetadataQuery(QStringLiteral("red"));
    QCOMPARE(answer(), QStringList());
    kernel::Document::the().undo();
    m_service->startAsyncMetadataQuery(QStringLiteral("red"));
    QCOMPARE(answer(), QStringList{"Paint"});
    paint.setName(QStringLiteral("Lacquer"));
    m_service->startAsyncMetadataQuery(QStringLiteral("set:lacquer"));
    QCOMPARE(answer(), QStringList{"Lacquer"});
}

void TestQueryService::names_of_objects_are_taken_when_they_are_asked_for()
{
    m_service->startAsyncMetadataQuery(QStringLiteral("red"));
    QCOMPARE(answer(), QStringList{"Paint"});
    m_service->startAsyncMetadataQuery(QStringLiteral("not not object:door"));
    QCOMPARE(answer(), QStringList{"Paint"});
}

void TestQueryService::a_regular_expression_that_takes_too_long_is_told()
{
    add(set(QStringLiteral("Trap")), QStringLiteral("k"), T::String,
        QString(40, QLatin1Char('a')) + QLatin1Char('!'));
    m_service->startAsyncMetadataQuery(QStringLiteral("/^(a+)+[bc]/"));
    QCOMPARE(answer(), QStringList{"failed"});
    QVERIFY(m_service->getQueryError().contains(QStringLiteral("takes too long")));
}

void TestQueryService::a_service_can_go_while_it_searches()
{
    loadLargeScene(100, 200);
    for (int turns = 0; turns < 10; ++turns) {
        m_service->startAsyncMetadataQuery(QStringLiteral("/x$/"));
        for (int count = 0; count < turns; ++count) {
            QCoreApplication::processEvents();
        }
        cleanup();
        m_service = std::make_unique<kernel::QueryService>();
    }
    turn();
}

void TestQueryService::the_one_service_is_of_this_kind()
{
    QVERIFY(qobject_cast<kernel::QueryService *>(&nkQueryService::the()));
    nkQueryService::the().startAsyncMetadataQuery(QStringLiteral("red"));
    kernel::ServiceRegistry::shutDown();
}

void TestQueryService::the_event_loop_goes_on_while_a_large_scene_is_copied()
{
    const quint64 last = loadLargeScene(1000, 200);
    QTimer beat;
    int beats = 0;
    connect(&beat, &QTimer::timeout, this, [&beats, last] {
        // By the second turn the copy has begun, and is far from its end: the change belongs to it.
        if (++beats == 2) {
            nkdMetadataSet(last).setValue(QStringLiteral("key 7"), QStringLiteral("green"));
        }
    });
    beat.start(0);
    m_service->startAsyncMetadataQuery(QStringLiteral("green"));
    QCOMPARE(answer(), QStringList{"Set 999"});
}

NK_GUILESS_TEST_MAIN(TestQueryService)
#include "test_query_service.moc"
