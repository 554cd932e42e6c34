#pragma once

#include "interchange/assets/AssetAddress.h"

#include <nkKernelServicesGUI/nkPreferencesCategory.h>

#include <QWidget>

class QFormLayout;
class QLabel;
class QLineEdit;
class QPushButton;
class QRadioButton;

/// The preferences page "Assets": which asset database is used. Stored as AssetDatabase::preferenceKey(), never with a
/// password: one that is typed or pasted into the URL moves into the field for it at once, and from there into
/// memory alone.
class AssetsPreferences : public QWidget, public nkPreferencesCategory
{
    Q_OBJECT
public:
    /// Registers the page.
    explicit AssetsPreferences(QWidget *parent = nullptr);
    ~AssetsPreferences() override;

    QWidget *getWidget() override { return this; }
    void setDefaults(bool overwrite) override;
    void loadToPage() override;
    /// A URL that is none is told and not stored.
    void storeFromPage() override;
    /// Shows what is used now: the database itself has followed its preference.
    void apply() override;

private:
    void addKinds(QFormLayout *form);
    void addServer(QFormLayout *form);
    void addTest(QFormLayout *form);
    void urlEdited(const QString &text);
    void takePassword();
    void showKind();
    void showState();
    void test();
    QString shownUrl() const;
    interchange::AssetAddress shownAddress(QString *error) const;

    QRadioButton *m_own;
    QRadioButton *m_server;
    QLineEdit *m_url;
    QLineEdit *m_password;
    QPushButton *m_test;
    QLabel *m_result;
    QLabel *m_state;
    /// What the page shows of the preference.
    QString m_loadedUrl;
    int m_urlLength = 0;
};
