#include "SuitePlace.h"

#include "interchange/assets/AssetConnection.h"
#include "interchange/assets/AssetSchema.h"

#include <TestMain.h>

using interchange::AssetConnection;
using interchange::AssetSchema;
using kernel::AssetInfo;
using kernel::AssetResult;

/// Databases of other layouts than the one of this program.
class TestAssetSchema : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        const QString error = m_place.start();
        QVERIFY2(error.isEmpty(), qPrintable(error));
    }
    void init() { m_anna = m_place.person("Anna"); }
    void cleanup()
    {
        m_anna.reset();
        m_place.clear();
    }

    void an_empty_database_gets_the_newest_layout()
    {
        QVERIFY(list().isDone());
        QCOMPARE(layout(), AssetSchema::Newest);
    }

    void an_older_layout_is_brought_up_to_date_with_what_it_holds()
    {
        makeFirstLayout();
        QVERIFY(list().isDone());
        QCOMPARE(layout(), AssetSchema::Newest);
        AssetInfo asset;
        QVERIFY(m_anna->info(QStringLiteral("old"), asset).isDone());
        QCOMPARE(asset.name, QStringLiteral("Old"));
        QCOMPARE(asset.author, QStringLiteral("Ben"));
        QCOMPARE(asset.changed, QDateTime(QDate(2020, 2, 29), QTime(1, 2, 3, 4), Qt::UTC));
        QVERIFY(m_anna->checkOut(QStringLiteral("old"), 1).isDone());
    }

    void steps_that_fail_in_the_middle_leave_the_older_layout()
    {
        makeFirstLayout();
        // The second statement of the step meets a column that nobody expects.
        m_place.run({QStringLiteral("ALTER TABLE assets ADD COLUMN session TEXT")});
        const AssetResult result = list();
        QCOMPARE(result.outcome, AssetResult::Failed);
        QVERIFY(result.error.contains(m_anna->place()));
        QCOMPARE(layout(), 1);
        m_place.run({QStringLiteral("ALTER TABLE assets ADD COLUMN holder TEXT")}); // was taken back
    }

    void a_newer_layout_is_told_and_left_alone()
    {
        QVERIFY(list().isDone());
        m_anna = m_place.person("Anna");
        m_place.run({QStringLiteral("UPDATE asset_schema SET layout = 99")});
        const AssetResult result = list();
        QCOMPARE(result.outcome, AssetResult::Failed);
        QVERIFY2(result.error.contains(
                     QStringLiteral("newer version of this program (layout 99, this one knows 2)")),
                 qPrintable(result.error));
        QString id;
        QCOMPARE(m_anna->publish(QStringLiteral("x"), "x", id).outcome, AssetResult::Failed);
        QVERIFY(id.isEmpty());
        QCOMPARE(m_place.value(QStringLiteral("SELECT count(*) FROM assets")).toInt(), 0);
        QCOMPARE(layout(), 99);
    }

    void a_database_of_something_else_is_told_and_left_alone()
    {
        m_place.run({QStringLiteral("CREATE TABLE songs (title TEXT)"),
                     QStringLiteral("INSERT INTO songs VALUES ('x')")});
        const AssetResult result = list();
        QCOMPARE(result.outcome, AssetResult::Failed);
        QVERIFY2(result.error.contains(m_anna->place()), qPrintable(result.error));
        QVERIFY(result.error.contains(runsOnServer ? QStringLiteral("something else than assets")
                                                   : QStringLiteral("is no asset database")));
        m_place.run({QStringLiteral("CREATE TABLE assets (x TEXT)")}); // there is none
        QCOMPARE(m_place.value(QStringLiteral("SELECT title FROM songs")).toString(), QStringLiteral("x"));
    }

private:
    AssetResult list()
    {
        QVector<AssetInfo> assets;
        return m_anna->list(QString(), 10, assets);
    }
    int layout() const { return m_place.value(QStringLiteral("SELECT layout FROM asset_schema")).toInt(); }
    void makeFirstLayout() const
    {
        // The connection ends without having been opened as a store does, which would take all steps.
        m_place.run(
            {QStringLiteral("CREATE TABLE asset_schema (layout INTEGER NOT NULL)"),
             QStringLiteral("INSERT INTO asset_schema (layout) VALUES (1)"),
             QStringLiteral("CREATE TABLE assets (id VARCHAR(36) NOT NULL PRIMARY KEY, name TEXT NOT NULL, "
                            "search_name TEXT NOT NULL, newest INTEGER NOT NULL)"),
             QStringLiteral("CREATE TABLE asset_versions (asset VARCHAR(36) NOT NULL REFERENCES assets (id), "
                            "version INTEGER NOT NULL, name TEXT NOT NULL, author TEXT NOT NULL, "
                            "changed VARCHAR(24) NOT NULL, content TEXT NOT NULL, "
                            "PRIMARY KEY (asset, version))"),
             QStringLiteral("INSERT INTO assets VALUES ('old', 'Old', 'old', 1)"),
             QStringLiteral("INSERT INTO asset_versions VALUES ('old', 1, 'Old', 'Ben', "
                            "'2020-02-29T01:02:03.004Z', 'oak')")});
    }

    AssetPlace m_place{runsOnServer};
    std::unique_ptr<interchange::SqlAssetStore> m_anna;
};

NK_GUILESS_TEST_MAIN(TestAssetSchema)
#include "test_asset_schema.moc"
