#pragma once

#include <interchange/importer/AnswerReader.h>
#include <interchange/importer/AnswerStream.h>
#include <interchange/importer/FlatWriter.h>
#include <interchange/importer/ImportLimits.h>

#include <QByteArray>

#include <functional>
#include <memory>

/// Answers as the importer writes them.
namespace AnswerFixture {

using interchange::FlatWriter;
namespace flat = interchange::flat;

inline QByteArray answer(const std::function<void(FlatWriter &)> &write)
{
    QByteArray bytes;
    {
        FlatWriter writer([&bytes](std::string_view part) { bytes.append(part.data(), int(part.size())); });
        write(writer);
        writer.flush();
    }
    return bytes;
}

inline void singles(FlatWriter &writer, std::initializer_list<float> values)
{
    for (const float value : values)
        writer.single(value);
}

inline void writeMaterial(FlatWriter &writer)
{
    writer.word(1);
    writer.text("Steel");
    singles(writer, {0.5F, 0.25F, 1, 0.75F});
    writer.byte(1);
}

inline void writeMesh(FlatWriter &writer)
{
    writer.word(1);
    writer.word(1);
    writer.index(0);
    writer.word(3);
    writer.byte(1);
    singles(writer, {0, 0, 0, 1, 0, 0, 0, 1, 0});
    singles(writer, {0, 0, 1, 0, 0, 1, 0, 0, 1});
    writer.word(3);
    for (const uint32_t corner : {0U, 1U, 2U})
        writer.word(corner);
}

inline void writeCameraAndLight(FlatWriter &writer)
{
    writer.word(1);
    writer.byte(1);
    singles(writer, {0.7F, 2, 1.5F, 0.1F, 100});
    writer.word(1);
    writer.byte(uint8_t(flat::Light::Spot));
    singles(writer, {1, 0.5F, 0, 3, 0.6F});
}

/// A node up to its list of entries.
inline void writeNode(FlatWriter &writer, std::string_view name, int parent, flat::Kind kind, int mesh,
                      int camera, int light)
{
    writer.text(name);
    writer.index(parent);
    for (int i = 0; i < 16; ++i)
        writer.single(i % 5 == 0 ? 1 : 0);
    writer.byte(uint8_t(kind));
    writer.index(mesh);
    writer.index(camera);
    writer.index(light);
}

inline void writeEntries(FlatWriter &writer)
{
    const auto entry = [&writer](std::string_view key, flat::Value kind) {
        writer.text(key);
        writer.byte(uint8_t(kind));
    };
    writer.word(8);
    entry("tag", flat::Value::Tag);
    entry("truth", flat::Value::Boolean), writer.byte(1);
    entry("small", flat::Value::Integer), writer.longWord(uint64_t(-42));
    entry("large", flat::Value::Unsigned), writer.longWord(0xffffffffffffffffULL);
    entry("single", flat::Value::Single), writer.single(0.5F);
    entry("double", flat::Value::Double), writer.number(0.1);
    entry("text", flat::Value::Text), writer.text("caf\xc3\xa9");
    entry("vector", flat::Value::Vector), singles(writer, {1, 2, 3});
}

/// A scene with one of everything.
inline void writeScene(FlatWriter &writer)
{
    writer.record(flat::Record::Scene);
    writeMaterial(writer);
    writeMesh(writer);
    writeCameraAndLight(writer);
    writer.word(3);
    writeNode(writer, "Root", -1, flat::Kind::Node, 0, -1, -1);
    writeEntries(writer);
    writeNode(writer, "Eye", 0, flat::Kind::Camera, -1, 0, -1);
    writer.word(0);
    writeNode(writer, "Lamp", 0, flat::Kind::Light, -1, -1, 0);
    writer.word(0);
    writer.word(1);
    writer.byte(uint8_t(flat::Trouble::OutsideFolder));
    writer.text("../secret.mtl");
    writer.word(flat::EndMark);
}

/// An answer with one node for each of these pairs of a name and a parent.
inline QByteArray answerOfNodes(const std::vector<std::pair<QByteArray, int>> &nodes)
{
    return answer([&nodes](FlatWriter &writer) {
        writer.record(flat::Record::Scene);
        for (int lists = 0; lists < 4; ++lists)
            writer.word(0);
        writer.word(uint32_t(nodes.size()));
        for (const auto &[name, parent] : nodes) {
            writeNode(writer, {name.constData(), size_t(name.size())}, parent, flat::Kind::Node, -1, -1, -1);
            writer.word(0);
        }
        writer.word(0);
        writer.word(flat::EndMark);
    });
}

/// What the workbench makes of a whole answer; null where it refuses it.
inline std::unique_ptr<interchange::ForeignScene> sceneOf(const QByteArray &bytes)
{
    interchange::AnswerStream stream;
    stream.setLimit(interchange::importlimits::AnswerBytes);
    auto scene = std::make_unique<interchange::ForeignScene>();
    if (!stream.add(bytes) || !stream.hasRecord() || !interchange::AnswerReader(stream.record()).read(*scene))
        return nullptr;
    return scene;
}

} // namespace AnswerFixture
