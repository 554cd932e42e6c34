#pragma once

#include <QCursor>
#include <QEvent>
#include <QItemDelegate>
#include <QPointer>

#include <memory>

class QAbstractItemView;
class QNKColorDialog;

/// Draws the icon column and edits the colour of the row's set in the host's colour dialog, which a click on
/// the icon opens. Over the icon of a set that can be edited the mouse shows a colour picker.
class nkMetadataIconDelegate : public QItemDelegate
{
    Q_OBJECT
public:
    explicit nkMetadataIconDelegate(QObject *parent = nullptr);
    ~nkMetadataIconDelegate() override;

    void paint(QPainter *painter, const QStyleOptionViewItem &option,
               const QModelIndex &index) const override;
    QWidget *createEditor(QWidget *parent, const QStyleOptionViewItem &option,
                          const QModelIndex &index) const override;
    void setEditorData(QWidget *editor, const QModelIndex &index) const override;
    void setModelData(QWidget *editor, QAbstractItemModel *model, const QModelIndex &index) const override;
    void updateEditorGeometry(QWidget *editor, const QStyleOptionViewItem &option,
                              const QModelIndex &index) const override;
    bool editorEvent(QEvent *event, QAbstractItemModel *model, const QStyleOptionViewItem &option,
                     const QModelIndex &index) override;
    bool eventFilter(QObject *object, QEvent *event) override;

protected:
    void drawDecoration(QPainter *painter, const QStyleOptionViewItem &option, const QRect &rect,
                        const QPixmap &pixmap) const override;

private:
    bool isOnIcon(int x, const QStyleOptionViewItem &option) const;
    bool openOnClick(const QStyleOptionViewItem &option, const QModelIndex &index);
    void showPickerCursor(const QStyleOptionViewItem &option, bool show) const;
    const QCursor &pickerCursor() const;

    /// The view whose cursor is the colour picker now; null where none is.
    mutable QPointer<QWidget> m_cursorOverridden;
    mutable std::unique_ptr<QCursor> m_pickerCursor;
    /// The extent of the decoration, from the left edge of its cell; learned from the first one drawn.
    mutable int m_iconLeft = -1;
    mutable int m_iconWidth = 0;
    QEvent::Type m_lastEventType = QEvent::None;
    /// The entry whose icon was pressed; 0 where the last press met none.
    quint64 m_pressedEntry = 0;
};
