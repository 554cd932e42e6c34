#pragma once

#include <QVariant>

class QWidget;

/// Remembers, on an open cell editor itself, what it was filled with and what it showed then.
///
/// So a value that nobody touched is never written back (editors are coarser than values: a time edit knows
/// no seconds, a spinner works in single precision), and what a person is typing is not overwritten when the
/// cell's data change underneath.
namespace nkMetadataEditorMemory {

/// Equal in type and value: 1 is not "1", NaN is NaN, lists element by element.
bool areEqual(const QVariant &left, const QVariant &right);

/// Whether the editor was filled before.
bool isFilled(const QWidget *editor);
/// Whether the editor shows something else than right after it was filled. @param shown what it shows now
bool isTouched(const QWidget *editor, const QVariant &shown);
/// Whether the editor is to be filled with datum: it never was, or nobody touched it and datum is new.
bool wants(const QWidget *editor, const QVariant &datum, const QVariant &shown);
/// The editor was filled with datum and now shows this.
void remember(QWidget *editor, const QVariant &datum, const QVariant &shown);

} // namespace nkMetadataEditorMemory
