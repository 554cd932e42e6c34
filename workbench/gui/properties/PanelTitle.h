#pragma once

#include <QList>
#include <QString>

class nkPropertyEditorNkdObjectWrapper;

/// What a property panel says about the objects it shows.
namespace PanelTitle {

/// Kind and number, such as "2 entries"; empty for none. The first object's kind stands for all.
QString of(const QList<nkPropertyEditorNkdObjectWrapper> &objects);

} // namespace PanelTitle
