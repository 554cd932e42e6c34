#include "table/nkMetadataValueDelegate.h"

#include "table/nkMetadataComboCommit.h"
#include "table/nkMetadataKeyValueColumns.h"
#include "table/nkMetadataValueEditors.h"
#include "table/nkMetadataValueType.h"

#include <nkQt4Ext/QNKVariantListWidget.h>

#include <QComboBox>
#include <QHeaderView>
#include <QTreeView>

namespace {

/// Of the list editor, in pixels.
constexpr int ListEditorHeight = 100;

int headerHeight(const QStyleOptionViewItem &option)
{
    const auto *view = qobject_cast<const QTreeView *>(option.widget);
    return view ? view->header()->height() : option.rect.height();
}

} // namespace

nkMetadataValueDelegate::nkMetadataValueDelegate(QObject *parent) : nkMetadataCellDelegate(parent) {}

nkMetadataValueDelegate::~nkMetadataValueDelegate() = default;

QWidget *nkMetadataValueDelegate::createEditor(QWidget *parent, const QStyleOptionViewItem &,
                                               const QModelIndex &index) const
{
    const QVariant type = index.sibling(index.row(), nkMetadataKeyValue::TypeColumn).data(Qt::UserRole);
    QWidget *editor = nkMetadataValueEditors::create(nkMetadataValueType::fromVariant(type), parent);
    auto *delegate = const_cast<nkMetadataValueDelegate *>(this);
    if (auto *combo = qobject_cast<QComboBox *>(editor)) {
        nkMetadataComboCommit::connectChoice(combo, delegate);
    }
    if (auto *list = qobject_cast<QNKVariantListWidget *>(editor)) {
        connect(list, &QNKVariantListWidget::finished, delegate, [delegate, list](bool commit) {
            if (commit) {
                Q_EMIT delegate->commitData(list);
            }
            Q_EMIT delegate->closeEditor(list, commit ? NoHint : RevertModelCache);
        });
    }
    return editor;
}

void nkMetadataValueDelegate::updateEditorGeometry(QWidget *editor, const QStyleOptionViewItem &option,
                                                   const QModelIndex &) const
{
    if (!qobject_cast<QNKVariantListWidget *>(editor)) {
        editor->setGeometry(option.rect);
        return;
    }
    const QPoint cell = editor->parentWidget()->mapToGlobal(option.rect.topLeft());
    editor->setGeometry(cell.x() + 1, cell.y() + headerHeight(option) + 1, option.rect.width(),
                        ListEditorHeight);
}

void nkMetadataValueDelegate::fill(QWidget *editor, const QVariant &datum) const
{
    nkMetadataValueEditors::fill(editor, datum);
}

void nkMetadataValueDelegate::filledFirst(QWidget *editor) const
{
    if (auto *combo = qobject_cast<QComboBox *>(editor)) {
        combo->showPopup();
    }
}

QVariant nkMetadataValueDelegate::shown(QWidget *editor) const
{
    return nkMetadataValueEditors::shown(editor);
}

QVariant nkMetadataValueDelegate::value(QWidget *editor) const
{
    return nkMetadataValueEditors::value(editor);
}
