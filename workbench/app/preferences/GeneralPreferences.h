#pragma once

#include <nkKernelServicesGUI/nkPreferencesCategory.h>

#include <QWidget>

class QComboBox;

/// The workbench's own preferences page, the category "General": the theme. Stored as "Workbench Theme", the
/// number of a Theme.
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
    void apply() override;

private:
    QComboBox *m_theme;
};
