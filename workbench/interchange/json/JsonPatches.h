#pragma once

#include <interchange/json/JsonSpan.h>

#include <QByteArray>

#include <vector>

namespace interchange {

/// Changes to a text, each a span and what takes its place. Every byte outside of the spans stays as it is.
class JsonPatches
{
public:
    /// Puts `text` in the place of `span`; an empty span is a place between two bytes. Spans must not overlap.
    void add(const JsonSpan &span, const QByteArray &text);

    bool isEmpty() const { return m_patches.empty(); }
    /// The text with all changes made; `text` itself, shared, where there are none.
    QByteArray applied(const QByteArray &text) const;

private:
    struct Patch
    {
        JsonSpan span;
        QByteArray text;
    };

    std::vector<Patch> m_patches;
};

} // namespace interchange
