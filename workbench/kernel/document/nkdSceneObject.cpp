#include <nkKernelServices/nkdSceneObject.h>

#include "../icons/KindIcons.h"
#include "Document.h"
#include "ObjectOperations.h"
#include "Store.h"

using namespace kernel;

namespace {

const ObjectRecord *findObject(const nkdSceneObject &object)
{
    return Document::the().store().findObject(object.getObjectId());
}

} // namespace

nkdSceneObject::~nkdSceneObject() = default;

QString nkdSceneObject::getName() const
{
    const ObjectRecord *object = findObject(*this);
    return object ? object->name : QString();
}

void nkdSceneObject::setName(const QString &name)
{
    ObjectOperations::rename(getObjectId(), name);
}

QIcon nkdSceneObject::getIcon() const
{
    const ObjectRecord *object = findObject(*this);
    return object ? KindIcons::ofObject(object->type) : QIcon();
}

bool nkdSceneObject::getLocked() const
{
    const ObjectRecord *object = findObject(*this);
    return object && object->locked;
}

void nkdSceneObject::setLocked(bool locked)
{
    ObjectOperations::setLocked(getObjectId(), locked);
}

bool nkdSceneObject::isAsset() const
{
    // The asset manager keeps metadata sets only.
    return false;
}

bool nkdSceneObject::isEditedAsset() const
{
    return false;
}

bool nkdSceneObject::isEditable() const
{
    const ObjectRecord *object = findObject(*this);
    return object && !object->locked;
}
