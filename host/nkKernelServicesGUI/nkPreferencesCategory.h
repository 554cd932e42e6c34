#pragma once

#include "nkKernelServicesGUIExport.h"

#include <QList>
#include <QString>
#include <QStringList>

class QWidget;

/// One category of the preferences dialog. Subclasses are usually widgets too; the dialog shows getWidget and
/// never owns nor deletes it.
class NK_KERNEL_SERVICES_GUI_EXPORT nkPreferencesCategory
{
    Q_DISABLE_COPY(nkPreferencesCategory)
public:
    explicit nkPreferencesCategory(const QString &name);
    /// Takes the category out of the list.
    virtual ~nkPreferencesCategory();

    QString getName() const { return m_name; }
    /// The registered categories, in order of registration.
    static QList<nkPreferencesCategory *> categories();

    /// The page.
    virtual QWidget *getWidget() = 0;
    /// Writes the default values. @param overwrite passed through to nkPreferencesService: false writes only
    /// where a key has no value yet
    virtual void setDefaults(bool overwrite) = 0;
    /// Shows the stored values on the page.
    virtual void loadToPage() = 0;
    /// Stores what the page shows.
    virtual void storeFromPage() = 0;
    /// Puts stored values into effect, those that isChanged.
    virtual void apply() = 0;

    /// Which keys the next apply is to put into effect; set by the dialog.
    void setChangedKeys(const QStringList &keys) { m_changedKeys = keys; }
    bool isChanged(const QString &key) const { return m_allChanged || m_changedKeys.contains(key); }

protected:
    /// Adds the category to the dialog's list: defaults are written where missing, and every key counts as
    /// changed for one apply. Once; called at the end of a subclass's constructor.
    void registerCategory();

private:
    QString m_name;
    QStringList m_changedKeys;
    bool m_allChanged = false;
};
