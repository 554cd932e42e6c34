#pragma once

#include <nkKernelServices/nkMetadataTypes.h>

#include <QVariant>

class QLineEdit;
class QWidget;

/// The editors of values, one kind a value type: how they are made, filled and read. An editor is recognised
/// by its class; one of a class that is not listed here is left alone.
namespace nkMetadataValueEditors {

/// The editor of a declared type; the line edit for String and for numbers outside 0..7. @param parent owns it
QWidget *create(nkMetadataTypes::ValueType type, QWidget *parent);
/// The line edit of keys and texts: completes from the active string library, takes texts of any length.
QLineEdit *createLineEdit(QWidget *parent);

/// Puts a value into the editor, converted to what the editor edits; an empty text, 0, false, a list without
/// elements or an unchanged time or date where it cannot be converted.
void fill(QWidget *editor, const QVariant &value);
/// What a person sees, to be compared later: a spinner's text, else the value. Takes typed but unconfirmed
/// text into account.
QVariant shown(QWidget *editor);
/// What the editor writes: QString, int, double, bool, QTime (without seconds), QDate, QDateTime or
/// QVariantList. Typed but unconfirmed text counts. Invalid for an editor of another class.
QVariant value(QWidget *editor);

} // namespace nkMetadataValueEditors
