#include "SuitePlace.h"

#include <TestMain.h>

using interchange::SqlAssetStore;
using kernel::AssetInfo;
using kernel::AssetResult;
using kernel::AssetVersion;

/// What the asset store promises, in either database.
class TestAssetStore : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        const QString error = m_place.start();
        QVERIFY2(error.isEmpty(), qPrintable(error));
    }
    void init()
    {
        m_anna = m_place.person("Anna");
        m_ben = m_place.person("Ben");
    }
    void cleanup()
    {
        m_anna.reset();
        m_ben.reset();
        m_place.clear();
    }

    void a_published_asset_is_there_for_everybody()
    {
        const QString id = publish("Chair", "oak");
        AssetInfo seen;
        QVERIFY(m_ben->info(id, seen).isDone());
        QCOMPARE(seen.id, id);
        QCOMPARE(seen.name, QStringLiteral("Chair"));
        QCOMPARE(seen.newest, 1);
        QCOMPARE(seen.author, QStringLiteral("Anna"));
        QVERIFY(qAbs(seen.changed.secsTo(QDateTime::currentDateTimeUtc())) < 60);
        QCOMPARE(seen.changed.timeSpec(), Qt::UTC);
        QVERIFY(seen.holder.isEmpty());
        QVERIFY(!seen.isHeldHere);
        QCOMPARE(newest(*m_ben, id).content, QByteArray("oak"));
        QVERIFY(publish("Chair", "oak") != id);
    }

    void storing_makes_a_new_version_and_ends_the_check_out()
    {
        const QString id = publish("Chair", "oak");
        QVERIFY(m_ben->checkOut(id, 1).isDone());
        AssetInfo seen;
        QVERIFY(m_anna->info(id, seen).isDone());
        QCOMPARE(seen.holder, QStringLiteral("Ben"));
        QVERIFY(!seen.isHeldHere);
        QVERIFY(m_ben->info(id, seen).isDone() && seen.isHeldHere);
        int version = 1;
        QVERIFY(m_ben->save(id, QStringLiteral("Stool"), "pine", version).isDone());
        QCOMPARE(version, 2);
        QVERIFY(m_anna->info(id, seen).isDone());
        QVERIFY(seen.holder.isEmpty());
        QCOMPARE(seen.name, QStringLiteral("Stool"));
        QVector<AssetVersion> versions;
        QVERIFY(m_anna->versions(id, versions).isDone());
        QCOMPARE(versions.size(), 2);
        QCOMPARE(versions.at(0).version, 2);
        QCOMPARE(versions.at(0).author, QStringLiteral("Ben"));
        QCOMPARE(versions.at(0).name, QStringLiteral("Stool"));
        QCOMPARE(versions.at(1).author, QStringLiteral("Anna"));
        AssetVersion first;
        QVERIFY(m_ben->read(id, 1, first).isDone());
        QCOMPARE(first.content, QByteArray("oak"));
        QCOMPARE(newest(*m_anna, id).content, QByteArray("pine"));
    }

    void an_asset_has_one_holder_who_is_named_to_others()
    {
        const QString id = publish("Chair", "oak");
        QVERIFY(m_anna->checkOut(id, 1).isDone());
        QVERIFY(m_anna->checkOut(id, 1).isDone());
        const AssetResult refused = m_ben->checkOut(id, 1);
        QCOMPARE(refused.outcome, AssetResult::Refused);
        QVERIFY2(refused.error.contains(QStringLiteral("“Chair” is checked out by Anna")),
                 qPrintable(refused.error));
        int version = 1;
        QCOMPARE(m_ben->save(id, QStringLiteral("Mine"), "mine", version).outcome, AssetResult::Refused);
        QCOMPARE(version, 1);
        QCOMPARE(newest(*m_anna, id).content, QByteArray("oak"));
        // The same name in another session is somebody else.
        QCOMPARE(m_place.person("Anna")->checkOut(id, 1).outcome, AssetResult::Refused);
    }

    void what_moved_on_is_told_and_not_passed_over()
    {
        const QString id = publish("Chair", "oak");
        QVERIFY(m_anna->checkOut(id, 1).isDone());
        QVERIFY(m_ben->release(id, true).isDone());
        QVERIFY(m_ben->checkOut(id, 1).isDone());
        int version = 1;
        QVERIFY(m_ben->save(id, QStringLiteral("Chair"), "pine", version).isDone());
        version = 1;
        const AssetResult late = m_anna->save(id, QStringLiteral("Chair"), "elm", version);
        QCOMPARE(late.outcome, AssetResult::Refused);
        QVERIFY2(
            late.error.contains(QStringLiteral("“Chair” has moved on: Ben has stored version 2 and this is "
                                               "version 1")),
            qPrintable(late.error));
        QCOMPARE(newest(*m_anna, id).content, QByteArray("pine"));
        const AssetResult old = m_anna->checkOut(id, 1);
        QCOMPARE(old.outcome, AssetResult::Refused);
        QVERIFY(old.error.contains(QStringLiteral("reload it first")));
        QVERIFY(m_anna->checkOut(id, 2).isDone());
    }

    void a_check_out_is_given_back_by_its_holder_and_ended_by_others_on_demand_only()
    {
        const QString id = publish("Chair", "oak");
        QVERIFY(m_anna->checkOut(id, 1).isDone());
        const AssetResult refused = m_ben->release(id, false);
        QCOMPARE(refused.outcome, AssetResult::Refused);
        QVERIFY(refused.error.contains(QStringLiteral("Anna")));
        QVERIFY(m_anna->release(id, false).isDone());
        QVERIFY(m_anna->release(id, false).isDone());
        QVERIFY(m_ben->checkOut(id, 1).isDone());
        QVERIFY(m_anna->release(id, true).isDone());
        int version = 1;
        const AssetResult ended = m_ben->save(id, QStringLiteral("Chair"), "pine", version);
        QCOMPARE(ended.outcome, AssetResult::Refused);
        QVERIFY2(ended.error.contains(QStringLiteral("not checked out here any more")),
                 qPrintable(ended.error));
        QCOMPARE(newest(*m_anna, id).version, 1);
    }

    void a_session_gives_back_all_of_its_own_and_nothing_else()
    {
        const QString chair = publish("Chair", "oak");
        const QString table = publish("Table", "elm");
        QVERIFY(m_anna->checkOut(chair, 1).isDone());
        QVERIFY(m_ben->checkOut(table, 1).isDone());
        QVERIFY(m_anna->releaseAll().isDone());
        AssetInfo seen;
        QVERIFY(m_anna->info(chair, seen).isDone() && seen.holder.isEmpty());
        QVERIFY(m_anna->info(table, seen).isDone());
        QCOMPARE(seen.holder, QStringLiteral("Ben"));
    }

    void a_version_that_arrived_unheard_of_is_not_stored_twice()
    {
        const QString id = publish("Chair", "oak");
        QVERIFY(m_anna->checkOut(id, 1).isDone());
        int version = 1;
        QVERIFY(m_anna->save(id, QStringLiteral("Chair"), "elm", version).isDone());
        version = 1;
        QVERIFY(m_anna->save(id, QStringLiteral("Chair"), "elm", version).isDone());
        QCOMPARE(version, 2);
        version = 1;
        QCOMPARE(m_anna->save(id, QStringLiteral("Chair"), "pine", version).outcome, AssetResult::Refused);
        QVector<AssetVersion> versions;
        QVERIFY(m_anna->versions(id, versions).isDone());
        QCOMPARE(versions.size(), 2);
    }

    void the_holder_does_not_store_from_an_older_version_either()
    {
        const QString id = publish("Chair", "oak");
        QVERIFY(m_ben->checkOut(id, 1).isDone());
        int version = 1;
        QVERIFY(m_ben->save(id, QStringLiteral("Chair"), "pine", version).isDone());
        QVERIFY(m_anna->checkOut(id, 2).isDone());
        version = 1;
        const AssetResult result = m_anna->save(id, QStringLiteral("Chair"), "elm", version);
        QCOMPARE(result.outcome, AssetResult::Refused);
        QVERIFY2(result.error.contains(QStringLiteral("has moved on")), qPrintable(result.error));
        QCOMPARE(newest(*m_ben, id).content, QByteArray("pine"));
    }

    void a_version_that_cannot_be_written_leaves_the_asset_as_it_was()
    {
        const QString id = publish("Chair", "oak");
        QVERIFY(m_anna->checkOut(id, 1).isDone());
        // The place of the new version is taken, so that the second of the two statements fails.
        m_place.run(
            {QStringLiteral("INSERT INTO asset_versions VALUES ('%1', 2, 'x', 'x', '', 'x')").arg(id)});
        int version = 1;
        const AssetResult result = m_anna->save(id, QStringLiteral("Stool"), "elm", version);
        QCOMPARE(result.outcome, AssetResult::Failed);
        QVERIFY2(result.error.contains(m_anna->place()), qPrintable(result.error));
        AssetInfo seen;
        QVERIFY(m_ben->info(id, seen).isDone());
        QCOMPARE(seen.name, QStringLiteral("Chair"));
        QCOMPARE(seen.newest, 1);
        QCOMPARE(seen.holder, QStringLiteral("Anna"));
    }

    void a_search_finds_words_in_any_case_and_takes_no_letter_for_a_pattern_data()
    {
        QTest::addColumn<QString>("words");
        QTest::addColumn<QString>("found");
        QTest::newRow("nothing asked for") << ""
                                           << "100% wool,A_B,It's; DROP TABLE assets,Äpfel Größe";
        QTest::newRow("other case") << "äPFEL"
                                    << "Äpfel Größe";
        QTest::newRow("words in any order") << "  größe \t ä"
                                            << "Äpfel Größe";
        QTest::newRow("folded") << "GRÖßE ÄPFEL"
                                << "Äpfel Größe";
        QTest::newRow("percent") << "%"
                                 << "100% wool";
        QTest::newRow("underline") << "_"
                                   << "A_B";
        QTest::newRow("quote") << "it's;"
                               << "It's; DROP TABLE assets";
        QTest::newRow("question") << "?"
                                  << "";
        QTest::newRow("no match") << "wool cotton"
                                  << "";
        QTest::newRow("escape") << "!%"
                                << "";
    }
    void a_search_finds_words_in_any_case_and_takes_no_letter_for_a_pattern()
    {
        QFETCH(QString, words);
        QFETCH(QString, found);
        for (const char *name : {"Äpfel Größe", "100% wool", "A_B", "It's; DROP TABLE assets"}) {
            publish(name, "x");
        }
        QVector<AssetInfo> assets;
        QVERIFY(m_ben->list(words, 100, assets).isDone());
        QCOMPARE(namesOf(assets), found);
    }

    void a_list_is_sorted_by_name_and_cut_where_it_is_told_to()
    {
        for (const char *name : {"b", "C", "a", "A"}) {
            publish(name, "x");
        }
        QVector<AssetInfo> assets;
        QVERIFY(m_ben->list(QString(), 3, assets).isDone());
        QCOMPARE(assets.size(), 3);
        QCOMPARE(namesOf(assets).toLower(), QStringLiteral("a,a,b"));
        QVERIFY(m_ben->list(QString(100000, QLatin1Char('x')), 3, assets).isDone());
        QVERIFY(assets.isEmpty());
    }

    void names_and_contents_of_every_odd_kind_are_kept_data()
    {
        QTest::addColumn<QString>("text");
        QTest::newRow("quotes") << QStringLiteral("'\"`''");
        QTest::newRow("backslashes") << QStringLiteral("\\ \\' \\\\' E'\\n'");
        QTest::newRow("places") << QStringLiteral("%1 ? :a $1 %3%%");
        QTest::newRow("lines") << QStringLiteral("a\nb\r\n\tc");
        QTest::newRow("markup") << QStringLiteral("<img src='file:///x'>&amp;");
        QTest::newRow("beyond 16 bits") << QString::fromUtf8("😀 سلام 漢字");
        QTest::newRow("blank") << QStringLiteral(" ");
        QTest::newRow("long") << QString(200000, QChar(0x00e4));
    }
    void names_and_contents_of_every_odd_kind_are_kept()
    {
        QFETCH(QString, text);
        QString id;
        QVERIFY(m_anna->publish(text, text.toUtf8(), id).isDone());
        AssetVersion stored = newest(*m_ben, id);
        QCOMPARE(stored.name, text);
        QCOMPARE(stored.content, text.toUtf8());
        QVERIFY(m_ben->checkOut(id, 1).isDone());
        int version = 1;
        QVERIFY(m_ben->save(id, text + text, stored.content + '!', version).isDone());
        AssetInfo seen;
        QVERIFY(m_anna->info(id, seen).isDone());
        QCOMPARE(seen.name, text + text);
        QCOMPARE(newest(*m_anna, id).content, text.toUtf8() + '!');
    }

    void refusals_keep_foreign_names_as_they_are()
    {
        const QString id = publish("%1 %2 %3", "x");
        QVERIFY(m_anna->checkOut(id, 1).isDone());
        QVERIFY(m_ben->checkOut(id, 1).error.contains(QStringLiteral("“%1 %2 %3” is checked out by Anna")));
        QVERIFY(m_anna->checkOut(id, 7).error.contains(QStringLiteral("version 1 and this is version 7")));
    }

    void a_zero_character_in_a_name_is_replaced()
    {
        QString id;
        QVERIFY(m_anna->publish(QString(QChar(0)) + QLatin1Char('a'), "x", id).isDone());
        QCOMPARE(newest(*m_anna, id).name, QString(QChar(QChar::ReplacementCharacter)) + QLatin1Char('a'));
    }

    void an_asset_that_is_not_there_is_told()
    {
        publish("Chair", "oak");
        const QString id = QStringLiteral("nobody");
        AssetInfo asset;
        AssetVersion content;
        int version = 1;
        for (const AssetResult &result :
             {m_anna->info(id, asset), m_anna->read(id, 0, content), m_anna->checkOut(id, 1),
              m_anna->save(id, QStringLiteral("x"), "x", version), m_anna->release(id, true)}) {
            QCOMPARE(result.outcome, AssetResult::Refused);
            QVERIFY2(result.error.contains(m_anna->place()), qPrintable(result.error));
        }
        QVector<AssetVersion> versions;
        QVERIFY(m_anna->versions(id, versions).isDone() && versions.isEmpty());
    }

    void changes_are_told_and_readings_and_refusals_are_not()
    {
        QSignalSpy changes(m_anna.get(), &SqlAssetStore::changed);
        const QString id = publish("Chair", "oak");
        QCOMPARE(changes.size(), 1);
        AssetInfo seen;
        QVERIFY(m_anna->info(id, seen).isDone());
        QCOMPARE(m_anna->checkOut(id, 5).outcome, AssetResult::Refused);
        QVERIFY(m_anna->releaseAll().isDone());
        QCOMPARE(changes.size(), 1);
        QVERIFY(m_anna->checkOut(id, 1).isDone());
        QCOMPARE(changes.size(), 2);
    }

    void a_busy_database_is_told_and_nothing_is_stored()
    {
        const QString id = publish("Chair", "oak");
        const auto hasty = m_place.person("Hasty", 50);
        AssetInfo seen;
        QVERIFY(hasty->info(id, seen).isDone());
        interchange::AssetConnection other(m_place.address(), 50);
        QVERIFY(other.open().isDone());
        QVERIFY(other.begin());
        QVERIFY(other.run("UPDATE assets SET newest = newest"));
        const AssetResult busy = hasty->checkOut(id, 1);
        QCOMPARE(busy.outcome, AssetResult::Failed);
        QVERIFY2(busy.error.contains(QStringLiteral("try again in a moment")), qPrintable(busy.error));
        other.rollback();
        QVERIFY(hasty->info(id, seen).isDone());
        QVERIFY(seen.holder.isEmpty());
        QVERIFY(hasty->checkOut(id, 1).isDone());
    }

private:
    QString publish(const char *name, const char *content) const
    {
        QString id;
        const AssetResult result = m_anna->publish(QString::fromUtf8(name), content, id);
        if (!result.isDone()) {
            QTest::qFail(qPrintable(result.error), __FILE__, __LINE__);
        }
        return id;
    }
    static AssetVersion newest(SqlAssetStore &store, const QString &id)
    {
        AssetVersion version;
        store.read(id, 0, version);
        return version;
    }
    static QString namesOf(const QVector<AssetInfo> &assets)
    {
        QStringList names;
        for (const AssetInfo &asset : assets) {
            names.append(asset.name);
        }
        return names.join(QLatin1Char(','));
    }

    AssetPlace m_place{runsOnServer};
    std::unique_ptr<SqlAssetStore> m_anna;
    std::unique_ptr<SqlAssetStore> m_ben;
};

NK_GUILESS_TEST_MAIN(TestAssetStore)
#include "test_asset_store.moc"
