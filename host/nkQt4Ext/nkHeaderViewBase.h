#pragma once

#include "nkQt4ExtExport.h"

#include <QHeaderView>

class QToolButton;

/// A horizontal header with a tool button at its right end that offers a menu of the columns: checked ones
/// are visible. Starts without a sort indicator, so that rows stand in the model's order until a column is
/// clicked.
class NK_QT4EXT_EXPORT nkHeaderViewBase : public QHeaderView
{
    Q_OBJECT
public:
    explicit nkHeaderViewBase(QWidget *parent = nullptr);
    ~nkHeaderViewBase() override;

    /// Default: not shown.
    void setShowToolButton(bool show);
    QToolButton *toolButton() const { return m_toolButton; }

    /// Shows or hides a column; what the menu does. The base acts on the header's section.
    virtual void setColumnVisibility(int idxPos, bool bToggle);
    virtual bool isColumnVisible(int idxPos) const;
    /// The model whose header data name the columns in the menu (Qt::UserRole first, else
    /// Qt::DisplayRole); may be null.
    virtual QAbstractItemModel *getModel() const;

    QSize sizeHint() const override;

protected:
    void contextMenuEvent(QContextMenuEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    void fillMenu();
    QString columnName(int idxPos) const;
    void placeToolButton();

    QToolButton *m_toolButton = nullptr;
};
