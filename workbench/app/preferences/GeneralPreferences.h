#pragma once

#include <nkKernelServicesGUI/nkPreferencesCategory.h>

#include <QWidget>

class QCheckBox;
class QComboBox;
class QFormLayout;
class QSpinBox;

/// The workbench's own preferences page, the category "General": theme, language, copies for recovery. The theme is
/// stored as "Workbench Theme", the number of a Theme; the others are Options.
class GeneralPreferences : public QWidget, public nkPreferencesCategory
{
    Q_OBJECT
public:
    /// Registers the page, which puts the stored theme into effect.
    explicit GeneralPreferences(QWidget *parent = nullptr);
    ~GeneralPreferences() override;

    QWidget *getWidget() override { return this; }
    void setDefaults(bool overwrite) override;
    void loadToPage() override;
    void storeFromPage() override;
    /// The theme. The language comes at the next start; whoever writes the copies follows the preference.
    void apply() override;

private:
    void addTheme(QFormLayout *form);
    void addLanguage(QFormLayout *form);
    void addAutosave(QFormLayout *form);

    QComboBox *m_theme;
    QComboBox *m_language;
    QCheckBox *m_autosave;
    QSpinBox *m_minutes;
};
