#pragma once

#include <nkKernelServices/nkQueryService.h>

namespace kernel {

/// Metadata search is not built yet: a query is named in the log and neither starts nor finishes.
class NK_KERNEL_SERVICES_EXPORT QueryService final : public nkQueryService
{
    Q_OBJECT
public:
    void startAsyncMetadataQuery(const QString &query) override;
    /// Says nothing: no query ever runs.
    void cancelAsyncMetadataQuery() override;
    QString getQueryError() const override;
};

} // namespace kernel
