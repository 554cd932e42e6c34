#pragma once

#include "nkQt4ExtExport.h"

#include <QPointer>
#include <QSlider>

class QTreeView;

/// A slider that expands a tree to a depth: 0 collapses everything.
class NK_QT4EXT_EXPORT QNKTreeExpandSlider : public QSlider
{
    Q_OBJECT
public:
    /// @param view not owned
    explicit QNKTreeExpandSlider(QTreeView *view, QWidget *parent = nullptr);
    ~QNKTreeExpandSlider() override;

protected:
    void wheelEvent(QWheelEvent *event) override;

private:
    void expandTo(int depth);

    QPointer<QTreeView> m_view;
};
