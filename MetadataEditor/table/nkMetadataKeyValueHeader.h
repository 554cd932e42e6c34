#pragma once

#include <nkQt4Ext/QNKTreeView.h>
#include <nkQt4Ext/nkHeaderView.h>

#include <QList>

/// The header of the key/value table. Icon and Type fit their contents; Assignment, Key and Value share the
/// rest, none so wide that it pushes the others out of view. Columns are shown and hidden from the tool
/// button's menu.
class nkMetadataKeyValueHeader : public nkHeaderView<QNKTreeView>
{
    Q_OBJECT
public:
    /// @param view may be null; not owned
    explicit nkMetadataKeyValueHeader(QNKTreeView *view, QWidget *parent = nullptr);
    ~nkMetadataKeyValueHeader() override;

    /// Sets up columns, order and sizes; called once, after the header was installed in its view.
    void initialise();

    void setColumnVisibility(int idxPos, bool bToggle) override;
    /// False without a view.
    bool isColumnVisible(int idxPos) const override;
    /// The view's model; null without a view.
    QAbstractItemModel *getModel() const override;

Q_SIGNALS:
    /// A column is about to be shown (true) or hidden.
    void columnVisibilityChanged(int idxPos, bool bToggle);

protected:
    void resizeEvent(QResizeEvent *event) override;

private:
    void updateMaximumSectionSize(int headerWidth);
    int smallestSectionSize() const;

    const QList<int> m_sharingColumns;
    const QList<int> m_selfSizingColumns;
};
