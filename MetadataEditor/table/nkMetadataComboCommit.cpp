#include "table/nkMetadataComboCommit.h"

#include <QAbstractItemDelegate>
#include <QComboBox>
#include <QPointer>

void nkMetadataComboCommit::connectChoice(QComboBox *editor, QAbstractItemDelegate *delegate)
{
    QObject::connect(editor, QOverload<int>::of(&QComboBox::activated), delegate, [editor, delegate] {
        const QPointer<QComboBox> open(editor);
        editor->clearFocus();
        // In a window that is not active nothing has the focus, and nothing loses it.
        if (open && open->isVisible()) {
            Q_EMIT delegate->commitData(editor);
            Q_EMIT delegate->closeEditor(editor);
        }
    });
}
