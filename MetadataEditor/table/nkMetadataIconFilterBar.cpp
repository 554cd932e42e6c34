#include "table/nkMetadataIconFilterBar.h"

#include <nkKernelServicesGUI/nkMetadataFilterModel.h>

nkMetadataIconFilterBar::nkMetadataIconFilterBar(QWidget *parent)
    : QNKFilterBar(parent),
      m_labels{{nkMetadataFilterModel::Locked, tr("Locked")},
               {nkMetadataFilterModel::Unlocked, tr("Unlocked")},
               {nkMetadataFilterModel::Asset, tr("Asset")},
               {nkMetadataFilterModel::Unassigned, tr("Unassigned")}},
      m_firstGroup{nkMetadataFilterModel::Locked, nkMetadataFilterModel::Unlocked}
{
    addTypesToMenu(m_labels.keys());
    setSearchVisible(false, true);
    setRecursiveFilterVisible(false);
}

nkMetadataIconFilterBar::~nkMetadataIconFilterBar() = default;

QString nkMetadataIconFilterBar::getLabel(int number) const
{
    return m_labels.value(number);
}

int nkMetadataIconFilterBar::getCategory(int number) const
{
    return m_firstGroup.contains(number) ? 1 : 2;
}
