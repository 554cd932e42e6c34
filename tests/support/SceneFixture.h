#pragma once

#include "kernel/document/Document.h"
#include "kernel/document/DocumentLoader.h"

#include <nkKernelServices/nkdMaterial.h>
#include <nkKernelServices/nkdMaterialGroupNode.h>
#include <nkKernelServices/nkdMetadata.h>
#include <nkKernelServices/nkdNode.h>

/// Scenes for tests: the little that the contract cannot make itself (scene objects), made directly in the
/// document. Header-only, for tests that link the kernel.
namespace SceneFixture {

/// An empty scene with an empty undo history. Called at the start of every test function.
inline void reset()
{
    kernel::Document::the().clear();
}

/// A new scene object, and an empty undo history behind it.
inline nkdSceneObject object(nkObjectType type, const QString &name, quint64 parentId = 0)
{
    kernel::DocumentLoader loader(kernel::DocumentLoader::Mode::Add);
    const quint64 id = loader.addObject(type, name, parentId);
    loader.commit();
    return nkdSceneObject(nkdObject(id));
}

inline nkdNode node(const QString &name, quint64 parentId = 0)
{
    return nkdNode(object(nkObjectType::Node, name, parentId));
}

inline nkdNode camera(const QString &name)
{
    return nkdNode(object(nkObjectType::Camera, name));
}

inline nkdNode light(const QString &name)
{
    return nkdNode(object(nkObjectType::Light, name));
}

inline nkdMaterial material(const QString &name)
{
    return nkdMaterial(object(nkObjectType::Material, name));
}

} // namespace SceneFixture
