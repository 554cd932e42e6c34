#include <nkKernelServices/nkdMaterialGroupNode.h>

nkdMaterialGroupNode::~nkdMaterialGroupNode() = default;
