#include "PreferencesService.h"

#include "ServiceRegistry.h"
#include <nkKernelServices/nkLogService.h>

#include <QJsonArray>
#include <QStandardPaths>

#include <algorithm>
#include <limits>
#include <utility>

namespace kernel {

namespace {

QString userFile()
{
    const QString folder = QStandardPaths::writableLocation(QStandardPaths::AppConfigLocation);
    return folder + QStringLiteral("/preferences.json");
}

bool isInt(const QJsonValue &value)
{
    const double number = value.toDouble(0.5);
    return number >= std::numeric_limits<int>::min() && number <= std::numeric_limits<int>::max()
           && number == int(number);
}

bool isStringList(const QJsonValue &value)
{
    const QJsonArray array = value.toArray();
    return value.isArray()
           && std::all_of(array.begin(), array.end(), [](const QJsonValue &item) { return item.isString(); });
}

QStringList toStringList(const QJsonArray &array)
{
    QStringList list;
    list.reserve(array.size());
    for (const QJsonValue &item : array) {
        list.append(item.toString());
    }
    return list;
}

} // namespace

PreferencesService::PreferencesService() : PreferencesService(userFile()) {}

PreferencesService::PreferencesService(const QString &file) : m_file(file), m_values(m_file.readValues()) {}

PreferencesService::~PreferencesService()
{
    flush();
}

void PreferencesService::setStringListValue(const QString &key, const QStringList &value, bool overwrite)
{
    setValue(key, QJsonArray::fromStringList(value), overwrite);
}

void PreferencesService::setIntValue(const QString &key, int value, bool overwrite)
{
    setValue(key, value, overwrite);
}

QStringList PreferencesService::getStringListValue(const QString &key, const QStringList &fallback) const
{
    const QJsonValue value = this->value(key);
    if (isStringList(value)) {
        return toStringList(value.toArray());
    }
    if (!value.isUndefined()) {
        tellWrongKind(key);
    }
    return fallback;
}

int PreferencesService::getIntValue(const QString &key, int fallback) const
{
    const QJsonValue value = this->value(key);
    if (isInt(value)) {
        return value.toInt();
    }
    if (!value.isUndefined()) {
        tellWrongKind(key);
    }
    return fallback;
}

bool PreferencesService::hasValue(const QString &key) const
{
    return !value(key).isUndefined();
}

void PreferencesService::beginTrial()
{
    m_trial = QJsonObject();
}

void PreferencesService::endTrial()
{
    m_trial.reset();
}

QJsonValue PreferencesService::value(const QString &key) const
{
    return m_trial && m_trial->contains(key) ? m_trial->value(key) : m_values.value(key);
}

void PreferencesService::setValue(const QString &key, const QJsonValue &value, bool overwrite)
{
    const QJsonValue present = this->value(key);
    if (present == value || (!overwrite && !present.isUndefined())) {
        return;
    }
    if (m_trial) {
        m_trial->insert(key, value);
        return;
    }
    m_values.insert(key, value);
    m_unsaved.insert(key, value);
    m_wrongKindTold.remove(key);
    queueFlush();
    Q_EMIT valueChanged(key);
}

void PreferencesService::queueFlush()
{
    if (m_flushQueued) {
        return;
    }
    m_flushQueued = true;
    // Not a timer: without an event loop this waits for flush() in silence.
    QMetaObject::invokeMethod(
        this,
        [this] {
            m_flushQueued = false;
            flush();
        },
        Qt::QueuedConnection);
}

bool PreferencesService::flush()
{
    if (m_unsaved.isEmpty()) {
        return true;
    }
    // Taken out first: what is reported on the way may make a listener set a value, or flush.
    const QJsonObject changed = std::exchange(m_unsaved, QJsonObject());
    const QString error = m_file.writeValues(changed, QJsonObject(m_values));
    if (!error.isEmpty()) {
        keepUnsaved(changed);
        tellWriteFailure(error);
        return false;
    }
    m_failureTold = false;
    return true;
}

void PreferencesService::keepUnsaved(const QJsonObject &changed)
{
    for (auto value = changed.begin(); value != changed.end(); ++value) {
        if (!m_unsaved.contains(value.key())) {
            m_unsaved.insert(value.key(), value.value());
        }
    }
}

void PreferencesService::tellWriteFailure(const QString &reason)
{
    if (!m_failureTold) {
        m_failureTold = true;
        nkLogService::the().reportError(
            tr("Preferences"),
            tr("The preferences cannot be written to \"%1\": %2.").arg(m_file.path(), reason));
    }
}

void PreferencesService::tellWrongKind(const QString &key) const
{
    if (!m_wrongKindTold.contains(key)) {
        m_wrongKindTold.insert(key);
        nkLogService::the().reportWarning(
            tr("Preferences"), tr("The value of \"%1\" in \"%2\" is of another kind; the default is used.")
                                   .arg(key, m_file.path()));
    }
}

} // namespace kernel

nkPreferencesService &nkPreferencesService::the()
{
    return kernel::ServiceRegistry::the().service<kernel::PreferencesService>();
}
