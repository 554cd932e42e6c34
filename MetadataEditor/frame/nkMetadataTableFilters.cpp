#include "frame/nkMetadataTableFilters.h"

#include "table/nkMetadataIconFilterBar.h"
#include "table/nkMetadataKeyValueColumns.h"
#include "table/nkMetadataTableFilterModel.h"
#include "table/nkMetadataTypeFilterBar.h"

#include <nkQt4Ext/QNKSearchBox.h>

#include <QLineEdit>

using namespace nkMetadataKeyValue;

namespace {

void name(QWidget *widget, const QString &objectName, const QString &toolTip)
{
    widget->setObjectName(objectName);
    widget->setToolTip(toolTip);
    widget->setAccessibleName(toolTip);
}

} // namespace

nkMetadataTableFilters::nkMetadataTableFilters(nkMetadataTableFilterModel *model, QWidget *row)
    : QObject(row),
      m_model(model),
      m_stateFilter(new nkMetadataIconFilterBar(row)),
      m_nameFilter(createSearchBox(row, &nkMetadataTableFilterModel::setNameFilter)),
      m_keyFilter(createSearchBox(row, &nkMetadataTableFilterModel::setKeyFilter)),
      m_valueFilter(createSearchBox(row, &nkMetadataTableFilterModel::setValueFilter)),
      m_typeFilter(new nkMetadataTypeFilterBar(row))
{
    name(m_stateFilter, QStringLiteral("StateFilter"), tr("Set a set state filter"));
    name(m_nameFilter, QStringLiteral("NameFilter"), tr("Set a set name filter"));
    name(m_keyFilter, QStringLiteral("KeyFilter"), tr("Set a key name filter"));
    name(m_valueFilter, QStringLiteral("ValueFilter"), tr("Set a value name filter"));
    name(m_typeFilter, QStringLiteral("TypeFilter"), tr("Set a data type filter"));
    connect(m_stateFilter, &QNKFilterBar::typeFilterChanged, m_model,
            &nkMetadataTableFilterModel::setStateFilter);
    connect(m_typeFilter, &QNKFilterBar::typeFilterChanged, m_model,
            &nkMetadataTableFilterModel::setTypeFilter);
    connect(m_stateFilter, &QNKFilterBar::typeFilteringToggled, m_model,
            &nkMetadataTableFilterModel::enableStateFilter);
    connect(m_typeFilter, &QNKFilterBar::typeFilteringToggled, m_model,
            &nkMetadataTableFilterModel::enableTypeFilter);
}

nkMetadataTableFilters::~nkMetadataTableFilters() = default;

QNKSearchBox *nkMetadataTableFilters::createSearchBox(
    QWidget *row, void (nkMetadataTableFilterModel::*setFilter)(const QString &))
{
    auto *box = new QNKSearchBox(row);
    connect(box, &QNKSearchBox::searchChanged, m_model, setFilter);
    connect(box, &QNKSearchBox::searchDisabled, m_model,
            [model = m_model, setFilter] { (model->*setFilter)(QString()); });
    return box;
}

QList<QWidget *> nkMetadataTableFilters::widgets() const
{
    return {m_stateFilter, m_nameFilter, m_keyFilter, m_valueFilter, m_typeFilter};
}

void nkMetadataTableFilters::clear(int column)
{
    switch (column) {
    case IconColumn:
        return m_stateFilter->clear();
    case AssignmentColumn:
        return m_nameFilter->lineEdit()->clear();
    case KeyColumn:
        return m_keyFilter->lineEdit()->clear();
    case ValueColumn:
        return m_valueFilter->lineEdit()->clear();
    case TypeColumn:
        return m_typeFilter->clear();
    default:
        return;
    }
}
