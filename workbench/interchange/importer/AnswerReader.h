#pragma once

#include <interchange/foreign/ForeignScene.h>
#include <interchange/importer/AnswerEntries.h>
#include <interchange/importer/AnswerGeometry.h>
#include <interchange/importer/AnswerKeys.h>
#include <interchange/importer/FlatReader.h>

#include <QCoreApplication>

#include <memory>

namespace interchange {

/// Makes a scene of the importer's answer. Whoever wrote that may have crashed half-way or been taken over by the
/// file: nothing is believed, everything is checked again before it is used.
class AnswerReader
{
    Q_DECLARE_TR_FUNCTIONS(AnswerReader)

public:
    /// @param record of a scene, with its kind
    /// @param fileName some loaders name the root after the file: such a name is part of no key, for copies of the file
    ///        have another one
    explicit AnswerReader(const QByteArray &record, const QString &fileName = QString());

    /// False where the answer makes no sense; the scene is to be thrown away then.
    bool read(ForeignScene &scene);

private:
    void readMaterials(ForeignScene &scene);
    void readNodes(ForeignScene &scene);
    void readNode(ForeignScene &scene, AnswerEntries &entries);
    void readMatrix(SceneGeometry::Node &node);
    void readTroubles(ForeignScene &scene);
    static QString unnamed(SceneNodeKind kind, size_t index);

    FlatReader m_reader;
    QString m_fileName;
    AnswerKeys m_nodeKeys;
    AnswerKeys m_materialKeys;
    std::shared_ptr<SceneGeometry> m_geometry;
    std::vector<int> m_depths;
};

} // namespace interchange
