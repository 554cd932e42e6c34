#include "GuidePage.h"
#include "GuideStage.h"
#include "MainWindow.h"
#include "Workbench.h"
#include "files/ImportReportDialog.h"

#include <QDir>
#include <QDockWidget>
#include <QMenuBar>
#include <QStandardPaths>
#include <QTreeView>
#include <QtTest>

namespace {

constexpr int editorHeight = 620;
constexpr int keyColumn = 2;
constexpr QSize menuRoom(560, 340);
constexpr QSize historyRoom(325, 260);

/// The sample scene as a file of the person's own: only then it is told what is odd in it.
QString ownCopy()
{
    const QDir samples = QFileInfo(Workbench::sampleScene()).dir();
    const QDir home(QDir::homePath());
    const QStringList files = samples.entryList(QDir::Files);
    for (const QString &file : files) {
        QFile::copy(samples.filePath(file), home.filePath(file));
    }
    return home.filePath(QFileInfo(Workbench::sampleScene()).fileName());
}

void rename(const GuideStage &stage, const QString &set, const QString &name)
{
    GuideStage::clickRow(stage.upperList(), set);
    QTest::keyClick(stage.upperList(), Qt::Key_F2);
    QWidget *field = QApplication::focusWidget();
    QTest::keyClicks(field, name);
    QTest::keyClick(field, Qt::Key_Return);
    GuideStage::hurry();
}

void command(const GuideStage &stage, const QStringList &path)
{
    GuideStage::openMenu(stage.editorMenus(), path);
    QTest::keyClick(QApplication::activePopupWidget(), Qt::Key_Return);
    GuideStage::closePopups();
    GuideStage::hurry();
}

} // namespace

void GuidePage::lockAndUndo(GuideStage &stage)
{
    stage.openSample(editorHeight);
    const QString locked = QStringLiteral("Supplier: Tarn Metals");
    GuideStage::clickRow(stage.upperList(), locked);
    GuideStage::click(stage.table(), GuideStage::cell(stage.table(), QStringLiteral("lead time"), keyColumn));
    stage.take(QStringLiteral("locked-set"), stage.editor());

    GuideStage::clickRow(stage.sceneGraph(), QStringLiteral("Info Stand"));
    rename(stage, QStringLiteral("For the next fair"), QStringLiteral("Spring fair"));
    command(stage,
            {QStringLiteral("Edit"), QStringLiteral("Assign Sets to"), QStringLiteral("Last Selection")});
    command(stage, {QStringLiteral("Edit"), QStringLiteral("Lock")});
    rename(stage, QStringLiteral("Furniture"), QStringLiteral("Lounge furniture"));
    command(stage, {QStringLiteral("Edit"), QStringLiteral("Duplicate")});
    QTest::keyClick(stage.window(), Qt::Key_Z, Qt::ControlModifier);
    QDockWidget *history = stage.dock(QStringLiteral("UndoHistoryPanel"));
    history->raise();
    stage.take(QStringLiteral("history"), QRect(history->pos(), historyRoom));
}

void GuidePage::save(GuideStage &stage)
{
    stage.openScene(ownCopy());
    auto *report = stage.window()->findChild<ImportReportDialog *>();
    if (!report) {
        qFatal("The report of what came in does not open");
    }
    stage.takeDialog(QStringLiteral("import-report"), report);
    report->close();
    GuideStage::clickRow(stage.sceneGraph(), QStringLiteral("Delivery Van"));
    GuideStage::openMenu(stage.window()->menuBar(), {QStringLiteral("File"), QStringLiteral("Save")});
    stage.take(QStringLiteral("file-menu"), QRect(QPoint(), menuRoom));
    GuideStage::closePopups();
}
