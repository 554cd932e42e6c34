#include "RecentList.h"

#include "RecentDelegate.h"
#include "files/RecentFiles.h"

#include "gui/dialogs/ValueText.h"

#include <QDir>
#include <QFileInfo>
#include <QKeyEvent>
#include <QMenu>
#include <QPainter>

namespace {

constexpr int margin = 16;

} // namespace

RecentList::RecentList(QWidget *parent) : QListWidget(parent)
{
    setAccessibleName(tr("Recent scenes"));
    setItemDelegate(new RecentDelegate(this));
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    setContextMenuPolicy(Qt::CustomContextMenu);
    connect(this, &QWidget::customContextMenuRequested, this, &RecentList::showMenu);
    connect(this, &QListWidget::itemActivated, this, &RecentList::openCurrent);
}

void RecentList::refresh()
{
    const QString current = currentPath();
    const int row = currentRow();
    clear();
    const QStringList files = RecentFiles::files();
    for (const QString &path : files) {
        addFile(path);
    }
    const int kept = files.indexOf(current);
    setCurrentRow(kept >= 0 ? kept : qBound(0, row, count() - 1));
    setAccessibleDescription(files.isEmpty() ? tr("No scenes yet") : QString());
}

void RecentList::addFile(const QString &path)
{
    const QFileInfo file(path);
    const bool isThere = file.exists();
    auto *item = new QListWidgetItem(ValueText::oneLine(file.fileName()), this);
    const QString folder = ValueText::oneLine(QDir::toNativeSeparators(file.absolutePath()));
    item->setData(RecentDelegate::PathRole, path);
    item->setData(RecentDelegate::IsThereRole, isThere);
    item->setData(RecentDelegate::FolderRole, isThere ? folder : tr("Not there any more: %1").arg(folder));
    item->setData(Qt::AccessibleTextRole,
                  isThere ? tr("%1, in %2").arg(item->text(), folder)
                          : tr("%1, not there any more, was in %2").arg(item->text(), folder));
    item->setToolTip(ValueText::literal(QDir::toNativeSeparators(path)));
}

QString RecentList::currentPath() const
{
    return currentItem() ? currentItem()->data(RecentDelegate::PathRole).toString() : QString();
}

bool RecentList::canOpenCurrent() const
{
    return currentItem() && currentItem()->data(RecentDelegate::IsThereRole).toBool();
}

void RecentList::openCurrent()
{
    if (canOpenCurrent()) {
        Q_EMIT chosen(currentPath());
    }
}

void RecentList::removeCurrent()
{
    if (currentItem()) {
        RecentFiles::remove(currentPath());
        refresh();
    }
}

void RecentList::keyPressEvent(QKeyEvent *event)
{
    if (event->matches(QKeySequence::Delete)) {
        removeCurrent();
    } else {
        QListWidget::keyPressEvent(event);
    }
}

void RecentList::showMenu(const QPoint &position)
{
    if (!currentItem()) {
        return;
    }
    QMenu menu(this);
    QAction *open = menu.addAction(tr("&Open"));
    open->setEnabled(canOpenCurrent());
    QAction *remove = menu.addAction(tr("&Remove from List"));
    const QAction *chosen = menu.exec(viewport()->mapToGlobal(position));
    if (chosen == open) {
        openCurrent();
    } else if (chosen == remove) {
        removeCurrent();
    }
}

void RecentList::paintEvent(QPaintEvent *event)
{
    QListWidget::paintEvent(event);
    if (count() == 0) {
        QPainter painter(viewport());
        painter.setPen(palette().color(QPalette::PlaceholderText));
        painter.drawText(viewport()->rect().adjusted(margin, margin, -margin, -margin),
                         Qt::AlignCenter | Qt::TextWordWrap,
                         tr("No scenes yet.\nThose that you open are listed here."));
    }
}
