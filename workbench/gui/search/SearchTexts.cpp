#include "SearchTexts.h"

#include "gui/dialogs/ValueText.h"

#include <QCoreApplication>

namespace {

// How much of a query a menu shows: characters.
constexpr int menuTextLength = 60;

QString text(const char *source)
{
    return QCoreApplication::translate("Metadata", source);
}

} // namespace

QString SearchTexts::inMenu(const QString &query)
{
    QString shown = ValueText::oneLine(query);
    if (shown.size() > menuTextLength) {
        shown = shown.left(menuTextLength - 1) + QChar(0x2026);
    }
    return shown.replace(QLatin1Char('&'), QLatin1String("&&"));
}

QString SearchTexts::found(int sets)
{
    switch (sets) {
    case -1:
        return text("Found");
    case 0:
        return text("No set found");
    case 1:
        return text("1 set found");
    default:
        return text("%1 sets found").arg(sets);
    }
}
