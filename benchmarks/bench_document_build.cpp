#include "harness/BenchmarkRegistry.h"

#include <kernel/document/Document.h>
#include <kernel/document/DocumentLoader.h>

#include <QHash>
#include <QString>
#include <QVariant>
#include <QVector>

#include <memory>

namespace {

/// A scene as they come: an object for every ten entries, a tenth as many shared sets as objects, entries half in
/// object sets and half in shared sets, ten to a set, and two assignments an object.
constexpr int EntriesPerSet = 10;
constexpr int SetsPerShared = 10;
constexpr int AssignmentsPerObject = 2;

/// Few keys, used over and over, and values of three types; texts are shared by both sides.
class Material
{
public:
    Material()
    {
        for (int key = 0; key < 50; ++key) {
            m_keys.append(QStringLiteral("property %1").arg(key));
            m_texts.append(QVariant(QStringLiteral("value %1").arg(key)));
        }
    }

    const QString &key(qint64 index) const { return m_keys.at(int(index % m_keys.size())); }
    QVariant value(qint64 index) const
    {
        switch (index % 3) {
        case 0:
            return m_texts.at(int(index % m_texts.size()));
        case 1:
            return QVariant(int(index));
        default:
            return QVariant(double(index) / 8);
        }
    }
    static nkMetadataTypes::ValueType type(qint64 index)
    {
        const nkMetadataTypes::ValueType types[] = {nkMetadataTypes::String, nkMetadataTypes::Integer,
                                                    nkMetadataTypes::Float};
        return types[index % 3];
    }

private:
    QVector<QString> m_keys;
    QVector<QVariant> m_texts;
};

void loadDocument(const Material &material, qint64 entries)
{
    const qint64 objectCount = qMax<qint64>(1, entries / (2 * EntriesPerSet));
    const qint64 sharedCount = qMax<qint64>(1, entries / (2 * EntriesPerSet * SetsPerShared));
    kernel::DocumentLoader loader;
    QVector<quint64> objects;
    QVector<quint64> shared;
    for (qint64 object = 0; object < objectCount; ++object) {
        objects.append(loader.addObject(nkObjectType::Node, material.key(object)));
    }
    for (qint64 set = 0; set < sharedCount; ++set) {
        shared.append(loader.addSet(QStringLiteral("set %1").arg(set)));
    }
    for (qint64 entry = 0; entry < entries; ++entry) {
        const bool isOwn = entry < entries / 2;
        const quint64 set = isOwn ? loader.objectSet(objects.at(int(entry / EntriesPerSet % objectCount)))
                                  : shared.at(int(entry % sharedCount));
        loader.addEntry(set, material.key(entry / sharedCount), Material::type(entry), material.value(entry));
    }
    for (qint64 link = 0; link < objectCount * AssignmentsPerObject; ++link) {
        loader.assign(shared.at(int((link * 7) % sharedCount)), objects.at(int(link % objectCount)));
    }
    loader.commit();
}

/// The same scene as plain containers, the way one writes them down first: a set is a hash from key to value.
struct PlainScene
{
    struct Set
    {
        QString name;
        QHash<QString, QVariant> entries;
    };
    struct Object
    {
        QString name;
        Set own;
        QVector<int> sets;
    };
    QVector<Object> objects;
    QVector<Set> sets;
};

void loadPlain(PlainScene *scene, const Material &material, qint64 entries)
{
    const qint64 objectCount = qMax<qint64>(1, entries / (2 * EntriesPerSet));
    const qint64 sharedCount = qMax<qint64>(1, entries / (2 * EntriesPerSet * SetsPerShared));
    for (qint64 object = 0; object < objectCount; ++object) {
        scene->objects.append({material.key(object), {}, {}});
    }
    for (qint64 set = 0; set < sharedCount; ++set) {
        scene->sets.append({QStringLiteral("set %1").arg(set), {}});
    }
    for (qint64 entry = 0; entry < entries; ++entry) {
        const bool isOwn = entry < entries / 2;
        PlainScene::Set &set = isOwn ? scene->objects[int(entry / EntriesPerSet % objectCount)].own
                                     : scene->sets[int(entry % sharedCount)];
        QString key = material.key(entry / sharedCount);
        for (int number = 2; set.entries.contains(key); ++number) {
            key = material.key(entry / sharedCount) + QString::number(number);
        }
        set.entries.insert(key, material.value(entry));
    }
    for (qint64 link = 0; link < objectCount * AssignmentsPerObject; ++link) {
        const int set = int((link * 7) % sharedCount);
        QVector<int> &sets = scene->objects[int(link % objectCount)].sets;
        if (!sets.contains(set)) {
            sets.append(set);
        }
    }
}

} // namespace

/// Building the document from a file's content, with every index it needs, against nested hashes.
static Comparison compareDocumentBuild(qint64 entries)
{
    const auto material = std::make_shared<Material>();
    const auto plain = std::make_shared<PlainScene>();
    Comparison comparison;
    comparison.ours.prepare = [] { kernel::Document::the().clear(); };
    comparison.ours.run = [material, entries] { loadDocument(*material, entries); };
    comparison.ours.finish = [] { kernel::Document::the().clear(); };
    comparison.baseline.run = [material, plain, entries] { loadPlain(plain.get(), *material, entries); };
    comparison.baseline.finish = [plain] { *plain = PlainScene(); };
    comparison.rows = entries;
    comparison.bytesPerRowAim = 200;
    return comparison;
}
NK_BENCHMARK("document-build", compareDocumentBuild, 100000, 1000000)
