#include "Workbench.h"

#include "MainWindow.h"
#include "MainWindowService.h"
#include "TaskProgress.h"
#include "assets/AssetDock.h"
#include "preferences/Preferences.h"

#include "interchange/sets/SetFileCodec.h"
#include "kernel/document/Document.h"
#include "kernel/icons/IconSource.h"
#include "kernel/services/ServiceRegistry.h"

#include <nkKernelServices/nkInternalUiService.h>
#include <nkKernelServices/nkLogService.h>
#include <nkKernelServices/nkScenegraphService.h>
#include <nkQt4Ext/QNKViewBase.h>
#include <nkQt4Ext/nkIconManager.h>

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QStatusBar>
#include <QTextStream>

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
    nkIconManager::setSource(kernelIcons());
    m_window = std::make_unique<MainWindow>();
    m_windowService = std::make_unique<MainWindowService>(m_window.get());
    kernel::ServiceRegistry::the().setMainWindowService(m_windowService.get());
    m_setCodec = std::make_unique<interchange::SetFileCodec>();
    kernel::SetCodec::install(m_setCodec.get());
    m_progress = std::make_unique<TaskProgress>(m_window.get());
    kernel::ProgressDisplay::install(m_progress.get());
    connect(m_window.get(), &MainWindow::openRequested, this, &Workbench::openOrTell);
    connect(&nkLogService::the(), &nkLogService::reported, this, &Workbench::showReport);
    auto *assets = new AssetDock(m_window.get());
    m_window->addPanel(assets, assets->action());
    // Last: what is wrong with the stored values is shown too.
    m_preferences = std::make_unique<Preferences>();
    m_preferences->readAfterPaintOf(m_window.get());
}

Workbench::~Workbench()
{
    QNKViewBase::commitOpenEditors();
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
    const SceneFile::Result result = SceneFile::open(path);
    if (result.isOpen()) {
        m_source = result.source;
        m_window->showScene(path);
        tellImport(path, result.report);
        m_window->statusBar()->showMessage(
            QStringLiteral("%1: %2").arg(QFileInfo(path).fileName(), result.report.summary()));
        if (m_window->isVisible()) {
            showMetadata();
        }
    }
    return result.error;
}

void Workbench::tellImport(const QString &path, const interchange::ImportReport &report)
{
    nkLogService &log = nkLogService::the();
    log.reportInformation(tr("Open Scene"), QStringLiteral("%1: %2").arg(path, report.summary()));
    if (!report.isClean()) {
        log.reportInformation(tr("Open Scene"), report.details(importLines));
    }
}

void Workbench::show()
{
    m_window->show();
    showMetadata();
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
    nkScenegraphService::the().setSelection(nodes);
    Q_EMIT nkInternalUiService::the().requestMetadataEditorSelectionModeInLowerTree();
}

void Workbench::openOrTell(const QString &path)
{
    const QString error = open(path);
    if (!error.isEmpty()) {
        nkLogService::the().reportError(tr("Open Scene"), error);
    }
}

void Workbench::showReport(int level, const QString &title, const QString &text)
{
    if (level == errorLevel) {
        m_window->showError(title, text);
    } else if (level == warningLevel) {
        m_window->statusBar()->showMessage(QStringLiteral("%1: %2").arg(title, text));
        QTextStream(stderr) << "workbench: " << title << ": " << text << '\n';
    }
}

QString Workbench::sampleScene()
{
    return besideExecutable(QStringLiteral("samples/showroom.gltf"));
}
