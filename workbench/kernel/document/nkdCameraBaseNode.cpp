#include <nkKernelServices/nkdCameraBaseNode.h>

nkdCameraBaseNode::~nkdCameraBaseNode() = default;
