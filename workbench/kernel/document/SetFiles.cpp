#include "SetFiles.h"

#include "../services/Progress.h"
#include "Document.h"
#include "SetCodec.h"
#include "SetOperations.h"
#include "Store.h"

#include <nkKernelServices/nkLogService.h>

#include <QFileInfo>

namespace kernel {

namespace {

void tell(const QString &title, const QString &error)
{
    nkLogService::the().reportError(title, error);
}

/// The codec, where work can begin with it; else says why not.
SetCodec *codecFor(const QString &title, const QString &fileName)
{
    SetCodec *codec = SetCodec::installed();
    if (!codec) {
        tell(title,
             SetFiles::tr("“%1” was left alone: this program has no part that reads and writes files of "
                          "metadata sets.")
                 .arg(fileName));
    } else if (Progress::isRunning()) {
        tell(title,
             SetFiles::tr("“%1” was left alone: another file is being read or written; wait for its end.")
                 .arg(fileName));
        return nullptr;
    }
    return codec;
}

} // namespace

SetCopy SetFiles::copyOf(Slot set) const
{
    SetCopy copy = copyOfSet(m_document.store(), set);
    copy.locked = m_document.store().set(set).locked;
    return copy;
}

void SetFiles::save(const QVector<Slot> &sets, const QString &fileName) const
{
    const QString title = tr("Save Metadata Sets");
    SetCodec *codec = codecFor(title, fileName);
    if (!codec) {
        return;
    }
    // Ids: while the progress is shown the scene might be replaced.
    const QList<quint64> ids = m_document.store().idsOf(sets);
    const auto feed = [this, &ids](int position, SetCopy &set) {
        const Slot slot = m_document.store().setSlot(ids.at(position));
        if (slot != NoSlot) {
            set = copyOf(slot);
        }
        return slot != NoSlot;
    };
    Progress progress(tr("Saving metadata sets to “%1”").arg(QFileInfo(fileName).fileName()));
    const SetCodecResult result = codec->write(fileName, ids.size(), feed, progress);
    if (result.outcome == SetCodecResult::Failed) {
        tell(title, result.error);
    }
}

QVector<Slot> SetFiles::load(const QString &fileName, const QVector<Slot> &objects) const
{
    const QString title = tr("Load Metadata Sets");
    SetCodec *codec = codecFor(title, fileName);
    if (!codec) {
        return {};
    }
    const QList<quint64> objectIds = m_document.store().idsOf(objects);
    std::vector<SetCopy> copies;
    SetCodecResult result;
    {
        Progress progress(tr("Loading metadata sets from “%1”").arg(QFileInfo(fileName).fileName()));
        result = codec->read(fileName, copies, progress);
    }
    if (result.outcome == SetCodecResult::Failed) {
        tell(title, result.error);
    }
    if (!result.isDone()) {
        return {};
    }
    // Nothing of the document was held while the progress was shown.
    QVector<Slot> targets;
    for (const quint64 id : objectIds) {
        const Slot slot = m_document.store().objectSlot(id);
        if (slot != NoSlot) {
            targets.append(slot);
        }
    }
    return SetOperations::load(copies, targets);
}

QByteArray SetFiles::textOf(Slot set) const
{
    const SetCodec *codec = SetCodec::installed();
    return codec ? codec->textOfSet(copyOf(set)) : QByteArray();
}

bool SetFiles::replace(quint64 setId, const QByteArray &text) const
{
    const SetCodec *codec = SetCodec::installed();
    SetCopy copy;
    if (!codec) {
        return false;
    }
    const SetCodecResult result = codec->readSet(text, copy);
    if (!result.isDone()) {
        nkLogService::the().reportWarning(tr("Metadata set not changed"), result.error);
        return false;
    }
    return SetOperations::replaceContent(setId, copy);
}

} // namespace kernel
