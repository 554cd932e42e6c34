#pragma once

#include <QFrame>

class QTreeWidget;
class QTreeWidgetItem;

/// A pop-up that explains the language of queries by examples. A click on one, or Return, chooses it.
class QueryHelp : public QFrame
{
    Q_OBJECT
public:
    explicit QueryHelp(QWidget *parent);
    ~QueryHelp() override;

    /// Shows it below a widget, within the screen, with the keyboard in the list.
    void popUp(const QWidget *below);

Q_SIGNALS:
    /// The user has chosen an example; the pop-up has closed.
    void chosen(const QString &example);

private:
    void addExamples();
    void fitToExamples();
    void choose(const QTreeWidgetItem *item);

    QTreeWidget *m_examples = nullptr;
};
