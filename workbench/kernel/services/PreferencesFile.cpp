#include "PreferencesFile.h"

#include "DurableFile.h"
#include <nkKernelServices/nkLogService.h>

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>

#include <cstdio>

namespace kernel {

namespace {

const QLatin1String valuesMember("values");
const QLatin1String versionMember("version");
constexpr int formatVersion = 1;

/// Preferences take a few kilobytes; whatever is larger is not ours and would only hold up the start.
constexpr qint64 largestFile = 16 * 1024 * 1024;

QString translate(const char *text)
{
    return QCoreApplication::translate("PreferencesFile", text);
}

QByteArray readAll(const QString &path, QString *damage)
{
    QFile file(path);
    // Only a regular file: opening a pipe or a device in its place could wait for ever.
    if (!QFileInfo(path).isFile()) {
        *damage = translate("it is no file");
    } else if (!file.open(QIODevice::ReadOnly)) {
        *damage = file.errorString();
    } else if (file.size() > largestFile) {
        *damage = translate("it is larger than 16 MiB");
    } else {
        return file.readAll();
    }
    return QByteArray();
}

} // namespace

PreferencesFile::PreferencesFile(const QString &path) : m_path(path) {}

QJsonObject PreferencesFile::readValues()
{
    return readRoot().value_or(QJsonObject()).value(valuesMember).toObject();
}

QString PreferencesFile::writeValues(const QJsonObject &changed, const QJsonObject &all)
{
    const std::optional<QJsonObject> present = readRoot();
    if (m_blocked) {
        return translate("What stands in its place cannot be read nor moved away");
    }
    QJsonObject root = present.value_or(QJsonObject());
    QJsonObject merged = root.value(valuesMember).toObject();
    const QJsonObject &values = present ? changed : all;
    for (auto value = values.begin(); value != values.end(); ++value) {
        merged.insert(value.key(), value.value());
    }
    root.insert(valuesMember, merged);
    if (!root.contains(versionMember)) {
        root.insert(versionMember, formatVersion);
    }
    return DurableFile::replace(m_path, QJsonDocument(root).toJson(QJsonDocument::Indented));
}

std::optional<QJsonObject> PreferencesFile::readRoot()
{
    m_blocked = false;
    if (!QFileInfo::exists(m_path)) {
        return std::nullopt;
    }
    QString damage;
    const QByteArray bytes = readAll(m_path, &damage);
    const std::optional<QJsonObject> root = damage.isEmpty() ? parse(bytes, &damage) : std::nullopt;
    if (!root) {
        setAside(damage);
    }
    return root;
}

std::optional<QJsonObject> PreferencesFile::parse(const QByteArray &bytes, QString *damage) const
{
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(bytes, &error);
    if (error.error != QJsonParseError::NoError) {
        *damage = translate("%1 at byte %2").arg(error.errorString()).arg(error.offset);
        return std::nullopt;
    }
    const QJsonValue values = document.object().value(valuesMember);
    if (!document.isObject() || !(values.isObject() || values.isUndefined())) {
        *damage = translate("it holds no preferences");
        return std::nullopt;
    }
    return document.object();
}

void PreferencesFile::setAside(const QString &damage)
{
    const QString aside = m_path + QStringLiteral(".damaged");
    m_blocked = std::rename(QFile::encodeName(m_path).constData(), QFile::encodeName(aside).constData()) != 0;
    const QString told = m_blocked
                             ? translate("The preferences in \"%1\" cannot be read (%2), nor moved away. "
                                         "Defaults are used, and changes will not be kept.")
                             : translate("The preferences in \"%1\" cannot be read (%2). Defaults are used; "
                                         "the file is kept with \".damaged\" behind its name.");
    nkLogService::the().reportWarning(translate("Preferences"), told.arg(m_path, damage));
}

} // namespace kernel
