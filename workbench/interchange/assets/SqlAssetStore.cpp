#include "SqlAssetStore.h"

#include <QDateTime>
#include <QSqlQuery>
#include <QUuid>

using kernel::AssetInfo;
using kernel::AssetResult;
using kernel::AssetVersion;

namespace interchange {

namespace {

/// Longer searches are cut: the databases bound the length of patterns.
constexpr int longestSearch = 500;

// The parts of a list's statement; every word adds a condition.
const char listStart[] =
    "SELECT a.id, a.name, a.newest, v.author, v.changed, a.holder, a.session FROM assets a "
    "JOIN asset_versions v ON v.asset = a.id AND v.version = a.newest WHERE 1 = 1";
const char listWord[] = " AND a.search_name LIKE ? ESCAPE '!'";
const char listEnd[] = " ORDER BY a.search_name, a.id LIMIT ?";
const char oneAsset[] = " AND a.id = ?";

QString newId()
{
    return QUuid::createUuid().toString(QUuid::WithoutBraces);
}

QString now()
{
    return QDateTime::currentDateTimeUtc().toString(QStringLiteral("yyyy-MM-dd'T'HH:mm:ss.zzz'Z'"));
}

QDateTime timeOf(const QVariant &value)
{
    return QDateTime::fromString(value.toString(), Qt::ISODateWithMs);
}

/// A text as a column takes it: PostgreSQL knows no zero character.
QString columnText(QString text)
{
    return text.replace(QChar(0), QChar(QChar::ReplacementCharacter));
}

QString searchText(const QString &name)
{
    return columnText(name).toCaseFolded();
}

/// What stands anywhere in a text, as a pattern of LIKE.
QString patternOf(QString word)
{
    word.replace(QLatin1Char('!'), QLatin1String("!!"))
        .replace(QLatin1Char('%'), QLatin1String("!%"))
        .replace(QLatin1Char('_'), QLatin1String("!_"));
    return QLatin1Char('%') + word + QLatin1Char('%');
}

AssetInfo infoOf(const QSqlQuery &query, const QString &session)
{
    AssetInfo asset;
    asset.id = query.value(0).toString();
    asset.name = query.value(1).toString();
    asset.newest = query.value(2).toInt();
    asset.author = query.value(3).toString();
    asset.changed = timeOf(query.value(4));
    asset.holder = query.value(5).toString();
    asset.isHeldHere = query.value(6).toString() == session;
    return asset;
}

} // namespace

SqlAssetStore::SqlAssetStore(const AssetAddress &address, const QString &person, int patience)
    : m_connection(address, patience),
      m_person(columnText(person.isEmpty() ? tr("somebody") : person)),
      m_session(newId())
{}

SqlAssetStore::~SqlAssetStore() = default;

QString SqlAssetStore::place() const
{
    return address().place();
}

/// Runs the work in a transaction of its own, which it ends: kept where the work is done, else taken back.
AssetResult SqlAssetStore::asOneChange(const Work &work)
{
    AssetResult result = m_connection.open();
    if (!result.isDone()) {
        return result;
    }
    if (!m_connection.begin()) {
        return m_connection.trouble();
    }
    result = work();
    if (result.isDone() && !m_connection.commit()) {
        result = m_connection.trouble();
        if (m_connection.wasLost()) {
            result.error =
                tr("The connection to the asset database %1 was lost while it was storing; look there "
                   "whether the change has arrived before you try again.")
                    .arg(place());
        }
    }
    if (!result.isDone()) {
        m_connection.rollback();
        return result;
    }
    Q_EMIT changed();
    return result;
}

bool SqlAssetStore::addVersion(const QString &id, int version, const QString &name, const QByteArray &content)
{
    return m_connection.run("INSERT INTO asset_versions (asset, version, name, author, changed, content) "
                            "VALUES (?, ?, ?, ?, ?, ?)",
                            {id, version, columnText(name), m_person, now(), QString::fromUtf8(content)});
}

AssetResult SqlAssetStore::publish(const QString &name, const QByteArray &content, QString &id)
{
    const QString made = newId();
    const AssetResult result = asOneChange([&] {
        const bool isDone = m_connection.run(
                                "INSERT INTO assets (id, name, search_name, newest) VALUES (?, ?, ?, 1)",
                                {made, columnText(name), searchText(name)})
                            && addVersion(made, 1, name, content);
        return isDone ? AssetResult() : m_connection.trouble();
    });
    id = result.isDone() ? made : QString();
    return result;
}

AssetResult SqlAssetStore::readInfos(const char *sql, const QVariantList &values, QVector<AssetInfo> &assets)
{
    assets.clear();
    const AssetResult result = m_connection.open();
    if (!result.isDone()) {
        return result;
    }
    QSqlQuery query = m_connection.query();
    if (!m_connection.run(query, sql, values)) {
        return m_connection.trouble();
    }
    while (query.next()) {
        assets.append(infoOf(query, m_session));
    }
    return result;
}

AssetResult SqlAssetStore::list(const QString &words, int most, QVector<AssetInfo> &assets)
{
    QByteArray sql = listStart;
    QVariantList values;
    const QStringList parts = searchText(words.left(longestSearch)).simplified().split(QLatin1Char(' '));
    for (const QString &word : parts) {
        sql += listWord;
        values.append(patternOf(word));
    }
    values.append(most);
    return readInfos((sql + listEnd).constData(), values, assets);
}

AssetResult SqlAssetStore::info(const QString &id, AssetInfo &asset)
{
    QVector<AssetInfo> found;
    const AssetResult result = readInfos((QByteArray(listStart) + oneAsset).constData(), {id}, found);
    if (result.isDone() && found.isEmpty()) {
        return missing();
    }
    asset = found.value(0);
    return result;
}

AssetResult SqlAssetStore::versions(const QString &id, QVector<AssetVersion> &versions)
{
    versions.clear();
    const AssetResult result = m_connection.open();
    if (!result.isDone()) {
        return result;
    }
    QSqlQuery query = m_connection.query();
    if (!m_connection.run(query,
                          "SELECT version, name, author, changed FROM asset_versions WHERE asset = ? "
                          "ORDER BY version DESC",
                          {id})) {
        return m_connection.trouble();
    }
    while (query.next()) {
        versions.append({query.value(0).toInt(), query.value(1).toString(), query.value(2).toString(),
                         timeOf(query.value(3)), QByteArray()});
    }
    return result;
}

AssetResult SqlAssetStore::read(const QString &id, int version, AssetVersion &content)
{
    const AssetResult result = m_connection.open();
    if (!result.isDone()) {
        return result;
    }
    QSqlQuery query = m_connection.query();
    if (!m_connection.run(query,
                          "SELECT v.version, v.name, v.author, v.changed, v.content FROM asset_versions v "
                          "JOIN assets a ON a.id = v.asset WHERE a.id = ? "
                          "AND v.version = CASE WHEN ? = 0 THEN a.newest ELSE ? END",
                          {id, version, version})) {
        return m_connection.trouble();
    }
    if (!query.next()) {
        return missing();
    }
    content = {query.value(0).toInt(), query.value(1).toString(), query.value(2).toString(),
               timeOf(query.value(3)), query.value(4).toString().toUtf8()};
    return result;
}

AssetResult SqlAssetStore::checkOut(const QString &id, int version)
{
    const AssetResult result = asOneChange([&] {
        int changed = 0;
        // One statement decides: of two who ask at once, the second finds the first one's session.
        if (!m_connection.run("UPDATE assets SET holder = ?, session = ? "
                              "WHERE id = ? AND newest = ? AND (session = '' OR session = ?)",
                              {m_person, m_session, id, version, m_session}, &changed)) {
            return m_connection.trouble();
        }
        return changed == 1 ? AssetResult() : refusal(id, version);
    });
    m_hasCheckedOut = m_hasCheckedOut || result.isDone();
    return result;
}

AssetResult SqlAssetStore::save(const QString &id, const QString &name, const QByteArray &content,
                                int &version)
{
    const int base = version;
    const AssetResult result = asOneChange([&] {
        int changed = 0;
        if (!m_connection.run(
                "UPDATE assets SET newest = ?, name = ?, search_name = ?, holder = '', session = '' "
                "WHERE id = ? AND newest = ? AND session = ?",
                {base + 1, columnText(name), searchText(name), id, base, m_session}, &changed)) {
            return m_connection.trouble();
        }
        if (changed != 1) {
            return isSavedAlready(id, base + 1, content) ? AssetResult() : refusal(id, base);
        }
        return addVersion(id, base + 1, name, content) ? AssetResult() : m_connection.trouble();
    });
    version = result.isDone() ? base + 1 : base;
    return result;
}

/// Whether the newest version is what is about to be stored: then an earlier attempt has arrived, though the
/// connection broke before that was told.
bool SqlAssetStore::isSavedAlready(const QString &id, int version, const QByteArray &content)
{
    QSqlQuery query = m_connection.query();
    return m_connection.run(query,
                            "SELECT v.content FROM asset_versions v JOIN assets a ON a.id = v.asset "
                            "AND a.newest = v.version WHERE a.id = ? AND a.newest = ? AND v.author = ?",
                            {id, version, m_person})
           && query.next() && query.value(0).toString() == QString::fromUtf8(content);
}

AssetResult SqlAssetStore::release(const QString &id, bool ofOthers)
{
    return asOneChange([&] {
        int changed = 0;
        const QString owner = ofOthers ? QString() : m_session;
        if (!m_connection.run("UPDATE assets SET holder = '', session = '' "
                              "WHERE id = ? AND (session = '' OR session = ? OR ? = '')",
                              {id, owner, owner}, &changed)) {
            return m_connection.trouble();
        }
        return changed == 1 ? AssetResult() : refusal(id, 0);
    });
}

AssetResult SqlAssetStore::releaseAll()
{
    if (!m_hasCheckedOut) {
        return {};
    }
    const AssetResult result = asOneChange([&] {
        return m_connection.run("UPDATE assets SET holder = '', session = '' WHERE session = ?", {m_session})
                   ? AssetResult()
                   : m_connection.trouble();
    });
    m_hasCheckedOut = !result.isDone();
    return result;
}

/// Why a change of an asset that starts from this version was not to be; 0 where the version does not matter.
AssetResult SqlAssetStore::refusal(const QString &id, int version)
{
    QSqlQuery query = m_connection.query();
    if (!m_connection.run(query, (QByteArray(listStart) + oneAsset).constData(), {id})) {
        return m_connection.trouble();
    }
    if (!query.next()) {
        return missing();
    }
    const AssetInfo asset = infoOf(query, m_session);
    if (!asset.holder.isEmpty() && !asset.isHeldHere) {
        return AssetResult::refused(tr("“%1” is checked out by %2; wait until it is stored or ask for it.")
                                        .arg(asset.name, asset.holder));
    }
    if (version > 0 && asset.newest != version) {
        return AssetResult::refused(
            tr("“%1” has moved on: %2 has stored version %3 and this is version %4; reload it first.")
                .arg(asset.name, asset.author, QString::number(asset.newest), QString::number(version)));
    }
    if (version <= 0) {
        return AssetResult::refused(
            tr("Which version of “%1” this is, is not known; reload it first.").arg(asset.name));
    }
    return AssetResult::refused(tr("“%1” is not checked out here any more; the check-out was ended by "
                                   "somebody else.")
                                    .arg(asset.name));
}

AssetResult SqlAssetStore::missing() const
{
    return AssetResult::refused(tr("The asset is not in the asset database %1; remove the link "
                                   "and publish the set anew, or use the database that it came from.")
                                    .arg(place()));
}

} // namespace interchange
