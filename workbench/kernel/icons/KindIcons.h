#pragma once

#include <nkKernelServices/nkKernelServicesExport.h>
#include <nkKernelServices/nkObjectType.h>

#include <QIcon>

namespace kernel {

/// The icons of what a scene holds, from the installed IconSource.
class NK_KERNEL_SERVICES_EXPORT KindIcons
{
public:
    /// What a set's icon tells; each state is shown in preference to those before it.
    enum class SetState { Shared, Locked, AssetAtRest, EditedAsset, ObjectSet };

    KindIcons() = delete;

    /// The icon of a scene object's kind; null for kinds that are no scene objects.
    static QIcon ofObject(nkObjectType kind);
    /// @param tag a tag rather than an entry
    /// @param onObject in the object set of an object rather than in a shared set
    static QIcon ofEntry(bool tag, bool onObject);
    static QIcon ofSet(SetState state);
};

} // namespace kernel
