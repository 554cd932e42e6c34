#include "MainWindow.h"

#include "BoxText.h"
#include "LayoutMemory.h"
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
#include <QScreen>
#include <QStatusBar>
#include <QUndoStack>

using Place = DockLayout::Place;

namespace {

// A fair share of a 1440 x 900 display, the smallest the workbench is laid out for.
constexpr QSize startSize(1400, 820);
// What is taken of a larger display, and of one that is too large to be filled.
constexpr double screenShare = 0.85;
constexpr QSize mostSize(1920, 1200);
// What the window manager adds around the window; it is known only when the window is there.
constexpr QSize decoration(8, 36);

/// How long a message stands in the status line, in milliseconds.
constexpr int messageTime = 8000;

/// A text from outside as part of a menu entry: its ampersands are no mnemonics.
QString menuText(const QString &text)
{
    return QString(text).replace(QLatin1Char('&'), QLatin1String("&&"));
}

/// The text as an entry of a menu, with the first of its letters that is no other entry's mnemonic.
QString withFreeMnemonic(const QString &text, const QMenu *menu)
{
    QString taken;
    for (const QAction *action : menu->actions()) {
        taken += QKeySequence::mnemonic(action->text()).toString().right(1);
    }
    for (int i = 0; i < text.size(); ++i) {
        if (text.at(i).isLetterOrNumber() && !taken.contains(text.at(i), Qt::CaseInsensitive)) {
            return menuText(text.left(i)) + QLatin1Char('&') + menuText(text.mid(i));
        }
    }
    return menuText(text);
}

} // namespace

MainWindow::MainWindow(QWidget *parent) : QMainWindow(parent), m_layout(this)
{
    setObjectName(QStringLiteral("MainWindow"));
    resize(startSize);
    m_file = menuBar()->addMenu(tr("&File"));
    createEditMenu();
    createViewMenu();
    createPanels();
    statusBar();
    showNoScene();
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
    m_endOfPanels = m_view->addSeparator();
    m_endOfModules = m_view->addSeparator();
    QAction *reset = m_view->addAction(tr("&Reset Layout"));
    reset->setObjectName(QStringLiteral("viewResetLayout"));
    connect(reset, &QAction::triggered, this, [this] {
        QNKViewBase::commitOpenEditors();
        m_layout.reset();
    });
}

void MainWindow::createPanels()
{
    const EditorPanels editors(this);
    m_panels = editors.panels();
    for (const EditorPanel *panel : m_panels) {
        connect(panel, &EditorPanel::metadataRequested, this, &MainWindow::showModules);
        connect(panel, &EditorPanel::statusMessage, this, &MainWindow::showStatus);
    }
    m_view->insertActions(m_endOfPanels, editors.actions());
    for (QDockWidget *dock : editors.docks()) {
        m_layout.add(dock, dock == editors.docks().constFirst() ? Place::SceneGraph : Place::Editors);
    }
}

void MainWindow::addPanel(QDockWidget *dock, QAction *action, Place place, bool startHidden)
{
    m_layout.add(dock, place, startHidden);
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

void MainWindow::rememberLayout()
{
    m_remembersLayout = true;
    if (!LayoutMemory::restore(this, m_layout.names())) {
        const QSize room = screen()->availableSize() - decoration;
        const QSize size =
            QSize(room * screenShare).expandedTo(startSize).boundedTo(room).boundedTo(mostSize);
        resize(size);
        m_layout.reset();
        // Once more: the layout before it could not be made as short.
        resize(size);
        m_layout.share();
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
    QAction *toggle = frame->toggleViewAction();
    toggle->setText(menuText(name));
    toggle->setIcon(icon);
    groupMenu(group)->addAction(toggle);
    m_layout.add(frame, Place::Modules, startHidden);
}

QMenu *MainWindow::groupMenu(const QString &group)
{
    for (QMenu *menu : m_view->findChildren<QMenu *>(group, Qt::FindDirectChildrenOnly)) {
        return menu;
    }
    auto *menu = new QMenu(withFreeMnemonic(group, m_view), m_view);
    menu->setObjectName(group);
    m_view->insertMenu(m_endOfModules, menu);
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

void MainWindow::showNoScene()
{
    setWindowFilePath(QString());
    setWindowTitle(QStringLiteral("%1[*]").arg(QGuiApplication::applicationDisplayName()));
}

void MainWindow::showStatus(const QString &text)
{
    statusBar()->showMessage(text, messageTime);
}

void MainWindow::showError(const QString &title, const QString &text)
{
    auto *box = new QMessageBox(QMessageBox::Warning, title, BoxText::elided(text), QMessageBox::Ok, this);
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
    if (m_remembersLayout) {
        LayoutMemory::store(this, m_layout.names());
    }
    QMainWindow::closeEvent(event);
}
