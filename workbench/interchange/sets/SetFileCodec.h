#pragma once

#include <interchange/sets/SetFileLimits.h>

#include <kernel/document/SetCodec.h>

namespace interchange {

class SetFileReader;

/// The layout of metadata sets in files and texts: JSON with a version, one explicit type an entry.
class SetFileCodec : public kernel::SetCodec
{
    Q_OBJECT
public:
    explicit SetFileCodec(const SetFileLimits &limits = SetFileLimits());
    ~SetFileCodec() override;

    kernel::SetCodecResult write(const QString &fileName, int count, const Feed &feed,
                                 kernel::Progress &progress) override;
    kernel::SetCodecResult read(const QString &fileName, std::vector<kernel::SetCopy> &sets,
                                kernel::Progress &progress) override;
    QByteArray textOfSet(const kernel::SetCopy &set) const override;
    kernel::SetCodecResult readSet(const QByteArray &text, kernel::SetCopy &set) const override;
    QByteArray textOfSets(const std::vector<kernel::SetCopy> &sets, int largest) const override;
    QByteArray textOfEntries(const std::vector<kernel::EntryCopy> &entries, int largest) const override;
    QByteArray tableOfEntries(const std::vector<kernel::EntryCopy> &entries, int largest) const override;
    void readForeign(const QByteArray &text, std::vector<kernel::SetCopy> &sets,
                     std::vector<kernel::EntryCopy> &entries) const override;

private:
    bool readJson(const QByteArray &text, std::vector<kernel::SetCopy> &sets,
                  std::vector<kernel::EntryCopy> &entries) const;

    SetFileLimits m_limits;
};

} // namespace interchange
