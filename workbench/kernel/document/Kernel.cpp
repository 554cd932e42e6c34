#include "Kernel.h"

#include "Document.h"
#include "MetaTypes.h"
#include "MetadataService.h"

#include <nkKernelServices/nkObjectService.h>

#include <QCoreApplication>

namespace kernel {

namespace {

std::unique_ptr<Kernel> &instance()
{
    static std::unique_ptr<Kernel> kernel;
    return kernel;
}

} // namespace

Kernel::Kernel()
    : m_objectService(std::make_unique<nkObjectService>()),
      m_document(new Document),
      m_metadataService(std::make_unique<MetadataService>(*m_document))
{
    registerMetaTypes();
    qAddPostRoutine(&Kernel::end);
}

Kernel::~Kernel() = default;

Kernel &Kernel::the()
{
    if (!instance()) {
        instance().reset(new Kernel);
    }
    return *instance();
}

void Kernel::end()
{
    instance().reset();
}

} // namespace kernel

nkObjectService &nkObjectService::the()
{
    return kernel::Kernel::the().objectService();
}
