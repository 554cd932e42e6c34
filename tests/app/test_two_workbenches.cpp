#include "../interchange_assets/AssetPerson.h"
#include "../interchange_assets/AssetScene.h"
#include "../interchange_assets/DatabaseServer.h"

#include "interchange/SceneFile.h"
#include "interchange/assets/SqlAssetStore.h"

#include <TestMain.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#ifdef NK_ASSETS_SERVER
constexpr bool runsOnServer = true;
#else
constexpr bool runsOnServer = false;
#endif

using interchange::AssetAddress;

/// Two whole workbenches, each a process with the editor in it, at one asset database.
class TestTwoWorkbenches : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_folder = std::make_unique<QTemporaryDir>();
        QVERIFY(QDir(m_folder->path()).mkpath(userFolder(QStringLiteral("data"))));
        QVERIFY(QDir(m_folder->path()).mkpath(userFolder(QStringLiteral("config"))));
        if (runsOnServer) {
            m_server = std::make_unique<DatabaseServer>();
            const QString error = m_server->start();
            QVERIFY2(error.isEmpty(), qPrintable(error));
            choose(m_server->url());
        }
        makeScene();
        m_anna = start("anna");
        m_ben = start("ben");
    }
    void cleanup()
    {
        m_anna.reset();
        m_ben.reset();
        m_server.reset();
    }

    void of_two_who_modify_at_once_one_gets_it_and_the_other_reads_the_name()
    {
        m_anna->tell(QStringLiteral("do Modify"));
        m_ben->tell(QStringLiteral("do Modify"));
        const QStringList answers{m_anna->answer(), m_ben->answer()};
        QVERIFY2(answers.count(QStringLiteral("done")) == 1, qPrintable(answers.join('\n')));
        const bool isAnnas = answers.first() == QLatin1String("done");
        const QString holder = isAnnas ? QStringLiteral("checked out by anna@")
                                       : QStringLiteral("checked out by ben@");
        QVERIFY2(answers.at(isAnnas ? 1 : 0).contains(holder), qPrintable(answers.join('\n')));
    }

    void a_version_goes_from_one_to_the_other_and_back()
    {
        QCOMPARE(ask(*m_anna, "do Modify"), QStringLiteral("done"));
        QCOMPARE(ask(*m_anna, "set ash"), QStringLiteral("done"));
        QVERIFY(ask(*m_ben, "do Modify").contains(QStringLiteral("checked out by anna@")));
        QCOMPARE(ask(*m_anna, "do Save in Asset Manager"), QStringLiteral("done"));
        const QString told = ask(*m_ben, "do Modify");
        QVERIFY2(told.contains(QStringLiteral("has moved on: anna@"))
                     && told.contains(QStringLiteral("version 2")),
                 qPrintable(told));
        QCOMPARE(ask(*m_ben, "value"), QStringLiteral("oak"));
        QCOMPARE(ask(*m_ben, "do Reload from Asset Manager"), QStringLiteral("done"));
        QCOMPARE(ask(*m_ben, "value"), QStringLiteral("ash"));
        QCOMPARE(ask(*m_ben, "do Modify"), QStringLiteral("done"));
        QCOMPARE(ask(*m_ben, "set elm"), QStringLiteral("done"));
        QCOMPARE(ask(*m_ben, "do Save in Asset Manager"), QStringLiteral("done"));
        QCOMPARE(ask(*m_anna, "do Reload from Asset Manager"), QStringLiteral("done"));
        QCOMPARE(ask(*m_anna, "value"), QStringLiteral("elm"));
    }

    void a_workbench_that_ends_gives_back_and_one_that_is_killed_does_not()
    {
        QCOMPARE(ask(*m_anna, "do Modify"), QStringLiteral("done"));
        m_anna.reset();
        QCOMPARE(ask(*m_ben, "do Modify"), QStringLiteral("done"));
        m_ben->kill();
        const auto carl = start("carl");
        QVERIFY(ask(*carl, "do Modify").contains(QStringLiteral("checked out by ben@")));
    }

private:
    static QString userFolder(const QString &kind)
    {
        return QStringLiteral("%1/MetadataEditor/workbench").arg(kind);
    }
    QString scene() const { return m_folder->filePath(QStringLiteral("scene.gltf")); }

    void choose(const QString &url) const
    {
        QFile file(m_folder->filePath(userFolder(QStringLiteral("config")) + "/preferences.json"));
        QVERIFY(file.open(QIODevice::WriteOnly));
        const QString text = QStringLiteral(R"({"values": {"Assets Connection URL": ["%1"]}, "version": 1})");
        QVERIFY(file.write(text.arg(url).toUtf8()) > 0);
    }

    /// A scene file with a set that is an asset of the database.
    void makeScene() const
    {
        QString error;
        const QString file = m_folder->filePath(userFolder(QStringLiteral("data")) + "/assets.sqlite");
        const AssetAddress address = runsOnServer ? AssetAddress::ofUrl(m_server->url(), &error)
                                                  : AssetAddress::ofFile(file);
        interchange::SqlAssetStore store(address, QStringLiteral("Maker"));
        AssetScene assets(&store);
        AssetScene::asset("Chair", "oak");
        QCOMPARE(SceneFile::save(scene(), nullptr).outcome, SceneFile::Saved::Done);
        QVERIFY(assets.told().isEmpty());
    }

    std::unique_ptr<AssetPerson> start(const char *name) const
    {
        auto person = std::make_unique<AssetPerson>(QStringLiteral(NK_WORKBENCH_PERSON), m_folder->path(),
                                                    QString::fromLatin1(name));
        const QString answer = ask(*person, "open " + scene().toUtf8());
        if (answer != QLatin1String("done")) {
            QTest::qFail(qPrintable(answer), __FILE__, __LINE__);
        }
        return person;
    }
    static QString ask(AssetPerson &person, const QByteArray &line)
    {
        person.tell(QString::fromUtf8(line));
        return person.answer();
    }

    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<DatabaseServer> m_server;
    std::unique_ptr<AssetPerson> m_anna;
    std::unique_ptr<AssetPerson> m_ben;
};

NK_TEST_MAIN(TestTwoWorkbenches)
#include "test_two_workbenches.moc"
