#pragma once

#include <QStringList>

class QAbstractItemModel;

/// What the header of the key/value table says.
namespace nkMetadataTableColumnTexts {

/// In the order of the columns; the icon column has none.
QStringList titles();
/// Gives the model's header the name of the icon column (Qt::UserRole) and the tool tips of all columns.
void explain(QAbstractItemModel *model);

} // namespace nkMetadataTableColumnTexts
