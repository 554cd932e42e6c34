#include "RecentDelegate.h"

#include <QApplication>
#include <QPainter>

namespace {

constexpr int sideMargin = 12;
constexpr int topMargin = 7;

void drawLine(QPainter *painter, const QFont &font, const QRect &place, const QString &text,
              const QColor &color)
{
    painter->setFont(font);
    painter->setPen(color);
    const QString shown = QFontMetrics(font).elidedText(text, Qt::ElideMiddle, place.width());
    painter->drawText(place, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine, shown);
}

} // namespace

QFont RecentDelegate::nameFont(const QStyleOptionViewItem &option)
{
    QFont font = option.font;
    font.setBold(true);
    return font;
}

void RecentDelegate::paint(QPainter *painter, const QStyleOptionViewItem &option,
                           const QModelIndex &index) const
{
    const QWidget *widget = option.widget;
    widget->style()->drawPrimitive(QStyle::PE_PanelItemViewItem, &option, painter, widget);
    const bool isSelected = option.state.testFlag(QStyle::State_Selected);
    const QColor text = option.palette.color(isSelected ? QPalette::HighlightedText : QPalette::Text);
    const QColor faint = isSelected ? text : option.palette.color(QPalette::PlaceholderText);
    const QRect inside = option.rect.adjusted(sideMargin, topMargin, -sideMargin, -topMargin);
    const QFont font = nameFont(option);
    const int nameHeight = QFontMetrics(font).height();
    painter->save();
    drawLine(painter, font, QRect(inside.topLeft(), QSize(inside.width(), nameHeight)),
             index.data().toString(), index.data(IsThereRole).toBool() ? text : faint);
    drawLine(painter, option.font, inside.adjusted(0, nameHeight, 0, 0), index.data(FolderRole).toString(),
             faint);
    painter->restore();
    if (option.state.testFlag(QStyle::State_HasFocus)) {
        QStyleOptionFocusRect focus;
        focus.QStyleOption::operator=(option);
        focus.backgroundColor = option.palette.color(isSelected ? QPalette::Highlight : QPalette::Base);
        widget->style()->drawPrimitive(QStyle::PE_FrameFocusRect, &focus, painter, widget);
    }
}

QSize RecentDelegate::sizeHint(const QStyleOptionViewItem &option, const QModelIndex & /*index*/) const
{
    const int lines = QFontMetrics(nameFont(option)).height() + QFontMetrics(option.font).height();
    return {0, lines + 2 * topMargin};
}
