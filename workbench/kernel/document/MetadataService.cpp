#include "MetadataService.h"

#include "Clipboard.h"
#include "Document.h"
#include "EntryOperations.h"
#include "EntryReading.h"
#include "HandleLists.h"
#include "Kernel.h"
#include "SetFiles.h"
#include "SetOperations.h"
#include "Store.h"

namespace kernel {

MetadataService::MetadataService(Document &document) : m_document(document), m_desktop(document.clipboard())
{
    connect(&document, &Document::objectsDied, this, &MetadataService::dropFromSelection);
    connect(&document, &Document::cleared, this, &MetadataService::dropSelection);
    connect(&document, &Document::aboutToAnnounce, this, &MetadataService::announceLostSelection);
    connect(&m_desktop, &DesktopClipboard::pasteChanged, this, &MetadataService::announcePaste);
}

bool MetadataService::canHaveMetadata(const nkdSceneObject &object) const
{
    return m_document.store().findObject(object.getObjectId()) != nullptr;
}

// Sets and assignments ----------------------------------------------------------------------------------

nkdMetadataSet MetadataService::createSet(const QString &name, const QList<nkdSceneObject> &objects)
{
    return nkdMetadataSet(SetOperations::create(name, objectSlots(m_document.store(), objects)));
}

void MetadataService::deleteSets(const QList<nkdMetadataSet> &sets)
{
    SetOperations::remove(sharedSetSlots(m_document.store(), sets));
}

QList<nkdMetadataSet> MetadataService::duplicateSets(const QList<nkdMetadataSet> &sets)
{
    const QVector<Slot> duplicates = SetOperations::duplicate(setSlots(m_document.store(), sets));
    return setHandles(m_document.store(), duplicates);
}

void MetadataService::assignSets(const QList<nkdObject> &objects, const QList<nkdMetadataSet> &sets)
{
    const Store &store = m_document.store();
    SetOperations::assign(sharedSetSlots(store, sets), objectSlots(store, objects));
}

void MetadataService::removeAssignments(const QList<nkdMetadataSet> &sets,
                                        const QList<nkdSceneObject> &objects)
{
    const Store &store = m_document.store();
    SetOperations::unassign(sharedSetSlots(store, sets), objectSlots(store, objects));
}

QList<nkdMetadataSet> MetadataService::getAllSets() const
{
    return setHandles(m_document.store(), m_document.store().sharedSets().slots());
}

bool MetadataService::hasSets() const
{
    return !m_document.store().sharedSets().isEmpty();
}

QString MetadataService::getUniqueSetName(const QString &base) const
{
    return m_document.store().uniqueSetName(base.isEmpty() ? defaultSetName() : base);
}

// Clipboards --------------------------------------------------------------------------------------------

void MetadataService::copySets(const QList<nkdMetadataSet> &sets)
{
    std::vector<SetCopy> copies;
    const QVector<Slot> slots = setSlots(m_document.store(), sets);
    for (const Slot set : slots) {
        copies.push_back(copyOfSet(m_document.store(), set));
    }
    if (!copies.empty()) {
        m_document.clipboard().setSets(std::move(copies));
        m_desktop.offerSets();
    }
}

void MetadataService::pasteSets(const QList<nkdSceneObject> &targets)
{
    m_desktop.attach();
    SetOperations::paste(m_document.clipboard().sets(), objectSlots(m_document.store(), targets));
}

bool MetadataService::hasNoCopiedSets() const
{
    m_desktop.attach();
    return m_document.clipboard().sets().empty();
}

void MetadataService::copyEntries(const QList<nkdMetadataEntry> &entries)
{
    std::vector<EntryCopy> copies = copiesOf(m_document, entries);
    if (!copies.empty()) {
        m_document.clipboard().setEntries(std::move(copies));
        m_desktop.offerEntries();
    }
}

QList<nkdMetadataEntry> MetadataService::getClipboardEntries() const
{
    m_desktop.attach();
    QList<nkdMetadataEntry> entries;
    const QList<quint64> ids = m_document.clipboard().entryIds();
    for (const quint64 id : ids) {
        entries.append(nkdMetadataEntry(id));
    }
    return entries;
}

void MetadataService::pasteEntries(const QList<nkdMetadataSet> &targets)
{
    m_desktop.attach();
    EntryOperations::append(setSlots(m_document.store(), targets), m_document.clipboard().entries(),
                            QT_TRANSLATE_NOOP("Document", "Paste Entries"));
}

bool MetadataService::hasNoCopiedEntries() const
{
    m_desktop.attach();
    return m_document.clipboard().entries().empty();
}

void MetadataService::announcePaste()
{
    // The one signal that everybody who shows commands listens to; without flags it says that no metadata has
    // changed.
    Q_EMIT metadataChanged(nkMetadataTypes::NoChange);
}

// Selection ---------------------------------------------------------------------------------------------

QList<nkdObject> MetadataService::getSelection() const
{
    return m_selection;
}

void MetadataService::setSelection(const QList<nkdObject> &objects)
{
    QList<nkdObject> selection;
    QSet<quint64> known;
    for (const nkdObject &object : objects) {
        const quint64 id = object.getObjectId();
        const nkObjectType type = m_document.typeOf(id);
        if (type != nkObjectType::Null && type != nkObjectType::MetadataEntry && !known.contains(id)) {
            known.insert(id);
            selection.append(nkdObject(id, type));
        }
    }
    m_selection = selection;
    m_hasLostSelection = false;
    Q_EMIT selectionChanged(selection);
}

void MetadataService::dropFromSelection(const QList<quint64> &died)
{
    const QSet<quint64> dead(died.cbegin(), died.cend());
    QList<nkdObject> living;
    for (const nkdObject &object : qAsConst(m_selection)) {
        if (!dead.contains(object.getObjectId())) {
            living.append(object);
        }
    }
    if (living.size() != m_selection.size()) {
        m_selection = living;
        m_hasLostSelection = true;
    }
}

void MetadataService::dropSelection()
{
    m_hasLostSelection = m_hasLostSelection || !m_selection.isEmpty();
    m_selection.clear();
}

void MetadataService::announceLostSelection()
{
    if (m_hasLostSelection) {
        m_hasLostSelection = false;
        const QList<nkdObject> selection = m_selection;
        Q_EMIT selectionChanged(selection);
    }
}

// Files -------------------------------------------------------------------------------------------------

void MetadataService::saveSets(const QList<nkdMetadataSet> &sets, const QString &fileName)
{
    const QVector<Slot> slots = setSlots(m_document.store(), sets);
    if (!fileName.isEmpty() && !slots.isEmpty()) {
        SetFiles(m_document).save(slots, fileName);
    }
}

QList<nkdMetadataSet> MetadataService::loadSets(const QString &fileName, const QList<nkdObject> &objects)
{
    if (fileName.isEmpty()) {
        return {};
    }
    const QVector<Slot> targets = objectSlots(m_document.store(), objects);
    return setHandles(m_document.store(), SetFiles(m_document).load(fileName, targets));
}

void MetadataService::setStringLibraries(const QStringList &files)
{
    if (m_stringLibraries != files) {
        m_stringLibraries = files;
        Q_EMIT stringLibrariesChanged();
    }
}

QStringList MetadataService::getStringLibraries() const
{
    return m_stringLibraries;
}

void MetadataService::setActiveStringLibraryIndex(int index)
{
    if (m_activeStringLibrary != index) {
        m_activeStringLibrary = index;
        Q_EMIT stringLibrariesChanged();
    }
}

int MetadataService::getActiveStringLibraryIndex() const
{
    return m_activeStringLibrary;
}

} // namespace kernel

nkMetadataService &nkMetadataService::the()
{
    return kernel::Kernel::the().metadataService();
}
