#pragma once

#include <QByteArray>

/// Scene files as the tests of this folder write them.
namespace SceneTexts {

/// A COLLADA file with these nodes in its scene and these libraries beside it.
inline QByteArray collada(const QByteArray &nodes, const QByteArray &libraries = QByteArray(),
                          const QByteArray &up = "Y_UP")
{
    return "<?xml version=\"1.0\" encoding=\"utf-8\"?>\n"
           "<COLLADA xmlns=\"http://www.collada.org/2005/11/COLLADASchema\" version=\"1.4.1\">"
           "<asset><unit name=\"meter\" meter=\"1\"/><up_axis>"
           + up + "</up_axis></asset>" + libraries
           + "<library_visual_scenes><visual_scene id=\"scene\" name=\"Yard\">" + nodes
           + "</visual_scene></library_visual_scenes><scene><instance_visual_scene "
             "url=\"#scene\"/></scene></COLLADA>";
}

inline QByteArray colladaNode(const QByteArray &id, const QByteArray &name,
                              const QByteArray &content = QByteArray())
{
    return "<node id=\"" + id + "\" name=\"" + name + "\">" + content + "</node>";
}

/// An .fbx text with one object that has these properties; these lines say which way is up.
inline QByteArray fbx(const QByteArray &properties, const QByteArray &axes = QByteArray())
{
    return "; FBX 7.4.0 project file\n"
           "FBXHeaderExtension:  {\n\tFBXHeaderVersion: 1003\n\tFBXVersion: 7400\n\tCreator: \"Tests\"\n}\n"
           "GlobalSettings:  {\n\tVersion: 1000\n\tProperties70:  {\n"
           + axes
           + "\t}\n}\n"
             "Definitions:  {\n\tVersion: 100\n\tCount: 1\n\tObjectType: \"Model\" {\n\t\tCount: 1\n\t}\n}\n"
             "Objects:  {\n"
             "\tModel: 1001, \"Model::Pump\", \"Null\" {\n\t\tVersion: 232\n\t\tProperties70:  {\n"
           + properties
           + "\t\t}\n\t}\n}\n"
             "Connections:  {\n\tC: \"OO\",1001,0\n}\n";
}

inline QByteArray fbxProperty(const QByteArray &name, const QByteArray &type, const QByteArray &value)
{
    return "\t\t\tP: \"" + name + "\", \"" + type + "\", \"\", \"U\"," + value + "\n";
}

} // namespace SceneTexts
