#include "GuidePicture.h"

#include "FewColors.h"

#include <QBuffer>
#include <QFile>
#include <QImage>
#include <QPainter>

namespace {

constexpr int mostBytes = 145 * 1024;
const QColor edgeColor(0xb4, 0xb4, 0xb4);

QImage framed(QImage picture)
{
    QPainter painter(&picture);
    painter.setPen(edgeColor);
    painter.drawRect(picture.rect().adjusted(0, 0, -1, -1));
    return picture;
}

QByteArray encoded(const QImage &picture)
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    // Quality 0 is the slowest and smallest.
    const bool isDone = buffer.open(QIODevice::WriteOnly) && picture.save(&buffer, "PNG", 0);
    return isDone ? bytes : QByteArray();
}

} // namespace

bool GuidePicture::save(const QImage &picture, const QString &path)
{
    QFile file(path);
    QByteArray bytes = encoded(framed(picture));
    if (bytes.size() > mostBytes) {
        bytes = encoded(FewColors::of(framed(picture)));
    }
    return !bytes.isEmpty() && file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
}
