#include <interchange/SceneFile.h>

#include <interchange/GlbContainer.h>
#include <interchange/GltfReader.h>
#include <interchange/SceneImporter.h>

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

bool isUtf16(const QByteArray &firstBytes)
{
    return firstBytes.startsWith("\xff\xfe") || firstBytes.startsWith("\xfe\xff");
}

} // namespace

SceneFile::SceneFile(const QString &path) : m_source(std::make_shared<SceneSource>())
{
    m_source->filePath = QFileInfo(path).absoluteFilePath();
}

SceneFile::Result SceneFile::open(const QString &path)
{
    return SceneFile(path).open();
}

SceneFile::Result SceneFile::open()
{
    Result result;
    if (read() && !SceneImporter(m_scene, *m_source).import())
        failFile(tr("a change to the present scene is not finished"),
                 tr("finish it and open the file again"));
    if (m_error.isSet()) {
        result.error = m_error.message(QDir::toNativeSeparators(m_source->filePath));
        return result;
    }
    result.report = m_scene.report;
    result.source = m_source;
    return result;
}

bool SceneFile::read()
{
    QByteArray json;
    if (!readJson(json))
        return false;
    m_source->jsonLength = json.size();
    GltfReader reader;
    if (reader.read(json, m_scene))
        return true;
    SceneError error = reader.error();
    error.shift(m_source->jsonOffset);
    return fail(error);
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
    return true;
}

bool SceneFile::readText(QFile &file, QByteArray &json)
{
    if (file.size() > LargestText)
        return failFile(tr("the file has more than 2 GiB of text"), tr("split the scene"));
    json = file.readAll();
    if (file.error() != QFileDevice::NoError)
        return failFile(tr("it cannot be read to its end (%1)").arg(file.errorString()), tr("copy it again"));
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
