#pragma once

#include <QString>

class QWidget;
class nkBaseControl;

/// The property editor's own controls.
namespace PropertyControls {

/// The control for a property; never null. @param valueType the objects' common value type, which decides
/// how "value" is edited; numbers that are no value type edit it as text
nkBaseControl *make(const QString &property, int valueType, QWidget *parent);

} // namespace PropertyControls
