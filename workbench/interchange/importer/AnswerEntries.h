#pragma once

#include <interchange/foreign/ForeignScene.h>
#include <interchange/importer/FlatReader.h>

namespace interchange {

/// Reads the entries of nodes out of an answer. Keys are made unique in their node, and what could not be taken as it
/// stands is told in the scene's report.
class AnswerEntries
{
public:
    AnswerEntries(FlatReader &reader, ForeignScene &scene) : m_reader(reader), m_scene(scene) {}

    /// The list of one node. @param place of the node, for the report
    IndexRange read(const QString &place);

private:
    void readEntry(const QString &key);
    void note(const QString &path, const QVector<ImportReason> &reasons);
    void readInteger(ForeignScene::Entry &entry);
    void readUnsigned(ForeignScene::Entry &entry);
    void readText(ForeignScene::Entry &entry);
    void readVector(ForeignScene::Entry &entry);

    FlatReader &m_reader;
    ForeignScene &m_scene;
    QVector<ImportReason> m_reasons; ///< of the entry that is being read
};

} // namespace interchange
