#pragma once

/// The kinds of files that the importer process reads, by the endings of their names. A closed list: a loader of the
/// library that reads anything else is switched off. Standard C++ alone, because the process knows no Qt.
namespace interchange::importkinds {

/// Endings of models, lower case, without the point.
constexpr const char *Models[] = {
    "3d",    "3ds",      "3mf", "ac",   "ac3d", "acc",     "amf",       "ase",     "ask",  "b3d",
    "blend", "bvh",      "cob", "csm",  "dae",  "dxf",     "enff",      "fbx",     "hmp",  "iqm",
    "lwo",   "lws",      "lxo", "md2",  "md3",  "md5anim", "md5camera", "md5mesh", "mdc",  "mdl",
    "mesh",  "mesh.xml", "mot", "ms3d", "ndo",  "nff",     "obj",       "off",     "ogex", "ply",
    "pmx",   "prj",      "q3o", "q3s",  "raw",  "scn",     "sib",       "smd",     "stl",  "ter",
    "uc",    "vta",      "x",   "x3d",  "x3db", "xgl",     "xml",       "zae",     "zgl",
};

/// Endings of other files that models refer to and that tell something about their scene.
constexpr const char *Companions[] = {"mtl", "material", "skeleton", "skin", "shader", "lmp", "txt"};

/// Those of both whose loaders know UTF-8 alone, while other programs write UTF-16, too.
constexpr const char *Texts[] = {"ac",  "acc", "ac3d", "amf", "dae", "material",
                                 "mtl", "obj", "x3d",  "xgl", "xml"};

} // namespace interchange::importkinds
