#pragma once

#include "FolderGate.h"

#include <interchange/importer/FlatWriter.h>

#include <string>

class AnswerPipe;
struct aiScene;

namespace Assimp {
class Importer;
} // namespace Assimp

/// Reads one file by the library and answers what was found, or why nothing was.
class Import
{
public:
    Import(const std::string &path, AnswerPipe &pipe);

    /// Writes the whole answer. False where it is a reason.
    bool run();

private:
    bool isReadable();
    void prepare(Assimp::Importer &importer);
    bool answer(const aiScene &scene);
    bool fail(interchange::flat::Failure kind, const std::string &detail = std::string());

    std::string m_path;
    FolderGate *m_gate; ///< owned by the library's importer once that has it
    interchange::FlatWriter m_writer;
};
