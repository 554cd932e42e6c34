#include "IconSource.h"

#include "ResourceIconSource.h"

#include <kernel/services/ServiceRegistry.h>

#include <QPointer>

namespace kernel {

namespace {

QPointer<IconSource> &installed()
{
    static QPointer<IconSource> source;
    return source;
}

} // namespace

IconSource &IconSource::the()
{
    if (IconSource *source = installed()) {
        return *source;
    }
    return ServiceRegistry::the().service<ResourceIconSource>();
}

void IconSource::setIconSource(IconSource *source)
{
    installed() = source;
}

} // namespace kernel
