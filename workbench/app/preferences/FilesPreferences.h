#pragma once

#include <nkKernelServicesGUI/nkPreferencesCategory.h>

#include <QWidget>

class QCheckBox;
class QFormLayout;
class QLabel;
class QLineEdit;
class QPushButton;
class QSpinBox;

/// The preferences page "Files": the list of recent files, backup copies, where file dialogs begin. Stored as Options.
class FilesPreferences : public QWidget, public nkPreferencesCategory
{
    Q_OBJECT
public:
    /// Registers the page.
    explicit FilesPreferences(QWidget *parent = nullptr);
    ~FilesPreferences() override;

    QWidget *getWidget() override { return this; }
    void setDefaults(bool overwrite) override;
    void loadToPage() override;
    /// Empties the list of recent files, too, where that was asked for.
    void storeFromPage() override;
    /// Nothing: whoever goes by these values reads them when they are needed.
    void apply() override;

private:
    void addRecent(QFormLayout *form);
    void addBackup(QFormLayout *form);
    void addFolder(QFormLayout *form);
    void askToClear(bool isAsked);
    void browse();
    void checkFolder();

    QSpinBox *m_recent;
    QPushButton *m_clear;
    QLabel *m_clearNote;
    QCheckBox *m_backup;
    QLineEdit *m_folder;
    QLabel *m_folderNote;
    /// The list is emptied with OK or Apply.
    bool m_isClearAsked = false;
};
