#include <nkQt4Ext/QNKTreeView.h>

#include "LayoutPass.h"
#include "OpenEditor.h"
#include "RowSelectionModel.h"
#include "TreeKeeper.h"

#include <QHeaderView>
#include <QPainter>

namespace {

constexpr int emptyTextMargin = 16;

} // namespace

struct QNKTreeView::Private
{
    TreeKeeper *keeper; // a child of the view
    QPointer<RowSelectionModel> selection;
    QPointer<QItemSelectionModel> headerSelection; // always empty
    bool singleColumn = false;
    QString emptyText;
    QString describedAs; // the accessible description that is ours; empty: none is
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
    if (newModel) {
        // A call for a model that the view has left only looks once too often.
        const auto update = [this] { updateEmptyText(); };
        connect(newModel, &QAbstractItemModel::modelReset, this, update);
        connect(newModel, &QAbstractItemModel::rowsInserted, this, update);
        connect(newModel, &QAbstractItemModel::rowsRemoved, this, update);
        connect(newModel, &QAbstractItemModel::layoutChanged, this, update);
    }
    updateEmptyText();
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

void QNKTreeView::setEmptyText(const QString &text)
{
    if (text == d->emptyText)
        return;
    d->emptyText = text;
    updateEmptyText();
    viewport()->update();
}

QString QNKTreeView::emptyText() const
{
    return d->emptyText;
}

bool QNKTreeView::showsEmptyText() const
{
    return !d->emptyText.isEmpty() && model() && model()->rowCount(rootIndex()) == 0;
}

void QNKTreeView::updateEmptyText()
{
    const QString description = showsEmptyText() ? d->emptyText : QString();
    if (description == d->describedAs)
        return; // above all where somebody else described the view
    d->describedAs = description;
    setAccessibleDescription(description);
    viewport()->update();
}

void QNKTreeView::paintEvent(QPaintEvent *event)
{
    QTreeView::paintEvent(event);
    if (!showsEmptyText())
        return;
    QPainter painter(viewport());
    painter.setPen(palette().color(QPalette::PlaceholderText));
    const QRect place = viewport()->rect().adjusted(emptyTextMargin, emptyTextMargin, -emptyTextMargin,
                                                    -emptyTextMargin);
    painter.drawText(place, Qt::AlignCenter | Qt::TextWordWrap, d->emptyText);
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
