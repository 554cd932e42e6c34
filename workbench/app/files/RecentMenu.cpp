#include "RecentMenu.h"

#include "RecentFiles.h"

#include "gui/dialogs/ValueText.h"

#include <QAction>
#include <QDir>
#include <QFileInfo>

namespace {

/// The name, and where it is when there is room: a long folder keeps its end.
QString label(const QString &path, const QFontMetrics &metrics)
{
    const QFileInfo file(path);
    const int width = metrics.averageCharWidth() * 60;
    const QString folder = metrics.elidedText(QDir::toNativeSeparators(file.absolutePath()), Qt::ElideLeft,
                                              width);
    const QString text = QStringLiteral("%1  –  %2").arg(file.fileName(), folder);
    return metrics.elidedText(text, Qt::ElideMiddle, 2 * width)
        .replace(QLatin1Char('&'), QLatin1String("&&"));
}

} // namespace

RecentMenu::RecentMenu(QWidget *parent) : QMenu(tr("Open &Recent"), parent)
{
    setToolTipsVisible(true);
    connect(this, &QMenu::aboutToShow, this, &RecentMenu::fill);
    fill();
}

void RecentMenu::fill()
{
    clear();
    const QStringList files = RecentFiles::files();
    int number = 0;
    for (const QString &path : files) {
        addFile(path, ++number);
    }
    if (files.isEmpty()) {
        addAction(tr("No scenes yet"))->setEnabled(false);
        return;
    }
    addSeparator();
    connect(addAction(tr("&Clear List")), &QAction::triggered, this, &RecentFiles::clear);
}

void RecentMenu::addFile(const QString &path, int number)
{
    // Ten keys, for the first ten.
    const QString key = number > 10 ? QString::number(number) : QStringLiteral("&%1").arg(number % 10);
    QAction *action = addAction(QStringLiteral("%1  %2").arg(key, label(path, fontMetrics())));
    const bool isThere = QFileInfo::exists(path);
    action->setEnabled(isThere);
    action->setData(path);
    action->setToolTip(ValueText::literal(isThere ? path : tr("%1 is not there any more").arg(path)));
    connect(action, &QAction::triggered, this, [this, path] { Q_EMIT chosen(path); });
}
