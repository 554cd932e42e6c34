#include "table/nkMetadataIconDelegate.h"

#include "table/nkMetadataEditorMemory.h"
#include "table/nkMetadataKeyValueColumns.h"
#include "table/nkMetadataPickedColor.h"
#include "table/nkMetadataRowHandles.h"

#include <nkKernelServices/nkMainWindowService.h>
#include <nkQt4Ext/QNKColorDialog.h>
#include <nkQt4Ext/nkIconManager.h>

#include <QAbstractItemView>
#include <QIcon>
#include <QMouseEvent>
#include <QPainter>

using namespace nkMetadataKeyValue;

namespace {

QWidget *viewOf(const QStyleOptionViewItem &option)
{
    return const_cast<QWidget *>(option.widget);
}

QColor selectedTextColor(const QStyleOptionViewItem &option)
{
    const bool isActive = option.state & QStyle::State_Active;
    return option.palette.color(isActive ? QPalette::Active : QPalette::Inactive, QPalette::HighlightedText);
}

bool isMouseEvent(QEvent::Type type)
{
    return type == QEvent::MouseButtonPress || type == QEvent::MouseButtonRelease
           || type == QEvent::MouseButtonDblClick || type == QEvent::MouseMove;
}

QVariant colorOf(const QNKColorDialog *dialog)
{
    return dialog->getColor().getGammaQColor();
}

} // namespace

nkMetadataIconDelegate::nkMetadataIconDelegate(QObject *parent) : QItemDelegate(parent) {}

nkMetadataIconDelegate::~nkMetadataIconDelegate() = default;

QWidget *nkMetadataIconDelegate::createEditor(QWidget *, const QStyleOptionViewItem &,
                                              const QModelIndex &) const
{
    auto *dialog = new QNKColorDialog;
    auto *delegate = const_cast<nkMetadataIconDelegate *>(this);
    connect(dialog, &QDialog::finished, delegate, [delegate, dialog](int result) {
        if (result == QDialog::Accepted) {
            Q_EMIT delegate->commitData(dialog);
        }
        Q_EMIT delegate->closeEditor(dialog, result == QDialog::Accepted ? NoHint : RevertModelCache);
    });
    return dialog;
}

void nkMetadataIconDelegate::setEditorData(QWidget *editor, const QModelIndex &index) const
{
    auto *dialog = qobject_cast<QNKColorDialog *>(editor);
    const QVariant datum = index.data(ColorRole);
    if (dialog && nkMetadataEditorMemory::wants(dialog, datum, colorOf(dialog))) {
        dialog->reinit(nkMetadataPickedColor::fromColor(datum.value<QColor>()));
        nkMetadataEditorMemory::remember(dialog, datum, colorOf(dialog));
    }
}

void nkMetadataIconDelegate::setModelData(QWidget *editor, QAbstractItemModel *model,
                                          const QModelIndex &index) const
{
    const auto *dialog = qobject_cast<QNKColorDialog *>(editor);
    if (dialog && nkMetadataEditorMemory::isTouched(dialog, colorOf(dialog))) {
        model->setData(index, colorOf(dialog), ColorRole);
    }
}

void nkMetadataIconDelegate::updateEditorGeometry(QWidget *editor, const QStyleOptionViewItem &option,
                                                  const QModelIndex &) const
{
    if (editor->isVisible()) {
        return;
    }
    // Made on its own, the dialog joins its view before it is shown: it stays above the view's window, ends
    // with it, and the host finds it among the view's editors when it commits what is open.
    const auto *view = qobject_cast<const QAbstractItemView *>(option.widget);
    if (view && !editor->parentWidget()) {
        editor->setParent(view->viewport(), editor->windowFlags());
    }
    const QWidget *window = nkMainWindowService::the().getMainWindow();
    if (window) {
        editor->adjustSize();
        const QRect frame = window->geometry();
        editor->move(frame.x() + frame.width() / 2 - editor->width() / 2,
                     frame.y() + frame.height() / 2 - editor->height() / 2);
    }
}

bool nkMetadataIconDelegate::eventFilter(QObject *object, QEvent *event)
{
    // The dialog ends by its own buttons: hiding it or turning to another window commits nothing.
    if (qobject_cast<QNKColorDialog *>(object)) {
        return false;
    }
    return QItemDelegate::eventFilter(object, event);
}

namespace {

/// Where the base draws a decoration as it is to stand in this rectangle: it takes the pixels of a sharper picture
/// for the size that it is drawn in.
QRect placeFor(const QPixmap &pixmap, const QStyleOptionViewItem &option, const QRect &rect)
{
    const QSize size = pixmap.size() / pixmap.devicePixelRatio();
    const QPoint place =
        QStyle::alignedRect(option.direction, option.decorationAlignment, size, rect).topLeft();
    return {place, pixmap.size()};
}

} // namespace

void nkMetadataIconDelegate::drawDecoration(QPainter *painter, const QStyleOptionViewItem &option,
                                            const QRect &rect, const QPixmap &pixmap) const
{
    if (m_iconLeft < 0 && rect.isValid()) {
        m_iconLeft = rect.left() - option.rect.left();
        m_iconWidth = rect.width();
    }
    if (!(option.state & QStyle::State_Selected) || !rect.isValid()) {
        QItemDelegate::drawDecoration(painter, option, placeFor(pixmap, option, rect), pixmap);
        return;
    }
    // In the colour of the row's texts: the mid-tones of an icon vanish in the highlight.
    const qreal ratio = painter->device()->devicePixelRatioF();
    QPixmap drawn(rect.size() * ratio);
    drawn.setDevicePixelRatio(ratio);
    drawn.fill(Qt::transparent);
    QPainter onto(&drawn);
    onto.translate(-rect.topLeft());
    QItemDelegate::drawDecoration(&onto, option, placeFor(pixmap, option, rect), pixmap);
    onto.setCompositionMode(QPainter::CompositionMode_SourceIn);
    onto.fillRect(rect, selectedTextColor(option));
    onto.end();
    painter->drawPixmap(rect.topLeft(), drawn);
}

void nkMetadataIconDelegate::paint(QPainter *painter, const QStyleOptionViewItem &option,
                                   const QModelIndex &index) const
{
    // The mouse may have left for a cell of another delegate, which tells nobody; the repaint does.
    if (option.state != QStyle::State_MouseOver) {
        showPickerCursor(option, false);
    }
    // As the base paints it, for a cell that is an icon and nothing else: not asked for font, text, check and colours.
    const QIcon icon = index.data(Qt::DecorationRole).value<QIcon>();
    const bool isSelected = option.state & QStyle::State_Selected;
    const QIcon::Mode mode = !(option.state & QStyle::State_Enabled) ? QIcon::Disabled
                             : isSelected                            ? QIcon::Selected
                                                                     : QIcon::Normal;
    QRect check;
    QRect rect(QPoint(), icon.actualSize(option.decorationSize, mode));
    QRect text;
    doLayout(option, &check, &rect, &text, false);
    if (isSelected) {
        drawBackground(painter, option, index);
    }
    drawDecoration(painter, option, rect, icon.pixmap(option.decorationSize, mode));
    drawFocus(painter, option, text);
}

bool nkMetadataIconDelegate::editorEvent(QEvent *event, QAbstractItemModel *model,
                                         const QStyleOptionViewItem &option, const QModelIndex &index)
{
    const QEvent::Type lastType = m_lastEventType;
    m_lastEventType = event->type();
    if (!isMouseEvent(event->type())) {
        return QItemDelegate::editorEvent(event, model, option, index);
    }
    const auto *mouse = static_cast<QMouseEvent *>(event);
    const bool isOnIcon = this->isOnIcon(mouse->x(), option);
    if (event->type() == QEvent::MouseButtonPress) {
        m_pressedEntry = isOnIcon ? nkMetadataRowHandles::entry(index).getObjectId() : 0;
    }
    if (event->type() == QEvent::MouseMove) {
        showPickerCursor(option, isOnIcon && nkMetadataRowHandles::set(index).isEditable());
    }
    const bool isClick = event->type() == QEvent::MouseButtonRelease && lastType == QEvent::MouseButtonPress
                         && mouse->button() == Qt::LeftButton;
    if (isClick && isOnIcon && openOnClick(option, index)) {
        return true;
    }
    return QItemDelegate::editorEvent(event, model, option, index);
}

bool nkMetadataIconDelegate::isOnIcon(int x, const QStyleOptionViewItem &option) const
{
    const int left = option.rect.left() + m_iconLeft;
    return m_iconLeft >= 0 && x >= left && x < left + m_iconWidth;
}

bool nkMetadataIconDelegate::openOnClick(const QStyleOptionViewItem &option, const QModelIndex &index)
{
    auto *view = qobject_cast<QAbstractItemView *>(viewOf(option));
    const bool isPressedRow = nkMetadataRowHandles::entry(index).getObjectId() == m_pressedEntry;
    if (!view || !m_pressedEntry || !isPressedRow || !nkMetadataRowHandles::set(index).isEditable()) {
        return false;
    }
    view->edit(index);
    return true;
}

void nkMetadataIconDelegate::showPickerCursor(const QStyleOptionViewItem &option, bool show) const
{
    QWidget *view = viewOf(option);
    if (show && view && m_cursorOverridden != view) {
        view->setCursor(pickerCursor());
        m_cursorOverridden = view;
    } else if (!show && m_cursorOverridden) {
        m_cursorOverridden->unsetCursor();
        m_cursorOverridden = nullptr;
    }
}

const QCursor &nkMetadataIconDelegate::pickerCursor() const
{
    if (!m_pickerCursor) {
        const QPixmap picture = nkIconManager::renderPixmap(
            QString(QLatin1String(":/iconmanager/resources/Various/ColorPickerCursor.svg")), QSize(32, 32));
        // The tip of the drawn pipette; a host without pictures gets a plain cursor.
        m_pickerCursor = picture.isNull() ? std::make_unique<QCursor>(Qt::CrossCursor)
                                          : std::make_unique<QCursor>(picture, 6, 26);
    }
    return *m_pickerCursor;
}
