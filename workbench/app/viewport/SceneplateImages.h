#pragma once

#include <QHash>
#include <QImage>
#include <QObject>
#include <QStringList>
#include <QTimer>

#include <vector>

/// The images of the scene's sceneplates, as the document has them. Reads them while it is active, and does nothing
/// while it is not.
///
/// Only PNG and JPEG files are read, told by their content; what cannot be read is a sentence among the troubles.
class SceneplateImages : public QObject
{
    Q_OBJECT
public:
    /// Larger images are read smaller: a viewport shows no more.
    static constexpr int MostPixelsASide = 2048;

    struct Plate
    {
        quint64 id = 0;
        bool isInFront = false;
        QImage image;
    };

    explicit SceneplateImages(QObject *parent = nullptr);
    ~SceneplateImages() override;

    void setActive(bool active);
    /// Those with an image, in scene order.
    const std::vector<Plate> &plates() const { return m_plates; }
    QStringList troubles() const { return m_troubles; }

Q_SIGNALS:
    void changed();

private:
    /// What the document says of one sceneplate.
    struct Wish
    {
        quint64 id;
        bool isInFront;
        QString path;
    };

    void noteChange();
    void follow();
    std::vector<Wish> wishes() const;
    void fulfil(const std::vector<Wish> &wishes);
    static QImage read(const QString &path);

    std::vector<Wish> m_wishes;
    std::vector<Plate> m_plates;
    QHash<QString, QImage> m_images; ///< by path, those in use
    QStringList m_troubles;
    QTimer m_follow;
    bool m_isActive = false;
    bool m_isStale = true;
};
