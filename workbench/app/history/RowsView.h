#pragma once

#include <QTreeView>

/// A plain table of rows that says in their place why there are none.
class RowsView : public QTreeView
{
    Q_OBJECT
public:
    explicit RowsView(QWidget *parent = nullptr);
    ~RowsView() override;

    /// Said in place of rows, as plain text.
    void setEmptyText(const QString &text);
    QString emptyText() const { return m_emptyText; }

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    QString m_emptyText;
};
