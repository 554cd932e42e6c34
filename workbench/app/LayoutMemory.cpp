#include "LayoutMemory.h"

#include <nkKernelServices/nkPreferencesService.h>

#include <QCryptographicHash>
#include <QDockWidget>
#include <QGuiApplication>
#include <QMainWindow>
#include <QScreen>

#include <algorithm>

namespace {

const QString key = QStringLiteral("workbench.layout");
/// Of what is stored here; Qt keeps one of its own format.
const QString version = QStringLiteral("1");
/// What has to be seen of a window so that it can be taken and moved.
constexpr int handle = 40;

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

bool isReachable(const QWidget *window)
{
    const QList<QScreen *> screens = QGuiApplication::screens();
    return std::any_of(screens.begin(), screens.end(), [window](const QScreen *screen) {
        const QRect seen = screen->availableGeometry().intersected(window->frameGeometry());
        return seen.width() >= handle && seen.height() >= handle;
    });
}

void catchStrayDocks(QMainWindow *window)
{
    const QList<QDockWidget *> docks = window->findChildren<QDockWidget *>(QString(),
                                                                           Qt::FindDirectChildrenOnly);
    for (QDockWidget *dock : docks) {
        if (dock->isFloating() && !isReachable(dock)) {
            dock->setFloating(false);
        }
    }
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
    const bool isRestored = window->restoreGeometry(bytes(1)) && window->restoreState(bytes(2));
    catchStrayDocks(window);
    return isRestored;
}

} // namespace LayoutMemory
