#pragma once

#include <QString>

/// Texts of the search bar that take more than a translation.
namespace SearchTexts {

/// A query as the text of a menu's action: one line of bounded length, no mnemonics, no shortcut behind a tabulator.
QString inMenu(const QString &query);

/// What a search has found. @param sets their number; -1 where it is not known
QString found(int sets);

} // namespace SearchTexts
