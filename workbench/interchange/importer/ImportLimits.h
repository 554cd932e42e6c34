#pragma once

#include <cstdint>

/// What reading a file by the importer process may cost, on both sides of the pipe. Standard C++ alone, because the
/// process knows no Qt.
namespace interchange::importlimits {

/// Nodes may be this deep: 1 allows the root only.
constexpr int Depth = 1000;
/// Metadata inside of metadata.
constexpr int EntryDepth = 32;
constexpr uint32_t Nodes = 1000000;
constexpr uint32_t Entries = 4000000;
constexpr uint32_t Materials = 1000000;
constexpr uint32_t Parts = 1000000; ///< of all meshes
constexpr uint32_t Vertices = 20000000;
constexpr uint32_t Indices = 60000000;
constexpr uint32_t Cameras = 100000;
constexpr uint32_t Lights = 100000;
constexpr uint32_t Troubles = 100;
constexpr uint32_t TextBytes = 65536; ///< of one name, key or value
/// What the library keeps of a text of the file.
constexpr uint32_t LibraryTextBytes = 1023;

/// Bytes of the model's own file.
constexpr int64_t FileBytes = int64_t(1) << 30;
/// Bytes of the whole answer; more than all limits above together need.
constexpr int64_t AnswerBytes = int64_t(1) << 30;
/// Bytes of address space of the process.
constexpr uint64_t Memory = uint64_t(2) << 30;
/// Seconds of computing, and of waiting.
constexpr int Seconds = 300;
constexpr unsigned OpenFiles = 64;

/// Exit status of a process that ran out of memory; any other reason comes as a record of the answer.
constexpr int MemoryStatus = 3;

} // namespace interchange::importlimits
