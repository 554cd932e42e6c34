#include "NameDelegate.h"

#include "gui/dialogs/ValueText.h"

#include <QAbstractItemView>
#include <QCoreApplication>
#include <QHelpEvent>
#include <QLineEdit>
#include <QToolTip>

#include <limits>

namespace {

constexpr char shownName[] = "shownName";

bool isTouched(const QLineEdit *edit)
{
    const QVariant shown = edit->property(shownName);
    return shown.isValid() && shown.toString() != edit->text();
}

} // namespace

NameDelegate::NameDelegate(QObject *parent) : QStyledItemDelegate(parent) {}

NameDelegate::~NameDelegate() = default;

bool NameDelegate::helpEvent(QHelpEvent *event, QAbstractItemView *view, const QStyleOptionViewItem &option,
                             const QModelIndex &index)
{
    const bool isCut = index.isValid() && sizeHint(option, index).width() > option.rect.width();
    if (event->type() != QEvent::ToolTip || !isCut) {
        return QStyledItemDelegate::helpEvent(event, view, option, index);
    }
    const QString name = ValueText::oneLine(index.data(Qt::DisplayRole).toString());
    QToolTip::showText(event->globalPos(), ValueText::literal(name), view->viewport(), option.rect);
    return true;
}

QString NameDelegate::displayText(const QVariant &value, const QLocale &) const
{
    return ValueText::oneLine(value.toString());
}

QWidget *NameDelegate::createEditor(QWidget *parent, const QStyleOptionViewItem &, const QModelIndex &) const
{
    QLineEdit *edit = new QLineEdit(parent);
    edit->setMaxLength(std::numeric_limits<int>::max());
    edit->setAccessibleName(QCoreApplication::translate("Metadata", "Name"));
    return edit;
}

void NameDelegate::setEditorData(QWidget *editor, const QModelIndex &index) const
{
    QLineEdit *edit = qobject_cast<QLineEdit *>(editor);
    if (!edit || isTouched(edit)) {
        return;
    }
    const QString name = index.data(Qt::EditRole).toString();
    if (edit->property(shownName).toString() != name || !edit->property(shownName).isValid()) {
        edit->setText(name);
        edit->selectAll();
    }
    // What the field made of the name, so that this by itself never counts as an edit.
    edit->setProperty(shownName, edit->text());
}

void NameDelegate::setModelData(QWidget *editor, QAbstractItemModel *model, const QModelIndex &index) const
{
    const QLineEdit *edit = qobject_cast<QLineEdit *>(editor);
    if (edit && isTouched(edit)) {
        model->setData(index, edit->text(), Qt::EditRole);
    }
}
