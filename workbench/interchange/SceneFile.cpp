#include <interchange/SceneFile.h>

#include <interchange/SceneSaver.h>
#include <interchange/foreign/ForeignOpener.h>
#include <interchange/foreign/ForeignReaders.h>
#include <interchange/foreign/ForeignSaver.h>
#include <interchange/gltf/GlbContainer.h>
#include <interchange/gltf/GltfAnnexMaker.h>
#include <interchange/gltf/GltfAnnexReader.h>
#include <interchange/gltf/GltfAnnexText.h>
#include <interchange/gltf/GltfReader.h>
#include <interchange/gltf/SceneImporter.h>
#include <interchange/json/JsonPath.h>

#include <kernel/services/Progress.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>

using namespace interchange;

namespace {

// What one QByteArray can hold.
constexpr qint64 LargestText = 0x7fffffe0;

bool isSpace(char c)
{
    return c == ' ' || c == '\t' || c == '\n' || c == '\r';
}

/// Whether these first bytes can be those of a JSON object: every glTF text is one.
bool mayBeJsonObject(const QByteArray &firstBytes)
{
    int at = firstBytes.startsWith("\xef\xbb\xbf") ? 3 : 0;
    while (at < firstBytes.size() && isSpace(firstBytes.at(at)))
        ++at;
    return at == firstBytes.size() || firstBytes.at(at) == '{';
}

/// Formats of scenes that are known, and not read.
bool isOtherFormat(const QString &suffix)
{
    static const QStringList known{QStringLiteral("3ds"),  QStringLiteral("3mf"),  QStringLiteral("abc"),
                                   QStringLiteral("dae"),  QStringLiteral("fbx"),  QStringLiteral("iges"),
                                   QStringLiteral("obj"),  QStringLiteral("ply"),  QStringLiteral("step"),
                                   QStringLiteral("stl"),  QStringLiteral("stp"),  QStringLiteral("usd"),
                                   QStringLiteral("usda"), QStringLiteral("usdz"), QStringLiteral("wrl"),
                                   QStringLiteral("x"),    QStringLiteral("x3d")};
    return known.contains(suffix, Qt::CaseInsensitive);
}

bool isUtf16(const QByteArray &firstBytes)
{
    return firstBytes.startsWith("\xff\xfe") || firstBytes.startsWith("\xfe\xff");
}

} // namespace

SceneFile::SceneFile(const QString &path, const QString &sidecar)
    : m_source(std::make_shared<SceneSource>()), m_sidecar(sidecar)
{
    m_source->filePath = QFileInfo(path).absoluteFilePath();
}

SceneFile::Result SceneFile::open(const QString &path, const QString &sidecar)
{
    return SceneFile(path, sidecar).open();
}

SceneFile::Result SceneFile::open()
{
    Result result;
    kernel::Progress progress(tr("Opening “%1”").arg(QFileInfo(m_source->filePath).fileName()));
    if (const auto reader = foreignReader())
        return ForeignOpener(m_source->filePath, *reader, m_sidecar).open(progress);
    if (read(progress) && !SceneImporter(m_scene, m_annex, *m_source).import())
        failFile(tr("a change to the present scene is not finished"),
                 tr("finish it and open the file again"));
    result.isCancelled = m_isCancelled;
    if (m_isCancelled)
        return result;
    if (m_error.isSet()) {
        result.error = m_error.message(QDir::toNativeSeparators(m_source->filePath));
        return result;
    }
    noteAnnex();
    result.report = m_scene.report;
    result.source = m_source;
    return result;
}

/// Null for what is glTF by its content, for what nobody reads, and where there is no file to look into.
std::unique_ptr<ForeignReader> SceneFile::foreignReader() const
{
    const QFileInfo info(m_source->filePath);
    QFile file(m_source->filePath);
    if (!info.isFile() || !file.open(QIODevice::ReadOnly))
        return nullptr;
    const QByteArray firstBytes = file.peek(4096);
    if (firstBytes.isEmpty() || GlbContainer::isGlb(firstBytes) || mayBeJsonObject(firstBytes))
        return nullptr;
    return ForeignReaders::readerFor(info.suffix().toLower(), firstBytes);
}

bool SceneFile::read(kernel::Progress &progress)
{
    QByteArray json;
    if (!readJson(json))
        return false;
    m_source->jsonLength = json.size();
    m_source->json = json;
    GltfReader reader;
    reader.setGoOn([&progress](double share) { return progress.advance(share); });
    if (reader.read(json, m_scene)) {
        readAnnex();
        return true;
    }
    m_isCancelled = reader.isCancelled();
    if (m_isCancelled)
        return false;
    SceneError error = reader.error();
    error.shift(m_source->jsonOffset);
    return fail(error);
}

void SceneFile::readAnnex()
{
    const JsonSpan &extras = m_scene.rootExtrasSpan;
    GltfAnnexReader reader;
    m_source->isAnnexForeign = !reader.read(m_source->json.mid(int(extras.offset), int(extras.length)),
                                            m_annex);
    if (m_source->isAnnexForeign)
        m_scene.report.addRefused(
            JsonPath().append(QStringLiteral("extras")).append(QString(GltfAnnex::Member)).text(),
            ImportReason::ForeignAnnex, reader.error());
}

/// What the annex would be now: what it says of things that are not in the file any more, for instance, is missing.
void SceneFile::noteAnnex()
{
    if (!m_annex.isEmpty()) {
        const GltfAnnex annex =
            GltfAnnexMaker(m_scene, *m_source, QFileInfo(m_source->filePath).path(), nullptr).make();
        m_source->annex = annex.isEmpty() ? QByteArray() : textOfAnnex(annex);
    }
}

SceneFile::Saved SceneFile::save(const QString &path, const std::shared_ptr<const SceneSource> &source,
                                 IfChanged ifChanged)
{
    const auto from = source ? source : SceneSource::blank();
    const QString target = QFileInfo(path).absoluteFilePath();
    if (from->foreign)
        return ForeignSaver(target, *from).save(ifChanged);
    Saved saved = SceneSaver(target, *from).save(ifChanged);
    saved.file = target;
    return saved;
}

bool SceneFile::readJson(QByteArray &json)
{
    const QFileInfo info(m_source->filePath);
    if (!info.exists())
        return failFile(tr("there is no such file"), tr("check the name and the folder"));
    if (!info.isFile())
        return failFile(tr("it is no file"), tr("choose a .gltf or .glb file"));
    QFile file(m_source->filePath);
    if (!file.open(QIODevice::ReadOnly))
        return failFile(tr("it cannot be read (%1)").arg(file.errorString()), tr("check who may read it"));
    const QByteArray firstBytes = file.peek(4096);
    if (firstBytes.isEmpty())
        return failFile(tr("the file is empty"), tr("export or copy it again"));
    m_source->isBinary = GlbContainer::isGlb(firstBytes);
    if (m_source->isBinary)
        return readBinary(file, json);
    if (isUtf16(firstBytes))
        return failFile(tr("its text is UTF-16, and glTF is UTF-8"), tr("export it again as UTF-8"));
    if (!mayBeJsonObject(firstBytes) && isOtherFormat(info.suffix()))
        return failFile(tr("scenes of the kind “.%1” cannot be opened yet").arg(info.suffix().toLower()),
                        tr("export it as glTF (.gltf or .glb) and open that"));
    if (!mayBeJsonObject(firstBytes))
        return failFile(tr("it is no glTF scene: it begins neither with “glTF” nor with “{”"),
                        tr("choose a .gltf or .glb file"));
    return readText(file, json);
}

bool SceneFile::readBinary(QFile &file, QByteArray &json)
{
    GlbContainer container;
    if (!container.read(file))
        return fail(container.error());
    m_source->jsonOffset = container.jsonOffset();
    json = container.json();
    m_source->hash = FileHash::of(file);
    m_source->restOffset = container.jsonOffset() + container.jsonChunkLength();
    m_source->restHash = FileHash::of(file, m_source->restOffset);
    m_source->original = std::make_shared<QFile>(m_source->filePath);
    if (!m_source->original->open(QIODevice::ReadOnly))
        return failFile(tr("it cannot be read (%1)").arg(m_source->original->errorString()),
                        tr("check who may read it"));
    return true;
}

bool SceneFile::readText(QFile &file, QByteArray &json)
{
    if (file.size() > LargestText)
        return failFile(tr("the file has more than 2 GiB of text"), tr("split the scene"));
    json = file.readAll();
    if (file.error() != QFileDevice::NoError)
        return failFile(tr("it cannot be read to its end (%1)").arg(file.errorString()), tr("copy it again"));
    m_source->hash = FileHash::of({json.constData(), size_t(json.size())});
    return true;
}

bool SceneFile::fail(const SceneError &error)
{
    m_error = error;
    return false;
}

bool SceneFile::failFile(const QString &reason, const QString &advice)
{
    return fail(SceneError::ofFile(reason, advice));
}
