#include "GeneralPreferences.h"

#include "Theme.h"

#include <nkKernelServices/nkPreferencesService.h>

#include <QComboBox>
#include <QCoreApplication>
#include <QFormLayout>
#include <QLabel>

namespace {

const QString themeKey = QStringLiteral("Workbench Theme");

int storedTheme()
{
    return nkPreferencesService::the().getIntValue(themeKey, int(Theme::System));
}

} // namespace

GeneralPreferences::GeneralPreferences(QWidget *parent)
    : QWidget(parent),
      nkPreferencesCategory(QCoreApplication::translate("GeneralPreferences", "General")),
      m_theme(new QComboBox(this))
{
    m_theme->addItem(tr("As the system"), int(Theme::System));
    m_theme->addItem(tr("Light"), int(Theme::Light));
    m_theme->addItem(tr("Dark"), int(Theme::Dark));
    m_theme->setAccessibleName(tr("Theme"));
    auto *form = new QFormLayout(this);
    form->setContentsMargins(0, 0, 0, 0);
    form->setFieldGrowthPolicy(QFormLayout::FieldsStayAtSizeHint);
    auto *label = new QLabel(tr("&Theme:"), this);
    label->setBuddy(m_theme);
    form->addRow(label, m_theme);
    registerCategory();
}

GeneralPreferences::~GeneralPreferences() = default;

void GeneralPreferences::setDefaults(bool overwrite)
{
    nkPreferencesService::the().setIntValue(themeKey, int(Theme::System), overwrite);
}

void GeneralPreferences::loadToPage()
{
    // A number of a later version shows, and stores, what it looks like in this one.
    m_theme->setCurrentIndex(qMax(0, m_theme->findData(storedTheme())));
}

void GeneralPreferences::storeFromPage()
{
    nkPreferencesService::the().setIntValue(themeKey, m_theme->currentData().toInt(), true);
}

void GeneralPreferences::apply()
{
    if (isChanged(themeKey)) {
        const int theme = storedTheme();
        const bool known = m_theme->findData(theme) >= 0;
        applyTheme(known ? Theme(theme) : Theme::System);
    }
}
