#pragma once

#include <QList>

class QWidget;

/// The way of the Tab key through widgets that stand one below the other.
namespace nkMetadataTabOrder {

/// Lets Tab walk the widgets in the order given, and inside each in the order of its layouts, whatever the order
/// in which they were made.
void follow(const QList<QWidget *> &widgets);

} // namespace nkMetadataTabOrder
