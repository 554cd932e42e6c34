#include <interchange/importer/AnswerReader.h>

#include <interchange/importer/FlatForm.h>
#include <interchange/importer/ImportLimits.h>

namespace interchange {

namespace {

constexpr quint32 SmallestMaterial = 21;
constexpr quint32 SmallestNode = 89;
constexpr quint32 SmallestTrouble = 5;

} // namespace

AnswerReader::AnswerReader(const QByteArray &record, const QString &fileName)
    : m_reader(record), m_fileName(fileName), m_geometry(std::make_shared<SceneGeometry>())
{}

bool AnswerReader::read(ForeignScene &scene)
{
    if (m_reader.byte() != quint8(flat::Record::Scene))
        return false;
    readMaterials(scene);
    AnswerGeometry geometry(m_reader, *m_geometry);
    geometry.readMeshes();
    geometry.readCameras();
    geometry.readLights();
    readNodes(scene);
    readTroubles(scene);
    scene.geometry = m_geometry;
    return m_reader.word() == flat::EndMark && m_reader.isSound() && m_reader.remaining() == 0
           && !scene.nodes.empty();
}

void AnswerReader::readMaterials(ForeignScene &scene)
{
    const quint32 count = m_reader.count(importlimits::Materials, SmallestMaterial);
    for (quint32 i = 0; i < count && m_reader.isSound(); ++i) {
        ForeignScene::Material material;
        bool isBroken = false;
        const QString name = m_reader.text(&isBroken);
        material.name = name.isEmpty() ? tr("Material %1").arg(i) : name;
        material.key = m_materialKeys.next(QString(), name);
        if (isBroken)
            scene.report.addConverted(material.key, ImportReason::InvalidText);
        SceneGeometry::Material look;
        float parts[4];
        for (float &part : parts) {
            part = m_reader.finite();
            if (part < 0 || part > 1)
                return m_reader.fail();
        }
        look.color = QColor::fromRgbF(double(parts[0]), double(parts[1]), double(parts[2]), double(parts[3]));
        look.isDoubleSided = m_reader.flag();
        scene.materials.push_back(material);
        m_geometry->materials.push_back(look);
    }
}

void AnswerReader::readNodes(ForeignScene &scene)
{
    const quint32 count = m_reader.count(importlimits::Nodes, SmallestNode);
    AnswerEntries entries(m_reader, scene);
    for (quint32 i = 0; i < count && m_reader.isSound(); ++i)
        readNode(scene, entries);
}

void AnswerReader::readNode(ForeignScene &scene, AnswerEntries &entries)
{
    ForeignScene::Node node;
    SceneGeometry::Node shape;
    bool isBroken = false;
    const QString name = m_reader.text(&isBroken);
    node.parent = m_reader.index(quint32(scene.nodes.size()));
    const size_t parent = size_t(node.parent);
    m_depths.push_back(node.parent < 0 ? 1 : m_depths[parent] + 1);
    if (m_depths.back() > importlimits::Depth)
        return m_reader.fail();
    shape.parent = node.parent;
    readMatrix(shape);
    node.kind = SceneNodeKind(m_reader.choice(quint8(flat::Kind::Light)));
    shape.mesh = m_reader.index(quint32(m_geometry->meshes.size()));
    shape.camera = m_reader.index(quint32(m_geometry->cameras.size()));
    shape.light = m_reader.index(quint32(m_geometry->lights.size()));
    node.name = name.isEmpty() ? unnamed(node.kind, scene.nodes.size()) : name;
    node.key = node.parent < 0 ? m_nodeKeys.next(QString(), name == m_fileName ? QString() : name)
                               : m_nodeKeys.next(scene.nodes[parent].key, name);
    if (isBroken)
        scene.report.addConverted(node.key, ImportReason::InvalidText);
    node.entries = entries.read(node.key);
    scene.nodes.push_back(node);
    m_geometry->nodes.push_back(shape);
}

QString AnswerReader::unnamed(SceneNodeKind kind, size_t index)
{
    const QString pattern = kind == SceneNodeKind::Camera  ? tr("Camera %1")
                            : kind == SceneNodeKind::Light ? tr("Light %1")
                                                           : tr("Node %1");
    return pattern.arg(index);
}

void AnswerReader::readMatrix(SceneGeometry::Node &node)
{
    float numbers[16];
    for (float &number : numbers)
        number = m_reader.finite();
    node.local = QMatrix4x4(numbers);
}

void AnswerReader::readTroubles(ForeignScene &scene)
{
    const quint32 count = m_reader.count(importlimits::Troubles, SmallestTrouble);
    for (quint32 i = 0; i < count && m_reader.isSound(); ++i) {
        const auto trouble = flat::Trouble(m_reader.choice(quint8(flat::Trouble::BrokenTriangles)));
        const QString what = m_reader.text();
        if (trouble == flat::Trouble::OutsideFolder)
            scene.report.addRefused(what, ImportReason::OutsideFolder);
        else if (trouble == flat::Trouble::AbsurdNumbers)
            m_geometry->troubles.append(tr("“%1” has positions that are no numbers.").arg(what));
        else if (trouble == flat::Trouble::BrokenTriangles)
            m_geometry->troubles.append(tr("“%1” has triangles without corners.").arg(what));
        else
            m_reader.fail();
    }
}

} // namespace interchange
