#pragma once

class QAbstractItemDelegate;
class QComboBox;

/// What the combo boxes among the cell editors share.
namespace nkMetadataComboCommit {

/// From now on choosing an item takes the focus from the combo box, which commits and closes it as an editor
/// of delegate; also where it had no focus to lose.
void connectChoice(QComboBox *editor, QAbstractItemDelegate *delegate);

} // namespace nkMetadataComboCommit
