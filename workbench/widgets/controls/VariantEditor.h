#pragma once

#include <QVariant>

class QWidget;

/// The editors of single values: which one a type gets, and how a value goes in and out of it. An editor is
/// recognised by its class, so one made elsewhere is filled and read as well.
namespace VariantEditor {

/// The editor for a value, or null for a type that no editor can write back.
QWidget *create(QWidget *parent, const QVariant &value);

void fill(QWidget *editor, const QVariant &value);

/// What the editor holds now, typed text included; in the type that the editor works in. Invalid for a
/// widget of an unknown class.
QVariant content(QWidget *editor);

/// The content of an editor as a value of the type that a present one has; invalid where the content says
/// nothing in that type. A present value of no type takes the content as it is.
QVariant likeValue(const QVariant &content, const QVariant &present);

} // namespace VariantEditor
