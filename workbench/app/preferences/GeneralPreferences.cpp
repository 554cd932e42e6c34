#include "GeneralPreferences.h"

#include "Language.h"
#include "Options.h"
#include "PageParts.h"
#include "Theme.h"

#include <nkKernelServices/nkPreferencesService.h>

#include <QCheckBox>
#include <QComboBox>
#include <QCoreApplication>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QSpinBox>

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
      m_theme(new QComboBox(this)),
      m_language(new QComboBox(this)),
      m_autosave(new QCheckBox(tr("&Write a copy for recovery every"), this)),
      m_minutes(new QSpinBox(this))
{
    auto *form = new QFormLayout(this);
    form->setContentsMargins(0, 0, 0, 0);
    form->setFieldGrowthPolicy(QFormLayout::FieldsStayAtSizeHint);
    addTheme(form);
    addLanguage(form);
    addAutosave(form);
    registerCategory();
}

GeneralPreferences::~GeneralPreferences() = default;

void GeneralPreferences::addTheme(QFormLayout *form)
{
    m_theme->addItem(tr("As the system"), int(Theme::System));
    m_theme->addItem(tr("Light"), int(Theme::Light));
    m_theme->addItem(tr("Dark"), int(Theme::Dark));
    m_theme->setAccessibleName(tr("Theme"));
    form->addRow(PageParts::label(tr("&Theme:"), m_theme), m_theme);
}

void GeneralPreferences::addLanguage(QFormLayout *form)
{
    m_language->addItem(tr("As the system"), QString());
    const QStringList codes = Language::codes();
    for (const QString &code : codes) {
        m_language->addItem(Language::nameOf(code), code);
    }
    m_language->setAccessibleName(tr("Language"));
    const QString hint = tr("Texts, numbers and dates. Another language is used from the next start on.");
    m_language->setToolTip(hint);
    form->addRow(PageParts::label(tr("&Language:"), m_language), m_language);
    form->addRow(QString(), PageParts::hint(hint, this));
}

void GeneralPreferences::addAutosave(QFormLayout *form)
{
    m_minutes->setRange(Options::autosaveMinutes.lowest, Options::autosaveMinutes.highest);
    m_minutes->setSuffix(tr(" min"));
    m_minutes->setAccessibleName(tr("Minutes between copies for recovery"));
    m_autosave->setAccessibleName(tr("Write copies for recovery"));
    connect(m_autosave, &QCheckBox::toggled, m_minutes, &QWidget::setEnabled);
    auto *row = new QHBoxLayout;
    row->addWidget(m_autosave);
    row->addWidget(m_minutes);
    row->addStretch(1);
    form->addRow(tr("Autosave:"), row);
    form->addRow(QString(), PageParts::hint(tr("Your file stays as you saved it: the copy is offered at the "
                                               "next start if the workbench ends unexpectedly."),
                                            this));
}

void GeneralPreferences::setDefaults(bool overwrite)
{
    nkPreferencesService::the().setIntValue(themeKey, int(Theme::System), overwrite);
    Options::language.store(QString(), overwrite);
    Options::autosave.store(Options::autosave.usual, overwrite);
    Options::autosaveMinutes.store(Options::autosaveMinutes.usual, overwrite);
}

void GeneralPreferences::loadToPage()
{
    // A choice of a later version shows, and stores, what it looks like in this one.
    m_theme->setCurrentIndex(qMax(0, m_theme->findData(storedTheme())));
    m_language->setCurrentIndex(qMax(0, m_language->findData(Options::language.value())));
    m_autosave->setChecked(Options::autosave.value() != 0);
    m_minutes->setEnabled(m_autosave->isChecked());
    m_minutes->setValue(Options::autosaveMinutes.value());
}

void GeneralPreferences::storeFromPage()
{
    nkPreferencesService::the().setIntValue(themeKey, m_theme->currentData().toInt(), true);
    Options::language.store(m_language->currentData().toString());
    Options::autosave.store(m_autosave->isChecked() ? 1 : 0);
    Options::autosaveMinutes.store(m_minutes->value());
}

void GeneralPreferences::apply()
{
    if (isChanged(themeKey)) {
        const int theme = storedTheme();
        const bool known = m_theme->findData(theme) >= 0;
        applyTheme(known ? Theme(theme) : Theme::System);
    }
}
