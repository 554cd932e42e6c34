#include <interchange/ifc/IfcMaterials.h>

#include <interchange/ifc/IfcTypes.h>
#include <interchange/ifc/StepText.h>

#include <QHash>
#include <QSet>

namespace interchange {

void addIfcMaterials(const StepFile &file, ForeignScene &scene)
{
    StepArguments arguments;
    QSet<QString> keys;
    QHash<QString, int> doubled;
    for (const StepFile::Record &record : file.records()) {
        if (ifcRole(file.type(record)) != IfcRole::Material || !arguments.read(file.arguments(record)))
            continue;
        QString name = stepText(arguments.at(0).text);
        if (name.isEmpty())
            name = ifcTypeName(file.type(record), record.id);
        QString key = name;
        while (keys.contains(key))
            key = QStringLiteral("%1 (%2)").arg(name, QString::number(++doubled[name] + 1));
        keys.insert(key);
        scene.materials.push_back({name, key, IndexRange()});
    }
}

} // namespace interchange
