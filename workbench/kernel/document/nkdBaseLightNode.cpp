#include <nkKernelServices/nkdBaseLightNode.h>

nkdBaseLightNode::~nkdBaseLightNode() = default;
