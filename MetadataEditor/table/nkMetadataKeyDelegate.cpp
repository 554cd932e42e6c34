#include "table/nkMetadataKeyDelegate.h"

#include "table/nkMetadataValueEditors.h"

#include <nkQt4Ext/QNKStringCompleterLineEdit.h>

#include <QFontMetrics>
#include <QRegExp>
#include <QRegExpValidator>

nkMetadataKeyDelegate::nkMetadataKeyDelegate(QObject *parent) : nkMetadataCellDelegate(parent) {}

nkMetadataKeyDelegate::~nkMetadataKeyDelegate() = default;

QWidget *nkMetadataKeyDelegate::createEditor(QWidget *parent, const QStyleOptionViewItem &,
                                             const QModelIndex &) const
{
    QLineEdit *editor = nkMetadataValueEditors::createLineEdit(parent);
    // Qt keeps patterns for the whole process: no literal, which would go with the plug-in.
    const QRegExp something(QString(QLatin1String(".+")), Qt::CaseSensitive, QRegExp::RegExp);
    editor->setValidator(new QRegExpValidator(something, editor));
    return editor;
}

void nkMetadataKeyDelegate::fill(QWidget *editor, const QVariant &datum) const
{
    if (auto *edit = qobject_cast<QLineEdit *>(editor)) {
        edit->setText(datum.toString());
    }
}

QVariant nkMetadataKeyDelegate::shown(QWidget *editor) const
{
    const auto *edit = qobject_cast<QLineEdit *>(editor);
    return edit ? QVariant(edit->text()) : QVariant();
}

QVariant nkMetadataKeyDelegate::value(QWidget *editor) const
{
    const auto *edit = qobject_cast<QLineEdit *>(editor);
    return edit && edit->hasAcceptableInput() ? QVariant(edit->text()) : QVariant();
}

void nkMetadataKeyDelegate::destroyEditor(QWidget *editor, const QModelIndex &index) const
{
    const QModelIndex edited = index;
    nkMetadataCellDelegate::destroyEditor(editor, index);
    Q_EMIT const_cast<nkMetadataKeyDelegate *>(this)->editingFinished(edited);
}

QSize nkMetadataKeyDelegate::sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const
{
    const QString text = displayText(index.data(Qt::DisplayRole), option.locale);
    return option.fontMetrics.boundingRect(option.rect, Qt::TextSingleLine, text).size();
}
