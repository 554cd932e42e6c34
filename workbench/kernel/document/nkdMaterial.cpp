#include <nkKernelServices/nkdMaterial.h>

nkdMaterial::~nkdMaterial() = default;
