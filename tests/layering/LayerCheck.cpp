#include "LayerCheck.h"

#include "HeaderBodies.h"

#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>

namespace {

const char *const roomFolders[] = {"host", "MetadataEditor", "workbench", "tests", "benchmarks"};

/// Folders that some target of the project searches for includes.
const char *const includeFolders[] = {"host",          "workbench",         "workbench/app", "MetadataEditor",
                                      "tests/support", "tests/interchange", "benchmarks"};

/// Code that the build makes beside the file that includes it.
bool isGenerated(const QString &name)
{
    static const QRegularExpression generated(
        QStringLiteral("^(ui_\\w+\\.h|moc_\\w+\\.cpp|qrc_\\w+\\.cpp|\\w+\\.moc)$"));
    return generated.match(name).hasMatch();
}

/// <vector>, <cmath>: headers of the standard library have no suffix and no folder.
bool isStandard(const Include &include)
{
    static const QRegularExpression standard(QStringLiteral("^[a-z_0-9]+$"));
    return include.angled && standard.match(include.name).hasMatch();
}

/// Headers of C and of the operating system that files, processes and measurements need.
bool isSystem(const Include &include)
{
    static const QRegularExpression system(
        QStringLiteral("^(sys/\\w+|unistd|fcntl|signal|errno|dlfcn|malloc|time|fenv|poll)\\.h$"));
    return include.angled && system.match(include.name).hasMatch();
}

bool isOfLibrary(const Include &include, const QString &library)
{
    return !library.isEmpty() && include.angled && include.name.startsWith(library + QLatin1Char('/'));
}

} // namespace

LayerCheck::LayerCheck(const QString &root, const QString &qtIncludeFolder, const RoomTable &table)
    : m_root(root), m_qtHeaders(qtIncludeFolder), m_table(table)
{}

Violations LayerCheck::run() const
{
    Violations found;
    if (!m_qtHeaders.isUsable())
        found.append({QString(), 0, QStringLiteral("the headers of Qt were not found")});
    const QStringList all = files();
    for (const QString &file : all)
        found += checkFile(file);
    return found;
}

QStringList LayerCheck::files() const
{
    static const QStringList patterns = {QStringLiteral("*.h"), QStringLiteral("*.hpp"),
                                         QStringLiteral("*.cpp"), QStringLiteral("*.ui")};
    QStringList found;
    for (const char *folder : roomFolders) {
        QDirIterator walk(m_root.filePath(QLatin1String(folder)), patterns, QDir::Files,
                          QDirIterator::Subdirectories);
        while (walk.hasNext())
            found.append(m_root.relativeFilePath(walk.next()));
    }
    found.sort();
    return found;
}

Violations LayerCheck::checkFile(const QString &file) const
{
    const Room *room = m_table.roomOf(file);
    if (!room)
        return {
            {file, 0, QStringLiteral("stands in no room; every folder has its row in the table of rooms")}};
    QFile source(m_root.filePath(file));
    if (!source.open(QFile::ReadOnly))
        return {{file, 0, QStringLiteral("cannot be read: %1").arg(source.errorString())}};
    const QByteArray text = source.readAll();

    const bool form = file.endsWith(QLatin1String(".ui"));
    const QVector<Include> includes = form ? IncludeReader::ofForm(text) : IncludeReader::ofSource(text);
    Violations found;
    for (const Include &include : includes) {
        const QString fault = judge(file, *room, include);
        if (!fault.isEmpty())
            found.append({file, include.line, fault});
    }
    if (file.startsWith(QLatin1String("host/")))
        found += file.endsWith(QLatin1String(".cpp"))
                     ? Violations{{file, 0, QStringLiteral("code among the declarations")}}
                     : HeaderBodies::inHeader(file, text);
    return found;
}

QString LayerCheck::judge(const QString &file, const Room &room, const Include &include) const
{
    const QString target = resolve(file, include);
    if (target.isEmpty())
        return judgeForeign(room, include);
    if (RoomTable::mayInclude(room, target))
        return QString();
    return QStringLiteral("%1 has no door to %2").arg(room.folder, target);
}

QString LayerCheck::judgeForeign(const Room &room, const Include &include) const
{
    const QString module = m_qtHeaders.moduleOf(include.name);
    const QString header = include.name.section(QLatin1Char('/'), -1);
    if (!module.isEmpty()) {
        if (RoomTable::mayIncludeQt(room, module, header))
            return QString();
        return QStringLiteral("%1 has no door to %2 of %3").arg(room.folder, header, module);
    }
    if (isGenerated(include.name) || isStandard(include) || (room.system && isSystem(include))
        || isOfLibrary(include, room.library))
        return QString();
    return QStringLiteral("%1 includes %2, which is no file of the project, of Qt or of the standard library")
        .arg(room.folder, include.name);
}

QString LayerCheck::resolve(const QString &file, const Include &include) const
{
    QStringList folders;
    if (!include.angled)
        folders.append(QFileInfo(file).path());
    for (const char *folder : includeFolders)
        folders.append(QLatin1String(folder));
    for (const QString &folder : folders) {
        const QString candidate = QDir::cleanPath(folder + QLatin1Char('/') + include.name);
        if (QFileInfo(m_root.filePath(candidate)).isFile())
            return candidate;
    }
    return QString();
}
