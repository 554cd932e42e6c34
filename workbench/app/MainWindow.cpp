#include "MainWindow.h"

#include "ModuleFrame.h"
#include "panels/EditorPanel.h"
#include "panels/EditorPanels.h"
#include "preferences/PreferencesDialog.h"

#include "kernel/document/Document.h"

#include <nkQt4Ext/QNKViewBase.h>

#include <QAction>
#include <QCloseEvent>
#include <QFileInfo>
#include <QGuiApplication>
#include <QMenu>
#include <QMenuBar>
#include <QMessageBox>
#include <QStatusBar>
#include <QUndoStack>

namespace {

// A fair share of a 1440 x 900 display, the smallest the workbench is laid out for.
constexpr QSize startSize(1400, 820);
/// What of its width the panels have at the start; the modules have the rest.
constexpr int panelWidth = 400;

/// A text from outside as part of a menu entry: its ampersands are no mnemonics.
QString menuText(const QString &text)
{
    return QString(text).replace(QLatin1Char('&'), QLatin1String("&&"));
}

} // namespace

MainWindow::MainWindow(QWidget *parent) : QMainWindow(parent)
{
    setObjectName(QStringLiteral("MainWindow"));
    setDockNestingEnabled(true);
    setTabPosition(Qt::LeftDockWidgetArea, QTabWidget::North);
    m_file = menuBar()->addMenu(tr("&File"));
    createEditMenu();
    createViewMenu();
    createPanels();
    statusBar();
    showScene(QString());
    resize(startSize);
}

MainWindow::~MainWindow()
{
    releaseModules();
}

void MainWindow::createEditMenu()
{
    QMenu *edit = menuBar()->addMenu(tr("&Edit"));
    m_undo = edit->addAction(QString());
    m_undo->setShortcut(QKeySequence::Undo);
    m_redo = edit->addAction(QString());
    m_redo->setShortcut(QKeySequence::Redo);
    connect(m_undo, &QAction::triggered, this, [] {
        QNKViewBase::commitOpenEditors();
        kernel::Document::the().undo();
    });
    connect(m_redo, &QAction::triggered, this, [] {
        QNKViewBase::commitOpenEditors();
        kernel::Document::the().redo();
    });
    connect(kernel::Document::the().undoStack(), &QUndoStack::indexChanged, this,
            &MainWindow::updateUndoActions);
    updateUndoActions();
    edit->addSeparator();
    QAction *preferences = edit->addAction(tr("&Preferences..."));
    preferences->setShortcut(QKeySequence(Qt::CTRL + Qt::Key_Comma));
    preferences->setMenuRole(QAction::PreferencesRole);
    connect(preferences, &QAction::triggered, this, &MainWindow::showPreferences);
}

void MainWindow::createViewMenu()
{
    m_view = menuBar()->addMenu(tr("&View"));
}

void MainWindow::createPanels()
{
    const EditorPanels editors(this);
    m_panels = editors.panels();
    for (const EditorPanel *panel : m_panels) {
        connect(panel, &EditorPanel::metadataRequested, this, &MainWindow::showModules);
    }
    m_view->addActions(editors.actions());
    m_endOfPanels = m_view->addSeparator();
}

void MainWindow::addPanel(QDockWidget *dock, QAction *action)
{
    // Behind the scene graph: the tabs of the others have no room for one more name.
    auto *front = qobject_cast<QDockWidget *>(m_panels.constFirst()->parentWidget());
    tabifyDockWidget(front, dock);
    front->raise();
    m_view->insertAction(m_endOfPanels, action);
}

void MainWindow::addViewport(QDockWidget *dock, QAction *action)
{
    m_viewport = dock;
    addDockWidget(Qt::RightDockWidgetArea, dock);
    m_view->insertAction(m_endOfPanels, action);
}

void MainWindow::showPreferences()
{
    QNKViewBase::commitOpenEditors();
    PreferencesDialog dialog(this);
    dialog.exec();
}

void MainWindow::showModules()
{
    for (ModuleFrame *frame : qAsConst(m_frames)) {
        frame->show();
        frame->raise();
    }
}

/// The window has no central widget: docks share all of it.
void MainWindow::shareSpace()
{
    QList<QDockWidget *> docks{qobject_cast<QDockWidget *>(m_panels.constFirst()->parentWidget())};
    QList<int> widths{panelWidth};
    for (ModuleFrame *frame : qAsConst(m_frames)) {
        docks.append(frame);
        widths.append((startSize.width() - panelWidth) / m_frames.size());
    }
    resizeDocks(docks, widths, Qt::Horizontal);
    if (m_viewport && !m_frames.isEmpty()) {
        resizeDocks({m_viewport, m_frames.constFirst()}, {1, 1}, Qt::Vertical);
    }
}

void MainWindow::updateUndoActions()
{
    const QUndoStack *stack = kernel::Document::the().undoStack();
    m_undo->setEnabled(stack->canUndo());
    m_undo->setText(stack->canUndo() ? tr("&Undo %1").arg(menuText(stack->undoText())) : tr("&Undo"));
    m_redo->setEnabled(stack->canRedo());
    m_redo->setText(stack->canRedo() ? tr("&Redo %1").arg(menuText(stack->redoText())) : tr("&Redo"));
}

void MainWindow::addModule(const QString &name, const QString &group, QWidget *window, const QIcon &icon,
                           const QString &shortTitle, bool startHidden)
{
    auto *frame = new ModuleFrame(name, shortTitle, window, this);
    m_frames.append(frame);
    addDockWidget(Qt::RightDockWidgetArea, frame);
    QAction *toggle = frame->toggleViewAction();
    toggle->setText(menuText(name));
    toggle->setIcon(icon);
    groupMenu(group)->addAction(toggle);
    frame->setVisible(!startHidden);
    shareSpace();
}

QMenu *MainWindow::groupMenu(const QString &group)
{
    for (QMenu *menu : m_view->findChildren<QMenu *>(group, Qt::FindDirectChildrenOnly)) {
        return menu;
    }
    QMenu *menu = m_view->addMenu(menuText(group));
    menu->setObjectName(group);
    return menu;
}

void MainWindow::releaseModules()
{
    for (ModuleFrame *frame : qAsConst(m_frames)) {
        frame->release();
        delete frame;
    }
    m_frames.clear();
}

void MainWindow::showScene(const QString &path)
{
    setWindowFilePath(path);
    const QString scene = path.isEmpty() ? tr("Untitled") : QFileInfo(path).fileName();
    setWindowTitle(QStringLiteral("%1[*] - %2").arg(scene, QGuiApplication::applicationDisplayName()));
}

void MainWindow::showError(const QString &title, const QString &text)
{
    auto *box = new QMessageBox(QMessageBox::Warning, title, text, QMessageBox::Ok, this);
    box->setTextFormat(Qt::PlainText);
    box->setAttribute(Qt::WA_DeleteOnClose);
    box->open();
}

void MainWindow::closeEvent(QCloseEvent *event)
{
    QNKViewBase::commitOpenEditors();
    if (m_mayClose && !m_mayClose()) {
        event->ignore();
        return;
    }
    QMainWindow::closeEvent(event);
}
