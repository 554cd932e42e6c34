#pragma once

#include <interchange/SceneSource.h>
#include <interchange/json/JsonValue.h>

#include <array>
#include <vector>

namespace interchange {

/// Objects that stand in a new text byte for byte as they stood in the old one: reading their extras again would find
/// what is known. Everything around them is read.
class GltfKnownObjects
{
public:
    using Origin = SceneSource::ObjectOrigin;

    /// @param source the old text, and what stands where in it; outlives it
    explicit GltfKnownObjects(const SceneSource &source) : m_source(source) {}

    /// An object that nothing was changed of.
    void add(const Origin &origin);
    /// Whether a value of the new text is the object that stood at this place, unchanged. Asked of every object.
    bool find(SceneSource::List list, quint32 index, const JsonValue &value);
    /// Whether it was found.
    bool has(const Origin &origin) const;

private:
    struct Place
    {
        const Origin *origin = nullptr;
        bool isFound = false;
    };

    const SceneSource &m_source;
    std::array<std::vector<Place>, 2> m_places; ///< by list and index
};

} // namespace interchange
