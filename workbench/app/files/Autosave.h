#pragma once

#include "RecoverySlot.h"

#include <interchange/SceneFile.h>

#include <QObject>
#include <QTimer>

#include <memory>

class QWidget;
class SceneSession;

/// Writes a copy of the open scene for recovery, every so many minutes while it has changes that are not saved, and
/// offers what a program that ended unexpectedly has left. The person's file is never touched; the copy goes as soon
/// as nothing would be lost any more. How often, and whether at all, the preferences say.
class Autosave : public QObject
{
    Q_OBJECT
public:
    /// @param session not owned; outlives this
    explicit Autosave(SceneSession *session, QObject *parent = nullptr);
    /// The copy goes: who ends the workbench has been asked about the changes.
    ~Autosave() override;

    /// Writes the copy now where there is something new to keep. A failure is told once until it works again.
    /// @return whether everything is kept now
    bool write();
    /// Whether a program that ended unexpectedly has left a copy.
    static bool hasAbandoned();
    /// Asks about each copy that was left until one is restored. One that cannot be opened is told and kept.
    /// @return whether one was restored
    bool offerAbandoned(QWidget *window);

private:
    void followPreference();
    void writeWhenPossible();
    bool writeCopy();
    QString suffix() const;
    QByteArray fileHash();
    void drop();
    void dropWhenSaved(bool isModified);
    bool restore(std::unique_ptr<RecoverySlot> slot);
    bool fail(const QString &reason);

    SceneSession *m_session;
    QTimer m_timer;
    std::unique_ptr<RecoverySlot> m_slot;
    bool m_hasNews = false;
    bool m_isFailureTold = false;
    /// The hash of the file that this source was read from: it takes a while for a large one.
    std::weak_ptr<const interchange::SceneSource> m_hashedSource;
    QByteArray m_hash;
};
