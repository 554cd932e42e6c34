#include <nkKernelServicesGUI/nkControlFactory.h>

nkControlFactory::~nkControlFactory() = default;
