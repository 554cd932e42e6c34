#pragma once

#include <nkKernelServices/nkKernelServicesExport.h>

#include <QByteArray>
#include <QDateTime>
#include <QObject>
#include <QString>
#include <QVector>

namespace kernel {

/// How an operation on stored assets ended.
struct AssetResult
{
    enum Outcome {
        Done,
        /// It must not be: somebody else has the asset, it moved on, it is not there. The store is well.
        Refused,
        /// The store could not do it; the next operation is likely to fail, too.
        Failed
    };

    Outcome outcome = Done;
    /// One sentence for people: what, where, what to do; empty when it was done. Never holds a password.
    QString error;
    /// It failed because a password is missing or wrong.
    bool wantsPassword = false;

    bool isDone() const { return outcome == Done; }
    static AssetResult refused(const QString &error) { return {Refused, error, false}; }
    static AssetResult failed(const QString &error) { return {Failed, error, false}; }
};

/// An asset as it stands in the store.
struct AssetInfo
{
    QString id;
    /// That of its newest version.
    QString name;
    /// The number of the newest version; versions count from 1.
    int newest = 0;
    /// Who stored the newest version, and when (UTC).
    QString author;
    QDateTime changed;
    /// Who has it checked out; empty where nobody has.
    QString holder;
    /// Whether it is this store's session that has it.
    bool isHeldHere = false;
};

/// One version of an asset.
struct AssetVersion
{
    int version = 0;
    QString name;
    QString author;
    QDateTime changed;
    /// The text of the set; only where it was asked for.
    QByteArray content;
};

/// Where the asset manager keeps its assets: sets as texts, with versions and check-outs. The application
/// installs one. Whatever an operation does is done whole or not at all, and is there for everybody who shares
/// the store when the call returns.
///
/// Check-outs belong to a session, one store object in one process, and are told to others by the name of its
/// person. Operations may take seconds where the store is a server that does not answer; they run no event loop.
class NK_KERNEL_SERVICES_EXPORT AssetStore : public QObject
{
    Q_OBJECT
public:
    /// The installed store; null where there is none.
    static AssetStore *installed();
    /// Installs a store, which stays the caller's. Null takes it back; so does its destruction.
    static void install(AssetStore *store);

    /// Where the assets are, for people; without a password.
    virtual QString place() const = 0;

    /// Stores a new asset; its first version has this name and content. Nobody has it checked out.
    /// @param id receives the id of the asset, never used twice
    virtual AssetResult publish(const QString &name, const QByteArray &content, QString &id) = 0;
    /// Lists the assets in whose name every word stands, whatever the case, by name.
    /// @param most how many are listed at most
    virtual AssetResult list(const QString &words, int most, QVector<AssetInfo> &assets) = 0;
    virtual AssetResult info(const QString &id, AssetInfo &asset) = 0;
    /// Lists the versions, newest first, without contents.
    virtual AssetResult versions(const QString &id, QVector<AssetVersion> &versions) = 0;
    /// Reads one version with its content. @param version 0 for the newest
    virtual AssetResult read(const QString &id, int version, AssetVersion &content) = 0;

    /// Makes this session the one holder of the asset. Done, too, where it is already. Refused where another
    /// session has it or where `version` is not the newest.
    virtual AssetResult checkOut(const QString &id, int version) = 0;
    /// Stores the next version and ends the check-out. Refused where this session has no check-out or `version`
    /// is not the newest: nothing that others have stored is ever passed over.
    /// @param version the one that the content is made from; receives the number of the new one
    virtual AssetResult save(const QString &id, const QString &name, const QByteArray &content,
                             int &version) = 0;
    /// Ends the check-out of an asset. Done, too, where nobody has it.
    /// @param ofOthers whether one of another session is ended, too; else that is refused
    virtual AssetResult release(const QString &id, bool ofOthers) = 0;
    /// Ends every check-out of this session. Does nothing where it has made none.
    virtual AssetResult releaseAll() = 0;

Q_SIGNALS:
    /// This store has changed something in what others see of it.
    void changed();
};

} // namespace kernel
