#include "AssetRound.h"

#include "../document/Document.h"
#include "../document/SetCodec.h"
#include "../document/Store.h"

#include <nkKernelServices/nkLogService.h>

namespace kernel {

AssetRound::AssetRound(const QString &title, const QString &missing)
    : m_step(nkUndoString(title)), m_store(AssetStore::installed())
{
    if (!m_store || !SetCodec::installed()) {
        m_goesOn = false;
        nkLogService::the().reportWarning(tr("Asset Manager"), missing);
    }
}

bool AssetRound::take(const AssetResult &result)
{
    if (!result.isDone()) {
        refuse(result.error);
        m_goesOn = m_goesOn && result.outcome != AssetResult::Failed;
    }
    return result.isDone();
}

void AssetRound::refuse(const QString &error)
{
    if (!m_errors.contains(error)) {
        m_errors.append(error);
    }
}

bool AssetRound::write(quint64 setId, QByteArray &content)
{
    const Store &store = Document::the().store();
    const Slot slot = store.setSlot(setId);
    if (slot == NoSlot) {
        return false;
    }
    // The lock is the scene's own.
    content = SetCodec::installed()->textOfSet(copyOfSet(store, slot));
    return true;
}

bool AssetRound::read(const QString &assetId, int version, SetCopy &copy, AssetVersion &found)
{
    if (!take(m_store->read(assetId, version, found))) {
        return false;
    }
    const SetCodecResult result = SetCodec::installed()->readSet(found.content, copy);
    if (!result.isDone()) {
        refuse(tr("Version %1 of “%2” in the asset database %3 cannot be read; take another version (%4)")
                   .arg(QString::number(found.version), found.name, m_store->place(), result.error));
    }
    return result.isDone();
}

} // namespace kernel
