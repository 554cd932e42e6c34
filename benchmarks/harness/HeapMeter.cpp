#include "HeapMeter.h"

#ifdef __SANITIZE_ADDRESS__
// Of the sanitizer's run-time library, which comes without the header that declares it.
extern "C" size_t __sanitizer_get_current_allocated_bytes();
#else
#include <malloc.h>
#endif

qint64 HeapMeter::bytesInUse()
{
#ifdef __SANITIZE_ADDRESS__
    // The sanitizer's own heap, of which the C library knows nothing.
    return qint64(__sanitizer_get_current_allocated_bytes());
#else
    const struct mallinfo2 info = mallinfo2();
    return qint64(info.uordblks) + qint64(info.hblkhd);
#endif
}
