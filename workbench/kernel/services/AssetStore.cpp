#include "AssetStore.h"

#include <QPointer>

namespace kernel {

namespace {

QPointer<AssetStore> &theStore()
{
    static QPointer<AssetStore> store;
    return store;
}

} // namespace

AssetStore *AssetStore::installed()
{
    return theStore();
}

void AssetStore::install(AssetStore *store)
{
    theStore() = store;
}

} // namespace kernel
