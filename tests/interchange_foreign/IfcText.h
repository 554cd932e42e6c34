#pragma once

#include <QByteArray>
#include <QByteArrayList>

/// IFC files in a few lines.
namespace IfcText {

/// A whole file around these records, one a line.
inline QByteArray file(const QByteArray &records, const QByteArray &schema = "IFC2X3")
{
    return "ISO-10303-21;\nHEADER;\nFILE_DESCRIPTION(('a ; in a text','it''s'),'2;1');\n"
           "FILE_NAME('n','2024-01-01T00:00:00',(''),(''),'p','o','');\nFILE_SCHEMA(('"
           + schema + "'));\nENDSEC;\n\nDATA;\n" + records + "ENDSEC;\n\nEND-ISO-10303-21;\n";
}

/// 22 digits, as identifiers have them.
inline QByteArray id(int number)
{
    return QByteArray::number(number).rightJustified(22, '0');
}

/// An object: `IFCWALL`, 20 and the name, which may be `$`.
inline QByteArray object(const QByteArray &type, int number, const QByteArray &name)
{
    const QByteArray text = name == "$" ? name : '\'' + name + '\'';
    return '#' + QByteArray::number(number) + "= " + type + "('" + id(number) + "',#5," + text
           + ",$,$,$,$,$);\n";
}

/// A relation with its two last values.
inline QByteArray relation(const QByteArray &type, int number, const QByteArray &ends)
{
    return '#' + QByteArray::number(number) + "= " + type + "('" + id(number) + "',#5,$,$," + ends + ");\n";
}

inline QByteArray propertySet(int number, const QByteArray &name, const QByteArray &properties)
{
    return '#' + QByteArray::number(number) + "= IFCPROPERTYSET('" + id(number) + "',#5,'" + name + "',$,("
           + properties + "));\n";
}

/// A property with one value: `IFCLABEL('x')`, or `$`.
inline QByteArray single(int number, const QByteArray &name, const QByteArray &value)
{
    return '#' + QByteArray::number(number) + "= IFCPROPERTYSINGLEVALUE('" + name + "',$," + value + ",$);\n";
}

/// The set assigned to these objects: `#20,#21`.
inline QByteArray assignment(int number, const QByteArray &objects, int set)
{
    return relation("IFCRELDEFINESBYPROPERTIES", number, '(' + objects + "),#" + QByteArray::number(set));
}

/// A project with a site, a building, a storey, two walls in it and a door without a name, a hole in the first wall,
/// and a zone that stands nowhere.
inline QByteArray house()
{
    return "#5= IFCOWNERHISTORY(#6,#7,$,.ADDED.,$,$,$,0);\n" + object("IFCPROJECT", 10, "House")
           + object("IFCSITE", 11, "Site") + object("IFCBUILDING", 12, "Home")
           + object("IFCBUILDINGSTOREY", 13, "Ground floor") + object("IFCWALL", 20, "Wall")
           + object("IFCWALLSTANDARDCASE", 21, "Wall") + object("IFCDOOR", 22, "$")
           + object("IFCOPENINGELEMENT", 23, "Hole") + object("IFCZONE", 24, "Zone")
           + relation("IFCRELCONTAINEDINSPATIALSTRUCTURE", 30, "(#20,#21,#22),#13")
           + relation("IFCRELAGGREGATES", 31, "#10,(#11)") + relation("IFCRELAGGREGATES", 32, "#11,(#12)")
           + relation("IFCRELAGGREGATES", 33, "#12,(#13)") + relation("IFCRELVOIDSELEMENT", 34, "#20,#23");
}

/// The house with a set on both walls, one on the door, and a material.
inline QByteArray taggedHouse()
{
    return house() + single(40, "Reference", "IFCIDENTIFIER('W1')")
           + single(41, "IsExternal", "IFCBOOLEAN(.T.)") + single(42, "Width", "IFCLENGTHMEASURE(0.9)")
           + propertySet(50, "Pset_WallCommon", "#40,#41") + propertySet(51, "Pset_DoorCommon", "#42")
           + assignment(60, "#20,#21", 50) + assignment(61, "#22", 51) + "#70= IFCMATERIAL('Oak');\n";
}

} // namespace IfcText
