#include "SetCodec.h"

#include <QPointer>

namespace kernel {

namespace {

QPointer<SetCodec> &theCodec()
{
    static QPointer<SetCodec> codec;
    return codec;
}

} // namespace

SetCodec *SetCodec::installed()
{
    return theCodec();
}

void SetCodec::install(SetCodec *codec)
{
    theCodec() = codec;
}

} // namespace kernel
