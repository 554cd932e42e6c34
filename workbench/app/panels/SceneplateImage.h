#pragma once

#include <QString>

class QWidget;

/// The image files that sceneplates are made of.
namespace SceneplateImage {

/// Asks a person for an image file. @return its path; empty where nobody chose one
QString ask(QWidget *window, const QString &title, const QString &startAt);
/// Why a file cannot be a sceneplate's image, in one sentence; empty where it can. Reads the whole image: one that
/// is cut off is found now and not when it is drawn.
QString faultOf(const QString &path);

} // namespace SceneplateImage
