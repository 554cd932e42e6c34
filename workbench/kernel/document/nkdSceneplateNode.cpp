#include <nkKernelServices/nkdSceneplateNode.h>

nkdSceneplateNode::~nkdSceneplateNode() = default;
