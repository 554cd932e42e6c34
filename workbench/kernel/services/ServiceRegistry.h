#pragma once

#include <nkKernelServices/nkKernelServicesExport.h>

#include <QHash>
#include <QObject>
#include <QPointer>

#include <memory>
#include <utility>
#include <vector>

class nkMainWindowService;

namespace kernel {

/// The one owner of the kernel's services. Each service is made when it is first asked for; all of them are
/// destroyed together, the youngest first: when the application object goes, in a process without one when
/// the process ends, or by shutDown(). A service asked for after that is made anew, so a second application
/// object in the same process finds working services.
///
/// GUI thread only.
class NK_KERNEL_SERVICES_EXPORT ServiceRegistry
{
    Q_DISABLE_COPY(ServiceRegistry)
public:
    static ServiceRegistry &the();
    /// Destroys every service; their destructors still reach the other services. Does nothing where none was
    /// made.
    static void shutDown();

    /// The one service of this class, made on the first call. @tparam Service a default-constructible QObject
    template <typename Service>
    Service &service()
    {
        const QMetaObject *const key = &Service::staticMetaObject;
        if (QObject *present = m_index.value(key)) {
            return *static_cast<Service *>(present);
        }
        auto made = std::make_unique<Service>();
        // What a service says while it is being made may have brought up another of its kind.
        if (QObject *present = m_index.value(key)) {
            return *static_cast<Service *>(present);
        }
        Service &result = *made;
        m_index.insert(key, &result);
        m_services.push_back(std::move(made));
        return result;
    }

    /// Installs the application's own main window service, which stays the caller's. Null takes it back;
    /// so does its destruction.
    void setMainWindowService(nkMainWindowService *service);
    /// What the application installed; null where it did not.
    nkMainWindowService *mainWindowService() const;

private:
    ServiceRegistry() = default;
    ~ServiceRegistry();
    void destroyYoungest();

    std::vector<std::unique_ptr<QObject>> m_services;
    QHash<const QMetaObject *, QObject *> m_index;
    /// As QObject, so that a half-destroyed service is never called.
    QPointer<QObject> m_mainWindowService;
};

} // namespace kernel
