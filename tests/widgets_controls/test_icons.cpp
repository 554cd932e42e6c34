#include "TestMain.h"

#include <nkQt4Ext/nkIconCache.h>
#include <nkQt4Ext/nkIconManager.h>
#include <nkQt4Ext/nkPlatform.h>
#include <nkQt4Ext/nkShortcut.h>

#include <QScreen>

namespace {

QPixmap filled(const QSize &size, const QColor &color)
{
    QPixmap pixmap(size);
    pixmap.fill(color);
    return pixmap;
}

} // namespace

class TestIcons : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup() { nkIconManager::setSource({}); }

    void withoutASourceEverythingIsNull();
    void namesAndPathsReachTheSource();
    void emptySizesRenderNothing();
    void fixedIconsAreMadeOnce();
    void askingTooEarlyDoesNoHarm();
    void aNewSourceMakesThemAnew();
    void theDragPictureIs24();
    void shortcutsReadAsThePlatformWritesThem();
    void scaleIsTheScreensResolution();
};

void TestIcons::withoutASourceEverythingIsNull()
{
    QVERIFY(nkIconManager::getIcon(QStringLiteral("Copy"), QString()).isNull());
    QVERIFY(nkIconManager::get(QStringLiteral("a.svg")).isNull());
    QVERIFY(nkIconManager::renderPixmap(QStringLiteral("a.svg"), QSize(8, 8)).isNull());
    QVERIFY(nkIconCache::Metadata::getMetadataSetIcon().isNull());
    QVERIFY(nkIconCache::Metadata::getMetadataSetIconPixmap().isNull());
}

void TestIcons::namesAndPathsReachTheSource()
{
    QStringList asked;
    nkIconManager::Source source;
    source.icon = [&asked](const QString &name, const QString &category) {
        asked.append(category + QLatin1Char('/') + name);
        return QIcon(filled(QSize(24, 24), Qt::red));
    };
    source.pixmap = [&asked](const QString &path) {
        asked.append(path);
        return filled(QSize(24, 24), Qt::green);
    };
    source.render = [&asked](const QString &path, const QSize &size) {
        asked.append(path);
        return filled(size, Qt::blue);
    };
    nkIconManager::setSource(source);
    QVERIFY(!nkIconManager::getIcon(QStringLiteral("Copy"), QString()).isNull());
    QVERIFY(!nkIconManager::getIcon(QStringLiteral("Set"), QStringLiteral("MetadataEditor")).isNull());
    QCOMPARE(nkIconManager::get(QStringLiteral("p.svg")).size(), QSize(24, 24));
    QCOMPARE(nkIconManager::renderPixmap(QStringLiteral("r.svg"), QSize(32, 32)).size(), QSize(32, 32));
    QCOMPARE(asked, (QStringList{"/Copy", "MetadataEditor/Set", "p.svg", "r.svg"}));
}

void TestIcons::emptySizesRenderNothing()
{
    nkIconManager::Source source;
    source.render = [](const QString &, const QSize &size) { return filled(size, Qt::blue); };
    nkIconManager::setSource(source);
    QVERIFY(nkIconManager::renderPixmap(QStringLiteral("r.svg"), QSize()).isNull());
    QVERIFY(nkIconManager::renderPixmap(QStringLiteral("r.svg"), QSize(0, 4)).isNull());
}

void TestIcons::fixedIconsAreMadeOnce()
{
    QStringList asked;
    nkIconManager::Source source;
    source.icon = [&asked](const QString &name, const QString &category) {
        asked.append(category + QLatin1Char('/') + name);
        return QIcon(filled(QSize(24, 24), Qt::red));
    };
    nkIconManager::setSource(source);
    for (int count = 0; count < 3; ++count) {
        QVERIFY(!nkIconCache::Metadata::getMetadataSetIcon().isNull());
        QVERIFY(!nkIconCache::Metadata::getMetadataTagIcon().isNull());
        QVERIFY(!nkIconCache::Metadata::getGraphFocusedIcon().isNull());
    }
    QCOMPARE(asked, (QStringList{"MetadataEditor/MetadataSet", "MetadataEditor/TagInSetOffNormal",
                                 "MetadataEditor/GraphFocused"}));
}

void TestIcons::askingTooEarlyDoesNoHarm()
{
    QVERIFY(nkIconCache::Metadata::getMetadataTagIcon().isNull());
    bool ready = false;
    nkIconManager::Source source;
    source.icon = [&ready](const QString &, const QString &) {
        return ready ? QIcon(filled(QSize(24, 24), Qt::red)) : QIcon();
    };
    nkIconManager::setSource(source);
    QVERIFY(nkIconCache::Metadata::getMetadataTagIcon().isNull());
    ready = true;
    QVERIFY(!nkIconCache::Metadata::getMetadataTagIcon().isNull());
}

void TestIcons::aNewSourceMakesThemAnew()
{
    const auto colored = [](const QColor &color) {
        nkIconManager::Source source;
        source.icon = [color](const QString &, const QString &) {
            return QIcon(filled(QSize(24, 24), color));
        };
        return source;
    };
    nkIconManager::setSource(colored(Qt::red));
    QCOMPARE(nkIconCache::Metadata::getMetadataSetIconPixmap().toImage().pixelColor(5, 5), QColor(Qt::red));
    nkIconManager::setSource(colored(Qt::blue));
    QCOMPARE(nkIconCache::Metadata::getMetadataSetIconPixmap().toImage().pixelColor(5, 5), QColor(Qt::blue));
}

void TestIcons::theDragPictureIs24()
{
    nkIconManager::Source source;
    source.icon = [](const QString &, const QString &) { return QIcon(filled(QSize(64, 64), Qt::red)); };
    nkIconManager::setSource(source);
    const QPixmap pixmap = nkIconCache::Metadata::getMetadataSetIconPixmap();
    QCOMPARE(pixmap.size() / pixmap.devicePixelRatio(), QSize(24, 24));
}

void TestIcons::shortcutsReadAsThePlatformWritesThem()
{
    QCOMPARE(nkShortcut::convertKey(Qt::CTRL + Qt::Key_C), QStringLiteral("Ctrl+C"));
    QCOMPARE(nkShortcut::convertKey(Qt::CTRL + Qt::Key_V), QStringLiteral("Ctrl+V"));
    QCOMPARE(nkShortcut::convertKey(Qt::Key_Delete), QStringLiteral("Del"));
    QCOMPARE(nkShortcut::convertKey(QKeySequence()), QString());
}

void TestIcons::scaleIsTheScreensResolution()
{
    QCOMPARE(nkPlatform::getDpiScaleX(), QGuiApplication::primaryScreen()->logicalDotsPerInchX() / 96.0);
    QVERIFY(nkPlatform::getDpiScaleX() > 0.0);
}

NK_TEST_MAIN(TestIcons)

#include "test_icons.moc"
