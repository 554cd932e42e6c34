#pragma once

#include "QuerySnapshot.h"
#include "QueryTree.h"

#include <memory>

namespace kernel {

class QueryRun;

/// One condition of a query, ready to be asked about the sets of one snapshot. Remembers what it has found out
/// about keys, so it is for one thread.
class TermMatcher
{
public:
    virtual ~TermMatcher();
    /// Whether the set meets the condition. Not to be relied on once the run is stopped.
    virtual bool matches(const QuerySnapshot::Set &set) = 0;

    /// @param snapshot, run must live as long as the matcher
    static std::unique_ptr<TermMatcher> make(const QueryTerm &term, const QuerySnapshot &snapshot,
                                             QueryRun &run);

protected:
    TermMatcher() = default;

private:
    Q_DISABLE_COPY(TermMatcher)
};

} // namespace kernel
