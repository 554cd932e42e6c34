#include "ViewportSelection.h"

#include "panels/EditorModule.h"

#include <nkKernelServices/nkInternalUiService.h>
#include <nkKernelServices/nkScenegraphService.h>
#include <nkKernelServicesGUI/nkMetadataModuleSelection.h>

#include <QSet>

namespace {

/// What was selected before keeps its order.
QList<quint64> combined(const QList<quint64> &before, const QList<quint64> &chosen, bool takesAway)
{
    QSet<quint64> left(chosen.cbegin(), chosen.cend());
    QList<quint64> ids;
    for (const quint64 id : before) {
        if (!left.remove(id) || !takesAway) {
            ids.append(id);
        }
    }
    for (const quint64 id : chosen) {
        if (left.remove(id)) {
            ids.append(id);
        }
    }
    return ids;
}

} // namespace

ViewportSelection::ViewportSelection(QObject *parent)
    : QObject(parent), m_service(EditorService::of(EditorModule::Scenegraph))
{
    // What is to be brought into view has been selected before.
    m_service.listen(this, [this](EditorService::Reveal reveal) {
        if (reveal != EditorService::Reveal::Always) {
            Q_EMIT changed();
        }
    });
}

ViewportSelection::~ViewportSelection() = default;

/// The editor of the last selection first: whoever hears of a selection asks whose it is.
void ViewportSelection::choose(const QList<quint64> &ids, How how)
{
    const QList<quint64> all = how == How::Replace ? ids : combined(this->ids(), ids, how == How::Toggle);
    nkMetadataModuleSelection::the().setLastSelectionModule(int(EditorModule::Scenegraph));
    m_service.select(all);
    // Picked here, it is out of sight there as often as not.
    nkScenegraphService::the().scrollToSelected();
}

void ViewportSelection::showMetadata()
{
    if (nkMetadataModuleSelection::the().getLastSelectionModule() != int(EditorModule::Scenegraph)) {
        choose(ids(), How::Replace);
    }
    Q_EMIT nkInternalUiService::the().requestMetadataEditorSelectionModeInLowerTree();
    Q_EMIT metadataRequested();
}
