#pragma once

#include "IndexTable.h"

#include <nkKernelServices/nkKernelServicesExport.h>

#include <QString>

#include <vector>

namespace kernel {

/// The keys of all entries, each text once; entries carry its number. Two keys are equal (case-sensitively)
/// exactly when their numbers are. Numbers stay true as long as the pool lives.
class NK_KERNEL_SERVICES_EXPORT KeyPool
{
public:
    static constexpr quint32 None = IndexTable::None;

    /// The number of this text, new where the pool does not have it yet.
    quint32 number(const QString &text);
    /// The number of this text; None where no entry has had it.
    quint32 find(const QString &text) const;
    const QString &text(quint32 number) const { return m_texts[number]; }

private:
    std::vector<QString> m_texts;
    IndexTable m_index;
};

} // namespace kernel
