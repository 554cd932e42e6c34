#include <interchange/json/JsonKeys.h>

#include <interchange/json/JsonValue.h>

#include <QHash>
#include <QVarLengthArray>

#include <algorithm>

namespace interchange {

namespace {

// Up to here comparing every pair is faster than hashing: measured with keys of 5 to 20 bytes.
constexpr int PairwiseLimit = 16;

bool sameKey(const JsonValue &a, const JsonValue &b)
{
    if (a.keyHasEscapes() || b.keyHasEscapes())
        return a.key() == b.key();
    return a.rawKey() == b.rawKey();
}

using Members = QVarLengthArray<JsonValue, PairwiseLimit>;

QVector<JsonValue> hiddenAmongFew(const Members &members)
{
    QVector<JsonValue> hidden;
    for (int i = 0; i < members.size(); ++i) {
        const JsonValue &own = members[i];
        if (std::any_of(members.begin() + i + 1, members.end(),
                        [&](const JsonValue &later) { return sameKey(own, later); }))
            hidden.append(own);
    }
    return hidden;
}

QVector<JsonValue> hiddenAmongMany(const JsonValue &object)
{
    QVector<JsonValue> hidden;
    QHash<QString, JsonValue> last;
    for (const JsonValue member : object.children()) {
        JsonValue &known = last[member.key()];
        if (known.isPresent())
            hidden.append(known);
        known = member;
    }
    std::sort(hidden.begin(), hidden.end(),
              [](const JsonValue &a, const JsonValue &b) { return a.index() < b.index(); });
    return hidden;
}

} // namespace

QVector<JsonValue> JsonKeys::hiddenMembers(const JsonValue &object)
{
    Members members;
    for (const JsonValue member : object.children()) {
        if (members.size() == PairwiseLimit)
            return hiddenAmongMany(object);
        members.append(member);
    }
    return hiddenAmongFew(members);
}

} // namespace interchange
