#include "NotYet.h"

#include <nkKernelServices/nkLogService.h>

namespace kernel {

void reportNotYet(const QString &title, const QString &text)
{
    nkLogService::the().reportWarning(title, text);
}

} // namespace kernel
