#include "table/nkMetadataEditorMemory.h"

#include <QWidget>

#include <algorithm>
#include <cmath>

namespace {

const char datumProperty[] = "nkMetadataFilledWith";
const char shownProperty[] = "nkMetadataShown";
const char filledProperty[] = "nkMetadataFilled";

bool areListsEqual(const QVariantList &left, const QVariantList &right)
{
    return left.size() == right.size()
           && std::equal(left.begin(), left.end(), right.begin(), nkMetadataEditorMemory::areEqual);
}

} // namespace

bool nkMetadataEditorMemory::areEqual(const QVariant &left, const QVariant &right)
{
    if (left.userType() != right.userType() || left.isNull() != right.isNull()) {
        return false;
    }
    switch (left.userType()) {
    case QMetaType::Double:
    case QMetaType::Float:
        return left.toDouble() == right.toDouble()
               || (std::isnan(left.toDouble()) && std::isnan(right.toDouble()));
    case QMetaType::QVariantList:
        return areListsEqual(left.toList(), right.toList());
    default:
        return left == right;
    }
}

bool nkMetadataEditorMemory::isFilled(const QWidget *editor)
{
    return editor->property(filledProperty).toBool();
}

bool nkMetadataEditorMemory::isTouched(const QWidget *editor, const QVariant &shown)
{
    return !areEqual(editor->property(shownProperty), shown);
}

bool nkMetadataEditorMemory::wants(const QWidget *editor, const QVariant &datum, const QVariant &shown)
{
    return !isFilled(editor)
           || (!isTouched(editor, shown) && !areEqual(editor->property(datumProperty), datum));
}

void nkMetadataEditorMemory::remember(QWidget *editor, const QVariant &datum, const QVariant &shown)
{
    editor->setProperty(datumProperty, datum);
    editor->setProperty(shownProperty, shown);
    editor->setProperty(filledProperty, true);
}
