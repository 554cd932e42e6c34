#include "AssetsService.h"

#include "ServiceRegistry.h"
#include <nkKernelServices/nkLogService.h>

namespace kernel {

void AssetsService::modifyAssets(const QList<nkdMetadataSet> &sets)
{
    refuse(tr("Modifying assets is not available yet; nothing was changed."), sets);
}

void AssetsService::saveAssets(const QList<nkdMetadataSet> &sets)
{
    refuse(tr("Saving assets is not available yet; nothing was saved."), sets);
}

void AssetsService::findAssets(const QList<nkdMetadataSet> &sets)
{
    refuse(tr("Finding assets is not available yet; nothing was searched for."), sets);
}

void AssetsService::reloadAssets(const QList<nkdMetadataSet> &sets)
{
    refuse(tr("Reloading assets is not available yet; nothing was changed."), sets);
}

void AssetsService::removeAssetLinks(const QList<nkdMetadataSet> &sets)
{
    refuse(tr("Removing asset links is not available yet; nothing was changed."), sets);
}

void AssetsService::refuse(const QString &what, const QList<nkdMetadataSet> &sets) const
{
    if (!sets.isEmpty()) {
        nkLogService::the().reportWarning(tr("Asset Manager"), what);
    }
}

} // namespace kernel

nkAssetsService &nkAssetsService::the()
{
    return kernel::ServiceRegistry::the().service<kernel::AssetsService>();
}
