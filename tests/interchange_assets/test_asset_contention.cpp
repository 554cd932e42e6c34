#include "AssetPerson.h"
#include "SuitePlace.h"

#include <TestMain.h>

#include <memory>
#include <vector>

using kernel::AssetInfo;
using kernel::AssetVersion;

/// Several programs at one asset database at the same time.
class TestAssetContention : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        const QString error = m_place.start();
        QVERIFY2(error.isEmpty(), qPrintable(error));
    }
    void init() { m_here = m_place.person("Here"); }
    void cleanup()
    {
        m_others.clear();
        m_here.reset();
        m_place.clear();
    }

    void of_many_who_ask_for_an_asset_at_once_one_gets_it()
    {
        QString id;
        QVERIFY(m_here->publish(QStringLiteral("Chair"), "oak", id).isDone());
        startOthers(6);
        tellAll(QStringLiteral("checkout %1 1").arg(id));
        QStringList answers = answersOfAll();
        QCOMPARE(answers.removeAll(QStringLiteral("done")), 1);
        AssetInfo seen;
        QVERIFY(m_here->info(id, seen).isDone());
        QCOMPARE(seen.holder.left(6), QStringLiteral("Person"));
        for (const QString &answer : qAsConst(answers)) {
            QVERIFY2(answer.contains(QStringLiteral("checked out by ") + seen.holder), qPrintable(answer));
        }
    }

    void what_many_store_at_once_is_stored_once_a_version()
    {
        QString id;
        QVERIFY(m_here->publish(QStringLiteral("Chair"), "oak", id).isDone());
        startOthers(4);
        m_others.front()->tell(QStringLiteral("checkout %1 1").arg(id));
        QCOMPARE(m_others.front()->answer(), QStringLiteral("done"));
        tellAll(QStringLiteral("save %1 1").arg(id));
        QCOMPARE(answersOfAll().count(QStringLiteral("done")), 1);
        QVector<AssetVersion> versions;
        QVERIFY(m_here->versions(id, versions).isDone());
        QCOMPARE(versions.size(), 2);
        QCOMPARE(versions.at(0).author, QStringLiteral("Person0"));
    }

    void programs_that_start_at_once_make_the_tables_once()
    {
        startOthers(6);
        tellAll(QStringLiteral("publish Chair"));
        const QStringList answers = answersOfAll();
        QCOMPARE(answers.count(QStringLiteral("done")), 6);
        QVector<AssetInfo> assets;
        QVERIFY(m_here->list(QString(), 100, assets).isDone());
        QCOMPARE(assets.size(), 6);
    }

    void a_program_that_dies_while_it_stores_leaves_nothing_of_it()
    {
        QString id;
        QVERIFY(m_here->publish(QStringLiteral("Chair"), "oak", id).isDone());
        startOthers(1);
        m_others.front()->tell(QStringLiteral("half %1").arg(id));
        QCOMPARE(m_others.front()->answer(), QStringLiteral("done"));
        m_others.front()->kill();
        AssetInfo seen;
        QVERIFY(m_here->info(id, seen).isDone());
        QCOMPARE(seen.newest, 1);
        QCOMPARE(seen.holder, QStringLiteral("Person0"));
        QVector<AssetVersion> versions;
        QVERIFY(m_here->versions(id, versions).isDone());
        QCOMPARE(versions.size(), 1);
        // Its check-out stands until somebody ends it.
        QVERIFY(m_here->release(id, true).isDone());
        QVERIFY(m_here->checkOut(id, 1).isDone());
    }

private:
    void startOthers(int count)
    {
        for (int i = 0; i < count; ++i) {
            m_others.push_back(std::make_unique<AssetPerson>(QStringLiteral(NK_ASSET_PERSON), m_place.word(),
                                                             QStringLiteral("Person%1").arg(i)));
        }
    }
    void tellAll(const QString &line) const
    {
        for (const auto &person : m_others) {
            person->tell(line);
        }
    }
    QStringList answersOfAll() const
    {
        QStringList answers;
        for (const auto &person : m_others) {
            answers.append(person->answer());
        }
        return answers;
    }

    AssetPlace m_place{runsOnServer};
    std::unique_ptr<interchange::SqlAssetStore> m_here;
    std::vector<std::unique_ptr<AssetPerson>> m_others;
};

NK_GUILESS_TEST_MAIN(TestAssetContention)
#include "test_asset_contention.moc"
