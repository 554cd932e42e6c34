#include "SceneplateImages.h"

#include "kernel/document/Document.h"

#include <QFileInfo>
#include <QImageReader>

#include <algorithm>

using kernel::Document;

namespace {

/// An image that says more is not even looked into.
constexpr int mostPixelsToRead = 16384;

} // namespace

SceneplateImages::SceneplateImages(QObject *parent) : QObject(parent)
{
    m_follow.setSingleShot(true);
    connect(&m_follow, &QTimer::timeout, this, &SceneplateImages::follow);
    connect(&Document::the(), &Document::sceneChanged, this, &SceneplateImages::noteChange);
    connect(&Document::the(), &Document::cleared, this, &SceneplateImages::noteChange);
}

SceneplateImages::~SceneplateImages() = default;

void SceneplateImages::setActive(bool active)
{
    m_isActive = active;
    follow();
}

void SceneplateImages::noteChange()
{
    m_isStale = true;
    if (m_isActive) {
        m_follow.start(0);
    }
}

void SceneplateImages::follow()
{
    if (!m_isStale || !m_isActive) {
        return;
    }
    m_isStale = false;
    const std::vector<Wish> present = wishes();
    const bool isEqual = std::equal(present.begin(), present.end(), m_wishes.begin(), m_wishes.end(),
                                    [](const Wish &a, const Wish &b) {
                                        return a.id == b.id && a.isInFront == b.isInFront && a.path == b.path;
                                    });
    if (!isEqual) {
        fulfil(present);
        m_wishes = present;
        Q_EMIT changed();
    }
}

std::vector<SceneplateImages::Wish> SceneplateImages::wishes() const
{
    const Document &document = Document::the();
    std::vector<Wish> all;
    for (const quint64 id : document.objects(nkObjectType::Sceneplate)) {
        const QString path = document.sceneplateImage(id);
        if (!path.isEmpty()) {
            all.push_back(
                {id, document.sceneplatePlacement(id) == kernel::SceneplatePlacement::InFront, path});
        }
    }
    return all;
}

void SceneplateImages::fulfil(const std::vector<Wish> &wishes)
{
    const QHash<QString, QImage> before = m_images;
    m_images.clear();
    m_plates.clear();
    m_troubles.clear();
    for (const Wish &wish : wishes) {
        if (!m_images.contains(wish.path)) {
            const bool isKnown = !before.value(wish.path).isNull();
            m_images.insert(wish.path, isKnown ? before.value(wish.path) : read(wish.path));
        }
        const QImage image = m_images.value(wish.path);
        if (image.isNull()) {
            m_troubles.append(
                tr("The image “%1” of a sceneplate cannot be read; choose another one, or put the "
                   "file there.")
                    .arg(wish.path));
        } else {
            m_plates.push_back({wish.id, wish.isInFront, image});
        }
    }
    m_troubles.removeDuplicates();
}

/// Paths come from files: what is no plain file may never end.
QImage SceneplateImages::read(const QString &path)
{
    if (!QFileInfo(path).isFile()) {
        return {};
    }
    QImageReader reader(path);
    reader.setDecideFormatFromContent(true);
    reader.setAutoTransform(true);
    const QByteArray format = reader.format();
    const QSize size = reader.size();
    const bool isGood = (format == "png" || format == "jpeg" || format == "jpg") && !size.isEmpty()
                        && qMax(size.width(), size.height()) <= mostPixelsToRead;
    if (!isGood) {
        return {};
    }
    if (qMax(size.width(), size.height()) > MostPixelsASide) {
        reader.setScaledSize(size.scaled(MostPixelsASide, MostPixelsASide, Qt::KeepAspectRatio));
    }
    return reader.read();
}
