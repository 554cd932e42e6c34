#include "StringLibrarySceneKeys.h"

#include "kernel/document/Document.h"
#include "kernel/document/Store.h"

#include <nkKernelServices/nkMetadataService.h>

namespace interchange {

namespace {

std::vector<bool> keysInUse(const kernel::Store &store)
{
    std::vector<bool> keys;
    for (kernel::Slot slot = 0; slot < store.slotCount(); ++slot) {
        if (store.typeOf(slot) == nkObjectType::MetadataEntry) {
            const quint32 key = store.entry(slot).key;
            if (key >= keys.size()) {
                keys.resize(key + 1);
            }
            keys[key] = true;
        }
    }
    return keys;
}

} // namespace

StringLibrarySceneKeys::StringLibrarySceneKeys(QObject *parent) : QObject(parent)
{
    const kernel::Document &document = kernel::Document::the();
    const auto outdate = [this] { m_isStale = true; };
    // Also where the scene was replaced by one that looks alike: key numbers are of one scene alone.
    connect(&document, &kernel::Document::cleared, this, [this] {
        m_isStale = true;
        m_keys.clear();
    });
    connect(&nkMetadataService::the(), &nkMetadataService::metadataChanged, this, outdate);
}

const StringLibrary &StringLibrarySceneKeys::words()
{
    if (m_isStale) {
        m_isStale = false;
        gather();
    }
    return m_words;
}

void StringLibrarySceneKeys::gather()
{
    const kernel::Store &store = kernel::Document::the().store();
    const std::vector<bool> keys = keysInUse(store);
    // Mostly values have changed, and the keys are those of before.
    if (!keys.empty() && keys == m_keys) {
        return;
    }
    m_keys = keys;
    QStringList words;
    for (quint32 key = 0; key < m_keys.size(); ++key) {
        if (m_keys[key]) {
            words.append(store.keys().text(key));
        }
    }
    m_words = StringLibrary(words);
}

} // namespace interchange
