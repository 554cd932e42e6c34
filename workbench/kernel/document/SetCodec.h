#pragma once

#include "Clipboard.h"

#include <nkKernelServices/nkKernelServicesExport.h>

#include <QByteArray>
#include <QObject>
#include <QString>

#include <functional>
#include <vector>

namespace kernel {

class Progress;

/// How reading or writing sets ended.
struct SetCodecResult
{
    enum Outcome { Done, Cancelled, Failed };

    Outcome outcome = Done;
    /// One sentence for people: what, where, what to do; empty unless it failed.
    QString error;

    bool isDone() const { return outcome == Done; }
};

/// What the texts and files of metadata sets look like. The kernel knows when sets are written and read, and
/// what for; the application installs the codec that knows how.
class NK_KERNEL_SERVICES_EXPORT SetCodec : public QObject
{
    Q_OBJECT
public:
    /// Hands out the set at a position, in order, each once. False where it is not to be had any more.
    using Feed = std::function<bool(int position, SetCopy &set)>;

    /// The installed codec; null where there is none.
    static SetCodec *installed();
    /// Installs a codec, which stays the caller's. Null takes it back; so does its destruction.
    static void install(SetCodec *codec);

    /// Writes a file of `count` sets: the file holds them all afterwards, or is what it was.
    virtual SetCodecResult write(const QString &fileName, int count, const Feed &feed,
                                 Progress &progress) = 0;
    /// Reads the sets of a file: all of them, or none where anything is wrong.
    virtual SetCodecResult read(const QString &fileName, std::vector<SetCopy> &sets, Progress &progress) = 0;

    /// The text of one set, as it stands in a file.
    virtual QByteArray textOfSet(const SetCopy &set) const = 0;
    /// Reads the text of one set.
    virtual SetCodecResult readSet(const QByteArray &text, SetCopy &set) const = 0;

    /// The text of a whole file of these sets; empty where it would have more than `largest` bytes.
    virtual QByteArray textOfSets(const std::vector<SetCopy> &sets, int largest) const = 0;
    /// The text of entries that stand in no set; empty likewise.
    virtual QByteArray textOfEntries(const std::vector<EntryCopy> &entries, int largest) const = 0;
    /// Keys and values as spreadsheets take them; empty likewise.
    virtual QByteArray tableOfEntries(const std::vector<EntryCopy> &entries, int largest) const = 0;
    /// Reads a foreign text that may be sets, entries or lines of keys and values; both lists are empty where it
    /// is none of these.
    virtual void readForeign(const QByteArray &text, std::vector<SetCopy> &sets,
                             std::vector<EntryCopy> &entries) const = 0;
};

} // namespace kernel
