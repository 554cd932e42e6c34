#pragma once

#include "PreferencesFile.h"
#include <nkKernelServices/nkPreferencesService.h>

#include <QJsonObject>
#include <QSet>

#include <optional>

namespace kernel {

/// The preference values of the user, read from their file at once and written back on the event loop's next
/// turn after a change, by flush(), and at the end. A value of an unexpected kind is kept, read as the
/// fallback, and told in the log once.
class NK_KERNEL_SERVICES_EXPORT PreferencesService final : public nkPreferencesService
{
    Q_OBJECT
public:
    /// The values of "preferences.json" in the user's configuration folder.
    PreferencesService();
    explicit PreferencesService(const QString &file);
    ~PreferencesService() override;

    void setStringListValue(const QString &key, const QStringList &value, bool overwrite) override;
    void setIntValue(const QString &key, int value, bool overwrite) override;
    QStringList getStringListValue(const QString &key, const QStringList &fallback = {}) const override;
    int getIntValue(const QString &key, int fallback = 0) const override;
    bool hasValue(const QString &key) const override;

    QString file() const { return m_file.path(); }
    /// From now on values are set on trial: getters answer them, nobody is told and nothing is written, until
    /// endTrial takes them back. So a page can show its defaults before a person has agreed to them.
    void beginTrial();
    void endTrial();
    /// Writes what has changed. A failure is told as an error once until a write succeeds; what could not be
    /// written goes with the next change.
    /// @return false when something could not be written
    bool flush();

private:
    QJsonValue value(const QString &key) const;
    void setValue(const QString &key, const QJsonValue &value, bool overwrite);
    void queueFlush();
    void keepUnsaved(const QJsonObject &changed);
    void tellWriteFailure(const QString &reason);
    void tellWrongKind(const QString &key) const;

    PreferencesFile m_file;
    QJsonObject m_values;
    QJsonObject m_unsaved;
    /// What was set on trial; nothing outside of a trial.
    std::optional<QJsonObject> m_trial;
    bool m_flushQueued = false;
    bool m_failureTold = false;
    mutable QSet<QString> m_wrongKindTold;
};

} // namespace kernel
