#pragma once

#include <nkKernelServices/nkAssetsService.h>

namespace kernel {

/// The asset manager is not built yet: each operation with sets to work on is named in the log and changes
/// nothing; one without sets says nothing.
class NK_KERNEL_SERVICES_EXPORT AssetsService final : public nkAssetsService
{
    Q_OBJECT
public:
    void modifyAssets(const QList<nkdMetadataSet> &sets) override;
    void saveAssets(const QList<nkdMetadataSet> &sets) override;
    void findAssets(const QList<nkdMetadataSet> &sets) override;
    void reloadAssets(const QList<nkdMetadataSet> &sets) override;
    void removeAssetLinks(const QList<nkdMetadataSet> &sets) override;

private:
    void refuse(const QString &what, const QList<nkdMetadataSet> &sets) const;
};

} // namespace kernel
