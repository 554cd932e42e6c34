#include "nkQt4Ext/nkHeaderViewBase.h"

#include "GlyphIcon.h"

#include <QContextMenuEvent>
#include <QMenu>
#include <QToolButton>

nkHeaderViewBase::nkHeaderViewBase(QWidget *parent)
    : QHeaderView(Qt::Horizontal, parent), m_toolButton(new QToolButton(this))
{
    // What a tree view sets up on a header of its own making.
    setSectionsMovable(true);
    setStretchLastSection(true);
    setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    setSortIndicator(-1, Qt::AscendingOrder);

    auto *menu = new QMenu(m_toolButton);
    connect(menu, &QMenu::aboutToShow, this, &nkHeaderViewBase::fillMenu);
    m_toolButton->setMenu(menu);
    m_toolButton->setPopupMode(QToolButton::InstantPopup);
    m_toolButton->setIcon(GlyphIcon::make(GlyphIcon::Sign::Columns));
    m_toolButton->setAutoRaise(true);
    m_toolButton->setFocusPolicy(Qt::TabFocus);
    m_toolButton->setCursor(Qt::ArrowCursor);
    m_toolButton->setToolTip(tr("Show or hide columns"));
    m_toolButton->setAccessibleName(tr("Columns"));
    m_toolButton->hide();
}

nkHeaderViewBase::~nkHeaderViewBase() = default;

void nkHeaderViewBase::setShowToolButton(bool show)
{
    m_toolButton->setVisible(show);
    placeToolButton();
}

void nkHeaderViewBase::setColumnVisibility(int idxPos, bool bToggle)
{
    if (idxPos >= 0 && idxPos < count())
        setSectionHidden(idxPos, !bToggle);
}

bool nkHeaderViewBase::isColumnVisible(int idxPos) const
{
    return idxPos >= 0 && idxPos < count() && !isSectionHidden(idxPos);
}

QAbstractItemModel *nkHeaderViewBase::getModel() const
{
    return model();
}

QSize nkHeaderViewBase::sizeHint() const
{
    // Qt's hint is empty when every section is hidden; the header would vanish and with it the way to get
    // the columns back.
    const QSize hint = QHeaderView::sizeHint();
    if (m_toolButton->isHidden())
        return hint;
    return QSize(hint.width(), qMax(hint.height(), m_toolButton->fontMetrics().height() + 6));
}

void nkHeaderViewBase::resizeEvent(QResizeEvent *event)
{
    QHeaderView::resizeEvent(event);
    placeToolButton();
}

void nkHeaderViewBase::contextMenuEvent(QContextMenuEvent *event)
{
    if (m_toolButton->isHidden()) {
        QHeaderView::contextMenuEvent(event);
        return;
    }
    m_toolButton->menu()->popup(event->globalPos());
    event->accept();
}

void nkHeaderViewBase::fillMenu()
{
    QMenu *menu = m_toolButton->menu();
    menu->clear();
    for (int column = 0; column < count(); ++column) {
        // Names may come from files: an ampersand is a letter here.
        QAction *action = menu->addAction(columnName(column).replace(QLatin1Char('&'), QLatin1String("&&")));
        action->setCheckable(true);
        action->setChecked(isColumnVisible(column));
        connect(action, &QAction::toggled, this,
                [this, column](bool visible) { setColumnVisibility(column, visible); });
    }
}

QString nkHeaderViewBase::columnName(int idxPos) const
{
    const QAbstractItemModel *named = getModel();
    QString name;
    if (named) {
        name = named->headerData(idxPos, Qt::Horizontal, Qt::UserRole).toString();
        if (name.isEmpty())
            name = named->headerData(idxPos, Qt::Horizontal, Qt::DisplayRole).toString();
    }
    return name.isEmpty() ? tr("Column %1").arg(idxPos + 1) : name;
}

void nkHeaderViewBase::placeToolButton()
{
    const int extent = height();
    const bool rightToLeft = layoutDirection() == Qt::RightToLeft;
    m_toolButton->setGeometry(rightToLeft ? 0 : width() - extent, 0, extent, extent);
    m_toolButton->raise();
}
