#include "PropertyControls.h"

#include "ChoiceControl.h"
#include "ColorControl.h"
#include "DateTimeControl.h"
#include "FloatControl.h"
#include "IntegerControl.h"
#include "ListControl.h"
#include "TextControl.h"

namespace PropertyControls {
namespace {

nkBaseControl *makeForValue(const QString &property, int valueType, QWidget *parent)
{
    switch (valueType) {
    case nkMetadataTypes::Integer:
        return new IntegerControl(property, parent);
    case nkMetadataTypes::Float:
        return new FloatControl(property, parent);
    case nkMetadataTypes::Boolean:
        return ChoiceControl::ofBooleans(property, parent);
    case nkMetadataTypes::Time:
    case nkMetadataTypes::Date:
    case nkMetadataTypes::DateTime:
        return new DateTimeControl(property, nkMetadataTypes::ValueType(valueType), parent);
    case nkMetadataTypes::List:
        return new ListControl(property, parent);
    default:
        return new TextControl(property, parent);
    }
}

} // namespace

nkBaseControl *make(const QString &property, int valueType, QWidget *parent)
{
    if (property == QLatin1String("value")) {
        return makeForValue(property, valueType, parent);
    }
    if (property == QLatin1String("valueType")) {
        return ChoiceControl::ofValueTypes(property, parent);
    }
    if (property == QLatin1String("color")) {
        return new ColorControl(property, parent);
    }
    if (property == QLatin1String("locked")) {
        return ChoiceControl::ofBooleans(property, parent);
    }
    return new TextControl(property, parent);
}

} // namespace PropertyControls
