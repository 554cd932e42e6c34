#include "HeapMeter.h"

#include <malloc.h>

qint64 HeapMeter::bytesInUse()
{
    const struct mallinfo2 info = mallinfo2();
    return qint64(info.uordblks) + qint64(info.hblkhd);
}
