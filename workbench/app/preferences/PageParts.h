#pragma once

#include <QString>

class QLabel;
class QWidget;

/// What the workbench's preference pages are put together from.
namespace PageParts {

/// The label of a control, whose mnemonic leads to it. Stands beside it, as its parent's child.
QLabel *label(const QString &text, QWidget *control);
/// A sentence below a control. Plain text over as many lines as it takes.
QLabel *hint(const QString &text, QWidget *parent);

} // namespace PageParts
