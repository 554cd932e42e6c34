#pragma once

#include <QModelIndex>
#include <QWidget>

class LogFilter;
class LogModel;
class QAction;
class QComboBox;
class QNKSearchBox;
class QPlainTextEdit;
class RowsView;

/// What the program has told, line by line: searched, filtered by level, copied as text. The whole text of what is
/// selected stands below. New lines are brought into sight only for those who look at the end already.
class LogPanel : public QWidget
{
    Q_OBJECT
public:
    explicit LogPanel(QWidget *parent = nullptr);
    ~LogPanel() override;

    RowsView *view() const { return m_view; }
    QNKSearchBox *searchBox() const { return m_search; }
    QComboBox *levels() const { return m_levels; }
    QPlainTextEdit *detail() const { return m_detail; }
    QAction *copyAction() const { return m_copy; }
    QAction *copyAllAction() const { return m_copyAll; }
    QAction *clearAction() const { return m_clear; }

private:
    void createView();
    void createFilters();
    void createDetail();
    void createActions();
    QAction *makeAction(const QString &text, const QString &icon, const QString &category,
                        const QString &help);
    void layOut();
    void connectRows();
    void copyRows(const QModelIndexList &rows);
    QModelIndexList allRows() const;
    void refresh();
    void showMenu(const QPoint &position);

    LogModel *m_model;
    LogFilter *m_filter;
    RowsView *m_view = nullptr;
    QNKSearchBox *m_search = nullptr;
    QComboBox *m_levels = nullptr;
    QPlainTextEdit *m_detail = nullptr;
    QAction *m_copy = nullptr;
    QAction *m_copyAll = nullptr;
    QAction *m_clear = nullptr;
    bool m_isAtEnd = true;
};
