#include "table/nkMetadataValueTypeDelegate.h"

#include "table/nkMetadataComboCommit.h"
#include "table/nkMetadataValueType.h"

#include <nkQt4Ext/QNKComboBox.h>

nkMetadataValueTypeDelegate::nkMetadataValueTypeDelegate(QObject *parent) : nkMetadataCellDelegate(parent) {}

nkMetadataValueTypeDelegate::~nkMetadataValueTypeDelegate() = default;

QWidget *nkMetadataValueTypeDelegate::createEditor(QWidget *parent, const QStyleOptionViewItem &,
                                                   const QModelIndex &) const
{
    auto *editor = new QNKComboBox(parent);
    for (int type = nkMetadataTypes::String; type <= nkMetadataTypes::List; ++type) {
        editor->addItem(nkMetadataValueType::name(type),
                        QVariant::fromValue(nkMetadataTypes::ValueType(type)));
    }
    nkMetadataComboCommit::connectChoice(editor, const_cast<nkMetadataValueTypeDelegate *>(this));
    return editor;
}

void nkMetadataValueTypeDelegate::fill(QWidget *editor, const QVariant &datum) const
{
    if (auto *combo = qobject_cast<QComboBox *>(editor)) {
        const QVariant type = QVariant::fromValue(nkMetadataValueType::fromVariant(datum));
        combo->setCurrentIndex(combo->findData(type, Qt::UserRole, Qt::MatchExactly));
    }
}

void nkMetadataValueTypeDelegate::filledFirst(QWidget *editor) const
{
    if (auto *combo = qobject_cast<QComboBox *>(editor)) {
        combo->showPopup();
    }
}

QVariant nkMetadataValueTypeDelegate::value(QWidget *editor) const
{
    const auto *combo = qobject_cast<QComboBox *>(editor);
    return combo ? combo->currentData() : QVariant();
}
