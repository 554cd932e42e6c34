#pragma once

#include "nkKernelServicesExport.h"
#include "nkdMetadataSet.h"

#include <QList>
#include <QObject>
#include <QString>

/// Metadata search in the background.
///
/// A query is made of words, which match anywhere in keys, values and set names, case-insensitively; key:,
/// value:, set:, type: and object: narrow a word; KEY = VALUE and != < <= > >= compare by the entry's type;
/// /.../ is a regular expression; quotes, and, or, not and brackets group. docs/query.md has the whole language
/// and what it finds.
///
/// GUI thread only, with an event loop. The scene is searched as it is when its copying ends, soon after the start;
/// changes after that are not seen, but sets that died are left out.
class NK_KERNEL_SERVICES_EXPORT nkQueryService : public QObject
{
    Q_OBJECT
public:
    static nkQueryService &the();

    /// Starts a query, ending one that runs without a result. asyncMetadataQueryStarted comes before it returns,
    /// asyncMetadataQueryFinished later from the event loop, also for a text that is no query (an empty one is
    /// none).
    virtual void startAsyncMetadataQuery(const QString &query) = 0;
    /// Ends a running query without a result: nothing more is told of it. To be called when the search is switched
    /// off, too, running or not: it lets go of the copy of the scene that is kept for the next query.
    virtual void cancelAsyncMetadataQuery() = 0;
    /// Why the last query failed: one sentence for the user with what is wrong, where (characters counted from 1)
    /// and what to do; plain text. Empty where it did not fail. A query can fail late, too, by a regular expression
    /// that takes too long.
    virtual QString getQueryError() const = 0;

Q_SIGNALS:
    void asyncMetadataQueryStarted();
    /// @param ok false where the query failed
    /// @param sets the sets that the query is true of, all alive, in the scene's order: shared sets, then the
    ///        own sets of objects that have entries; none where it failed
    void asyncMetadataQueryFinished(bool ok, const QList<nkdMetadataSet> &sets);
};
