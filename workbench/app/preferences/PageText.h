#pragma once

#include <QString>

class QWidget;

/// All that a page says, for a search: labels, buttons, titles, list entries, headers and tool tips, mnemonics
/// left out, one a line.
QString pageText(const QWidget *page);
