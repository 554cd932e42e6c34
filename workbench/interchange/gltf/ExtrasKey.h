#pragma once

#include <QString>
#include <QStringList>

namespace interchange {

/// Keys of entries that stand inside nested extras: `{"size": {"width": 2}}` gives the entry "size.width".
///
/// The segments of the path are joined by points; a point or backslash that belongs to a segment has a backslash
/// in front of it, so every path has one key and every such key one path. A key that stands directly in the
/// extras is not a path key and stays as it is, points and all: people and other tools know it by this name.
/// ExtrasEntry::isPath tells the two apart. Segments may be empty, as JSON keys may; a single empty one is written as
/// two quotes, because entries have no empty keys.
namespace ExtrasKey {

/// The key for a path of at least one segment.
QString joined(const QStringList &path);

/// The key one level further inside: joined(path + [segment]) out of joined(path).
QString appended(const QString &pathKey, const QString &segment);

/// The path of a key that joined() made.
QStringList split(const QString &pathKey);

/// The segment as it stands in a path key.
QString escaped(const QString &segment);

} // namespace ExtrasKey

} // namespace interchange
