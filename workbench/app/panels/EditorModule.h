#pragma once

/// The plain editors of the scene, by the numbers under which nkMetadataModuleSelection knows them.
enum class EditorModule : int { Scenegraph = 0, Material = 1, Light = 2, Camera = 3, Sceneplate = 4 };
