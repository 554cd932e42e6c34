#include "ImporterFixture.h"
#include "TestMain.h"

#include <QDirIterator>
#include <QRegularExpression>

using namespace interchange;
using namespace ImporterFixture;

/// Every file of a large collection of models, sound and damaged, opens or is refused with a reason.
class TestImporterModels : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void opensOrRefuses_data();
    void opensOrRefuses();
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

/// The models that the library of Debian 12 does not understand, or that are damaged on purpose. Animations without a
/// model of their own are among them.
bool isRefusedByTheLibrary(const QString &model)
{
    static const QRegularExpression list(QStringLiteral(
        "^(invalid/.*|IRRMesh/.*\\.xml|MDL/MDL \\(HL1\\)/.*0[1-9]\\.mdl|TER/.*"
        "|BLEND/BlenderDefault_262\\.blend|COB/(dwarf|molecule)_ascii\\.cob"
        "|Collada/library_animation_clips\\.dae|FBX/transparentTest\\.fbx"
        "|LWO/LWOB/(ConcavePolygon|MappingModes/bluewithcylindrictexz|sphere_with_mat_gloss_[15]0pc)\\.lwo"
        "|XGL/sample_official_asxml\\.xml|NFF/NFF/cone\\.nff|OpenGEX/"
        "(animation_example|empty_camera)\\.ogex)$"));
    return list.match(model).hasMatch();
}

/// For a look at what became of each: NK_IMPORT_TABLE=FILE
void tell(const QString &model, const Reading &reading)
{
    QFile table(qEnvironmentVariable("NK_IMPORT_TABLE"));
    if (table.fileName().isEmpty() || !table.open(QFile::Append))
        return;
    const QString outcome = reading.isRead ? QStringLiteral("%1 nodes").arg(reading.scene.nodes.size())
                                           : QStringLiteral("refused: ") + reading.error;
    table.write(model.toUtf8() + '\t' + outcome.toUtf8() + '\n');
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
    const QString model = QString::fromUtf8(QTest::currentDataTag());
    const Reading reading = read(path);
    tell(model, reading);
    if (reading.isRead) {
        QVERIFY(isSound(reading.scene));
        return;
    }
    QVERIFY2(reading.error.size() > 5 && !reading.error.contains(path), qPrintable(reading.error));
    const bool isOurs = ImporterReader().isFor(QFileInfo(path).suffix().toLower(), QByteArray());
    QVERIFY2(!isOurs || isRefusedByTheLibrary(model), qPrintable(reading.error));
}

NK_GUILESS_TEST_MAIN(TestImporterModels)
#include "test_importer_models.moc"
