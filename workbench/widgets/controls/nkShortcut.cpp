#include "nkQt4Ext/nkShortcut.h"

QString nkShortcut::convertKey(const QKeySequence &sequence)
{
    return sequence.toString(QKeySequence::NativeText);
}
