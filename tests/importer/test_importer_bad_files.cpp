#include "ImporterFixture.h"
#include "SceneTexts.h"
#include "TestMain.h"

#include <QElapsedTimer>

#include <functional>

#include <sys/stat.h>

using namespace interchange;
using namespace ImporterFixture;

/// Files that lie about their kind, reach for other folders or were made to do harm.
class TestImporterBadFiles : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void refusesFilesOfAnotherKindThanTheirName_data();
    void refusesFilesOfAnotherKindThanTheirName();
    void readsNoMaterialsFromOtherFolders_data();
    void readsNoMaterialsFromOtherFolders();
    void waitsForNoPipe();
    void refusesWhatIsNoFile();
    void refusesArchivesThatPromiseTooMuch();
    void refusesArchivesThatUnpackToTooMuch();
    void refusesCountsThatNeedTooMuchMemory();
    void survivesModelsCutAnywhere_data();
    void survivesModelsCutAnywhere();
};

namespace {

QByteArray contentOf(const char *model)
{
    QFile file(QStringLiteral(NK_MODELS_DIR "/") + QLatin1String(model));
    return file.open(QFile::ReadOnly) ? file.readAll() : QByteArray();
}

template <typename Number>
QByteArray bytesOf(Number number)
{
    QByteArray bytes;
    for (size_t i = 0; i < sizeof(number); ++i)
        bytes.append(char(quint64(number) >> (8 * i)));
    return bytes;
}

/// A zip archive of these files: their names, packed content, and the size that they claim to unpack to.
struct Packed
{
    QByteArray name;
    QByteArray deflated;
    quint32 size;
    quint32 checksum = 0;
};

QByteArray headOf(const Packed &file)
{
    return bytesOf(quint16(0)) + bytesOf(quint16(8)) + bytesOf(quint32(0)) + bytesOf(file.checksum)
           + bytesOf(quint32(file.deflated.size())) + bytesOf(file.size) + bytesOf(quint16(file.name.size()))
           + bytesOf(quint16(0));
}

QByteArray zip(const QVector<Packed> &files)
{
    QByteArray content, directory;
    for (const Packed &file : files) {
        directory += QByteArray("PK\1\2\x14\0\x14\0", 8) + headOf(file) + QByteArray(10, '\0')
                     + bytesOf(quint32(content.size())) + file.name;
        content += QByteArray("PK\3\4\x14\0", 6) + headOf(file) + file.name + file.deflated;
    }
    return content + directory + QByteArray("PK\5\6\0\0\0\0", 8) + bytesOf(quint16(files.size()))
           + bytesOf(quint16(files.size())) + bytesOf(quint32(directory.size()))
           + bytesOf(quint32(content.size())) + QByteArray(2, '\0');
}

/// Qt's packing without its length and zlib's frame.
QByteArray deflated(const QByteArray &content)
{
    const QByteArray packed = qCompress(content, 9);
    return packed.mid(6, packed.size() - 10);
}

/// A 3mf archive whose model has this content and claims this size.
QByteArray threeMf(const QByteArray &model, quint32 size)
{
    const QByteArray relations =
        "<?xml version=\"1.0\"?><Relationships><Relationship Target=\"/3D/3dmodel.model\" Id=\"rel0\" "
        "Type=\"http://schemas.microsoft.com/3dmanufacturing/2013/01/3dmodel\"/></Relationships>";
    return zip({{"_rels/.rels", deflated(relations), quint32(relations.size())},
                {"3D/3dmodel.model", deflated(model), size}});
}

} // namespace

void TestImporterBadFiles::refusesFilesOfAnotherKindThanTheirName_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QString>("name");
    const QByteArray png = contentOf("LWO/LWO2/MappingModes/earth.png").isEmpty()
                               ? QByteArray("\x89PNG\r\n\x1a\n") + QByteArray(5000, '\xaa')
                               : contentOf("LWO/LWO2/MappingModes/earth.png");
    for (const char *kind :
         {"fbx", "dae", "3ds", "ply", "stl", "x", "x3d", "3mf", "blend", "lwo", "md5mesh", "zae"}) {
        const QString name = QStringLiteral("model.") + QLatin1String(kind);
        QTest::newRow(qPrintable(name + QStringLiteral(" is an .obj")))
            << contentOf("OBJ/spider.obj") << name;
        QTest::newRow(qPrintable(name + QStringLiteral(" is a picture"))) << png << name;
    }
    QTest::newRow("model.obj is a picture") << png << QStringLiteral("model.obj");
    QTest::newRow("model.obj is COLLADA")
        << SceneTexts::collada(SceneTexts::colladaNode("n", "N")) << "model.obj";
    QTest::newRow("model.fbx is glTF")
        << QByteArray(R"({"asset":{"version":"2.0"},"nodes":[{}]})") << "model.fbx";
    QTest::newRow("model.dae is IFC")
        << QByteArray("ISO-10303-21;\nHEADER;\nFILE_SCHEMA(('IFC4'));\n") << "model.dae";
    QTest::newRow("zeros") << QByteArray(100000, '\0') << "model.obj";
}

void TestImporterBadFiles::refusesFilesOfAnotherKindThanTheirName()
{
    QFETCH(QByteArray, content);
    QFETCH(QString, name);
    const Folder folder;
    QVERIFY(!content.isEmpty());
    const Reading reading = read(folder.write(name, content));
    QVERIFY(!reading.isRead);
    QVERIFY2(reading.error.size() > 5, qPrintable(reading.error));
    QVERIFY2(reading.message.endsWith(QLatin1Char('.')) && !reading.message.contains(folder.path(QString())),
             qPrintable(reading.message));
}

void TestImporterBadFiles::readsNoMaterialsFromOtherFolders_data()
{
    QTest::addColumn<QByteArray>("library");
    QTest::addColumn<bool>("isRead");
    QTest::newRow("beside it") << QByteArray("near.mtl") << true;
    QTest::newRow("below it") << QByteArray("below/inner.mtl") << true;
    QTest::newRow("above it") << QByteArray("../secret.mtl") << false;
    QTest::newRow("by a link") << QByteArray("link.mtl") << false;
}

void TestImporterBadFiles::readsNoMaterialsFromOtherFolders()
{
    QFETCH(QByteArray, library);
    QFETCH(bool, isRead);
    const Folder folder;
    for (const char *file : {"secret.mtl", "models/near.mtl", "models/below/inner.mtl"})
        folder.write(QLatin1String(file), "newmtl Paint\nKd 1 0 0\n");
    QVERIFY(QFile::link(folder.path(QStringLiteral("secret.mtl")),
                        folder.path(QStringLiteral("models/link.mtl"))));
    const Reading reading = read(folder.write(QStringLiteral("models/model.obj"),
                                              triangleObj("mtllib " + library + "\nusemtl Paint\n")));
    QVERIFY2(reading.isRead, qPrintable(reading.error));
    bool isRed = false;
    for (const SceneGeometry::Material &material : reading.scene.geometry->materials)
        isRed = isRed || material.color.rgb() == qRgb(255, 0, 0);
    QCOMPARE(isRed, isRead);
    QCOMPARE(reading.scene.report.refused().size(), isRead ? 0 : 1);
    if (!isRead)
        QCOMPARE(reading.scene.report.refused().at(0).path, QString::fromLatin1(library));
}

void TestImporterBadFiles::waitsForNoPipe()
{
    const Folder folder;
    QCOMPARE(mkfifo(QFile::encodeName(folder.path(QStringLiteral("pipe.mtl"))).constData(), 0600), 0);
    const Reading reading = read(folder.write(QStringLiteral("model.obj"), triangleObj("mtllib pipe.mtl\n")));
    QVERIFY2(reading.isRead, qPrintable(reading.error));
}

void TestImporterBadFiles::refusesWhatIsNoFile()
{
    const Folder folder;
    QCOMPARE(mkfifo(QFile::encodeName(folder.path(QStringLiteral("pipe.obj"))).constData(), 0600), 0);
    QVERIFY(QDir(folder.path(QString())).mkdir(QStringLiteral("folder.obj")));
    for (const char *name : {"pipe.obj", "folder.obj"})
        QCOMPARE(read(folder.path(QLatin1String(name))).error,
                 QStringLiteral("it cannot be read (it is no file)"));
    QCOMPARE(read(folder.path(QStringLiteral("gone.obj"))).error,
             QStringLiteral("it cannot be read (No such file or directory)"));
}

void TestImporterBadFiles::refusesArchivesThatPromiseTooMuch()
{
    const Folder folder;
    const QByteArray model = "<?xml version=\"1.0\"?><model unit=\"millimeter\"><resources/><build/></model>";
    for (const quint32 size : {0xfffffff0U, 0x7fffffffU})
        QVERIFY(!read(folder.write(QStringLiteral("bomb.3mf"), threeMf(model, size))).isRead);
}

/// 300 MB of spaces in 300 kB.
void TestImporterBadFiles::refusesArchivesThatUnpackToTooMuch()
{
    const Folder folder;
    const QByteArray model = "<?xml version=\"1.0\"?><model>" + QByteArray(300 << 20, ' ');
    const QString path = folder.write(QStringLiteral("bomb.3mf"), threeMf(model, quint32(model.size())));
    QVERIFY(QFileInfo(path).size() < 1 << 20);
    const Reading reading = read(path);
    QVERIFY(!reading.isRead);
    QVERIFY2(reading.error.size() > 5, qPrintable(reading.error));
}

void TestImporterBadFiles::refusesCountsThatNeedTooMuchMemory()
{
    const Folder folder;
    const QByteArray head = "OFF\n2000000000 2000000000 0\n0 0 0\n";
    const Reading reading = read(folder.write(QStringLiteral("counts.off"), head));
    QVERIFY(!reading.isRead);
#ifndef __SANITIZE_ADDRESS__
    QCOMPARE(reading.error, QStringLiteral("reading it needs more than 2 GiB of memory"));
#endif
}

void TestImporterBadFiles::survivesModelsCutAnywhere_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QString>("kind");
    for (const char *model :
         {"OBJ/spider.obj", "PLY/Wuson.ply", "STL/Spider_binary.stl", "3DS/CameraRollAnim.3ds", "FBX/box.fbx",
          "Collada/cameras.dae", "MD2/faerie.md2", "X/test_cube_binary.x"})
        QTest::newRow(model) << contentOf(model) << QFileInfo(QLatin1String(model)).suffix();
}

/// The workbench gets a scene or a reason for each, also where the library crashes.
void TestImporterBadFiles::survivesModelsCutAnywhere()
{
    QFETCH(QByteArray, content);
    QFETCH(QString, kind);
    QVERIFY(!content.isEmpty());
    const Folder folder;
    for (int i = 0; i < 25; ++i) {
        const QByteArray cut = content.left(int(qint64(content.size()) * i / 25));
        const Reading reading = read(folder.write(QStringLiteral("cut.") + kind, cut));
        QVERIFY2(reading.isRead != (reading.error.size() > 5), qPrintable(reading.error));
    }
}

NK_GUILESS_TEST_MAIN(TestImporterBadFiles)
#include "test_importer_bad_files.moc"
