#include "Workbench.h"

#include "MainWindow.h"
#include "MainWindowService.h"
#include "TaskProgress.h"
#include "assets/AssetDock.h"
#include "files/Autosave.h"
#include "files/FileCommands.h"
#include "files/FileDrops.h"
#include "files/FileMenu.h"
#include "files/ImportReportDialog.h"
#include "files/RecentFiles.h"
#include "files/SceneSession.h"
#include "history/LogDock.h"
#include "history/SceneStatus.h"
#include "history/UndoHistoryDock.h"
#include "panels/EditorPanel.h"
#include "preferences/Language.h"
#include "preferences/Preferences.h"
#include "start/StartScreen.h"
#include "viewport/ViewportDock.h"

#include "interchange/sets/SetFileCodec.h"
#include "kernel/document/Document.h"
#include "kernel/icons/IconSource.h"
#include "kernel/services/ServiceRegistry.h"

#include <nkKernelServices/nkInternalUiService.h>
#include <nkKernelServices/nkLogService.h>
#include <nkKernelServices/nkScenegraphService.h>
#include <nkKernelServicesGUI/nkAdvancedSearchBar.h>
#include <nkKernelServicesGUI/nkMetadataModuleSelection.h>
#include <nkQt4Ext/QNKViewBase.h>
#include <nkQt4Ext/nkIconManager.h>

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QLineEdit>
#include <QStatusBar>
#include <QTextStream>
#include <QTimer>

#include <cstdio>

namespace {

// The levels of nkLogService::reported that a person has to see.
constexpr int warningLevel = 1;
constexpr int errorLevel = 2;

/// Oddities of a file that are named one by one in the log; the others are counted.
constexpr int importLines = 100;

/// The widget library knows no kernel: its icons come from the kernel's source through these functions.
nkIconManager::Source kernelIcons()
{
    return {
        [](const QString &name, const QString &category) {
            return kernel::IconSource::the().icon(name, category);
        },
        [](const QString &path) { return kernel::IconSource::the().pixmap(path); },
        [](const QString &path, const QSize &size) { return kernel::IconSource::the().render(path, size); }};
}

QString besideExecutable(const QString &name)
{
    return QDir(QCoreApplication::applicationDirPath()).filePath(name);
}

} // namespace

Workbench::Workbench()
{
    // First: whatever is read of the preferences may be told to be damaged.
    connect(&nkLogService::the(), &nkLogService::reported, this, &Workbench::showReport);
    Language::install();
    nkIconManager::setSource(kernelIcons());
    m_window = std::make_unique<MainWindow>();
    m_windowService = std::make_unique<MainWindowService>(m_window.get());
    kernel::ServiceRegistry::the().setMainWindowService(m_windowService.get());
    m_setCodec = std::make_unique<interchange::SetFileCodec>();
    kernel::SetCodec::install(m_setCodec.get());
    m_progress = std::make_unique<TaskProgress>(m_window.get());
    kernel::ProgressDisplay::install(m_progress.get());
    createFileMenu();
    createStartScreen();
    auto *assets = new AssetDock(m_window.get());
    m_window->addPanel(assets, assets->action());
    auto *history = new UndoHistoryDock(m_window.get());
    m_window->addPanel(history, history->action());
    auto *log = new LogDock(m_window.get());
    m_window->addPanel(log, log->action(), DockLayout::Place::Bottom, true);
    m_window->statusBar()->addPermanentWidget(new SceneStatus(m_window.get()));
    new ViewportDock(m_window.get(), m_session.get());
    // After the database, which a page shows.
    m_preferences = std::make_unique<Preferences>();
    m_preferences->readAfterPaintOf(m_window.get());
}

Workbench::~Workbench()
{
    QNKViewBase::commitOpenEditors();
    m_autosave.reset();
    // Commands, clipboards and variants may hold what the plug-ins made; they go first, then the windows
    // leave their frames, then the code goes.
    kernel::Document::the().clear();
    m_window->releaseModules();
    m_plugins.unloadAll();
    kernel::ServiceRegistry::the().setMainWindowService(nullptr);
    nkIconManager::setSource({});
}

void Workbench::loadPlugins()
{
    m_plugins.loadAll(besideExecutable(QStringLiteral("plugins")));
}

QString Workbench::open(const QString &path)
{
    QNKViewBase::commitOpenEditors();
    return m_session->open(path);
}

void Workbench::createFileMenu()
{
    m_session = std::make_unique<SceneSession>(sampleScene());
    m_files = std::make_unique<FileCommands>(m_window.get(), m_session.get());
    auto *menu = new FileMenu(m_window->fileMenu(), m_session.get(), m_files.get(), m_window.get());
    connect(menu, &FileMenu::quitRequested, m_window.get(), &QWidget::close);
    connect(menu, &FileMenu::reportRequested, this, &Workbench::showImportReport);
    connect(new FileDrops(m_window.get()), &FileDrops::dropped, m_files.get(), &FileCommands::open);
    m_window->setCloseGuard([this] { return m_files->mayLeave(); });
    connect(m_session.get(), &SceneSession::modifiedChanged, m_window.get(), &QWidget::setWindowModified);
    connect(m_session.get(), &SceneSession::pathChanged, this, &Workbench::noteFile);
    connect(m_session.get(), &SceneSession::sceneReplaced, this, &Workbench::showScene);
    m_autosave = std::make_unique<Autosave>(m_session.get());
}

bool Workbench::offerRecovery()
{
    return m_autosave->offerAbandoned(m_window.get());
}

QString Workbench::start(const QString &path)
{
    // Neither do two boxes come at once, nor does what is restored take the place of what was opened.
    const bool isRecoveryFirst = Autosave::hasAbandoned();
    const QString error = path.isEmpty() || isRecoveryFirst ? QString() : open(path);
    if (!error.isEmpty()) {
        return error;
    }
    m_window->rememberLayout();
    show();
    if (isRecoveryFirst) {
        QTimer::singleShot(0, this, [this, path] {
            if (!offerRecovery() && !path.isEmpty()) {
                m_files->open(path);
            }
        });
    }
    return QString();
}

void Workbench::createStartScreen()
{
    m_start = new StartScreen(m_window.get());
    connect(m_start, &StartScreen::chosen, m_files.get(), &FileCommands::open);
    connect(m_start, &StartScreen::openRequested, m_files.get(), &FileCommands::chooseAndOpen);
    connect(m_start, &StartScreen::newRequested, m_files.get(), &FileCommands::makeNew);
    connect(m_start, &StartScreen::sampleRequested, m_files.get(), [this] { m_files->open(sampleScene()); });
}

void Workbench::noteFile(const QString &path)
{
    m_window->showScene(path);
    if (!path.isEmpty()) {
        RecentFiles::add(path);
    }
}

void Workbench::showScene()
{
    delete m_importReport;
    if (m_session->source()) {
        tellImport();
    }
    searchAgain();
    if (m_window->isVisible()) {
        showContent();
    }
}

/// What was found in the scene before would hide all sets of this one.
void Workbench::searchAgain() const
{
    for (nkAdvancedSearchBar *bar : m_window->findChildren<nkAdvancedSearchBar *>()) {
        if (bar->getState() != nkAdvancedSearchBar::Idle) {
            Q_EMIT bar->searchChanged(true, bar->lineEdit()->text().trimmed());
        }
    }
}

void Workbench::tellImport() const
{
    nkLogService &log = nkLogService::the();
    const interchange::ImportReport &report = m_session->report();
    log.reportInformation(tr("Open Scene"),
                          QStringLiteral("%1: %2").arg(m_session->source()->filePath, report.summary()));
    if (!report.isClean()) {
        log.reportInformation(tr("Open Scene"), report.details(importLines));
    }
    const QString name = QFileInfo(m_session->source()->filePath).fileName();
    m_window->showStatus(QStringLiteral("%1: %2").arg(name, report.summary()));
}

/// The sample's, which has no file of its own, are on purpose; nobody has to be told.
bool Workbench::hasOddities() const
{
    return !m_session->report().isClean() && !m_session->path().isEmpty();
}

void Workbench::showImportReport()
{
    delete m_importReport;
    m_importReport = new ImportReportDialog(m_session->report(), m_session->title(), m_window.get());
    m_importReport->setAttribute(Qt::WA_DeleteOnClose);
    m_importReport->show();
}

void Workbench::show()
{
    m_window->show();
    showContent();
}

void Workbench::showContent()
{
    if (!m_session->hasScene()) {
        m_window->showNoScene();
        m_window->statusBar()->clearMessage();
        m_start->open();
        return;
    }
    const bool isFocusCovered = m_start->isAncestorOf(m_window->focusWidget());
    m_start->close();
    if (isFocusCovered) {
        m_window->panels().constFirst()->setFocus(Qt::OtherFocusReason);
    }
    showMetadata();
    if (hasOddities()) {
        showImportReport();
    }
}

/// Selects the nodes that carry metadata and has the editor list them, so that a person who opens a file
/// sees at once what is in it.
void Workbench::showMetadata()
{
    QList<nkdNode> nodes;
    for (nkObjectType kind : {nkObjectType::Node, nkObjectType::Camera, nkObjectType::Light}) {
        for (quint64 id : kernel::Document::the().objectsWithMetadata(kind)) {
            nodes.append(nkdNode(nkdObject(id, kind)));
        }
    }
    // What is listed is the selection of the editor that was used last, whichever that was in the scene before.
    nkMetadataModuleSelection::the().setLastSelectionModule(int(EditorModule::Scenegraph));
    nkScenegraphService::the().setSelection(nodes);
    Q_EMIT nkInternalUiService::the().requestMetadataEditorSelectionModeInLowerTree();
}

void Workbench::showReport(int level, const QString &title, const QString &text)
{
    if (!m_window) {
        // Too early to show anything.
        QMetaObject::invokeMethod(
            this, [this, level, title, text] { showReport(level, title, text); }, Qt::QueuedConnection);
    } else if (level == errorLevel) {
        m_window->showError(title, text);
    } else if (level == warningLevel) {
        m_window->showStatus(QStringLiteral("%1: %2").arg(title, text));
        QTextStream(stderr) << "workbench: " << title << ": " << text << '\n';
    }
}

QString Workbench::sampleScene()
{
    return besideExecutable(QStringLiteral("samples/showroom.gltf"));
}
