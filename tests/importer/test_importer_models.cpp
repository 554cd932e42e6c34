#include "ImporterFixture.h"
#include "TestMain.h"

#include <QDirIterator>
#include <QElapsedTimer>

using namespace interchange;
using namespace ImporterFixture;

/// Every file of a large collection of models, sound and damaged, opens or is refused with a reason.
class TestImporterModels : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void opensOrRefuses_data();
    void opensOrRefuses();
    void cleanupTestCase();

private:
    int m_files = 0;
    int m_opened = 0;
};

namespace {

bool isSound(const ForeignScene &scene)
{
    const SceneGeometry &geometry = *scene.geometry;
    if (geometry.nodes.size() != scene.nodes.size() || geometry.materials.size() != scene.materials.size())
        return false;
    for (size_t i = 0; i < scene.nodes.size(); ++i)
        if (scene.nodes[i].parent >= int(i) || scene.nodes[i].name.isEmpty() || scene.nodes[i].key.isEmpty()
            || scene.nodes[i].entries.end() > scene.entries.size())
            return false;
    return !scene.nodes.empty();
}

QStringList files()
{
    QStringList all;
    QDirIterator walk(QStringLiteral(NK_MODELS_DIR), QDir::Files, QDirIterator::Subdirectories);
    while (walk.hasNext())
        all.append(walk.next());
    all.sort();
    return all;
}

/// For a look at what became of each: NK_IMPORT_TABLE=FILE
void tell(const QString &line)
{
    QFile table(qEnvironmentVariable("NK_IMPORT_TABLE"));
    if (!table.fileName().isEmpty() && table.open(QFile::Append))
        table.write(line.toUtf8() + '\n');
}

} // namespace

void TestImporterModels::opensOrRefuses_data()
{
    QTest::addColumn<QString>("path");
    const QStringList all = files();
    QVERIFY2(all.size() > 500, "the test models are not installed: tools/setup test");
    for (int i = 0; i < all.size(); ++i)
        if (i % NK_PARTS == NK_PART - 1)
            QTest::newRow(qPrintable(QDir(QStringLiteral(NK_MODELS_DIR)).relativeFilePath(all.at(i))))
                << all.at(i);
}

void TestImporterModels::opensOrRefuses()
{
    QFETCH(QString, path);
    QElapsedTimer clock;
    clock.start();
    const Reading reading = read(path);
    ++m_files;
    m_opened += reading.isRead ? 1 : 0;
    tell(QStringLiteral("%1\t%2\t%3\t%4")
             .arg(clock.elapsed())
             .arg(reading.isRead ? "open" : "refused")
             .arg(QString::fromUtf8(QTest::currentDataTag()), reading.isRead
                                                                  ? QStringLiteral("%1 nodes, %2 entries")
                                                                        .arg(reading.scene.nodes.size())
                                                                        .arg(reading.scene.entries.size())
                                                                  : reading.error));
    if (reading.isRead)
        QVERIFY(isSound(reading.scene));
    else
        QVERIFY2(reading.error.size() > 5 && !reading.error.contains(path), qPrintable(reading.error));
}

void TestImporterModels::cleanupTestCase() {}

NK_GUILESS_TEST_MAIN(TestImporterModels)
#include "test_importer_models.moc"
