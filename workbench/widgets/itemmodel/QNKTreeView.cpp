#include <nkQt4Ext/QNKTreeView.h>

#include <QHeaderView>

struct QNKTreeView::Private
{
    bool singleColumn = false;
};

QNKTreeView::QNKTreeView(QWidget *parent)
    : QTreeView(parent), QNKViewBase(this), d(std::make_unique<Private>())
{
    setUniformRowHeights(true);
}

QNKTreeView::~QNKTreeView() = default;

void QNKTreeView::setModel(QAbstractItemModel *newModel)
{
    QTreeView::setModel(newModel);
    setSingleColumnLayout(d->singleColumn);
}

void QNKTreeView::setSingleColumnLayout(bool on)
{
    d->singleColumn = on;
    header()->setStretchLastSection(true);
    for (int column = 1; column < header()->count(); ++column)
        setColumnHidden(column, on);
}

bool QNKTreeView::isSingleColumnLayout() const
{
    return d->singleColumn;
}

void QNKTreeView::startDrag(Qt::DropActions supportedActions)
{
    execDrag(supportedActions);
}
