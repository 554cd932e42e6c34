#pragma once

#include "Violation.h"

#include <QByteArray>

/// Finds function bodies in headers that are to hold declarations only.
///
/// Allowed are bodies of at most three statements without a block of their own (accessors, comparisons, the
/// assignment of a value type) and templates, which have to be in a header.
namespace HeaderBodies {

/// The bodies that are too long, each at the line where it begins.
Violations inHeader(const QString &file, const QByteArray &text);

} // namespace HeaderBodies
