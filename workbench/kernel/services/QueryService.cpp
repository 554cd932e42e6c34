#include "QueryService.h"

#include "ServiceRegistry.h"
#include <nkKernelServices/nkLogService.h>

namespace kernel {

void QueryService::startAsyncMetadataQuery(const QString &query)
{
    nkLogService::the().reportWarning(
        tr("Metadata Search"), tr("Searching is not available yet; \"%1\" was not searched for.").arg(query));
}

void QueryService::cancelAsyncMetadataQuery() {}

QString QueryService::getQueryError() const
{
    return QString();
}

} // namespace kernel

nkQueryService &nkQueryService::the()
{
    return kernel::ServiceRegistry::the().service<kernel::QueryService>();
}
