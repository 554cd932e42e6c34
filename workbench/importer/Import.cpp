#include "Import.h"

#include "AnswerPipe.h"
#include "LoaderList.h"
#include "ProgressTeller.h"
#include "SceneSender.h"

#include <interchange/importer/ImportLimits.h>

#include <assimp/Importer.hpp>
#include <assimp/config.h>
#include <assimp/postprocess.h>
#include <assimp/scene.h>

#include <cerrno>
#include <cstring>
#include <exception>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace interchange;

namespace {

/// Nothing but shape and names is shown here; what goes early needs no memory later.
constexpr int LeftOut = aiComponent_TANGENTS_AND_BITANGENTS | aiComponent_COLORS | aiComponent_TEXCOORDS
                        | aiComponent_BONEWEIGHTS | aiComponent_ANIMATIONS | aiComponent_TEXTURES;

constexpr unsigned Steps = aiProcess_RemoveComponent | aiProcess_Triangulate
                           | aiProcess_JoinIdenticalVertices;

} // namespace

Import::Import(const std::string &path, AnswerPipe &pipe)
    : m_path(path), m_gate(nullptr), m_writer([&pipe](std::string_view bytes) { pipe.write(bytes); })
{}

bool Import::run()
{
    if (!isReadable())
        return false;
    if (!LoaderList::isKnown(m_path.c_str(), false))
        return fail(flat::Failure::UnknownKind);
    // Neither goes before the process does: see main().
    auto *importer = new Assimp::Importer;
    try {
        prepare(*importer);
        const aiScene *scene = importer->ReadFile(m_path, Steps);
        return scene ? answer(*scene) : fail(flat::Failure::NotUnderstood, importer->GetErrorString());
    } catch (const std::exception &error) {
        return fail(flat::Failure::NotUnderstood, error.what());
    }
}

bool Import::isReadable()
{
    struct stat status;
    if (stat(m_path.c_str(), &status) != 0)
        return fail(flat::Failure::NotReadable, std::strerror(errno));
    if (!S_ISREG(status.st_mode))
        return fail(flat::Failure::NotReadable, "it is no file");
    if (access(m_path.c_str(), R_OK) != 0)
        return fail(flat::Failure::NotReadable, std::strerror(errno));
    return true;
}

void Import::prepare(Assimp::Importer &importer)
{
    LoaderList::close(importer);
    m_gate = new FolderGate(m_path);
    importer.SetIOHandler(m_gate);
    importer.SetProgressHandler(new ProgressTeller(m_writer));
    importer.SetPropertyInteger(AI_CONFIG_PP_RVC_FLAGS, LeftOut);
    // Bones of a scene that has nothing else are no meshes of it.
    importer.SetPropertyBool(AI_CONFIG_IMPORT_NO_SKELETON_MESHES, true);
    importer.SetPropertyBool(AI_CONFIG_IMPORT_COLLADA_USE_COLLADA_NAMES, true);
    // One node as the file has it, and not one for each step of its transformation.
    importer.SetPropertyBool(AI_CONFIG_IMPORT_FBX_PRESERVE_PIVOTS, false);
}

bool Import::answer(const aiScene &scene)
{
    SceneSender sender(scene, m_writer);
    const std::string exceeded = sender.exceeded();
    if (!exceeded.empty())
        return fail(flat::Failure::TooMuch, exceeded);
    if (sender.isEmpty())
        return fail(flat::Failure::Empty);
    sender.send(m_gate->refused());
    return true;
}

bool Import::fail(flat::Failure kind, const std::string &detail)
{
    m_writer.failure(kind, std::string_view(detail).substr(0, importlimits::TextBytes));
    return false;
}
