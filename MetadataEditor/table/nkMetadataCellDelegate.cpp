#include "table/nkMetadataCellDelegate.h"

#include "table/nkMetadataCellText.h"
#include "table/nkMetadataEditorMemory.h"

nkMetadataCellDelegate::nkMetadataCellDelegate(QObject *parent) : QStyledItemDelegate(parent) {}

nkMetadataCellDelegate::~nkMetadataCellDelegate() = default;

QString nkMetadataCellDelegate::displayText(const QVariant &value, const QLocale &) const
{
    return nkMetadataCellText::singleLine(value.toString());
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
