#pragma once

#include "DesktopClipboard.h"
#include "SlotList.h"

#include <nkKernelServices/nkMetadataService.h>

#include <QSet>

namespace kernel {

class Document;

/// The metadata service of the document.
class MetadataService : public nkMetadataService
{
    Q_OBJECT
public:
    explicit MetadataService(Document &document);

    bool canHaveMetadata(const nkdSceneObject &object) const override;
    nkdMetadataSet createSet(const QString &name, const QList<nkdSceneObject> &objects) override;
    void deleteSets(const QList<nkdMetadataSet> &sets) override;
    QList<nkdMetadataSet> duplicateSets(const QList<nkdMetadataSet> &sets) override;
    void assignSets(const QList<nkdObject> &objects, const QList<nkdMetadataSet> &sets) override;
    void removeAssignments(const QList<nkdMetadataSet> &sets, const QList<nkdSceneObject> &objects) override;
    QList<nkdMetadataSet> getAllSets() const override;
    bool hasSets() const override;
    QString getUniqueSetName(const QString &base) const override;

    void copySets(const QList<nkdMetadataSet> &sets) override;
    void pasteSets(const QList<nkdSceneObject> &targets) override;
    bool hasNoCopiedSets() const override;
    void copyEntries(const QList<nkdMetadataEntry> &entries) override;
    QList<nkdMetadataEntry> getClipboardEntries() const override;
    void pasteEntries(const QList<nkdMetadataSet> &targets) override;
    bool hasNoCopiedEntries() const override;

    QList<nkdObject> getSelection() const override;
    void setSelection(const QList<nkdObject> &objects) override;

    void saveSets(const QList<nkdMetadataSet> &sets, const QString &fileName) override;
    QList<nkdMetadataSet> loadSets(const QString &fileName, const QList<nkdObject> &objects) override;
    void setStringLibraries(const QStringList &files) override;
    QStringList getStringLibraries() const override;
    void setActiveStringLibraryIndex(int index) override;
    int getActiveStringLibraryIndex() const override;

private:
    void dropFromSelection(const QList<quint64> &died);
    void dropSelection();
    void announceLostSelection();
    void announcePaste();

    Document &m_document;
    /// Looked at when the clipboards are asked for.
    mutable DesktopClipboard m_desktop;
    QList<nkdObject> m_selection;
    /// Objects left the selection since it was announced last.
    bool m_hasLostSelection = false;
    QStringList m_stringLibraries;
    int m_activeStringLibrary = -1;
};

} // namespace kernel
