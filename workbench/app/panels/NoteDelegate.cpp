#include "NoteDelegate.h"

#include <QApplication>
#include <QPainter>
#include <QStyle>

namespace {

/// Pixels on either side of a note.
constexpr int noteMargin = 6;

QColor noteColour(const QStyleOptionViewItem &option)
{
    const bool isSelected = option.state.testFlag(QStyle::State_Selected);
    return option.palette.color(isSelected ? QPalette::HighlightedText : QPalette::PlaceholderText);
}

} // namespace

NoteDelegate::NoteDelegate(int noteRole, QObject *parent) : NameDelegate(parent), m_noteRole(noteRole) {}

NoteDelegate::~NoteDelegate() = default;

void NoteDelegate::paint(QPainter *painter, const QStyleOptionViewItem &option,
                         const QModelIndex &index) const
{
    const QString note = index.data(m_noteRole).toString();
    if (note.isEmpty()) {
        NameDelegate::paint(painter, option, index);
        return;
    }
    QStyleOptionViewItem row = option;
    initStyleOption(&row, index);
    const QStyle *style = row.widget ? row.widget->style() : QApplication::style();
    const QRect name = style->subElementRect(QStyle::SE_ItemViewItemText, &row, row.widget);
    const int noteWidth = row.fontMetrics.horizontalAdvance(note) + 2 * noteMargin;
    row.text = row.fontMetrics.elidedText(row.text, Qt::ElideRight,
                                          option.rect.right() - name.left() - noteWidth);
    style->drawControl(QStyle::CE_ItemViewItem, &row, painter, row.widget);
    painter->save();
    painter->setFont(row.font);
    painter->setPen(noteColour(row));
    painter->drawText(option.rect.adjusted(0, 0, -noteMargin, 0), Qt::AlignRight | Qt::AlignVCenter, note);
    painter->restore();
}
