#pragma once

#include <QDialog>
#include <QList>
#include <QPointer>

class QDialogButtonBox;
class QLabel;
class QLineEdit;
class QListWidget;
class QListWidgetItem;
class QStackedWidget;
class nkPreferencesCategory;

/// The preferences of the workbench and its plug-ins: the registered categories at the left with a search, the
/// page of the chosen one at the right.
///
/// Nothing takes effect, and nothing is written, before OK or Apply; Restore Defaults shows the defaults of
/// the page that is seen. The pages stay their categories': they leave the dialog when it goes.
class PreferencesDialog : public QDialog
{
    Q_OBJECT
public:
    explicit PreferencesDialog(QWidget *parent = nullptr);
    ~PreferencesDialog() override;

    void accept() override;

private:
    QWidget *makeCategories();
    QWidget *makePages();
    QDialogButtonBox *makeButtons();
    void addCategory(nkPreferencesCategory *category);
    QList<nkPreferencesCategory *> shownCategories() const;
    void showPage(int row);
    void search(const QString &text);
    void storeAndApply();
    void restoreDefaults();

    QLineEdit *m_search = nullptr;
    QListWidget *m_categories = nullptr;
    QLabel *m_nothingFound = nullptr;
    QLabel *m_title = nullptr;
    QStackedWidget *m_stack = nullptr;
    /// The page of each row; null once its category is gone.
    QList<QPointer<QWidget>> m_pages;
};
