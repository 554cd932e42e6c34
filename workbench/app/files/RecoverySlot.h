#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QFile>
#include <QString>

#include <memory>
#include <vector>

/// The place of one scene's copy for recovery: a folder of its own below "recovery" in the user's data, with the copy
/// and a note of which file it belongs to. Held by one process at a time; a process that ends, however, lets go of it.
class RecoverySlot
{
    Q_DISABLE_COPY(RecoverySlot)
public:
    /// What is noted of a copy.
    struct Note
    {
        /// Name of the copy within the folder.
        QString copy;
        /// Absolute path of the scene's file; empty for a scene that has none.
        QString file;
        /// Of the whole file as the scene was read from it; empty where that is not known.
        QByteArray fileHash;
        /// When the copy was written (UTC).
        QDateTime written;
    };

    /// A new, empty place. @return null where it cannot be made; error says why
    static std::unique_ptr<RecoverySlot> make(QString *error);
    /// The places with a copy that no process holds, oldest first; they are held from now on. Places without one go.
    static std::vector<std::unique_ptr<RecoverySlot>> abandoned();
    /// Lets go of the place; what is in it stays.
    ~RecoverySlot();

    /// Absolute path for the next copy, which stands beside the present one until it is noted. @param suffix of its name
    QString nextCopy(const QString &suffix);
    /// Makes that copy the one of this place, in one go, and removes the one before with whatever belongs to it.
    /// @return the reason of the failure; empty on success
    QString take(const Note &note);
    const Note &note() const { return m_note; }
    /// Absolute path of the present copy.
    QString copy() const;
    /// Removes the place with everything in it.
    void remove();

    /// The hash that stands in notes; empty where the file cannot be read.
    static QByteArray hashOf(const QString &path);

private:
    explicit RecoverySlot(const QString &folder);

    static QString root();
    bool hold();
    bool readNote();
    void removeFiles(const QStringList &patterns);

    const QString m_folder;
    QFile m_lock;
    Note m_note;
};
