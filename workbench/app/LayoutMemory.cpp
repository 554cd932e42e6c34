#include "LayoutMemory.h"

#include <nkKernelServices/nkPreferencesService.h>

#include <QCryptographicHash>
#include <QMainWindow>

namespace {

const QString key = QStringLiteral("workbench.layout");
/// Of what is stored here; Qt keeps one of its own format.
const QString version = QStringLiteral("1");

QString text(const QByteArray &bytes)
{
    return QString::fromLatin1(bytes.toBase64());
}

/// Version, geometry and docks of the window, and the names of the docks: Qt reads bytes as they come, so a sum
/// over all of it stands at the end.
QStringList sealed(QStringList values)
{
    const QByteArray all = values.join(QLatin1Char('\n')).toUtf8();
    values.append(QString::fromLatin1(QCryptographicHash::hash(all, QCryptographicHash::Sha1).toHex()));
    return values;
}

} // namespace

namespace LayoutMemory {

void store(const QMainWindow *window, const QStringList &docks)
{
    const QStringList values{version, text(window->saveGeometry()), text(window->saveState())};
    nkPreferencesService::the().setStringListValue(key, sealed(values + docks), true);
}

bool restore(QMainWindow *window, const QStringList &docks)
{
    const QStringList stored = nkPreferencesService::the().getStringListValue(key);
    const QStringList values = stored.mid(0, stored.size() - 1);
    if (values.size() < 3 || stored != sealed(values) || values.first() != version
        || values.mid(3) != docks) {
        return false;
    }
    const auto bytes = [&values](int i) { return QByteArray::fromBase64(values.at(i).toLatin1()); };
    // Qt brings what stood on a screen that is gone to one that is there.
    return window->restoreGeometry(bytes(1)) && window->restoreState(bytes(2));
}

} // namespace LayoutMemory
