#pragma once

#include "nkKernelServicesGUIExport.h"

#include <QTimer>
#include <QWidget>

class QHBoxLayout;
class QLabel;
class QLineEdit;
class QMenu;
class QToolButton;

/// The bar of the advanced search: switch, query field, recent queries, help; below them the state, as long as
/// there is one. Down in the field offers the recent queries, F1 the help.
class NK_KERNEL_SERVICES_GUI_EXPORT nkAdvancedSearchBar : public QWidget
{
    Q_OBJECT
public:
    enum State : int { Idle = 0, Succeeded = 1, Failed = 2, Running = 3 };

    explicit nkAdvancedSearchBar(QWidget *parent = nullptr);
    ~nkAdvancedSearchBar() override;

    int getState() const { return m_state; }
    /// Shows a state; Succeeded with the number of sets where nkQueryService has told it, Failed with the reason
    /// that nkQueryService::getQueryError gives. Numbers outside 0..3 are ignored.
    void setState(int state);
    QLineEdit *lineEdit() const { return m_lineEdit; }

Q_SIGNALS:
    /// The user asked for a search, changed it, or switched it off.
    void searchChanged(bool enabled, const QString &query);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
    void changeEvent(QEvent *event) override;

private:
    friend class nkAdvancedSearch;

    void setModule(int module) { m_module = module; }
    void setUpField();
    void setUpSwitch();
    void setUpRecent();
    void setUpHelp();
    void setUpState();
    QHBoxLayout *createFieldRow();
    QHBoxLayout *createStateRow();
    void showIcons();
    void search();
    void searchFor(const QString &query);
    void onTextEdited();
    void onReturnPressed();
    void onEditingFinished();
    void onFound(int count);
    void tell(bool enabled, const QString &query);
    void remember();
    void fillRecent();
    void showRecent();
    void showHelp();
    void insertExample(const QString &example);
    void showState();
    QString stateText() const;

    QLineEdit *m_lineEdit = nullptr;
    QToolButton *m_switch = nullptr;
    QToolButton *m_recent = nullptr;
    QMenu *m_recentMenu = nullptr;
    QToolButton *m_help = nullptr;
    QLabel *m_stateIcon = nullptr;
    QLabel *m_stateLabel = nullptr;
    QTimer m_pause;
    QString m_query; // the last query told; empty where the search was switched off
    int m_module = 0;
    int m_state = Idle;
    int m_found = -1;       // sets of the last answer; -1 where nobody told
    bool m_settled = false; // whether the person is done with the query, and it is worth remembering
};
