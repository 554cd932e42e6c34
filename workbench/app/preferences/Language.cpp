#include "Language.h"

#include "Options.h"

#include <QCoreApplication>
#include <QDir>
#include <QLibraryInfo>
#include <QLocale>
#include <QTranslator>

namespace {

const QString english = QStringLiteral("en");
const QString baseName = QStringLiteral("workbench_");

QString folder()
{
    return QDir(QCoreApplication::applicationDirPath()).filePath(QStringLiteral("translations"));
}

bool add(const QLocale &locale, const QString &file, const QString &inFolder)
{
    auto *translator = new QTranslator(qApp);
    if (translator->load(locale, file, QStringLiteral("_"), inFolder)) {
        return QCoreApplication::installTranslator(translator);
    }
    delete translator;
    return false;
}

} // namespace

namespace Language {

QStringList codes()
{
    QStringList found{english};
    const QStringList files = QDir(folder()).entryList({baseName + QStringLiteral("*.qm")}, QDir::Files);
    for (const QString &file : files) {
        const QString code = file.mid(baseName.size()).chopped(3);
        if (code != english && !code.isEmpty()) {
            found.append(code);
        }
    }
    return found;
}

QString nameOf(const QString &code)
{
    const QLocale locale(code);
    // Its own name for American English says more than anybody has to choose here.
    const bool isNamed = locale.language() != QLocale::C && code != english;
    return code == english ? QStringLiteral("English") : isNamed ? locale.nativeLanguageName() : code;
}

void install()
{
    const QString chosen = Options::language.value();
    const bool isThere = codes().contains(chosen);
    const QLocale locale = isThere ? QLocale(chosen) : QLocale::system();
    if (isThere) {
        QLocale::setDefault(locale);
    }
    // Qt's own texts go along with ours: a box in two languages helps nobody.
    if (chosen != english && add(locale, QStringLiteral("workbench"), folder())) {
        add(locale, QStringLiteral("qtbase"), QLibraryInfo::location(QLibraryInfo::TranslationsPath));
    }
}

} // namespace Language
