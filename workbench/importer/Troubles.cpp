#include "Troubles.h"

#include <interchange/importer/ImportLimits.h>

using namespace interchange;

void Troubles::add(flat::Trouble kind, std::string_view detail)
{
    if (m_all.size() < importlimits::Troubles)
        m_all.emplace_back(kind, detail.substr(0, importlimits::TextBytes));
}

void Troubles::send(FlatWriter &writer) const
{
    writer.word(uint32_t(m_all.size()));
    for (const auto &[kind, detail] : m_all) {
        writer.byte(uint8_t(kind));
        writer.text(detail);
    }
}
