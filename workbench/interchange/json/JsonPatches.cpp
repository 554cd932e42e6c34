#include <interchange/json/JsonPatches.h>

#include <algorithm>

namespace interchange {

void JsonPatches::add(const JsonSpan &span, const QByteArray &text)
{
    m_patches.push_back({span, text});
}

QByteArray JsonPatches::applied(const QByteArray &text) const
{
    if (isEmpty())
        return text;
    std::vector<Patch> patches = m_patches;
    // Stable: what is inserted behind a span that goes begins where that span ends.
    std::stable_sort(patches.begin(), patches.end(),
                     [](const Patch &a, const Patch &b) { return a.span.offset < b.span.offset; });
    qint64 size = text.size();
    for (const Patch &patch : patches)
        size += patch.text.size() - qint64(patch.span.length);
    QByteArray result;
    result.reserve(int(size));
    quint32 at = 0;
    for (const Patch &patch : patches) {
        result.append(text.constData() + at, int(patch.span.offset - at));
        result.append(patch.text);
        at = patch.span.end();
    }
    return result.append(text.constData() + at, text.size() - int(at));
}

} // namespace interchange
