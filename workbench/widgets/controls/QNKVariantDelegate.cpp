#include "nkQt4Ext/QNKVariantDelegate.h"

#include "InlineFrame.h"
#include "VariantEditor.h"
#include "VariantElement.h"
#include "nkQt4Ext/QNKComboBox.h"
#include "nkQt4Ext/QNKVariantListWidget.h"

#include <QGuiApplication>
#include <QScreen>

namespace {

/// The content that an editor was filled with: what still holds it has not been touched.
const char filledProperty[] = "nkFilledContent";

/// Cells show one line; of a longer text no more than this is laid out and elided.
constexpr int longestShownText = 2000;

constexpr QSize listEditorSize(200, 140);

bool isTouched(QWidget *editor)
{
    return !VariantElement::same(VariantEditor::content(editor), editor->property(filledProperty));
}

QRect withinScreen(QRect rect)
{
    const QScreen *screen = QGuiApplication::screenAt(rect.topLeft());
    if (!screen)
        return rect;
    const QRect room = screen->availableGeometry();
    rect.moveRight(qMin(rect.right(), room.right()));
    rect.moveBottom(qMin(rect.bottom(), room.bottom()));
    return rect;
}

} // namespace

QNKVariantDelegate::QNKVariantDelegate(QObject *parent) : QStyledItemDelegate(parent) {}

QNKVariantDelegate::~QNKVariantDelegate() = default;

QString QNKVariantDelegate::displayText(const QVariant &value, const QLocale &locale) const
{
    return VariantElement::text(value, locale);
}

void QNKVariantDelegate::initStyleOption(QStyleOptionViewItem *option, const QModelIndex &index) const
{
    QStyledItemDelegate::initStyleOption(option, index);
    option->features |= QStyleOptionViewItem::HasDisplay;
    option->text = displayText(index.data(Qt::UserRole), QLocale::system());
    if (option->text.size() > longestShownText)
        option->text = option->text.left(longestShownText) + QChar(0x2026);
}

QWidget *QNKVariantDelegate::createEditor(QWidget *parent, const QStyleOptionViewItem &,
                                          const QModelIndex &index) const
{
    QWidget *editor = VariantEditor::create(parent, index.data(Qt::UserRole));
    // Item views keep delegates by non-const pointer; only createEditor() itself is const.
    auto *self = const_cast<QNKVariantDelegate *>(this);
    const auto close = [self, editor](bool commit) {
        if (commit)
            Q_EMIT self->commitData(editor);
        Q_EMIT self->closeEditor(editor, commit ? NoHint : RevertModelCache);
    };
    if (auto *list = qobject_cast<QNKVariantListWidget *>(editor))
        connect(list, &QNKVariantListWidget::finished, self, close);
    if (auto *box = qobject_cast<QNKComboBox *>(editor))
        connect(box, QOverload<int>::of(&QComboBox::activated), self, [close] { close(true); });
    return editor;
}

void QNKVariantDelegate::setEditorData(QWidget *editor, const QModelIndex &index) const
{
    // Called again whenever the model announces the row: what a person has typed by then stays.
    const bool filledBefore = editor->property(filledProperty).isValid();
    if (filledBefore && isTouched(editor))
        return;
    VariantEditor::fill(editor, index.data(Qt::UserRole));
    editor->setProperty(filledProperty, VariantEditor::content(editor));
    if (auto *box = qobject_cast<QNKComboBox *>(editor)) {
        if (!filledBefore)
            box->showPopup();
    }
}

void QNKVariantDelegate::setModelData(QWidget *editor, QAbstractItemModel *model,
                                      const QModelIndex &index) const
{
    if (!isTouched(editor))
        return;
    const QVariant value = VariantEditor::likeValue(VariantEditor::content(editor), index.data(Qt::UserRole));
    if (value.isValid())
        model->setData(index, value, Qt::UserRole);
}

QSize QNKVariantDelegate::sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const
{
    // A date or a spinner in a row as low as its text would be cut off.
    const QSize hint = QStyledItemDelegate::sizeHint(option, index);
    return option.widget ? hint.expandedTo(QSize(0, InlineFrame::fieldHeight(option.widget))) : hint;
}

void QNKVariantDelegate::updateEditorGeometry(QWidget *editor, const QStyleOptionViewItem &option,
                                              const QModelIndex &index) const
{
    if (!editor->isWindow()) {
        QStyledItemDelegate::updateEditorGeometry(editor, option, index);
        return;
    }
    const QPoint below = editor->parentWidget()->mapToGlobal(option.rect.bottomLeft());
    const QSize size(qMax(option.rect.width(), listEditorSize.width()), listEditorSize.height());
    editor->setGeometry(withinScreen(QRect(below, size)));
}
