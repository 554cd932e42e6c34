#include "PluginLoader.h"

#include <nkKernelServices/nkLogService.h>

#include <QDir>
#include <QLibrary>

namespace {

const QString logTitle = QStringLiteral("Plug-ins");

using EntryPoint = void (*)();

EntryPoint entryPoint(QLibrary &library, const char *name)
{
    return reinterpret_cast<EntryPoint>(library.resolve(name));
}

} // namespace

PluginLoader::PluginLoader() = default;

PluginLoader::~PluginLoader()
{
    unloadAll();
}

void PluginLoader::loadAll(const QString &folder)
{
    QStringList libraries;
    const QStringList files = QDir(folder).entryList(QDir::Files, QDir::Name);
    for (const QString &file : files) {
        if (QLibrary::isLibrary(file)) {
            libraries.append(QDir(folder).filePath(file));
        }
    }
    if (libraries.isEmpty()) {
        nkLogService::the().reportWarning(
            logTitle, QStringLiteral("There is no plug-in in %1.").arg(QDir::toNativeSeparators(folder)));
    }
    for (const QString &path : qAsConst(libraries)) {
        load(path);
    }
}

void PluginLoader::load(const QString &path)
{
    auto library = std::make_unique<QLibrary>(path);
    // Every symbol is looked up now: a plug-in built against other libraries fails here, with the symbol's
    // name, and not in the middle of somebody's work.
    library->setLoadHints(QLibrary::ResolveAllSymbolsHint);
    if (!library->load()) {
        nkLogService::the().reportWarning(
            logTitle, QStringLiteral("The plug-in %1 was not loaded: %2").arg(path, library->errorString()));
        return;
    }
    const EntryPoint initPlugin = entryPoint(*library, "initPlugin");
    const EntryPoint initPreferencesPlugin = entryPoint(*library, "initPreferencesPlugin");
    if (!initPlugin && !initPreferencesPlugin) {
        nkLogService::the().reportWarning(
            logTitle,
            QStringLiteral("%1 is no plug-in: it exports neither initPlugin nor initPreferencesPlugin.")
                .arg(path));
        library->unload();
        return;
    }
    if (initPlugin) {
        initPlugin();
    }
    if (initPreferencesPlugin) {
        initPreferencesPlugin();
    }
    nkLogService::the().reportInformation(logTitle, QStringLiteral("Loaded %1.").arg(path));
    m_libraries.push_back(std::move(library));
}

QStringList PluginLoader::loadedPlugins() const
{
    QStringList names;
    for (const auto &library : m_libraries) {
        names.append(library->fileName());
    }
    return names;
}

void PluginLoader::unloadAll()
{
    while (!m_libraries.empty()) {
        m_libraries.back()->unload();
        m_libraries.pop_back();
    }
}
