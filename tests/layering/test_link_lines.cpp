#include "TestMain.h"

#include <QProcess>
#include <QRegularExpression>
#include <QSet>

/// What the libraries and the workbench are linked with, as written and as built.
class LinkLines : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theEditorLinksTheHostLibrariesAndQtAlone();
    void librariesNameWhatTheirRoomsMayUse_data();
    void librariesNameWhatTheirRoomsMayUse();
    void builtFilesNeedWhatTheirRoomsMayUse_data();
    void builtFilesNeedWhatTheirRoomsMayUse();
    void theKernelUsesOfTheWidgetsTheUndoStackAlone();
};

namespace {

QStringList sorted(QStringList list)
{
    list.sort();
    return list;
}

QStringList linesOf(const QString &program, const QStringList &arguments)
{
    QProcess process;
    process.start(program, arguments);
    if (!process.waitForFinished() || process.exitStatus() != QProcess::NormalExit || process.exitCode() != 0)
        return {};
    return QString::fromLocal8Bit(process.readAllStandardOutput())
        .split(QLatin1Char('\n'), Qt::SkipEmptyParts);
}

/// The libraries a built file asks the loader for, by their plain names; those of the compiler left out.
QStringList neededBy(const QString &file)
{
    static const QRegularExpression needed(QStringLiteral("\\(NEEDED\\).*\\[lib([^.\\]]+)"));
    static const QRegularExpression ofCompiler(
        QStringLiteral("^(stdc\\+\\+|m|c|gcc_s|pthread|dl|rt|asan|ubsan|gcov|atomic|GL)$"));
    QStringList names;
    for (const QString &line : linesOf(QStringLiteral("readelf"), {QStringLiteral("-dW"), file})) {
        const QString name = needed.match(line).captured(1);
        if (!name.isEmpty() && !ofCompiler.match(name).hasMatch())
            names.append(name);
    }
    return names;
}

/// The mangled names of a library's dynamic symbols: those it defines, or those it takes from others.
QSet<QString> symbolsOf(const QString &file, const QString &which)
{
    QSet<QString> symbols;
    for (const QString &line : linesOf(QStringLiteral("nm"), {QStringLiteral("-D"), which, file}))
        symbols.insert(line.section(QLatin1Char(' '), -1).section(QLatin1Char('@'), 0, 0));
    return symbols;
}

QString built(const char *name)
{
    return QStringLiteral(NK_BIN_DIR "/") + QLatin1String(name);
}

} // namespace

void LinkLines::theEditorLinksTheHostLibrariesAndQtAlone()
{
    const QStringList links = QStringLiteral(NK_LINKS_MetadataEditor).split(QLatin1Char(' '));
    QStringList host;
    for (const QString &link : links)
        if (!link.startsWith(QLatin1String("Qt5::")))
            host.append(link);
    QCOMPARE(sorted(host), sorted({QStringLiteral("nkKernelServices"), QStringLiteral("nkQt4Ext"),
                                   QStringLiteral("nkKernelServicesGUI")}));
}

void LinkLines::librariesNameWhatTheirRoomsMayUse_data()
{
    QTest::addColumn<QString>("links");
    QTest::addColumn<QString>("allowed");
    QTest::newRow("MetadataEditor")
        << NK_LINKS_MetadataEditor
        << "nkKernelServices nkQt4Ext nkKernelServicesGUI Qt5::Core Qt5::Gui Qt5::Widgets";
    QTest::newRow("nkKernelServices") << NK_LINKS_nkKernelServices << "Qt5::Core Qt5::Gui Qt5::Widgets";
    QTest::newRow("nkQt4Ext") << NK_LINKS_nkQt4Ext << "Qt5::Core Qt5::Gui Qt5::Widgets";
    QTest::newRow("nkKernelServicesGUI")
        << NK_LINKS_nkKernelServicesGUI << "nkKernelServices nkQt4Ext Qt5::Core Qt5::Gui Qt5::Widgets";
    QTest::newRow("interchange") << NK_LINKS_interchange << "nkKernelServices Qt5::Core Qt5::Gui";
    QTest::newRow("assetdatabase") << NK_LINKS_assetdatabase << "nkKernelServices Qt5::Core Qt5::Sql";
}

void LinkLines::librariesNameWhatTheirRoomsMayUse()
{
    QFETCH(QString, links);
    QFETCH(QString, allowed);
    const QStringList fine = allowed.split(QLatin1Char(' '));
    for (const QString &link : links.split(QLatin1Char(' ')))
        QVERIFY2(fine.contains(link), qPrintable(link));
}

void LinkLines::builtFilesNeedWhatTheirRoomsMayUse_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<QString>("allowed");
    const QString qt = QStringLiteral("Qt5Core Qt5Gui Qt5Widgets ");
    const QString host = QStringLiteral("nkKernelServices nkQt4Ext nkKernelServicesGUI ");
    QTest::newRow("MetadataEditor") << QStringLiteral(NK_PLUGIN_DIR "/libMetadataEditor.so") << qt + host;
    QTest::newRow("nkKernelServices") << built("libnkKernelServices.so") << qt;
    QTest::newRow("nkQt4Ext") << built("libnkQt4Ext.so") << qt;
    QTest::newRow("nkKernelServicesGUI")
        << built("libnkKernelServicesGUI.so") << qt + QStringLiteral("nkKernelServices nkQt4Ext");
    // What it reads is not to be trusted: whatever happens there happens without the rest of the program.
    QTest::newRow("nkImporter") << built("nkImporter") << QStringLiteral("assimp");
    // Above all not MetadataEditor: the workbench finds it by loading it.
    QTest::newRow("workbench") << built("workbench") << qt + host + QStringLiteral("Qt5Sql");
}

void LinkLines::builtFilesNeedWhatTheirRoomsMayUse()
{
    QFETCH(QString, file);
    QFETCH(QString, allowed);
    const QStringList needed = neededBy(file);
    QVERIFY2(!needed.isEmpty(), qPrintable(file + QStringLiteral(" was not read")));
    const QStringList fine = allowed.split(QLatin1Char(' '));
    for (const QString &name : needed)
        QVERIFY2(fine.contains(name), qPrintable(name));
}

void LinkLines::theKernelUsesOfTheWidgetsTheUndoStackAlone()
{
    const QSet<QString> offered = symbolsOf(QStringLiteral(NK_QT_WIDGETS_LIBRARY),
                                            QStringLiteral("--defined-only"));
    QVERIFY(offered.size() > 1000);
    const QSet<QString> taken = symbolsOf(built("libnkKernelServices.so"),
                                          QStringLiteral("--undefined-only"));
    QVERIFY(!taken.isEmpty());
    // Templates of Qt Core that the widgets library happens to hold too are offered by it as weak symbols of QList and
    // the like; what counts are members of its own classes.
    static const QRegularExpression undo(QStringLiteral("^_Z[A-Z]*N?K?(10QUndoStack|12QUndoCommand)"));
    static const QRegularExpression ofCore(
        QStringLiteral("^_Z[A-Z]*N?K?(St|Ss|\\d+Q(List|Vector|Hash|Map|TypedArray|String)\\w*)"));
    const QSet<QString> fromWidgets = offered & taken;
    for (const QString &symbol : fromWidgets)
        QVERIFY2(undo.match(symbol).hasMatch() || ofCore.match(symbol).hasMatch(), qPrintable(symbol));
}

NK_GUILESS_TEST_MAIN(LinkLines)
#include "test_link_lines.moc"
