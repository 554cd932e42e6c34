#pragma once

class QImage;
class QString;

/// The file of a picture for a page.
namespace GuidePicture {

/// Writes a PNG file that is no larger than a page should load, with a thin frame: a light window ends somewhere on a
/// light page. @return false where it cannot be written
bool save(const QImage &picture, const QString &path);

} // namespace GuidePicture
