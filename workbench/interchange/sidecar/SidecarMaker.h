#pragma once

#include <interchange/SceneSource.h>
#include <interchange/foreign/ForeignOrigin.h>
#include <interchange/sidecar/Sidecar.h>

#include <kernel/document/Document.h>
#include <kernel/document/Store.h>

#include <QHash>

namespace interchange {

/// Makes the sidecar of the open scene. All objects of the source must be alive.
class SidecarMaker
{
public:
    /// @param source, origin where the scene came from
    SidecarMaker(const SceneSource &source, const ForeignOrigin &origin);

    /// To be called once.
    Sidecar make();

private:
    void addSets();
    void addObject(const SceneSource::ObjectOrigin &object, const QString &key);
    void addRuns();
    void addRun(quint64 setId, quint32 object);
    void addGone();
    kernel::SetCopy copyOf(kernel::Slot set) const;

    const SceneSource &m_source;
    const ForeignOrigin &m_origin;
    const kernel::Document &m_document;
    const kernel::Store &m_store;
    Sidecar m_sidecar;
    QHash<quint64, quint32> m_sets;    ///< from a set's id to its place
    QHash<quint64, quint32> m_objects; ///< likewise
};

} // namespace interchange
