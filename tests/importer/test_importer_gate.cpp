#include "ImporterFixture.h"
#include "TestMain.h"

#include <importer/FolderGate.h>
#include <importer/LoaderList.h>

#include <assimp/IOStream.hpp>
#include <assimp/Importer.hpp>
#include <assimp/importerdesc.h>

#include <memory>

#include <sys/stat.h>

using namespace ImporterFixture;

/// The importer's way to files and its list of loaders.
class TestImporterGate : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void opensTheModelAndFilesBelowItsFolder();
    void refusesWhatIsOutside_data();
    void refusesWhatIsOutside();
    void refusesWhatIsNoPlainFile_data();
    void refusesWhatIsNoPlainFile();
    void refusesOtherKindsOfFiles();
    void refusesToWrite_data();
    void refusesToWrite();
    void opensAModelThatIsALink();
    void readsAndSeeksLikeAnyFile();
    void keepsTheListOfLoadersClosed();
    void keepsToTheListInScenesOfSeveralFiles();

private:
    bool opens(const QString &path);

    std::unique_ptr<Folder> m_folder;
    std::unique_ptr<FolderGate> m_gate;
};

void TestImporterGate::init()
{
    m_folder = std::make_unique<Folder>();
    m_folder->write(QStringLiteral("secret.mtl"), "newmtl Secret\n");
    m_folder->write(QStringLiteral("models-too/near.mtl"), "newmtl Near\n");
    m_folder->write(QStringLiteral("models/below/inner.mtl"), "newmtl Inner\n");
    const QString model = m_folder->write(QStringLiteral("models/model.obj"), triangleObj());
    m_gate = std::make_unique<FolderGate>(QFile::encodeName(model).toStdString());
}

bool TestImporterGate::opens(const QString &path)
{
    const QByteArray name = QFile::encodeName(path);
    Assimp::IOStream *file = m_gate->Open(name.constData(), "rb");
    const bool isOpen = file != nullptr;
    m_gate->Close(file);
    if (isOpen != m_gate->Exists(name.constData()))
        qFatal("what can be opened exists");
    return isOpen;
}

void TestImporterGate::opensTheModelAndFilesBelowItsFolder()
{
    QVERIFY(opens(m_folder->path(QStringLiteral("models/model.obj"))));
    QVERIFY(opens(m_folder->path(QStringLiteral("models/below/inner.mtl"))));
    QVERIFY(opens(QStringLiteral("below/inner.mtl")));
    QVERIFY(opens(m_folder->path(QStringLiteral("models/../models/below/../below/inner.mtl"))));
    QVERIFY(
        QFile::link(QStringLiteral("below/inner.mtl"), m_folder->path(QStringLiteral("models/link.mtl"))));
    QVERIFY(opens(m_folder->path(QStringLiteral("models/link.mtl"))));
    QVERIFY(!opens(QStringLiteral("below/nothing.mtl")));
    QVERIFY(m_gate->refused().empty());
}

void TestImporterGate::refusesWhatIsOutside_data()
{
    QTest::addColumn<QString>("path");
    QTest::newRow("above") << "models/../secret.mtl";
    QTest::newRow("above, by ways") << "models/below/../../models/./../secret.mtl";
    QTest::newRow("folder whose name begins the same") << "models-too/near.mtl";
    QTest::newRow("link to a file") << "models/link.mtl";
    QTest::newRow("link to a folder") << "models/folder/secret.mtl";
    QTest::newRow("link to a link") << "models/second.mtl";
}

void TestImporterGate::refusesWhatIsOutside()
{
    QFETCH(QString, path);
    QVERIFY(QFile::link(m_folder->path(QStringLiteral("secret.mtl")),
                        m_folder->path(QStringLiteral("models/link.mtl"))));
    QVERIFY(QFile::link(QStringLiteral("link.mtl"), m_folder->path(QStringLiteral("models/second.mtl"))));
    QVERIFY(QFile::link(QStringLiteral(".."), m_folder->path(QStringLiteral("models/folder"))));
    const QString full = QDir(m_folder->path(QString())).path() + QLatin1Char('/') + path;
    QVERIFY(QFile::exists(full));
    QVERIFY(!opens(full));
    QCOMPARE(m_gate->refused().size(), size_t(1));
    const QString told = QFile::decodeName(m_gate->refused().begin()->c_str());
    QCOMPARE(told, path.startsWith(QLatin1String("models/")) ? path.mid(7) : full);
    QVERIFY(!opens(QStringLiteral("/etc/hostname")));
}

void TestImporterGate::refusesWhatIsNoPlainFile_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("pipe") << "models/pipe.mtl";
    QTest::newRow("device") << "models/device.mtl";
    QTest::newRow("folder") << "models/folder.mtl";
    QTest::newRow("broken link") << "models/broken.mtl";
}

/// A pipe that nobody writes to would be waited for without end.
void TestImporterGate::refusesWhatIsNoPlainFile()
{
    QFETCH(QString, name);
    QCOMPARE(mkfifo(QFile::encodeName(m_folder->path(QStringLiteral("models/pipe.mtl"))).constData(), 0600),
             0);
    QVERIFY(QFile::link(QStringLiteral("/dev/zero"), m_folder->path(QStringLiteral("models/device.mtl"))));
    QVERIFY(QDir(m_folder->path(QStringLiteral("models"))).mkdir(QStringLiteral("folder.mtl")));
    QVERIFY(QFile::link(QStringLiteral("nowhere.mtl"), m_folder->path(QStringLiteral("models/broken.mtl"))));
    QVERIFY(!opens(m_folder->path(name)));
}

void TestImporterGate::refusesOtherKindsOfFiles()
{
    for (const char *name :
         {"house.ifc", "scene.gltf", "scene.glb", "level.pk3", "dump.assbin", "letter.pdf", "noending"}) {
        const QString path = m_folder->write(QStringLiteral("models/") + QLatin1String(name), "text");
        QVERIFY2(!opens(path), name);
    }
    QVERIFY(opens(m_folder->write(QStringLiteral("models/OTHER.MTL"), "text")));
}

void TestImporterGate::refusesToWrite_data()
{
    QTest::addColumn<QByteArray>("mode");
    for (const char *mode : {"wb", "w", "ab", "r+b", "rb+", "wt"})
        QTest::newRow(mode) << QByteArray(mode);
}

void TestImporterGate::refusesToWrite()
{
    QFETCH(QByteArray, mode);
    const QByteArray model = QFile::encodeName(m_folder->path(QStringLiteral("models/model.obj")));
    QVERIFY(!m_gate->Open(model.constData(), mode.constData()));
    QVERIFY(!m_gate->DeleteFile(model.toStdString()));
    QVERIFY(!m_gate->CreateDirectory(model.toStdString() + ".d"));
    QVERIFY(!m_gate->ChangeDirectory("/"));
    QFile file(QFile::decodeName(model));
    QVERIFY(file.open(QFile::ReadOnly));
    QCOMPARE(file.readAll(), triangleObj());
}

/// The person has chosen it; what it refers to is looked for where it stands for the person.
void TestImporterGate::opensAModelThatIsALink()
{
    m_folder->write(QStringLiteral("store/0123"), triangleObj());
    m_folder->write(QStringLiteral("store/other.mtl"), "newmtl Other\n");
    const QString model = m_folder->path(QStringLiteral("models/chosen.obj"));
    QVERIFY(QFile::link(m_folder->path(QStringLiteral("store/0123")), model));
    m_gate = std::make_unique<FolderGate>(QFile::encodeName(model).toStdString());
    QVERIFY(opens(model));
    QVERIFY(!opens(m_folder->path(QStringLiteral("store/other.mtl"))));
    QVERIFY(!opens(m_folder->path(QStringLiteral("store/0123"))));
}

void TestImporterGate::readsAndSeeksLikeAnyFile()
{
    const QByteArray path = QFile::encodeName(
        m_folder->write(QStringLiteral("models/text.txt"), "0123456789"));
    Assimp::IOStream *file = m_gate->Open(path.constData(), "rt");
    QVERIFY(file);
    char bytes[10] = {};
    QCOMPARE(file->FileSize(), size_t(10));
    QCOMPARE(file->Read(bytes, 2, 2), size_t(2));
    QCOMPARE(file->Tell(), size_t(4));
    QCOMPARE(file->Seek(8, aiOrigin_SET), aiReturn_SUCCESS);
    QCOMPARE(file->Read(bytes, 1, 10), size_t(2));
    QCOMPARE(QByteArray(bytes, 4), QByteArray("8923"));
    QCOMPARE(file->Write("x", 1, 1), size_t(0));
    m_gate->Close(file);
}

void TestImporterGate::keepsTheListOfLoadersClosed()
{
    Assimp::Importer importer;
    LoaderList::close(importer);
    QStringList endings;
    for (size_t i = 0; i < importer.GetImporterCount(); ++i)
        endings += QString::fromLatin1(importer.GetImporterInfo(i)->mFileExtensions).split(QLatin1Char(' '));
    for (const char *other : {"gltf", "glb", "ifc", "step", "bsp", "pk3", "assbin"}) {
        QVERIFY2(!endings.contains(QLatin1String(other)), other);
        QVERIFY2(!LoaderList::isKnown((std::string("model.") + other).c_str(), true), other);
    }
    endings.removeDuplicates();
    QVERIFY2(endings.size() >= 55, qPrintable(endings.join(QLatin1Char(' '))));
    for (const QString &ending : endings) {
        QVERIFY2(LoaderList::isKnown(("model." + ending).toLatin1().constData(), false), qPrintable(ending));
        QVERIFY(interchange::ImporterReader().isFor(ending, QByteArray()));
    }
    QVERIFY(!interchange::ImporterReader().isFor(QStringLiteral("gltf"), QByteArray()));
    QVERIFY(!interchange::ImporterReader().isFor(QString(), QByteArray()));
}

/// A scene of another program that loads models: only those of the closed list, whatever loaders the library has.
void TestImporterGate::keepsToTheListInScenesOfSeveralFiles()
{
    const QByteArray scene = "LWSC\n3\n\nLoadObjectLayer 1 below/part.obj\nAddNullObject Empty\n";
    const QString path = m_folder->write(QStringLiteral("models/scene.lws"), scene);
    m_folder->write(QStringLiteral("models/below/part.obj"), triangleObj());
    const Reading withPart = read(path);
    QVERIFY2(withPart.isRead, qPrintable(withPart.error));
    QCOMPARE(int(withPart.scene.geometry->meshes.size()), 1);

    QByteArray other = scene;
    m_folder->write(QStringLiteral("models/scene.lws"), other.replace("part.obj", "part.gltf"));
    m_folder->write(QStringLiteral("models/below/part.gltf"), R"({"asset":{"version":"2.0"},"nodes":[{}]})");
    const Reading without = read(path);
    QVERIFY(!without.isRead || without.scene.geometry->meshes.empty());
}

NK_GUILESS_TEST_MAIN(TestImporterGate)
#include "test_importer_gate.moc"
