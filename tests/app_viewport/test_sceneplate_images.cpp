#include "ViewportFixture.h"

#include "viewport/SceneplateLayer.h"

#include <TestMain.h>

using kernel::Document;
using kernel::SceneplatePlacement;

/// The images that the viewport draws behind and in front of the scene.
class TestSceneplateImages : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void readsTheImagesOfTheScenesPlates();
    void followsChangesAndUndo();
    void readsNothingWhileNobodyLooks();
    void readsAnImageOnce();
    void readsLargeImagesSmaller();
    void tellsWhatCannotBeRead_data();
    void tellsWhatCannotBeRead();
    void imagesKeepTheirShape();
    void aSceneOfPlatesAloneIsNotBlank();

private:
    QString image(const QString &name, const QSize &size = {4, 2}) const
    {
        QImage made(size, QImage::Format_RGB32);
        made.fill(Qt::green);
        const QString path = m_folder->filePath(name);
        return made.save(path, "PNG") ? path : QString();
    }

    std::unique_ptr<QTemporaryDir> m_folder;
};

void TestSceneplateImages::init()
{
    Document::the().clear();
    m_folder = std::make_unique<QTemporaryDir>();
}

void TestSceneplateImages::readsTheImagesOfTheScenesPlates()
{
    const QString path = image(QStringLiteral("a.png"));
    const quint64 behind = Document::the().createSceneplate(QStringLiteral("B"), path,
                                                            SceneplatePlacement::Behind);
    const quint64 front = Document::the().createSceneplate(QStringLiteral("F"), path,
                                                           SceneplatePlacement::InFront);
    Document::the().createSceneplate(QStringLiteral("None"), QString(), SceneplatePlacement::Behind);
    SceneplateImages images;
    images.setActive(true);
    QCOMPARE(images.plates().size(), size_t(2));
    QVERIFY(images.plates()[0].id == behind && !images.plates()[0].isInFront);
    QVERIFY(images.plates()[1].id == front && images.plates()[1].isInFront);
    QCOMPARE(images.plates()[0].image.size(), QSize(4, 2));
    QCOMPARE(images.troubles(), QStringList());
}

void TestSceneplateImages::followsChangesAndUndo()
{
    SceneplateImages images;
    images.setActive(true);
    const quint64 id = Document::the().createSceneplate(QStringLiteral("A"), image(QStringLiteral("a.png")),
                                                        SceneplatePlacement::Behind);
    QTRY_COMPARE(images.plates().size(), size_t(1));
    Document::the().setSceneplatePlacement(id, SceneplatePlacement::InFront);
    QTRY_VERIFY(images.plates()[0].isInFront);
    Document::the().setSceneplateImage(id, image(QStringLiteral("b.png"), {9, 9}));
    QTRY_COMPARE(images.plates()[0].image.size(), QSize(9, 9));
    Document::the().deleteObjects({id});
    QTRY_VERIFY(images.plates().empty());
    Document::the().undo();
    QTRY_COMPARE(images.plates().size(), size_t(1));
    Document::the().clear();
    QTRY_VERIFY(images.plates().empty());
}

void TestSceneplateImages::readsNothingWhileNobodyLooks()
{
    SceneplateImages images;
    images.setActive(true);
    images.setActive(false);
    Document::the().createSceneplate(QStringLiteral("A"), image(QStringLiteral("a.png")),
                                     SceneplatePlacement::Behind);
    QCoreApplication::processEvents();
    QVERIFY(images.plates().empty());
    images.setActive(true);
    QCOMPARE(images.plates().size(), size_t(1));
}

void TestSceneplateImages::readsAnImageOnce()
{
    SceneplateImages images;
    const QString path = image(QStringLiteral("a.png"));
    Document::the().createSceneplate(QStringLiteral("A"), path, SceneplatePlacement::Behind);
    images.setActive(true);
    const qint64 key = images.plates()[0].image.cacheKey();
    QSignalSpy changed(&images, &SceneplateImages::changed);
    Document::the().createSceneplate(QStringLiteral("B"), path, SceneplatePlacement::InFront);
    QTRY_COMPARE(images.plates().size(), size_t(2));
    QCOMPARE(images.plates()[1].image.cacheKey(), key);
    QCOMPARE(changed.count(), 1);
    Document::the().createObject(nkObjectType::Node, QStringLiteral("Node")); // has nothing to do with it
    QCoreApplication::processEvents();
    QCOMPARE(changed.count(), 1);
}

void TestSceneplateImages::readsLargeImagesSmaller()
{
    Document::the().createSceneplate(QStringLiteral("A"), image(QStringLiteral("a.png"), {6000, 300}),
                                     SceneplatePlacement::Behind);
    SceneplateImages images;
    images.setActive(true);
    QCOMPARE(images.plates()[0].image.width(), SceneplateImages::MostPixelsASide);
    QVERIFY(qAbs(images.plates()[0].image.height() - 102) <= 1);
}

void TestSceneplateImages::tellsWhatCannotBeRead_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::newRow("no image") << QByteArray("This is a text.");
    QTest::newRow("empty") << QByteArray("");
    QTest::newRow("another kind") << QByteArray("P6 2 2 255 abcdefghijkl");
    QTest::newRow("cut off") << QByteArray("\x89PNG\r\n\x1a\n\0\0\0\rIHDR\0\0", 18);
    QTest::newRow("absurdly large") << QByteArray::fromHex(
        "89504e470d0a1a0a0000000d49484452"
        "7fffffff7fffffff08020000009f4dd8ad0000000049454e44ae426082");
}

void TestSceneplateImages::tellsWhatCannotBeRead()
{
    QFETCH(QByteArray, content);
    const QString path = m_folder->filePath(QStringLiteral("a <b>.png"));
    ViewportFixture::write(path, content);
    Document::the().createSceneplate(QStringLiteral("A"), path, SceneplatePlacement::Behind);
    Document::the().createSceneplate(QStringLiteral("B"), path, SceneplatePlacement::Behind);
    SceneplateImages images;
    images.setActive(true);
    QVERIFY(images.plates().empty());
    QCOMPARE(images.troubles(),
             QStringList{QStringLiteral("The image “%1” of a sceneplate cannot be read; choose "
                                        "another one, or put the file there.")
                             .arg(path)});
}

void TestSceneplateImages::imagesKeepTheirShape()
{
    // Twice as wide as the viewport's shape: all of it is seen in front, and behind half of it.
    QCOMPARE(SceneplateLayer::share({400, 100}, {200, 100}, true), QSizeF(1, 0.5));
    QCOMPARE(SceneplateLayer::share({400, 100}, {200, 100}, false), QSizeF(2, 1));
    QCOMPARE(SceneplateLayer::share({20, 10}, {200, 100}, false), QSizeF(1, 1));
}

void TestSceneplateImages::aSceneOfPlatesAloneIsNotBlank()
{
    ViewportScene scene;
    scene.setActive(true);
    QVERIFY(scene.isBlank());
    QSignalSpy changed(&scene, &ViewportScene::changed);
    const int revision = scene.revision();
    Document::the().createSceneplate(QStringLiteral("A"), image(QStringLiteral("a.png")),
                                     SceneplatePlacement::Behind);
    QTRY_VERIFY(!scene.isBlank());
    QVERIFY(changed.count() == 1 && scene.revision() != revision);
}

NK_TEST_MAIN(TestSceneplateImages)
#include "test_sceneplate_images.moc"
