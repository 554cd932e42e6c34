#include "SceneplateImage.h"

#include <QCoreApplication>
#include <QFileDialog>
#include <QFileInfo>
#include <QImage>
#include <QImageReader>

namespace SceneplateImage {

namespace {

/// A graphics card draws no larger ones.
constexpr int mostPixelsASide = 16384;

QString tr(const char *text)
{
    return QCoreApplication::translate("SceneplateImage", text);
}

bool isKnownFormat(const QByteArray &format)
{
    return format == "png" || format == "jpeg" || format == "jpg";
}

} // namespace

QString ask(QWidget *window, const QString &title, const QString &startAt)
{
    const QString filter = tr("Images (*.png *.jpg *.jpeg)") + QStringLiteral(";;") + tr("All files (*)");
    return QFileDialog::getOpenFileName(window, title, startAt, filter);
}

QString faultOf(const QString &path)
{
    if (!QFileInfo(path).isReadable()) {
        return tr("“%1” cannot be read; choose a file that you may open.").arg(path);
    }
    QImageReader reader(path);
    reader.setDecideFormatFromContent(true);
    if (!isKnownFormat(reader.format())) {
        return tr("“%1” is no PNG or JPEG image; choose one that is.").arg(path);
    }
    const QSize size = reader.size();
    if (size.width() > mostPixelsASide || size.height() > mostPixelsASide) {
        return tr("“%1” has more than %2 pixels a side; choose a smaller image.")
            .arg(path, QString::number(mostPixelsASide));
    }
    return reader.read().isNull() ? tr("The image in “%1” is damaged; choose another one.").arg(path)
                                  : QString();
}

} // namespace SceneplateImage
