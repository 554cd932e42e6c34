#pragma once

#include <QtGlobal>

/// The memory that the program has asked the heap for and not given back.
namespace HeapMeter {

/// In bytes, over all arenas and large blocks mapped on their own, overhead of the blocks included. Blocks that the
/// allocator keeps for the next request of their size count as used; that is under 100 kB.
qint64 bytesInUse();

} // namespace HeapMeter
