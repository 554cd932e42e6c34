#include "TermMatcher.h"

#include "QueryComparison.h"
#include "QueryPattern.h"
#include "QueryRun.h"

#include <functional>

namespace kernel {

namespace {

using Set = QuerySnapshot::Set;
using Entry = QuerySnapshot::Entry;

/// Whether keys fit, each text looked at once.
class KeyMemory
{
public:
    KeyMemory(const QuerySnapshot &snapshot, std::function<bool(const QString &)> fits)
        : m_keys(snapshot.keys), m_fits(std::move(fits)), m_known(snapshot.keys.size(), Unknown)
    {}

    bool fits(quint32 key)
    {
        char &known = m_known[key];
        if (known == Unknown) {
            known = m_fits(m_keys[key]) ? Yes : No;
        }
        return known == Yes;
    }

private:
    enum : char { Unknown, Yes, No };

    const std::vector<QString> &m_keys;
    const std::function<bool(const QString &)> m_fits;
    std::vector<char> m_known;
};

/// A condition that one entry can meet.
template <typename Fits>
class EntryMatcher : public TermMatcher
{
public:
    EntryMatcher(const QuerySnapshot &snapshot, const QueryRun &run, Fits fits)
        : m_entries(snapshot.entries), m_run(run), m_fits(std::move(fits))
    {}

    bool matches(const Set &set) override
    {
        for (quint32 index = set.firstEntry; index < set.endEntry && !m_run.isStopped(); ++index) {
            if (m_fits(m_entries[index])) {
                return true;
            }
        }
        return false;
    }

private:
    const SlotTable<Entry> &m_entries;
    const QueryRun &m_run;
    Fits m_fits;
};

template <typename Fits>
std::unique_ptr<TermMatcher> anyEntry(const QuerySnapshot &snapshot, const QueryRun &run, Fits fits)
{
    return std::make_unique<EntryMatcher<Fits>>(snapshot, run, std::move(fits));
}

class SetNameMatcher : public TermMatcher
{
public:
    SetNameMatcher(const QueryText &text, QueryRun &run) : m_pattern(text, run) {}
    bool matches(const Set &set) override { return m_pattern.isIn(set.name); }

private:
    const QueryPattern m_pattern;
};

class ObjectMatcher : public TermMatcher
{
public:
    ObjectMatcher(const QueryText &text, const QuerySnapshot &snapshot, QueryRun &run)
        : m_names(snapshot.objectNames), m_run(run), m_pattern(text, run)
    {}

    bool matches(const Set &set) override
    {
        for (quint32 index = set.firstObject; index < set.endObject && !m_run.isStopped(); ++index) {
            if (m_pattern.isIn(m_names[index])) {
                return true;
            }
        }
        return false;
    }

private:
    const std::vector<QString> &m_names;
    const QueryRun &m_run;
    const QueryPattern m_pattern;
};

/// In the name first: that costs least.
class AnywhereMatcher : public TermMatcher
{
public:
    AnywhereMatcher(std::unique_ptr<TermMatcher> name, std::unique_ptr<TermMatcher> entries)
        : m_name(std::move(name)), m_entries(std::move(entries))
    {}
    bool matches(const Set &set) override { return m_name->matches(set) || m_entries->matches(set); }

private:
    const std::unique_ptr<TermMatcher> m_name;
    const std::unique_ptr<TermMatcher> m_entries;
};

using Pattern = std::shared_ptr<const QueryPattern>;

KeyMemory keysWith(const Pattern &pattern, const QuerySnapshot &snapshot)
{
    return KeyMemory(snapshot, [pattern](const QString &key) { return pattern->isIn(key); });
}

std::unique_ptr<TermMatcher> anywhere(const QueryText &text, const QuerySnapshot &snapshot, QueryRun &run)
{
    const Pattern pattern = std::make_shared<QueryPattern>(text, run);
    auto inEntry = [keys = keysWith(pattern, snapshot), pattern](const Entry &entry) mutable {
        return keys.fits(entry.key) || pattern->isIn(entry.value);
    };
    return std::make_unique<AnywhereMatcher>(std::make_unique<SetNameMatcher>(text, run),
                                             anyEntry(snapshot, run, std::move(inEntry)));
}

std::unique_ptr<TermMatcher> compared(const QueryTerm &term, const QuerySnapshot &snapshot, QueryRun &run)
{
    KeyMemory keys(snapshot, [key = term.key](const QString &other) {
        return other.compare(key, Qt::CaseInsensitive) == 0;
    });
    if (!term.text.isRegex) {
        return anyEntry(snapshot, run,
                        [keys, comparison = std::make_shared<QueryComparison>(
                                   term.comparison, term.text.text)](const Entry &entry) mutable {
                            return keys.fits(entry.key) && comparison->holds(entry.value);
                        });
    }
    const Pattern pattern = std::make_shared<QueryPattern>(term.text, run);
    const bool wanted = term.comparison == QueryTerm::Operator::Equal;
    return anyEntry(snapshot, run, [keys, pattern, wanted](const Entry &entry) mutable {
        return keys.fits(entry.key) && !entry.value.isTag() && pattern->isIn(entry.value) == wanted;
    });
}

std::unique_ptr<TermMatcher> ofType(nkMetadataTypes::ValueType type, const QuerySnapshot &snapshot,
                                    QueryRun &run)
{
    return anyEntry(snapshot, run, [type](const Entry &entry) {
        return entry.value.isTag() ? type == nkMetadataTypes::Tag : entry.value.type() == type;
    });
}

} // namespace

TermMatcher::~TermMatcher() = default;

std::unique_ptr<TermMatcher> TermMatcher::make(const QueryTerm &term, const QuerySnapshot &snapshot,
                                               QueryRun &run)
{
    switch (term.field) {
    case QueryTerm::Field::Anywhere:
        break;
    case QueryTerm::Field::Key:
        return anyEntry(snapshot, run,
                        [keys = keysWith(std::make_shared<QueryPattern>(term.text, run), snapshot)](
                            const Entry &entry) mutable { return keys.fits(entry.key); });
    case QueryTerm::Field::Value:
        return anyEntry(snapshot, run,
                        [pattern = std::make_shared<QueryPattern>(term.text, run)](const Entry &entry) {
                            return pattern->isIn(entry.value);
                        });
    case QueryTerm::Field::Set:
        return std::make_unique<SetNameMatcher>(term.text, run);
    case QueryTerm::Field::Type:
        return ofType(term.type, snapshot, run);
    case QueryTerm::Field::Object:
        return std::make_unique<ObjectMatcher>(term.text, snapshot, run);
    case QueryTerm::Field::Comparison:
        return compared(term, snapshot, run);
    }
    return anywhere(term.text, snapshot, run);
}

} // namespace kernel
