#pragma once

#include <interchange/importer/FlatWriter.h>

#include <string>
#include <string_view>
#include <utility>
#include <vector>

/// What was left out of the scene; the first of it.
class Troubles
{
public:
    void add(interchange::flat::Trouble kind, std::string_view detail);
    void send(interchange::FlatWriter &writer) const;

private:
    std::vector<std::pair<interchange::flat::Trouble, std::string>> m_all;
};
