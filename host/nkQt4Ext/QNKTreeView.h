#pragma once

#include "QNKViewBase.h"
#include "nkQt4ExtExport.h"

#include <QTreeView>

#include <memory>

/// The host's tree view. All rows are equally high. Across a reload of a QNKItemModel below any chain of
/// proxies it puts back, by row id, what the reload would lose: selection, current row, expansion, scroll
/// position, and the open editor with its text. What vanished leaves the selection, told as one selection
/// change; a reload that changes no selection tells nothing.
class NK_QT4EXT_EXPORT QNKTreeView : public QTreeView, public QNKViewBase
{
    Q_OBJECT
    Q_PROPERTY(QString emptyText READ emptyText WRITE setEmptyText)
public:
    explicit QNKTreeView(QWidget *parent = nullptr);
    ~QNKTreeView() override;

    void setModel(QAbstractItemModel *model) override;
    /// Shows column 0 alone, as wide as the view.
    void setSingleColumnLayout(bool on);
    bool isSingleColumnLayout() const;
    /// What stands in the middle of the view while it has a model without rows: plain text, broken at words.
    /// While it stands there it is the accessible description too. Empty (the default): nothing.
    void setEmptyText(const QString &text);
    QString emptyText() const;

public Q_SLOTS:
    void doItemsLayout() override;

protected:
    void paintEvent(QPaintEvent *event) override;
    void startDrag(Qt::DropActions supportedActions) override;

private:
    friend class TreeKeeper;

    void dataChanged(const QModelIndex &topLeft, const QModelIndex &bottomRight,
                     const QVector<int> &roles = {}) override;
    void commitData(QWidget *editor) override;
    bool showsEmptyText() const;
    void updateEmptyText();

    struct Private;
    std::unique_ptr<Private> d;
};
