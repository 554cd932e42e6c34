#include "GuidePage.h"
#include "GuideStage.h"
#include "PluginLoader.h"
#include "Workbench.h"
#include "preferences/Theme.h"

#include <TestMain.h>
#include <kernel/document/Document.h>
#include <nkKernelServices/nkPreferencesService.h>

#include <QApplication>
#include <QDir>
#include <QFont>
#include <QLoggingCategory>
#include <QTextStream>

#include <cstdio>

// guide_pictures FOLDER
//
// Makes the pictures of the guide in a folder, and beside them texts.txt with the texts that the program showed
// meanwhile, one a line. The same program gives the same bytes on the same computer: nothing in the pictures is of
// today or of this place.

namespace {

void fixLook()
{
    QApplication::setCursorFlashTime(0);
    for (const Qt::UIEffect effect :
         {Qt::UI_AnimateMenu, Qt::UI_FadeMenu, Qt::UI_AnimateCombo, Qt::UI_AnimateTooltip}) {
        QApplication::setEffectEnabled(effect, false);
    }
    QApplication::setFont(QFont(QStringLiteral("DejaVu Sans"), 9));
    applyTheme(Theme::Light);
    nkPreferencesService::the().setIntValue(QStringLiteral("Workbench Theme"), int(Theme::Light), true);
}

void takeAll(GuideStage &stage)
{
    GuidePage::start(stage);
    GuidePage::firstLook(stage);
    GuidePage::selectAndRead(stage);
    GuidePage::createSetsAndEntries(stage);
    GuidePage::assignSets(stage);
    GuidePage::find(stage);
    GuidePage::editMany(stage);
    GuidePage::lockAndUndo(stage);
    GuidePage::save(stage);
    GuidePage::shareAssets(stage);
    GuidePage::preferences(stage);
}

bool writeTexts(const QString &path, const QStringList &texts)
{
    QFile file(path);
    const QByteArray content = texts.join(QLatin1Char('\n')).toUtf8();
    return file.open(QIODevice::WriteOnly) && file.write(content) == content.size();
}

} // namespace

int main(int argc, char **argv)
{
    if (argc != 2 || !QDir(QFile::decodeName(argv[1])).exists()) {
        fputs("usage: guide_pictures FOLDER; the folder has to be there\n", stderr);
        return 2;
    }
    const QDir folder(QDir(QFile::decodeName(argv[1])).absolutePath());
    const TestSandbox sandbox;
    qputenv("QT_FONT_DPI", "96");
    qputenv("USER", "Ada");
    QCoreApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
    QApplication application(argc, argv);
    QCoreApplication::setOrganizationName(QStringLiteral("MetadataEditor"));
    QCoreApplication::setApplicationName(QStringLiteral("workbench"));
    QGuiApplication::setApplicationDisplayName(QStringLiteral("Workbench"));
    QLoggingCategory::setFilterRules(QStringLiteral("workbench.info=false"));
    fixLook();
    PluginLoader plugins;
    bool isDone = false;
    {
        GuideStage stage(folder.path());
        plugins.loadAll(QStringLiteral(PLUGINS));
        stage.show();
        takeAll(stage);
        isDone = writeTexts(folder.filePath(QStringLiteral("texts.txt")), stage.texts());
        kernel::Document::the().markSaved();
    }
    plugins.unloadAll();
    TestMain::letAnimationsEnd();
    return isDone ? 0 : 1;
}
