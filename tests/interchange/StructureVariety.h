#pragma once

#include "Fixtures.h"
#include "SceneVariety.h"

/// Scenes whose structure is worth changing: other nodes, skins and animations refer to their objects.
namespace StructureVariety {

/// An animation of the node that is called Turned.
inline QByteArray animation()
{
    return R"(,
  "animations": [{"channels": [{"sampler": 0, "target": {"node": 5, "path": "rotation"}}], "samplers": []}])";
}

/// Scaled, turned and bent places; two scenes; a node of none; a skin. A node's mesh tells it from all others, whatever
/// it is called. @param more members of the root
inline QByteArray placed(const QByteArray &more = QByteArray())
{
    return R"({
  "asset": {"version": "2.0"},
  "scene": 1,
  "scenes": [{"nodes": [6, 7]}, {"nodes": [0, 4]}],
  "meshes": [{"primitives": []}, {"primitives": []}, {"primitives": []}, {"primitives": []}, {"primitives": []},
    {"primitives": []}, {"primitives": []}, {"primitives": []}, {"primitives": []}, {"primitives": []}],
  "nodes": [
    {"name": "Hall", "mesh": 0, "children": [1, 2], "translation": [1, 2, 3], "extras": {"a": 1}},
    {"name": "Crane", "mesh": 1, "children": [3], "rotation": [0, 0.6, 0, 0.8], "scale": [2, 2, 2]},
    {"name": "Crane", "mesh": 2, "matrix": [1, 0, 0, 0, 0.5, 1, 0, 0, 0, 0, 1, 0, 4, 5, 6, 1]},
    {
      "name": "Hook",
      "mesh": 3,
      "translation": [0, -1.5, 0],
      "extras": {
        "load": 2.5,
        "nested": {"b": 1, "c": [1, 2]}
      }
    },
    {"name": "Yard", "mesh": 4, "children": [5], "scale": [1, 3, 1]},
    {"name": "Turned", "mesh": 5, "rotation": [0.6, 0, 0, 0.8]},
    {"name": "Elsewhere", "mesh": 6, "translation": [9, 9, 9]},
    {"mesh": 7},
    {"name": "Of no scene", "mesh": 8, "children": [9]},
    {"name": "Below it", "mesh": 9, "extras": {"x": null}}
  ],
  "materials": [{"name": "Red"}, {"name": "Blue", "extras": {"gloss": 0.5}}, {"name": "Red"}, {}],
  "skins": [{"joints": [1, 3]}])"
           + more + "\n}\n";
}

/// No scene, no materials, all in one line.
inline QByteArray bare()
{
    return R"({"asset":{"version":"2.0"},"nodes":[{"name":"A","children":[2,1]},{"name":"B"},{"name":"C"},)"
           R"({"name":"D"}]})";
}

constexpr int Count = 6;

inline QByteArray file(int variant)
{
    switch (variant % Count) {
    case 0:
        return placed();
    case 1:
        return bare();
    case 2:
        return "{\n  \"asset\": {\"version\": \"2.0\"}\n}\n";
    case 3:
        return Fixtures::glbOf(placed(animation()));
    default:
        return SceneVariety::file(variant);
    }
}

} // namespace StructureVariety
