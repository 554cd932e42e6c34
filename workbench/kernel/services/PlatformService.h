#pragma once

#include <nkKernelServices/nkPlatformService.h>

namespace kernel {

/// The folders and names that the process runs under, as the desktop's standard paths give them.
class NK_KERNEL_SERVICES_EXPORT PlatformService final : public nkPlatformService
{
    Q_OBJECT
public:
    /// Makes the folder where it is missing. Where that cannot be done, says so in the log (once) and answers
    /// the path all the same: whoever writes there finds out.
    QString getUserDataDirectory() const override;
    QString getInformationTitle() const override;

private:
    mutable bool m_failureTold = false;
};

} // namespace kernel
