#include "table/nkMetadataSearchBar.h"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QLineEdit>

nkMetadataSearchBar::nkMetadataSearchBar(QHeaderView *header, QWidget *parent)
    : QFrame(parent), m_header(header), m_layout(new QHBoxLayout(this))
{
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
    m_layout->setContentsMargins(0, 0, 0, 0);
    m_layout->setSpacing(0);
}

nkMetadataSearchBar::~nkMetadataSearchBar() = default;

void nkMetadataSearchBar::setWidgets(const QList<QWidget *> &widgets)
{
    m_widgets = widgets;
    onUpdate();
    if (m_header) {
        connect(m_header, &QHeaderView::geometriesChanged, this, &nkMetadataSearchBar::onUpdate);
        connect(m_header, &QHeaderView::sectionMoved, this, &nkMetadataSearchBar::onUpdate);
        connect(m_header, &QHeaderView::sectionResized, this, &nkMetadataSearchBar::onUpdate);
    }
}

void nkMetadataSearchBar::onUpdate()
{
    if (!m_header) {
        return;
    }
    // The strip is laid out with every pixel of a dragged header edge; unseen until it is whole.
    setUpdatesEnabled(false);
    clearLayout();
    QWidget *last = placeWidgets();
    setUpdatesEnabled(true);
    if (last) {
        last->setMinimumWidth(0);
        last->setMaximumWidth(QWIDGETSIZE_MAX);
        last->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
    }
    orderTabs();
}

void nkMetadataSearchBar::clearLayout()
{
    while (QLayoutItem *item = m_layout->takeAt(0)) {
        delete item;
    }
}

QWidget *nkMetadataSearchBar::placeWidgets()
{
    QWidget *last = nullptr;
    for (int i = 0; i < m_widgets.size(); ++i) {
        QWidget *widget = widgetAt(i);
        if (!widget) {
            continue;
        }
        const int logical = m_header->logicalIndex(i);
        widget->setFixedWidth(m_header->sectionSize(logical));
        widget->setHidden(m_header->isSectionHidden(logical));
        m_layout->addWidget(widget);
        if (!m_header->isSectionHidden(logical)) {
            last = widget;
        }
    }
    return last;
}

void nkMetadataSearchBar::orderTabs()
{
    QList<QLineEdit *> edits;
    for (int i = 0; i < m_widgets.size(); ++i) {
        const QWidget *widget = widgetAt(i);
        if (QLineEdit *edit = widget ? widget->findChild<QLineEdit *>() : nullptr) {
            edits.append(edit);
        }
    }
    if (edits.isEmpty()) {
        return;
    }
    QWidget::setTabOrder(edits.last(), edits.first());
    for (int i = 0; i + 1 < edits.size(); ++i) {
        QWidget::setTabOrder(edits.at(i), edits.at(i + 1));
    }
}

QWidget *nkMetadataSearchBar::widgetAt(int visualIndex) const
{
    return m_widgets.value(m_header->logicalIndex(visualIndex));
}
