#include "RecentColors.h"

#include "ColorSwatch.h"

#include <QHBoxLayout>

namespace {

QVector<QColor> &remembered()
{
    static QVector<QColor> colors;
    return colors;
}

} // namespace

RecentColors::RecentColors(QWidget *parent) : QWidget(parent)
{
    auto *row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(2);
    for (int index = 0; index < capacity; ++index) {
        auto *swatch = new ColorSwatch(this);
        swatch->setAccessibleName(tr("Recent colour %1").arg(index + 1));
        connect(swatch, &ColorSwatch::clicked, this, [this, swatch] { Q_EMIT picked(swatch->color()); });
        row->addWidget(swatch);
        m_swatches.append(swatch);
    }
    row->addStretch();
    setAccessibleName(tr("Recent colours"));
    refresh();
}

void RecentColors::remember(const QColor &color)
{
    if (!color.isValid())
        return;
    remembered().removeAll(color);
    remembered().prepend(color);
    remembered().resize(qMin(remembered().size(), capacity));
}

QVector<QColor> RecentColors::colors()
{
    return remembered();
}

void RecentColors::refresh()
{
    for (int index = 0; index < m_swatches.size(); ++index)
        m_swatches[index]->setColor(remembered().value(index));
}
