#pragma once

#include <QByteArrayList>
#include <QJsonDocument>
#include <QJsonObject>

/// Scenes of the roads, as another program has laid them out, and what is looked at in the files that come of them.
namespace RoadScene {

/// A table with a leg and a top, a lamp, a material. Blanks and order are nobody's standard, so that a file that was
/// written anew is no file that was patched.
inline QByteArray plain()
{
    return R"({ "asset": {"version": "2.0"}, "scene": 0,
  "scenes" : [{"nodes": [0, 3]}],
  "nodes": [
    {"name": "Table",  "children": [1, 2], "extras": {"part": "T-1", "weight": 12.50, "count": 4}},
    {"name": "Leg", "extras": {"part": "L-1"}},
    {"name": "Top"},
    {"extras": {"part": "X-9", "on": true }, "name": "Lamp"}
  ],
  "materials": [ {"name": "Oak", "extras": {"supplier": "North"}} ] }
)";
}

/// A set of a file, as it is laid out there: its entries one a line.
inline QByteArray set(const QByteArray &name, const QByteArrayList &entries, const QByteArray &more = {})
{
    return R"({"name":")" + name + R"(","color":"#7f8c9b",)" + more + "\"entries\":[\n" + entries.join(",\n")
           + "\n]}";
}

inline QByteArray text(const QByteArray &key, const QByteArray &value)
{
    return R"({"key":")" + key + R"(","type":"string","value":")" + value + R"("})";
}

/// Two nodes and these sets, of which the first is assigned to the first node.
inline QByteArray withSets(const QByteArrayList &sets)
{
    return R"({"asset":{"version":"2.0"},"scene":0,"scenes":[{"nodes":[0,1]}],
"nodes":[{"name":"Chair"},{"name":"Stool"}],
"extras":{"metadataEditor":{"version":1,"sets":{"format":"metadata-sets","version":1,"sets":[
)" + sets.join(",\n")
           + R"(
]}
,"assets":[],"objects":[{"node":0,"name":"Chair"}],"assigned":[{"set":0,"objects":[0]}]}}})";
}

inline QJsonObject parse(const QByteArray &json)
{
    return QJsonDocument::fromJson(json).object();
}

/// What extras cannot say, of a glTF text.
inline QJsonObject annex(const QByteArray &gltf)
{
    return parse(gltf)
        .value(QStringLiteral("extras"))
        .toObject()
        .value(QStringLiteral("metadataEditor"))
        .toObject();
}

} // namespace RoadScene
