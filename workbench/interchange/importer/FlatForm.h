#pragma once

#include <cstdint>

/// The form of the importer process's answer. Everything is little-endian, floating point is IEEE 754; a text is its
/// number of bytes (32 bits) and UTF-8 as the file has it, a list its number of elements (32 bits) and those.
///
///     answer    Magic, Version, any number of Progress records, one Failure or Scene record, and nothing more
///     Progress  share (float, 0 to 1)
///     Failure   Failure (8 bits), text
///     Scene     materials, meshes, cameras, lights, nodes, troubles, EndMark
///     material  name, red, green, blue, alpha (floats), double-sided (8 bits)
///     mesh      list of parts
///     part      material, number of vertices, normals there (8 bits), positions, normals (3 floats a vertex),
///               list of indices (three a triangle)
///     camera    perspective (8 bits), vertical angle, height, aspect, near, far (floats)
///     light     Light (8 bits), red, green, blue, intensity, outer angle (floats)
///     node      name, parent, 16 floats by rows, kind (8 bits), mesh, camera, light, list of entries
///     entry     key, Value (8 bits), the value
///     trouble   Trouble (8 bits), text
///
/// Parents come before their children. Indices are 32 bits, signed, -1 for none; a record, too, begins with its
/// kind (8 bits). What one entry refers to stands in front of it, so that everything can be checked when it comes.
namespace interchange::flat {

constexpr uint32_t Magic = 0x6d696b6e; // "nkim"
constexpr uint32_t Version = 1;
constexpr uint32_t EndMark = 0x21646e65; // "end!"

enum class Record : uint8_t { Progress = 1, Failure = 2, Scene = 3 };

/// Why there is no scene. What the text says stands behind each.
enum class Failure : uint8_t {
    UnknownKind = 1, ///< nothing
    NotReadable,     ///< the system's reason
    NotUnderstood,   ///< the library's reason
    TooMuch,         ///< which limit: "nodes", "depth", "entries", "triangles", "materials", "cameras"
    Empty            ///< nothing
};

/// What was left out of the scene.
enum class Trouble : uint8_t {
    OutsideFolder = 1, ///< the path of a file that the model refers to and that may not be read
    AbsurdNumbers,     ///< the name of the node or mesh in which numbers were replaced
    BrokenTriangles    ///< the name of the mesh that has triangles without corners
};

enum class Value : uint8_t {
    Tag = 0,  ///< nothing
    Boolean,  ///< 8 bits, 0 or 1
    Integer,  ///< 64 bits, signed
    Unsigned, ///< 64 bits
    Single,   ///< 32 bits of floating point
    Double,
    Text,
    Vector ///< three singles
};

enum class Kind : uint8_t { Node = 0, Camera, Light };
enum class Light : uint8_t { Directional = 0, Point, Spot };

} // namespace interchange::flat
