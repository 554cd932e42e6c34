#include "interchange/assets/SqlAssetStore.h"

#include <TestMain.h>

#include <QSqlDatabase>
#include <QSqlQuery>
#include <QTemporaryDir>

#include <memory>
#include <unistd.h>

using interchange::AssetAddress;
using interchange::SqlAssetStore;
using kernel::AssetInfo;
using kernel::AssetResult;

namespace {

/// For its lifetime a person without the rights of the administrator, who may write everywhere.
class OrdinaryPerson
{
public:
    OrdinaryPerson() : m_isRoot(geteuid() == 0) { become(65534); }
    ~OrdinaryPerson() { become(0); }

private:
    void become(uid_t user) const
    {
        if (m_isRoot && seteuid(user) != 0) {
            QTest::qFail("the user could not be changed", __FILE__, __LINE__);
        }
    }
    const bool m_isRoot;
};

void write(const QString &path, const QByteArray &bytes)
{
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(bytes);
}

QByteArray bytesOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace

/// Database files that are not as they should be.
class TestAssetFile : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_folder = std::make_unique<QTemporaryDir>(QStringLiteral("/tmp/nkassets-XXXXXX"));
        m_path = m_folder->filePath(QStringLiteral("assets.sqlite"));
    }

    void a_file_that_is_no_database_is_told_and_left_alone_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::newRow("text") << QByteArray("these are my notes, and not a database at all\n").repeated(50);
        QTest::newRow("short") << QByteArray("x");
        QTest::newRow("zeros") << QByteArray(5000, '\0');
        QTest::newRow("binary") << QByteArray("\x89PNG\r\n\x1a\n").repeated(400);
    }
    void a_file_that_is_no_database_is_told_and_left_alone()
    {
        QFETCH(QByteArray, bytes);
        write(m_path, bytes);
        const AssetResult result = publish();
        QCOMPARE(result.outcome, AssetResult::Failed);
        QVERIFY2(result.error.contains(QStringLiteral("is no asset database; move it away")),
                 qPrintable(result.error));
        QVERIFY(result.error.contains(m_path));
        QCOMPARE(bytesOf(m_path), bytes);
    }

    void an_empty_file_becomes_a_database()
    {
        write(m_path, {});
        QVERIFY(publish().isDone());
    }

    void a_damaged_database_is_told()
    {
        QVERIFY(publish().isDone());
        QByteArray bytes = bytesOf(m_path);
        bytes.replace(4096, bytes.size() - 4096, QByteArray(bytes.size() - 4096, '\x5a'));
        write(m_path, bytes);
        const AssetResult result = publish();
        QCOMPARE(result.outcome, AssetResult::Failed);
        QVERIFY2(
            result.error.contains(QStringLiteral("is damaged; put a copy of it from a backup in its place")),
            qPrintable(result.error));
    }

    void a_folder_that_is_missing_is_told_data()
    {
        QTest::addColumn<QString>("name");
        QTest::newRow("in no folder") << QStringLiteral("missing/assets.sqlite");
        QTest::newRow("a folder itself") << QString();
    }
    void a_folder_that_is_missing_is_told()
    {
        QFETCH(QString, name);
        m_path = m_folder->filePath(name);
        const AssetResult result = publish();
        QCOMPARE(result.outcome, AssetResult::Failed);
        QVERIFY2(result.error.contains(QStringLiteral("cannot be opened; check that its folder is there")),
                 qPrintable(result.error));
        QVERIFY(QDir(m_folder->path()).isEmpty());
    }

    void a_database_that_may_only_be_read_is_read()
    {
        QVERIFY(publish().isDone());
        const QFile::Permissions all = QFile::ReadOwner | QFile::ReadGroup | QFile::ReadOther;
        QVERIFY(QFile::setPermissions(m_folder->path(),
                                      all | QFile::ExeOwner | QFile::ExeGroup | QFile::ExeOther));
        QVERIFY(QFile::setPermissions(m_path, all));
        const QByteArray before = bytesOf(m_path);
        {
            const OrdinaryPerson person;
            SqlAssetStore store(AssetAddress::ofFile(m_path), QStringLiteral("Anna"));
            QVector<AssetInfo> assets;
            QVERIFY(store.list(QString(), 10, assets).isDone());
            QCOMPARE(assets.size(), 1);
            const AssetResult result = store.checkOut(assets.constFirst().id, 1);
            QCOMPARE(result.outcome, AssetResult::Failed);
            QVERIFY2(result.error.contains(QStringLiteral("may not be written to; change its permissions")),
                     qPrintable(result.error));
        }
        QCOMPARE(bytesOf(m_path), before);
        QVERIFY(
            QFile::setPermissions(m_folder->path(), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
    }

    void a_database_that_vanished_is_made_anew_and_missing_assets_are_told()
    {
        SqlAssetStore store(AssetAddress::ofFile(m_path), QStringLiteral("Anna"));
        QString id;
        QVERIFY(store.publish(QStringLiteral("Chair"), "oak", id).isDone());
        QVERIFY(QFile::remove(m_path));
        QCOMPARE(store.checkOut(id, 1).outcome, AssetResult::Refused);
        QVERIFY(QFile::exists(m_path));
        QVERIFY(store.publish(QStringLiteral("Chair"), "oak", id).isDone());
    }

    void a_full_disk_is_told_and_nothing_of_the_version_is_stored()
    {
        SqlAssetStore store(AssetAddress::ofFile(m_path), QStringLiteral("Anna"));
        QString id;
        QVERIFY(store.publish(QStringLiteral("Chair"), "oak", id).isDone());
        QVERIFY(store.checkOut(id, 1).isDone());
        {
            QSqlQuery limit(QSqlDatabase::database(QSqlDatabase::connectionNames().value(0)));
            QVERIFY(limit.exec(QStringLiteral("PRAGMA max_page_count = 1")) && limit.next());
        }
        int version = 1;
        const AssetResult full = store.save(id, QStringLiteral("Stool"), QByteArray(500000, 'x'), version);
        QCOMPARE(full.outcome, AssetResult::Failed);
        QVERIFY2(full.error.contains(QStringLiteral("no room left on the disk")), qPrintable(full.error));
        QCOMPARE(version, 1);
        AssetInfo seen;
        QVERIFY(store.info(id, seen).isDone());
        QCOMPARE(seen.newest, 1);
        QCOMPARE(seen.name, QStringLiteral("Chair"));
        QVERIFY(seen.isHeldHere);
    }

    void nothing_is_opened_before_it_is_needed()
    {
        {
            SqlAssetStore store(AssetAddress::ofFile(m_path), QStringLiteral("Anna"));
            QVERIFY(store.releaseAll().isDone());
        }
        QVERIFY(!QFile::exists(m_path));
    }

private:
    AssetResult publish() const
    {
        SqlAssetStore store(AssetAddress::ofFile(m_path), QStringLiteral("Anna"));
        QString id;
        return store.publish(QStringLiteral("Chair"), "oak", id);
    }

    std::unique_ptr<QTemporaryDir> m_folder;
    QString m_path;
};

NK_GUILESS_TEST_MAIN(TestAssetFile)
#include "test_asset_file.moc"
