#pragma once

#include "nkKernelServicesGUIExport.h"

#include <QTimer>
#include <QWidget>

class QLabel;
class QLineEdit;
class QToolButton;

/// The bar of the advanced search: query field, switch, state.
class NK_KERNEL_SERVICES_GUI_EXPORT nkAdvancedSearchBar : public QWidget
{
    Q_OBJECT
public:
    enum State : int { Idle = 0, Succeeded = 1, Failed = 2, Running = 3 };

    explicit nkAdvancedSearchBar(QWidget *parent = nullptr);
    ~nkAdvancedSearchBar() override;

    int getState() const { return m_state; }
    /// Shows a state; Failed with the reason that nkQueryService::getQueryError gives. Numbers outside 0..3
    /// are ignored.
    void setState(int state);
    QLineEdit *lineEdit() const { return m_lineEdit; }

Q_SIGNALS:
    /// The user asked for a search, changed it, or switched it off.
    void searchChanged(bool enabled, const QString &query);

private:
    void setUpField();
    void setUpSwitch();
    void setUpState();
    void search();
    void onTextEdited();
    void onReturnPressed();
    void tell(bool enabled, const QString &query);
    void showState();

    QLineEdit *m_lineEdit = nullptr;
    QToolButton *m_switch = nullptr;
    QLabel *m_stateIcon = nullptr;
    QLabel *m_stateLabel = nullptr;
    QTimer m_pause;
    int m_state = Idle;
    bool m_told = false; // whether the last search told was enabled
};
