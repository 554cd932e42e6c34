#include "Fixtures.h"
#include "TestMain.h"

#include <interchange/gltf/GlbContainer.h>

#include <QBuffer>

using namespace interchange;
using namespace Fixtures;

/// The frame of binary scene files: what is taken, and that no length is believed.
class TestGlbContainer : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void findsTheJsonTextBehindTheHeaders();
    void acceptsAFileWithoutGeometry();
    void passesOverUnknownChunks();
    void stripsZeroPaddingOnly();
    void readsOnlyTheJsonText();
    void refusesDamagedFrames_data();
    void refusesDamagedFrames();
    void refusesAFileCutAtAnyByte();
    void forgetsTheLastFile();
};

namespace {

const QByteArray Json("{\"a\":1} ");

bool readInto(GlbContainer &container, QByteArray bytes)
{
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::ReadOnly);
    return container.read(buffer);
}

/// Counts what is read from it.
class CountingBuffer : public QBuffer
{
public:
    qint64 count = 0;

protected:
    qint64 readData(char *data, qint64 length) override
    {
        const qint64 read = QBuffer::readData(data, length);
        count += std::max<qint64>(read, 0);
        return read;
    }
};

} // namespace

void TestGlbContainer::findsTheJsonTextBehindTheHeaders()
{
    const QByteArray file = glbOf("{\"a\":1}");
    GlbContainer container;
    QVERIFY(readInto(container, file));
    QVERIFY(!container.error().isSet());
    QCOMPARE(container.json(), Json);
    QCOMPARE(container.jsonOffset(), 20);
    QCOMPARE(container.jsonChunkLength(), 8);
    QCOMPARE(container.fileLength(), qint64(file.size()));
    QCOMPARE(file.mid(static_cast<int>(container.jsonOffset()), 8), container.json());
}

void TestGlbContainer::acceptsAFileWithoutGeometry()
{
    GlbContainer container;
    QVERIFY(readInto(container, glb(chunk("JSON", Json))));
    QVERIFY(readInto(container, glb(chunk("JSON", Json) + chunk(QByteArray("BIN\0", 4), QByteArray()))));
    QCOMPARE(container.json(), Json);
}

void TestGlbContainer::passesOverUnknownChunks()
{
    GlbContainer container;
    QVERIFY(
        readInto(container, glb(chunk("JSON", Json) + chunk("XYZ1", "1234") + chunk("XYZ2", "12345678"))));
    QCOMPARE(container.json(), Json);
}

void TestGlbContainer::stripsZeroPaddingOnly()
{
    GlbContainer container;
    QVERIFY(readInto(container, glb(chunk("JSON", QByteArray("{\"a\":12}\0\0\0\0", 12)))));
    QCOMPARE(container.json(), QByteArray("{\"a\":12}"));
    QCOMPARE(container.jsonChunkLength(), 12);
}

void TestGlbContainer::readsOnlyTheJsonText()
{
    const QByteArray geometry(10 * 1024 * 1024, 'x');
    CountingBuffer device;
    device.setData(glb(chunk("JSON", Json) + chunk(QByteArray("BIN\0", 4), geometry)));
    device.open(QIODevice::ReadOnly | QIODevice::Unbuffered);
    GlbContainer container;
    QVERIFY(container.read(device));
    QVERIFY2(device.count < 100, qPrintable(QString::number(device.count)));
}

void TestGlbContainer::refusesDamagedFrames_data()
{
    QTest::addColumn<QByteArray>("file");
    QTest::addColumn<qint64>("offset");
    const QByteArray json = chunk("JSON", Json);
    const QByteArray headOnly = "glTF" + word(2);
    QTest::newRow("header alone, right length") << glb(QByteArray()) << qint64(12);
    QTest::newRow("header alone, length of more") << headOnly + word(100) << qint64(8);
    QTest::newRow("header alone, length of nothing") << headOnly + word(0) << qint64(8);
    QTest::newRow("other magic") << "glTX" + glbOf("{}").mid(4) << qint64(0);
    QTest::newRow("version 1") << glb(json, 1) << qint64(4);
    QTest::newRow("version 3") << glb(json, 3) << qint64(4);
    QTest::newRow("file longer than it says") << glb(json) + "more" << qint64(8);
    QTest::newRow("file length beyond 2 GiB") << headOnly + word(0xffffffff) + json << qint64(8);
    QTest::newRow("chunk longer than the file") << glb(word(12) + "JSON" + Json) << qint64(12);
    QTest::newRow("chunk of 4 GiB") << glb(word(0xfffffffc) + "JSON" + Json) << qint64(12);
    QTest::newRow("chunk shorter than its content") << glb(word(4) + "JSON" + Json) << qint64(28);
    QTest::newRow("chunk length no multiple of 4") << glb(word(7) + "JSON" + Json) << qint64(12);
    QTest::newRow("geometry first") << glb(chunk(QByteArray("BIN\0", 4), "1234") + json) << qint64(16);
    QTest::newRow("rest too short for a chunk") << glb(json + "1234") << qint64(32);
    QTest::newRow("second chunk too long")
        << glb(json + word(8) + QByteArray("BIN\0", 4) + "1234") << qint64(28);
}

void TestGlbContainer::refusesDamagedFrames()
{
    QFETCH(QByteArray, file);
    QFETCH(qint64, offset);
    GlbContainer container;
    QVERIFY(!readInto(container, file));
    QVERIFY(container.error().isSet());
    QCOMPARE(container.error().offset(), offset);
    QVERIFY(container.json().isEmpty());
    const QString message = container.error().message(QStringLiteral("a.glb"));
    QVERIFY2(message.contains(QStringLiteral("“a.glb”"))
                 && message.contains(QStringLiteral("byte %1").arg(offset)),
             qPrintable(message));
}

void TestGlbContainer::refusesAFileCutAtAnyByte()
{
    const QByteArray file = glbOf("{\"a\":1}");
    for (int length = 0; length < file.size(); ++length) {
        GlbContainer container;
        QVERIFY2(!readInto(container, file.left(length)), qPrintable(QString::number(length)));
        QVERIFY(container.error().offset() >= 0 && container.error().offset() <= length);
    }
}

void TestGlbContainer::forgetsTheLastFile()
{
    GlbContainer container;
    QVERIFY(readInto(container, glbOf("{}")));
    QVERIFY(!readInto(container, "glTF"));
    QVERIFY(container.json().isEmpty());
    QCOMPARE(container.jsonChunkLength(), 0);
    QVERIFY(readInto(container, glbOf("{}")));
    QVERIFY(!container.error().isSet());
}

NK_GUILESS_TEST_MAIN(TestGlbContainer)
#include "test_glb_container.moc"
