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
/// /.../ is a regular expression; quotes, and, or, not and brackets group.
class NK_KERNEL_SERVICES_EXPORT nkQueryService : public QObject
{
    Q_OBJECT
public:
    static nkQueryService &the();

    /// Starts a query, cancelling one that runs. asyncMetadataQueryStarted comes before it returns,
    /// asyncMetadataQueryFinished later from the event loop.
    virtual void startAsyncMetadataQuery(const QString &query) = 0;
    /// Ends a running query without a result. Does nothing where none runs.
    virtual void cancelAsyncMetadataQuery() = 0;
    /// Why the last query was no query, and where; empty where it was one.
    virtual QString getQueryError() const = 0;

Q_SIGNALS:
    void asyncMetadataQueryStarted();
    /// @param ok false where the query could not be read
    /// @param sets the sets with matching entries, in the scene's order
    void asyncMetadataQueryFinished(bool ok, const QList<nkdMetadataSet> &sets);
};
