#pragma once

#include <kernel/document/Clipboard.h>

#include <QByteArray>
#include <QString>

#include <vector>

namespace interchange {

/// Keys and values as lines of text, the way spreadsheets and people write them.
namespace KeyValueLines {

/// A line an entry: key, tab, value as shown to people. Cells with tabs, line breaks or quotes stand in quotes,
/// as spreadsheets have it.
QByteArray table(const std::vector<kernel::EntryCopy> &entries);

/// The entries of a text in which every line that is not empty is a key and a value with one separator, the
/// same in all lines: a tab (two cells, perhaps in quotes), else "=", else ": ". Keys in front of the latter two
/// are no longer than a short title and hold nothing that program texts and addresses are made of. All values
/// are strings. Empty where any line is otherwise.
std::vector<kernel::EntryCopy> read(const QString &text);

} // namespace KeyValueLines

} // namespace interchange
