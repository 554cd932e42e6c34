#pragma once

#include <QString>

/// What the list of sceneplates says beside a name: where the image is drawn, and that it is missing.
namespace SceneplateNote {

/// In a word or two, translated.
QString text(quint64 id);
/// The image's path as rich text that shows exactly it; empty where there is none.
QString toolTip(quint64 id);
/// The name and what stands beside it.
QString accessibleText(const QString &name, quint64 id);

} // namespace SceneplateNote
