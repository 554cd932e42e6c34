// A host in a few lines: a scene of two nodes, a window, and the Metadata Editor in it. docs/embedding.md tells why.
//
// Usage: minimal_host libMetadataEditor.so [--check]. With --check it says what came of it, and ends.
#include <kernel/document/Document.h>
#include <kernel/document/DocumentLoader.h>
#include <kernel/icons/IconSource.h>
#include <kernel/services/ServiceRegistry.h>
#include <nkKernelServices/nkInternalUiService.h>
#include <nkKernelServices/nkMainWindowService.h>
#include <nkKernelServices/nkScenegraphService.h>
#include <nkQt4Ext/QNKViewBase.h>
#include <nkQt4Ext/nkIconManager.h>

#include <QApplication>
#include <QDockWidget>
#include <QLibrary>
#include <QMainWindow>
#include <QTextStream>
#include <QTimer>

/// Puts the windows of modules into docks, and takes them out again.
class WindowService : public nkMainWindowService
{
public:
    explicit WindowService(QMainWindow *window) : m_window(window) {}

    void registerModule(const QString &name, const QString & /*group*/, QWidget *window,
                        const QString & /*toolClipName*/, const QIcon & /*icon*/, const QString &shortTitle,
                        bool startHidden) override
    {
        auto *dock = new QDockWidget(shortTitle, m_window);
        dock->setObjectName(name);
        dock->setWidget(window);
        dock->setVisible(!startHidden);
        m_window->addDockWidget(Qt::RightDockWidgetArea, dock);
        m_modules.append(window);
    }
    QWidget *getMainWindow() const override { return m_window; }

    void releaseModules()
    {
        for (QWidget *window : qAsConst(m_modules)) {
            window->hide();
            window->setParent(nullptr);
        }
    }
    QStringList titles() const
    {
        QStringList titles;
        for (const QWidget *window : m_modules) {
            titles.append(window->parentWidget()->objectName()
                          + (window->isVisible() ? " shown" : " hidden"));
        }
        return titles;
    }

private:
    QMainWindow *m_window;
    QList<QWidget *> m_modules;
};

/// A scene of the host's own making. @return its first node
quint64 loadScene()
{
    kernel::DocumentLoader loader;
    const quint64 chair = loader.addObject(nkObjectType::Node, QStringLiteral("Chair"));
    loader.addObject(nkObjectType::Node, QStringLiteral("Seat"), chair);
    loader.addEntry(loader.objectSet(chair), QStringLiteral("part no"), nkMetadataTypes::String,
                    QStringLiteral("F-010"));
    loader.assign(loader.addSet(QStringLiteral("Furniture")), chair);
    loader.commit();
    return chair;
}

void call(QLibrary &plugin, const char *entryPoint)
{
    if (const QFunctionPointer function = plugin.resolve(entryPoint)) {
        function();
    }
}

int main(int argc, char **argv)
{
    QApplication application(argc, argv);
    QTextStream out(stdout);
    const QStringList words = QCoreApplication::arguments();

    nkIconManager::setSource({[](const QString &name, const QString &group) {
                                  return kernel::IconSource::the().icon(name, group);
                              },
                              [](const QString &path) { return kernel::IconSource::the().pixmap(path); },
                              [](const QString &path, const QSize &size) {
                                  return kernel::IconSource::the().render(path, size);
                              }});
    QMainWindow window;
    WindowService service(&window);
    kernel::ServiceRegistry::the().setMainWindowService(&service);

    QLibrary plugin(words.value(1));
    plugin.setLoadHints(QLibrary::ResolveAllSymbolsHint);
    if (!plugin.load()) {
        out << plugin.errorString() << '\n';
        return 1;
    }
    call(plugin, "initPlugin");
    call(plugin, "initPreferencesPlugin");

    window.show();
    nkScenegraphService::the().setSelection({nkdNode(nkdObject(loadScene()))});
    Q_EMIT nkInternalUiService::the().requestMetadataEditorSelectionModeInLowerTree();
    if (words.contains(QStringLiteral("--check"))) {
        QTimer::singleShot(0, &application, &QCoreApplication::quit);
    }
    const int status = QCoreApplication::exec();
    out << service.titles().join('\n') << '\n';

    // The order matters: what the plug-in made goes while its code is there, then the code, then the rest.
    QNKViewBase::commitOpenEditors();
    kernel::Document::the().clear();
    service.releaseModules();
    out << (plugin.unload() ? "unloaded" : "still loaded") << '\n';
    kernel::ServiceRegistry::the().setMainWindowService(nullptr);
    nkIconManager::setSource({});
    return status;
}
