#include <interchange/GltfWriter.h>

#include <interchange/GltfAnnexMaker.h>
#include <interchange/GltfAnnexText.h>
#include <interchange/GltfObjectPatch.h>

namespace interchange {

using kernel::Document;

namespace {

const QLatin1String ExtrasKeyword("extras");

// What comparing with the text, reading it back and the rest cost, measured on large scenes.
constexpr double Compared = 0.3;
constexpr double ReadBack = 0.8;
constexpr int ObjectsAtOnce = 1000;

} // namespace

GltfWriter::GltfWriter(const SceneSource &source, kernel::Progress &progress)
    : m_source(source), m_progress(progress)
{}

bool GltfWriter::write()
{
    JsonPatches patches;
    GltfObjectPatch objects(m_source, Document::the().store(), patches);
    GltfScene scene;
    JsonTree tree;
    if (!checkObjects() || !patchObjects(objects, patches) || !read(scene, tree, Compared, ReadBack))
        return false;
    GltfAnnexMaker maker(scene, m_source, &objects);
    const GltfAnnex annex = maker.make();
    const QByteArray text = annex.isEmpty() ? QByteArray() : textOfAnnex(annex);
    if (text.isEmpty() != annex.isEmpty())
        return fail(tr("the sets are more than 1 GiB of text"),
                    tr("keep some of them in files of their own"));
    if (text != m_source.annex && (!patchAnnex(tree, text) || !read(scene, tree, ReadBack, 1)))
        return false;
    noteWhereEverythingStands(scene, maker.places());
    m_written->annex = text;
    m_written->isAnnexForeign = m_source.isAnnexForeign;
    return true;
}

/// Scenes are tagged here, not built: what was made or deleted has no place in the file.
bool GltfWriter::checkObjects()
{
    int living = 0;
    for (const SceneSource::ObjectOrigin &origin : m_source.objects())
        living += Document::the().typeOf(origin.id) != nkObjectType::Null ? 1 : 0;
    if (living < m_source.objectCount())
        return fail(tr("%1 objects of the file were deleted, and a glTF file cannot be saved without them")
                        .arg(m_source.objectCount() - living),
                    tr("undo the deletion"));
    if (Document::the().objectCount() > living)
        return fail(tr("%1 objects are not in the file, and objects cannot be added to a glTF file")
                        .arg(Document::the().objectCount() - living),
                    tr("delete them"));
    return true;
}

bool GltfWriter::patchObjects(GltfObjectPatch &objects, const JsonPatches &patches)
{
    int count = 0;
    for (const SceneSource::ObjectOrigin &origin : m_source.objects()) {
        if (!objects.isAsRead(origin))
            objects.patch(origin);
        if (++count % ObjectsAtOnce == 0 && !m_progress.advance(Compared * count / m_source.objectCount()))
            return false;
    }
    m_json = patches.applied(m_source.json);
    return true;
}

bool GltfWriter::read(GltfScene &scene, JsonTree &tree, double from, double to)
{
    GltfReader reader;
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
        return fail(
            tr("sets, colours, locks, dates and times are kept under “extras.%1”, and what stands there "
               "is not of this program")
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

void GltfWriter::noteWhereEverythingStands(const GltfScene &scene, const std::vector<qint32> &places)
{
    const kernel::Store &store = Document::the().store();
    m_written = std::make_shared<SceneSource>();
    m_written->json = m_json;
    m_written->jsonLength = m_json.size();
    m_written->rootSpan = scene.rootSpan;
    m_written->rootExtrasSpan = scene.rootExtrasSpan;
    m_written->reserve(size_t(m_source.objectCount()), places.size());
    auto place = places.begin();
    for (SceneSource::ObjectOrigin origin : m_source.objects()) {
        const kernel::ObjectRecord &record = store.object(store.objectSlot(origin.id));
        const bool isNode = origin.list == SceneSource::List::Nodes;
        origin.name = record.name;
        origin.span = isNode ? scene.nodes[origin.index].span : scene.materials[origin.index].span;
        origin.extrasSpan = isNode ? scene.nodes[origin.index].extrasSpan
                                   : scene.materials[origin.index].extrasSpan;
        m_written->add(origin);
        for (const kernel::Slot entry : store.set(record.objectSet).entries.slots()) {
            SceneSource::EntryOrigin written{store.idOf(entry), 0, JsonSpan(), false, store.key(entry)};
            if (*place >= 0) {
                const ExtrasEntry &read = scene.entries[size_t(*place)];
                written.memberOffset = read.memberOffset;
                written.valueSpan = read.valueSpan;
                written.isPath = read.isPath;
            }
            m_written->add(written);
            ++place;
        }
    }
}

bool GltfWriter::fail(const QString &reason, const QString &advice)
{
    m_reason = reason;
    m_advice = advice;
    return false;
}

} // namespace interchange
