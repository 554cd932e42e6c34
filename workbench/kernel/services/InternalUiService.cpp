#include <nkKernelServices/nkInternalUiService.h>

#include "ServiceRegistry.h"

nkInternalUiService &nkInternalUiService::the()
{
    return kernel::ServiceRegistry::the().service<nkInternalUiService>();
}
