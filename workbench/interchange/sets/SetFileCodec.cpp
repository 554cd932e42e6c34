#include <interchange/sets/SetFileCodec.h>

#include <interchange/json/JsonReader.h>
#include <interchange/json/JsonValue.h>
#include <interchange/sets/KeyValueLines.h>
#include <interchange/sets/SetFileLoader.h>
#include <interchange/sets/SetFileNames.h>
#include <interchange/sets/SetFileSaver.h>
#include <interchange/sets/SetFileWriter.h>

#include <kernel/services/Progress.h>

namespace interchange {

using kernel::SetCodecResult;

namespace {

QByteArray upTo(const QByteArray &text, int largest)
{
    return text.size() <= largest ? text : QByteArray();
}

QByteArray upTo(const TextBuffer &text, int largest)
{
    return text.isOverfull() || text.size() > largest ? QByteArray() : text.bytes();
}

} // namespace

SetFileCodec::SetFileCodec(const SetFileLimits &limits) : m_limits(limits) {}

SetFileCodec::~SetFileCodec() = default;

SetCodecResult SetFileCodec::write(const QString &fileName, int count, const Feed &feed,
                                   kernel::Progress &progress)
{
    return SetFileSaver(fileName, m_limits, progress).save(count, feed);
}

SetCodecResult SetFileCodec::read(const QString &fileName, std::vector<kernel::SetCopy> &sets,
                                  kernel::Progress &progress)
{
    SetFileLoader loader(m_limits, progress);
    const auto keep = [&sets](kernel::SetCopy &&set) { sets.push_back(std::move(set)); };
    if (loader.readBytes(fileName) && loader.readSets(keep))
        return {};
    sets.clear();
    if (!loader.error().isSet())
        return {SetCodecResult::Cancelled, QString()};
    return {SetCodecResult::Failed, loader.error().message(tr("“%1” was not loaded").arg(fileName))};
}

QByteArray SetFileCodec::textOfSet(const kernel::SetCopy &set) const
{
    TextBuffer text;
    SetFileWriter(text).writeSet(set);
    return upTo(text, int(m_limits.bytes));
}

SetCodecResult SetFileCodec::readSet(const QByteArray &text, kernel::SetCopy &set) const
{
    JsonTree tree;
    JsonReader json(JsonLimits{m_limits.jsonDepth(), m_limits.values});
    SetFileError error;
    if (json.read(text, tree)) {
        SetFileReader reader(tree, m_limits);
        if (reader.readSet(set))
            return {};
        error = reader.error();
    } else {
        error = SetFileError::atJson(json.error());
    }
    return {SetCodecResult::Failed, error.message(tr("The text is no metadata set"))};
}

QByteArray SetFileCodec::textOfSets(const std::vector<kernel::SetCopy> &sets, int largest) const
{
    TextBuffer text;
    SetFileWriter writer(text);
    writer.beginSets();
    for (const kernel::SetCopy &set : sets) {
        writer.addSet(set);
        if (text.size() > largest)
            return QByteArray();
    }
    writer.endSets();
    return upTo(text, largest);
}

QByteArray SetFileCodec::textOfEntries(const std::vector<kernel::EntryCopy> &entries, int largest) const
{
    TextBuffer text;
    SetFileWriter(text).writeEntries(entries);
    return upTo(text, largest);
}

QByteArray SetFileCodec::tableOfEntries(const std::vector<kernel::EntryCopy> &entries, int largest) const
{
    return upTo(KeyValueLines::table(entries), largest);
}

void SetFileCodec::readForeign(const QByteArray &text, std::vector<kernel::SetCopy> &sets,
                               std::vector<kernel::EntryCopy> &entries) const
{
    if (text.trimmed().startsWith('{')) {
        if (!readJson(text, sets, entries)) {
            sets.clear();
            entries.clear();
        }
        return;
    }
    entries = KeyValueLines::read(QString::fromUtf8(text));
}

bool SetFileCodec::readJson(const QByteArray &text, std::vector<kernel::SetCopy> &sets,
                            std::vector<kernel::EntryCopy> &entries) const
{
    JsonTree tree;
    JsonReader json(JsonLimits{m_limits.jsonDepth(), m_limits.values});
    if (!json.read(text, tree))
        return false;
    SetFileReader reader(tree, m_limits);
    if (reader.isOfFormat(SetFileNames::EntriesFormat))
        return reader.readEntries(entries);
    if (reader.isOfFormat(SetFileNames::SetsFormat))
        return reader.readSets([&sets](kernel::SetCopy &&set, double) {
            sets.push_back(std::move(set));
            return true;
        });
    sets.resize(1);
    return reader.readSet(sets.front());
}

} // namespace interchange
