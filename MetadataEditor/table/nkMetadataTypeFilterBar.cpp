#include "table/nkMetadataTypeFilterBar.h"

#include <nkKernelServices/nkMetadataTypes.h>

nkMetadataTypeFilterBar::nkMetadataTypeFilterBar(QWidget *parent)
    : QNKFilterBar(parent),
      m_labels{{nkMetadataTypes::String, tr("String")},
               {nkMetadataTypes::Integer, tr("Integer")},
               {nkMetadataTypes::Float, tr("Float")},
               {nkMetadataTypes::Boolean, tr("Boolean")},
               {nkMetadataTypes::Time, tr("Time")},
               {nkMetadataTypes::Date, tr("Date")},
               // One word, unlike the "Date and Time" of the type column; both are meant.
               {nkMetadataTypes::DateTime, tr("DateTime")},
               {nkMetadataTypes::List, tr("List")},
               {nkMetadataTypes::Tag, tr("Tag")}}
{
    addTypesToMenu(m_labels.keys());
    setSearchVisible(false, true);
    setRecursiveFilterVisible(false);
}

nkMetadataTypeFilterBar::~nkMetadataTypeFilterBar() = default;

QString nkMetadataTypeFilterBar::getLabel(int number) const
{
    return m_labels.value(number);
}
