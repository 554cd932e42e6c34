#include "GuidePage.h"
#include "GuideStage.h"
#include "MainWindow.h"

#include <QDockWidget>
#include <QLineEdit>
#include <QMenu>
#include <QToolButton>
#include <QTreeView>
#include <QtTest>

namespace {

const QString van = QStringLiteral("Delivery Van");

/// The start screen fills the window, and most of it is empty.
constexpr QSize startSize(900, 560);

/// For pictures of the editor alone.
constexpr int editorHeight = 620;

/// As the key says in the viewport: what is selected fills it.
void comeClose(const GuideStage &stage)
{
    QWidget *canvas = stage.window()->findChild<QWidget *>(QStringLiteral("canvas"));
    if (canvas) {
        canvas->setFocus(Qt::MouseFocusReason);
        QTest::keyClick(canvas, Qt::Key_F);
    }
}

/// What is selected in the scene is listed below, and its content in the table.
void showVan(const GuideStage &stage)
{
    GuideStage::clickRow(stage.sceneGraph(), van);
    GuideStage::clickRow(stage.lowerList(), van);
    stage.lowerList()->expand(GuideStage::cell(stage.lowerList(), van));
}

void openTypes(const GuideStage &stage)
{
    const QWidget *filter = stage.editor()->findChild<QWidget *>(QStringLiteral("TypeFilter"));
    QToolButton *button = nullptr;
    const QList<QToolButton *> buttons = filter ? filter->findChildren<QToolButton *>()
                                                : QList<QToolButton *>();
    for (QToolButton *one : buttons) {
        button = one->menu() ? one : button;
    }
    if (!button) {
        qFatal("There is no choice of types any more");
    }
    button->menu()->popup(button->mapToGlobal(button->rect().bottomLeft()));
    GuideStage::hurry();
}

} // namespace

void GuidePage::start(GuideStage &stage)
{
    const QRect whole = stage.window()->rect();
    stage.take(QStringLiteral("start-screen"),
               QRect(whole.center() - QPoint(startSize.width(), startSize.height()) / 2, startSize));
}

void GuidePage::firstLook(GuideStage &stage)
{
    stage.openSample();
    GuideStage::clickRow(stage.sceneGraph(), van);
    comeClose(stage);
    showVan(stage);
    stage.take(QStringLiteral("window"), stage.window()->rect());
}

void GuidePage::selectAndRead(GuideStage &stage)
{
    stage.openSample();
    GuideStage::clickRow(stage.sceneGraph(), van);
    comeClose(stage);
    const QRect viewport(0, 0, stage.window()->width(), stage.editor()->y());
    stage.take(QStringLiteral("selection"), viewport);
    stage.openSample(editorHeight);
    showVan(stage);
    stage.take(QStringLiteral("metadata-of-selection"), stage.editor());
}

void GuidePage::find(GuideStage &stage)
{
    stage.openSample(editorHeight);
    GuideStage::selectAll(stage.sceneGraph());
    GuideStage::selectAll(stage.lowerList());
    GuideStage::type(GuideStage::field(stage.editor(), QStringLiteral("Set a key name filter")),
                     QStringLiteral("part"));
    openTypes(stage);
    stage.take(QStringLiteral("filters"), stage.editor());

    GuideStage::closePopups();
    stage.openSample(editorHeight);
    QLineEdit *question = GuideStage::field(stage.editor(), QStringLiteral("Advanced search"));
    GuideStage::type(question, QStringLiteral("interval >= 12 and not type:Tag"));
    QTest::keyClick(question, Qt::Key_Return);
    stage.settle();
    GuideStage::clickRow(stage.upperList(), QStringLiteral("Wearing Part"));
    stage.take(QStringLiteral("query"), stage.editor());
}
