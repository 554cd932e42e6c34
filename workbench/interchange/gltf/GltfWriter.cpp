#include <interchange/gltf/GltfWriter.h>

#include <interchange/gltf/GltfAnnexMaker.h>
#include <interchange/gltf/GltfAnnexText.h>
#include <interchange/gltf/GltfKnownObjects.h>
#include <interchange/gltf/GltfObjectPatch.h>
#include <interchange/gltf/GltfStructurePatch.h>
#include <interchange/gltf/GltfStructurePlan.h>

namespace interchange {

using kernel::Document;

namespace {

const QLatin1String ExtrasKeyword("extras");

// What comparing with the text, reading it back and the rest cost, measured on large scenes.
constexpr double Compared = 0.3;
constexpr double ReadBack = 0.8;
constexpr int ObjectsAtOnce = 1000;

} // namespace

GltfWriter::GltfWriter(const SceneSource &source, const QString &folder, kernel::Progress &progress)
    : m_source(source), m_folder(folder), m_progress(progress)
{}

bool GltfWriter::write()
{
    SceneSource placed;
    const GltfStructurePlan plan(m_source);
    if (plan.isNeeded() && !patchStructure(plan, placed))
        return false;
    const SceneSource &source = plan.isNeeded() ? placed : m_source;
    JsonPatches patches;
    GltfObjectPatch objects(source, Document::the().store(), patches);
    GltfKnownObjects known(source);
    const auto isKnown = [&known](const JsonValue &object, bool isMaterial, quint32 index) {
        const auto list = isMaterial ? SceneSource::List::Materials : SceneSource::List::Nodes;
        return known.find(list, index, object);
    };
    GltfScene scene;
    JsonTree tree;
    if (!patchObjects(source, objects, patches, known) || !read(scene, tree, Compared, ReadBack, isKnown))
        return false;
    GltfAnnexMaker maker(scene, source, m_folder, &objects, &known);
    const GltfAnnex annex = maker.make();
    const QByteArray text = annex.isEmpty() ? QByteArray() : textOfAnnex(annex);
    if (text.isEmpty() != annex.isEmpty())
        return fail(tr("the sets are more than 1 GiB of text"),
                    tr("keep some of them in files of their own"));
    if (text != m_source.annex && (!patchAnnex(tree, text) || !read(scene, tree, ReadBack, 1, isKnown)))
        return false;
    noteWhereEverythingStands(source, scene, maker, known);
    m_written->annex = text;
    m_written->isAnnexForeign = m_source.isAnnexForeign;
    return true;
}

/// First the lists alone: every object has a place then, and what follows is the same for old ones and new ones.
bool GltfWriter::patchStructure(const GltfStructurePlan &plan, SceneSource &placed)
{
    GltfStructurePatch structure(m_source, plan);
    m_json = structure.text();
    GltfScene scene;
    JsonTree tree;
    // Extras are not touched yet.
    if (!read(scene, tree, 0, Compared, [](const JsonValue &, bool, quint32) { return true; }))
        return false;
    placed = structure.sourceFor(m_json, scene);
    QStringList notes;
    if (structure.disturbedCount() > 0)
        notes.append(
            tr("%n of the objects that were moved or deleted are used by animations or skins, which may "
               "look different now",
               nullptr, structure.disturbedCount()));
    if (structure.lostCount() > 0)
        notes.append(tr("%n objects could not keep their place in the world below their new parents", nullptr,
                        structure.lostCount()));
    m_note = notes.join(QStringLiteral("; "));
    return true;
}

bool GltfWriter::patchObjects(const SceneSource &source, GltfObjectPatch &objects, const JsonPatches &patches,
                              GltfKnownObjects &known)
{
    int count = 0;
    for (const SceneSource::ObjectOrigin &origin : source.objects()) {
        const bool isAlive = Document::the().store().objectSlot(origin.id) != kernel::NoSlot;
        if (isAlive && !objects.isAsRead(origin))
            objects.patch(origin);
        else if (!isAlive || origin.isPlain)
            known.add(origin);
        if (++count % ObjectsAtOnce == 0 && !m_progress.advance(Compared * count / source.objectCount()))
            return false;
    }
    m_json = patches.applied(source.json);
    return true;
}

bool GltfWriter::read(GltfScene &scene, JsonTree &tree, double from, double to,
                      const GltfReader::IsKnown &isKnown)
{
    GltfReader reader;
    reader.setIsKnown(isKnown);
    reader.setGoOn([&](double share) { return m_progress.advance(from + (to - from) * share); });
    if (reader.read(m_json, scene, tree))
        return true;
    return !reader.isCancelled()
           && fail(tr("its text could not be read back: %1").arg(reader.error().reason()),
                   tr("save the sets in a file of their own and report this"));
}

bool GltfWriter::patchAnnex(const JsonTree &tree, const QByteArray &annex)
{
    const JsonValue extras = tree.root().find(ExtrasKeyword);
    const JsonValue member = extras.find(GltfAnnex::Member);
    if (m_source.isAnnexForeign || (extras.isPresent() && !extras.isObject()))
        return fail(tr("sets, colours, locks, dates, times, groups and deletions are kept under “extras.%1”, "
                       "and what "
                       "stands there is not of this program")
                        .arg(GltfAnnex::Member),
                    tr("remove it with a text editor, or keep the sets in files of their own"));
    QByteArray text = annex;
    // A text in one line stays in one line; inside of strings there are no line breaks.
    if (!m_json.contains('\n'))
        text.replace('\n', QByteArray());
    JsonPatches patches;
    JsonEdit edit(tree, 0, patches);
    if (member.isPresent() && text.isEmpty())
        edit.remove(extras, member);
    else if (member.isPresent())
        edit.replace(member, text);
    else if (extras.isPresent())
        edit.append(extras, {GltfAnnex::Member, text});
    else
        edit.appendObject(tree.root(), ExtrasKeyword, {{GltfAnnex::Member, text}});
    edit.finish();
    m_json = patches.applied(m_json);
    return true;
}

void GltfWriter::noteWhereEverythingStands(const SceneSource &source, const GltfScene &scene,
                                           const GltfAnnexMaker &maker, const GltfKnownObjects &known)
{
    const kernel::Store &store = Document::the().store();
    m_written = std::make_shared<SceneSource>();
    m_written->json = m_json;
    m_written->jsonLength = m_json.size();
    m_written->rootSpan = scene.rootSpan;
    m_written->rootExtrasSpan = scene.rootExtrasSpan;
    m_written->removed = source.removed;
    m_written->madeCameras = source.madeCameras;
    m_written->madeLights = source.madeLights;
    m_written->reserve(size_t(source.objectCount()), size_t(source.entryCount()));
    auto place = maker.places().begin();
    for (SceneSource::ObjectOrigin origin : source.objects()) {
        const kernel::Slot slot = store.objectSlot(origin.id);
        const bool isNode = origin.list == SceneSource::List::Nodes;
        const JsonSpan oldExtras = origin.extrasSpan;
        origin.span = isNode ? scene.nodes[origin.index].span : scene.materials[origin.index].span;
        origin.extrasSpan = isNode ? scene.nodes[origin.index].extrasSpan
                                   : scene.materials[origin.index].extrasSpan;
        origin.isGone = slot == kernel::NoSlot;
        if (!origin.isGone)
            origin.name = store.object(slot).name;
        const IndexRange entries = origin.entries;
        // What was deleted may come back by undo, and finds its entries then.
        const bool isKept = origin.isGone || known.has(origin);
        origin.isPlain = isKept ? origin.isPlain : maker.isPlain(origin.id);
        m_written->add(origin);
        for (quint32 i = entries.first; isKept && i < entries.end(); ++i)
            m_written->add(source.entries()[i].moved(oldExtras.offset, origin.extrasSpan.offset));
        if (isKept)
            continue;
        for (const kernel::Slot entry : store.set(store.object(slot).objectSet).entries.slots())
            m_written->add(entryOf(entry, *place++, scene));
    }
    m_written->noteTree(scene);
}

SceneSource::EntryOrigin GltfWriter::entryOf(kernel::Slot entry, qint32 place, const GltfScene &scene) const
{
    const kernel::Store &store = Document::the().store();
    SceneSource::EntryOrigin written{store.idOf(entry), 0, JsonSpan(), false, store.key(entry)};
    if (place < 0)
        return written;
    const ExtrasEntry &read = scene.entries[size_t(place)];
    written.memberOffset = read.memberOffset;
    written.valueSpan = read.valueSpan;
    written.isPath = read.isPath;
    return written;
}

bool GltfWriter::fail(const QString &reason, const QString &advice)
{
    m_reason = reason;
    m_advice = advice;
    return false;
}

} // namespace interchange
