#pragma once

#include "nkKernelServicesExport.h"
#include "nkdMetadataSet.h"

#include <QList>
#include <QObject>

/// The asset manager: sets shared between scenes and people. An empty list does nothing; failures go to
/// nkLogService.
class NK_KERNEL_SERVICES_EXPORT nkAssetsService : public QObject
{
    Q_OBJECT
public:
    static nkAssetsService &the();

    /// Makes assets at rest editable (checks them out).
    virtual void modifyAssets(const QList<nkdMetadataSet> &sets) = 0;
    /// Stores edited assets back as new versions; they are at rest afterwards.
    virtual void saveAssets(const QList<nkdMetadataSet> &sets) = 0;
    /// Shows the sets in the asset manager.
    virtual void findAssets(const QList<nkdMetadataSet> &sets) = 0;
    /// Takes the newest version of each.
    virtual void reloadAssets(const QList<nkdMetadataSet> &sets) = 0;
    /// Forgets the link to the asset and keeps the set.
    virtual void removeAssetLinks(const QList<nkdMetadataSet> &sets) = 0;

Q_SIGNALS:
    /// The asset state of sets changed.
    void assetsChanged();
};
