#include "ServiceRegistry.h"

#include <nkKernelServices/nkMainWindowService.h>

#include <QCoreApplication>

namespace kernel {

namespace {

ServiceRegistry *s_registry = nullptr;

/// Ends the services of a process that never had an application object, or used them after it.
struct EndOfProcess
{
    ~EndOfProcess() { ServiceRegistry::shutDown(); }
};

} // namespace

ServiceRegistry &ServiceRegistry::the()
{
    static const EndOfProcess endOfProcess;
    if (!s_registry) {
        s_registry = new ServiceRegistry;
        qAddPostRoutine(&ServiceRegistry::shutDown);
    }
    return *s_registry;
}

void ServiceRegistry::shutDown()
{
    // The pointer stays in place meanwhile: a service that logs while it ends must find this registry.
    delete s_registry;
    s_registry = nullptr;
}

ServiceRegistry::~ServiceRegistry()
{
    while (!m_services.empty()) {
        destroyYoungest();
    }
}

void ServiceRegistry::destroyYoungest()
{
    const std::unique_ptr<QObject> youngest = std::move(m_services.back());
    m_services.pop_back();
    m_index.remove(m_index.key(youngest.get()));
}

void ServiceRegistry::setMainWindowService(nkMainWindowService *service)
{
    m_mainWindowService = service;
}

nkMainWindowService *ServiceRegistry::mainWindowService() const
{
    return static_cast<nkMainWindowService *>(m_mainWindowService.data());
}

} // namespace kernel
