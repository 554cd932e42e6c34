#include <nkKernelServicesGUI/nkPreferencesCategory.h>

namespace {

QList<nkPreferencesCategory *> &registry()
{
    static QList<nkPreferencesCategory *> categories;
    return categories;
}

} // namespace

nkPreferencesCategory::nkPreferencesCategory(const QString &name) : m_name(name) {}

nkPreferencesCategory::~nkPreferencesCategory()
{
    registry().removeAll(this);
}

QList<nkPreferencesCategory *> nkPreferencesCategory::categories()
{
    return registry();
}

void nkPreferencesCategory::registerCategory()
{
    if (registry().contains(this)) {
        return;
    }
    registry().append(this);
    setDefaults(false);
    // What was stored in earlier runs has not been put into effect in this one.
    m_allChanged = true;
    apply();
    m_allChanged = false;
}
