#include <nkQt4Ext/QNKTreeView.h>

#include "LayoutPass.h"
#include "OpenEditor.h"
#include "RowSelectionModel.h"
#include "TreeKeeper.h"

#include <QHeaderView>

struct QNKTreeView::Private
{
    TreeKeeper *keeper; // a child of the view
    QPointer<RowSelectionModel> selection;
    QPointer<QItemSelectionModel> headerSelection; // always empty
    bool singleColumn = false;
};

QNKTreeView::QNKTreeView(QWidget *parent)
    : QTreeView(parent), QNKViewBase(this), d(std::make_unique<Private>())
{
    d->keeper = new TreeKeeper(this);
    connect(header(), &QHeaderView::sectionCountChanged, this, [this](int, int count) {
        for (int column = 1; d->singleColumn && column < count; ++column)
            setColumnHidden(column, true);
    });
    setUniformRowHeights(true); // else every off-screen change lays out all rows
}

QNKTreeView::~QNKTreeView() = default;

void QNKTreeView::setModel(QAbstractItemModel *newModel)
{
    if (newModel == model())
        return;
    d->keeper->aboutToSetModel(newModel);
    QTreeView::setModel(newModel);
    delete d->selection;
    delete d->headerSelection;
    if (newModel) {
        const QPointer<QItemSelectionModel> stock(selectionModel());
        d->selection = new RowSelectionModel(newModel, d->keeper, this);
        connect(newModel, &QObject::destroyed, d->selection, &QObject::deleteLater);
        setSelectionModel(d->selection);
        delete stock;
        d->headerSelection = new QItemSelectionModel(newModel, this);
        connect(newModel, &QObject::destroyed, d->headerSelection, &QObject::deleteLater);
    }
    d->keeper->modelSet();
}

void QNKTreeView::setSingleColumnLayout(bool on)
{
    if (on == d->singleColumn)
        return;
    d->singleColumn = on;
    if (on)
        header()->setStretchLastSection(true);
    for (int column = 1; column < header()->count(); ++column)
        setColumnHidden(column, on);
}

bool QNKTreeView::isSingleColumnLayout() const
{
    return d->singleColumn;
}

void QNKTreeView::doItemsLayout()
{
    // Rows are selected here, not columns: a header that looks through a hundred thousand ranges of rows for
    // columns that are selected whole takes longer to paint than the rows.
    if (d->headerSelection && header()->selectionModel() != d->headerSelection
        && header()->model() == d->headerSelection->model())
        header()->setSelectionModel(d->headerSelection);
    const LayoutPass pass;
    QTreeView::doItemsLayout();
}

void QNKTreeView::startDrag(Qt::DropActions supportedActions)
{
    execDrag(supportedActions);
}

void QNKTreeView::dataChanged(const QModelIndex &topLeft, const QModelIndex &bottomRight,
                              const QVector<int> &roles)
{
    d->keeper->keepTyped(topLeft, bottomRight, [&] { QTreeView::dataChanged(topLeft, bottomRight, roles); });
}

void QNKTreeView::commitData(QWidget *editor)
{
    const OpenEditor::CommitScope scope(editor);
    QTreeView::commitData(editor);
}
