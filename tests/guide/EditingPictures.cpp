#include "GuidePage.h"
#include "GuideStage.h"
#include "MainWindow.h"
#include "panels/EditorPanel.h"

#include <nkQt4Ext/QNKSearchBox.h>

#include <QDockWidget>
#include <QLineEdit>
#include <QMenuBar>
#include <QTreeView>
#include <QtTest>

namespace {

constexpr int editorHeight = 620;
/// Between the lists and the table.
constexpr int tableGap = 2;
constexpr int keyColumn = 2;
constexpr int valueColumn = 3;

QLineEdit *search(const GuideStage &stage)
{
    return stage.window()->panels().constFirst()->searchBox()->lineEdit();
}

} // namespace

void GuidePage::createSetsAndEntries(GuideStage &stage)
{
    stage.openSample(editorHeight);
    GuideStage::clickRow(stage.upperList(), QStringLiteral("For the next fair"));
    GuideStage::openMenu(stage.editorMenus(),
                         {QStringLiteral("Create"), QStringLiteral("Create Entry"), QStringLiteral("Date")});
    stage.take(QStringLiteral("create-entry"), stage.editor());
    GuideStage::closePopups();

    GuideStage::clickRow(stage.upperList(), QStringLiteral("Release 2024"));
    const QModelIndex reviewers = GuideStage::cell(stage.table(), QStringLiteral("reviewers"), keyColumn);
    const QModelIndex value = reviewers.siblingAtColumn(valueColumn);
    GuideStage::click(stage.table(), value);
    QTest::mouseDClick(stage.table()->viewport(), Qt::LeftButton, {},
                       stage.table()->visualRect(value).center());
    stage.take(QStringLiteral("list-editor"), stage.editor());
    GuideStage::closePopups();
}

void GuidePage::assignSets(GuideStage &stage)
{
    stage.openSample(editorHeight);
    GuideStage::clickRow(stage.sceneGraph(), QStringLiteral("Info Stand"));
    GuideStage::clickRow(stage.sceneGraph(), QStringLiteral("Material Stand"), Qt::ControlModifier);
    GuideStage::clickRow(stage.upperList(), QStringLiteral("For the next fair"));
    GuideStage::openMenu(stage.editorMenus(), {QStringLiteral("Edit"), QStringLiteral("Assign Sets to"),
                                               QStringLiteral("Last Selection")});
    stage.take(QStringLiteral("assign-menu"), stage.editor());
    QTest::keyClick(QApplication::activePopupWidget(), Qt::Key_Return);
    GuideStage::closePopups();
    stage.upperList()->expand(GuideStage::cell(stage.upperList(), QStringLiteral("For the next fair")));
    const QRect editor(stage.editor()->pos(), stage.editor()->size());
    const int tableLeft = stage.table()->mapTo(stage.window(), QPoint()).x();
    stage.take(QStringLiteral("assigned"),
               QRect(editor.topLeft(), QPoint(tableLeft - tableGap, editor.bottom())));
}

void GuidePage::editMany(GuideStage &stage)
{
    stage.openSample(editorHeight);
    GuideStage::type(search(stage), QStringLiteral("wheel"));
    const QModelIndexList wheels = GuideStage::cells(stage.sceneGraph(), QStringLiteral("Wheel"));
    for (const QModelIndex &wheel : wheels) {
        GuideStage::click(stage.sceneGraph(), wheel, Qt::ControlModifier);
    }
    GuideStage::selectAll(stage.lowerList());
    GuideStage::type(GuideStage::field(stage.editor(), QStringLiteral("Set a key name filter")),
                     QStringLiteral("position"));
    stage.settle();
    GuideStage::selectAll(stage.table());
    stage.take(QStringLiteral("property-panel"), stage.editor());

    stage.openSample(editorHeight);
    GuideStage::type(search(stage), QStringLiteral("wheel"));
    const QModelIndexList same = GuideStage::cells(stage.sceneGraph(), QStringLiteral("Wheel"));
    GuideStage::click(stage.sceneGraph(), same.constFirst());
    GuideStage::selectAll(stage.lowerList());
    GuideStage::click(stage.table(), GuideStage::cell(stage.table(), QStringLiteral("part no"), keyColumn));
    GuideStage::selectAll(stage.table());
    QTest::keyClick(stage.table(), Qt::Key_C, Qt::ControlModifier);
    GuideStage::click(stage.sceneGraph(), same.constLast());
    GuideStage::selectAll(stage.lowerList());
    stage.table()->setFocus(Qt::MouseFocusReason);
    stage.during([&stage] { QTest::keyClick(stage.table(), Qt::Key_V, Qt::ControlModifier); },
                 [&stage](QWidget *question) {
                     stage.takeDialog(QStringLiteral("conflict"), question);
                     QTest::keyClick(question, Qt::Key_Escape);
                 });
}
