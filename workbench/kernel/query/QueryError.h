#pragma once

#include <QString>

namespace kernel {

/// Why a text is no query.
struct QueryError
{
    /// Where in the query, from 0; its length for its end.
    int position = 0;
    /// One sentence for the user: what, where (counted from 1, with the text that stands there), what to do.
    QString sentence;
};

} // namespace kernel
