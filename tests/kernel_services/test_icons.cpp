#include "TestMain.h"

#include <kernel/icons/IconSource.h>
#include <kernel/icons/KindIcons.h>
#include <nkKernelServices/nkLogService.h>

#include <QDir>
#include <QDirIterator>
#include <QIcon>
#include <QImage>
#include <QPainter>
#include <QPalette>

#include <cmath>

using kernel::IconSource;
using kernel::KindIcons;

namespace {

/// Every icon that the editor asks for by name and category.
const QStringList namedIcons = {QStringLiteral("/RenameReference"),
                                QStringLiteral("/Copy"),
                                QStringLiteral("/Paste"),
                                QStringLiteral("/Duplicate"),
                                QStringLiteral("/Delete"),
                                QStringLiteral("/Lock"),
                                QStringLiteral("/Unlock"),
                                QStringLiteral("/RemoveUnused"),
                                QStringLiteral("/ModuleMetadataEditor"),
                                QStringLiteral("/CreateNew"),
                                QStringLiteral("/Arrow"),
                                QStringLiteral("MetadataEditor/RemoveSelectedSet"),
                                QStringLiteral("MetadataEditor/RemoveAllSets"),
                                QStringLiteral("MetadataEditor/RemoveAllEntries"),
                                QStringLiteral("MetadataEditor/MetadataSet"),
                                QStringLiteral("MetadataEditor/SelectObjects"),
                                QStringLiteral("MetadataEditor/AssigntoLastSelection"),
                                QStringLiteral("MetadataEditor/LoadMetadata"),
                                QStringLiteral("MetadataEditor/SaveMetadata"),
                                QStringLiteral("MetadataEditor/GraphFocused"),
                                QStringLiteral("General/GroupNode"),
                                QStringLiteral("General/ModuleMaterialEditor"),
                                QStringLiteral("General/OrthographicCamera"),
                                QStringLiteral("General/ModuleLights"),
                                QStringLiteral("General/Sceneplate"),
                                QStringLiteral("General/SelectAll"),
                                QStringLiteral("General/DeselectAll"),
                                QStringLiteral("General/SelectInverse")};

/// Every picture that is asked for by its path.
const QStringList paths = {QStringLiteral("MetadataEditor/ModifyAsset.svg"),
                           QStringLiteral("MetadataEditor/SaveInAssetManager.svg"),
                           QStringLiteral("MetadataEditor/FindInAssetManager.svg"),
                           QStringLiteral("MetadataEditor/ReloadFromAssetManager.svg"),
                           QStringLiteral("MetadataEditor/RemoveAssetLink.svg"),
                           QStringLiteral("MetadataEditor/EntryOnObjectOffNormal.svg"),
                           QStringLiteral("MetadataEditor/TagOnObjectOffNormal.svg"),
                           QStringLiteral("MetadataEditor/MetadataSetDrag.svg"),
                           QStringLiteral("MetadataEditor/MoveObjectEntriestoSetOffNormal.svg"),
                           QStringLiteral("MetadataEditor/CreateSetfromObjectEntriesOffNormal.svg"),
                           QStringLiteral(":/iconmanager/resources/Various/ColorPickerCursor.svg")};

/// The part of the pixels that a person sees.
double visiblePart(const QImage &image)
{
    int visible = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            visible += qAlpha(image.pixel(x, y)) > 96 ? 1 : 0;
        }
    }
    return double(visible) / qMax(1, image.width() * image.height());
}

/// Relative luminance as the web's accessibility guidelines compute it, 0..1.
double luminance(const QColor &colour)
{
    const auto linear = [](double c) {
        return c <= 0.03928 ? c / 12.92 : std::pow((c + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF())
           + 0.0722 * linear(colour.blueF());
}

double contrast(const QColor &a, const QColor &b)
{
    const double x = luminance(a);
    const double y = luminance(b);
    return (qMax(x, y) + 0.05) / (qMin(x, y) + 0.05);
}

/// The part of the pixels that stand out from this background.
double legiblePart(const QImage &image, const QColor &background)
{
    int legible = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            const QColor pixel = image.pixelColor(x, y);
            legible += pixel.alpha() > 160 && contrast(pixel, background) > 2.5 ? 1 : 0;
        }
    }
    return double(legible) / qMax(1, image.width() * image.height());
}

/// What a selected row is drawn with: a mid-blue of most desktops, a dark theme's, and a light one under dark text.
const QVector<QPair<QColor, QColor>> highlights = {{QColor(0x30, 0x8c, 0xc6), Qt::white},
                                                   {QColor(0x1d, 0x54, 0x7e), QColor(0xee, 0xee, 0xee)},
                                                   {QColor(0xff, 0xd2, 0x66), QColor(0x20, 0x20, 0x20)}};

/// Makes a highlight the application's as long as it lives.
class HighlightPalette
{
public:
    explicit HighlightPalette(const QPair<QColor, QColor> &highlight) : m_before(QGuiApplication::palette())
    {
        QPalette palette = m_before;
        palette.setColor(QPalette::Highlight, highlight.first);
        palette.setColor(QPalette::HighlightedText, highlight.second);
        QGuiApplication::setPalette(palette);
    }
    ~HighlightPalette() { QGuiApplication::setPalette(m_before); }
    Q_DISABLE_COPY(HighlightPalette)

private:
    QPalette m_before;
};

/// As a view paints an icon in a row of 16 pixels on a screen of this resolution.
QImage painted(const QIcon &icon, QIcon::Mode mode, qreal ratio)
{
    QImage canvas(QSize(16, 16) * ratio, QImage::Format_ARGB32_Premultiplied);
    canvas.setDevicePixelRatio(ratio);
    canvas.fill(Qt::transparent);
    QPainter painter(&canvas);
    icon.paint(&painter, QRect(0, 0, 16, 16), Qt::AlignCenter, mode);
    return canvas;
}

QIcon named(const QString &categoryAndName)
{
    const QString category = categoryAndName.section(QLatin1Char('/'), 0, 0);
    return IconSource::the().icon(categoryAndName.section(QLatin1Char('/'), 1), category);
}

/// A source of an application.
class RedSource final : public IconSource
{
public:
    QIcon icon(const QString &, const QString &) override { return QIcon(red(QSize(16, 16))); }
    QPixmap pixmap(const QString &) override { return red(QSize(24, 24)); }
    QPixmap render(const QString &, const QSize &size) override { return red(size); }

private:
    static QPixmap red(const QSize &size)
    {
        QPixmap pixmap(size);
        pixmap.fill(Qt::red);
        return pixmap;
    }
};

} // namespace

/// The icons and their source.
class TestIcons : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void namedIconsAreVisible_data();
    void namedIconsAreVisible();
    void picturesAreVisible_data();
    void picturesAreVisible();
    void everyIconIsLegibleOnDarkAndLight_data();
    void everyIconIsLegibleOnDarkAndLight();
    void everyIconIsLegibleOnSelectedRows_data();
    void everyIconIsLegibleOnSelectedRows();
    void iconsOfSelectedRowsFollowThePalette();
    void iconsOfSelectedRowsAreSharpOnSharpScreens();
    void iconsOutsideOfSelectionsKeepTheirColours();
    void everyKindHasAnIconOfItsOwn();
    void kindsThatAreNoSceneObjectsHaveNone();
    void aMissingIconIsAPlaceholderAndToldOnce();
    void aMissingPictureIsAPlaceholder();
    void aBrokenPictureIsAPlaceholder();
    void neverReadsOutsideTheResources();
    void rendersAtExactlyTheSizeAskedFor();
    void keepsTheShapeInOtherSizes();
    void iconsComeOutSharpAtEverySize();
    void usesTheInstalledSource();

private:
    QScopedPointer<QSignalSpy> m_reported;
};

void TestIcons::init()
{
    m_reported.reset(new QSignalSpy(&nkLogService::the(), &nkLogService::reported));
}

void TestIcons::cleanup()
{
    IconSource::setIconSource(nullptr);
}

void TestIcons::namedIconsAreVisible_data()
{
    QTest::addColumn<QString>("name");
    for (const QString &name : namedIcons) {
        QTest::newRow(qPrintable(name)) << name;
    }
}

void TestIcons::namedIconsAreVisible()
{
    QFETCH(QString, name);
    const QIcon icon = named(name);
    QVERIFY(!icon.isNull());
    for (const int side : {16, 24, 32, 48}) {
        const QImage image = icon.pixmap(side, side).toImage();
        QCOMPARE(image.size(), QSize(side, side));
        QVERIFY2(visiblePart(image) > 0.08, qPrintable(QString::number(visiblePart(image))));
        QVERIFY(visiblePart(image) < 0.9);
    }
    QVERIFY(!icon.pixmap(QSize(24, 24), QIcon::Disabled).isNull());
    QVERIFY(m_reported->isEmpty());
}

void TestIcons::picturesAreVisible_data()
{
    QTest::addColumn<QString>("path");
    for (const QString &path : paths) {
        QTest::newRow(qPrintable(path)) << path;
    }
}

void TestIcons::picturesAreVisible()
{
    QFETCH(QString, path);
    QVERIFY(visiblePart(IconSource::the().pixmap(path).toImage()) > 0.08);
    for (const int side : {16, 24, 32, 48}) {
        const QImage image = IconSource::the().render(path, QSize(side, side)).toImage();
        QCOMPARE(image.size(), QSize(side, side));
        QVERIFY(visiblePart(image) > 0.08);
    }
    QVERIFY(m_reported->isEmpty());
}

void TestIcons::everyIconIsLegibleOnDarkAndLight_data()
{
    QTest::addColumn<QString>("file");
    QDirIterator files(QStringLiteral(":/iconmanager/resources"), {QStringLiteral("*.svg")}, QDir::Files,
                       QDirIterator::Subdirectories);
    int count = 0;
    while (files.hasNext()) {
        const QString file = files.next();
        QTest::newRow(qPrintable(file)) << file;
        ++count;
    }
    QVERIFY(count >= 50);
}

void TestIcons::everyIconIsLegibleOnDarkAndLight()
{
    QFETCH(QString, file);
    const QImage image = IconSource::the().render(file, QSize(48, 48)).toImage();
    QVERIFY(legiblePart(image, QColor(0xf4, 0xf4, 0xf4)) > 0.04);
    QVERIFY(legiblePart(image, QColor(0x2b, 0x2d, 0x30)) > 0.04);
}

void TestIcons::everyIconIsLegibleOnSelectedRows_data()
{
    namedIconsAreVisible_data();
    for (const char *name : {"Node", "Camera", "Light", "Material", "MaterialGroup"}) {
        QTest::newRow(name) << QStringLiteral("General/") + QLatin1String(name);
    }
    for (const char *name : {"EntryInSetOffNormal", "TagInSetOffNormal", "MetadataSetLocked",
                             "MetadataSetAsset", "MetadataSetEditedAsset", "ObjectSet"}) {
        QTest::newRow(name) << QStringLiteral("MetadataEditor/") + QLatin1String(name);
    }
}

void TestIcons::everyIconIsLegibleOnSelectedRows()
{
    QFETCH(QString, name);
    for (const auto &highlight : highlights) {
        const HighlightPalette palette(highlight);
        const QIcon icon = named(name);
        QVERIFY(legiblePart(painted(icon, QIcon::Selected, 1.0), highlight.first) > 0.04);
        QVERIFY(legiblePart(painted(icon, QIcon::Selected, 2.0), highlight.first) > 0.04);
        QVERIFY(legiblePart(icon.pixmap(QSize(16, 16), QIcon::Selected).toImage(), highlight.first) > 0.04);
    }
}

void TestIcons::iconsOfSelectedRowsFollowThePalette()
{
    const QIcon icon = KindIcons::ofSet(KindIcons::SetState::Shared);
    const auto colourUnder = [&icon](const QColor &text) {
        const HighlightPalette palette({Qt::blue, text});
        const QImage image = icon.pixmap(QSize(48, 48), QIcon::Selected).toImage();
        for (int i = 0; i < image.width(); ++i) {
            if (image.pixelColor(i, i).alpha() == 255) {
                return image.pixelColor(i, i);
            }
        }
        return QColor();
    };
    QCOMPARE(colourUnder(Qt::white), QColor(Qt::white));
    QCOMPARE(colourUnder(Qt::black), QColor(Qt::black));
    QCOMPARE(colourUnder(Qt::white), QColor(Qt::white));
}

void TestIcons::iconsOfSelectedRowsAreSharpOnSharpScreens()
{
    const QIcon icon = KindIcons::ofObject(nkObjectType::Node);
    const QImage twice = painted(icon, QIcon::Selected, 2.0);
    QCOMPARE(twice.size(), QSize(32, 32));
    QImage drawn = icon.pixmap(QSize(32, 32), QIcon::Selected).toImage();
    drawn.setDevicePixelRatio(2.0);
    QCOMPARE(twice.convertToFormat(QImage::Format_ARGB32), drawn.convertToFormat(QImage::Format_ARGB32));
    const QImage scaled = painted(icon, QIcon::Selected, 1.0).scaled(32, 32);
    QVERIFY(twice.convertToFormat(QImage::Format_ARGB32) != scaled.convertToFormat(QImage::Format_ARGB32));
}

void TestIcons::iconsOutsideOfSelectionsKeepTheirColours()
{
    const QString file = QStringLiteral(":/iconmanager/resources/MetadataEditor/MetadataSet.svg");
    const QIcon icon = KindIcons::ofSet(KindIcons::SetState::Shared);
    for (const QIcon::Mode mode : {QIcon::Normal, QIcon::Active, QIcon::Disabled}) {
        for (const qreal ratio : {1.0, 2.0}) {
            QCOMPARE(painted(icon, mode, ratio), painted(QIcon(file), mode, ratio));
        }
        const QSize size(24, 24);
        QCOMPARE(icon.pixmap(size, mode).toImage().convertToFormat(QImage::Format_ARGB32),
                 QIcon(file).pixmap(size, mode).toImage().convertToFormat(QImage::Format_ARGB32));
    }
}

void TestIcons::everyKindHasAnIconOfItsOwn()
{
    QVector<QIcon> icons;
    for (const auto kind : {nkObjectType::Node, nkObjectType::Camera, nkObjectType::Light,
                            nkObjectType::Sceneplate, nkObjectType::MaterialGroup, nkObjectType::Material}) {
        icons << KindIcons::ofObject(kind);
    }
    for (const bool tag : {false, true}) {
        icons << KindIcons::ofEntry(tag, false) << KindIcons::ofEntry(tag, true);
    }
    for (const auto state :
         {KindIcons::SetState::Shared, KindIcons::SetState::Locked, KindIcons::SetState::AssetAtRest,
          KindIcons::SetState::EditedAsset, KindIcons::SetState::ObjectSet}) {
        icons << KindIcons::ofSet(state);
    }
    QSet<QByteArray> pictures;
    for (const QIcon &icon : qAsConst(icons)) {
        const QImage image = icon.pixmap(24, 24).toImage();
        QVERIFY(visiblePart(image) > 0.08);
        pictures.insert(
            QByteArray(reinterpret_cast<const char *>(image.constBits()), int(image.sizeInBytes())));
    }
    QCOMPARE(pictures.size(), 15);
    QVERIFY(m_reported->isEmpty());
}

void TestIcons::kindsThatAreNoSceneObjectsHaveNone()
{
    QVERIFY(KindIcons::ofObject(nkObjectType::Null).isNull());
    QVERIFY(KindIcons::ofObject(nkObjectType::MetadataSet).isNull());
    QVERIFY(m_reported->isEmpty());
}

void TestIcons::aMissingIconIsAPlaceholderAndToldOnce()
{
    for (int i = 0; i < 3; ++i) {
        const QIcon icon = IconSource::the().icon(QStringLiteral("NoSuchIcon"), QStringLiteral("General"));
        QVERIFY(!icon.isNull());
        QVERIFY(visiblePart(icon.pixmap(16, 16).toImage()) > 0.2);
    }
    QCOMPARE(m_reported->size(), 1);
    QVERIFY(m_reported->first().at(2).toString().contains(QStringLiteral("General/NoSuchIcon.svg")));
}

void TestIcons::aMissingPictureIsAPlaceholder()
{
    const QString path = QStringLiteral("MetadataEditor/NoSuchPicture.svg");
    QVERIFY(visiblePart(IconSource::the().pixmap(path).toImage()) > 0.1);
    const QImage image = IconSource::the().render(path, QSize(40, 20)).toImage();
    QCOMPARE(image.size(), QSize(40, 20));
    QVERIFY(visiblePart(image) > 0.1);
    QCOMPARE(m_reported->size(), 1);
}

void TestIcons::aBrokenPictureIsAPlaceholder()
{
    // Begins like a picture, and like no picture at all.
    for (const QString &path : {QStringLiteral(":/broken/cut.svg"),
                                QStringLiteral(":/qt-project.org/qmime/packages/freedesktop.org.xml")}) {
        m_reported->clear();
        QVERIFY(visiblePart(IconSource::the().render(path, QSize(24, 24)).toImage()) > 0.1);
        QCOMPARE(m_reported->size(), 1);
    }
}

void TestIcons::neverReadsOutsideTheResources()
{
    QTemporaryDir folder;
    const QString file = folder.filePath(QStringLiteral("icon.svg"));
    QVERIFY(QFile::copy(QStringLiteral(":/iconmanager/resources/Various/Copy.svg"), file));
    const QImage copy = IconSource::the().render(QStringLiteral("Various/Copy.svg"), QSize(24, 24)).toImage();
    QVERIFY(IconSource::the().render(file, QSize(24, 24)).toImage() != copy);
    QCOMPARE(m_reported->size(), 1);
}

void TestIcons::rendersAtExactlyTheSizeAskedFor()
{
    const QString cursor = QStringLiteral(":/iconmanager/resources/Various/ColorPickerCursor.svg");
    const QPixmap pixmap = IconSource::the().render(cursor, QSize(32, 32));
    QCOMPARE(pixmap.size(), QSize(32, 32));
    QCOMPARE(pixmap.devicePixelRatio(), 1.0);
    // The tip of the dropper is where the click counts.
    QVERIFY(qAlpha(pixmap.toImage().pixel(6, 25)) > 96);
    QVERIFY(IconSource::the().render(cursor, QSize(0, 32)).isNull());
    QVERIFY(IconSource::the().render(cursor, QSize()).isNull());
}

void TestIcons::keepsTheShapeInOtherSizes()
{
    const QString path = QStringLiteral("MetadataEditor/MetadataSet.svg");
    const QImage wide = IconSource::the().render(path, QSize(96, 24)).toImage();
    const QImage square = IconSource::the().render(path, QSize(24, 24)).toImage();
    QCOMPARE(wide.size(), QSize(96, 24));
    QCOMPARE(wide.copy(36, 0, 24, 24), square);
}

void TestIcons::iconsComeOutSharpAtEverySize()
{
    const QImage drawn = named(QStringLiteral("MetadataEditor/MetadataSet")).pixmap(96, 96).toImage();
    QCOMPARE(drawn.size(), QSize(96, 96));
    // Full-strength strokes, as scaling a small picture up would not leave them.
    QVERIFY(legiblePart(drawn, Qt::white) > 0.12);
}

void TestIcons::usesTheInstalledSource()
{
    {
        RedSource red;
        IconSource::setIconSource(&red);
        QCOMPARE(&IconSource::the(), static_cast<IconSource *>(&red));
        const QImage image = KindIcons::ofEntry(false, false).pixmap(16, 16).toImage();
        QCOMPARE(image.pixelColor(8, 8), QColor(Qt::red));
    }
    QVERIFY(dynamic_cast<RedSource *>(&IconSource::the()) == nullptr);
    QVERIFY(!named(QStringLiteral("/Copy")).isNull());
}

NK_TEST_MAIN(TestIcons)
#include "test_icons.moc"
