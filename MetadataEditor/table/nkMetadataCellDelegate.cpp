#include "table/nkMetadataCellDelegate.h"

#include "table/nkMetadataCellText.h"
#include "table/nkMetadataEditorMemory.h"

namespace {

/// The group of the palette that a view item is painted with.
QPalette::ColorGroup paintedGroup(QStyle::State state)
{
    if (!(state & QStyle::State_Enabled)) {
        return QPalette::Disabled;
    }
    return state & QStyle::State_Active ? QPalette::Normal : QPalette::Inactive;
}

} // namespace

nkMetadataCellDelegate::nkMetadataCellDelegate(QObject *parent) : QStyledItemDelegate(parent) {}

nkMetadataCellDelegate::~nkMetadataCellDelegate() = default;

QString nkMetadataCellDelegate::displayText(const QVariant &value, const QLocale &) const
{
    return nkMetadataCellText::singleLine(value.toString());
}

void nkMetadataCellDelegate::initStyleOption(QStyleOptionViewItem *option, const QModelIndex &index) const
{
    option->index = index;
    option->features |= QStyleOptionViewItem::HasDisplay;
    option->text = displayText(index.data(Qt::DisplayRole), option->locale);
    const QBrush brush = index.data(Qt::ForegroundRole).value<QBrush>();
    // Writing to a palette copies all of it, a tenth of what painting a cell takes.
    if (brush.style() != Qt::NoBrush
        && brush != option->palette.brush(paintedGroup(option->state), QPalette::Text)) {
        option->palette.setBrush(QPalette::Text, brush);
    }
}

QWidget *nkMetadataCellDelegate::createEditor(QWidget *, const QStyleOptionViewItem &,
                                              const QModelIndex &) const
{
    return nullptr;
}

void nkMetadataCellDelegate::setEditorData(QWidget *editor, const QModelIndex &index) const
{
    const QVariant datum = index.data(Qt::UserRole);
    const bool isFirst = !nkMetadataEditorMemory::isFilled(editor);
    if (isFirst || nkMetadataEditorMemory::wants(editor, datum, shown(editor))) {
        fill(editor, datum);
        nkMetadataEditorMemory::remember(editor, datum, shown(editor));
    }
    if (isFirst) {
        filledFirst(editor);
    }
}

void nkMetadataCellDelegate::setModelData(QWidget *editor, QAbstractItemModel *model,
                                          const QModelIndex &index) const
{
    const QVariant committed = value(editor);
    if (committed.isValid() && nkMetadataEditorMemory::isTouched(editor, shown(editor))) {
        model->setData(index, committed, Qt::UserRole);
    }
}

void nkMetadataCellDelegate::fill(QWidget *, const QVariant &) const {}

void nkMetadataCellDelegate::filledFirst(QWidget *) const {}

QVariant nkMetadataCellDelegate::shown(QWidget *editor) const
{
    return value(editor);
}

QVariant nkMetadataCellDelegate::value(QWidget *) const
{
    return QVariant();
}
