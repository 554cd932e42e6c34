#include "nkQt4Ext/QNKVariantListWidget.h"

#include "GlyphIcon.h"
#include "VariantElement.h"
#include "VariantListItem.h"
#include "nkQt4Ext/QNKListWidget.h"
#include "nkQt4Ext/QNKVariantDelegate.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QMenu>
#include <QPainter>
#include <QToolButton>

namespace {

QToolButton *makeButton(QWidget *parent, GlyphIcon::Sign sign, const QString &name, const QString &keys)
{
    auto *button = new QToolButton(parent);
    button->setIcon(GlyphIcon::make(sign));
    button->setIconSize(QSize(GlyphIcon::extent, GlyphIcon::extent));
    button->setAutoRaise(true);
    button->setFocusPolicy(Qt::TabFocus);
    button->setAccessibleName(name);
    button->setToolTip(keys.isEmpty() ? name : QStringLiteral("%1 (%2)").arg(name, keys));
    return button;
}

QString keyText(const QKeySequence &keys)
{
    return keys.toString(QKeySequence::NativeText);
}

} // namespace

struct QNKVariantListWidget::Private
{
    QNKVariantListWidget *q = nullptr;
    QNKListWidget *list = nullptr;
    QToolButton *addButton = nullptr;
    QToolButton *removeButton = nullptr;
    QToolButton *upButton = nullptr;
    QToolButton *downButton = nullptr;
    bool finishedTold = false;

    void makeList();
    void makeButtons();
    void fillTypeMenu();
    void connectAll();
    void add(const QVariant &value);
    void removeCurrent();
    void enableButtons();
    void commitOpenEditor();
    void finish(bool commit);
    bool handleKey(const QKeyEvent *event);
};

void QNKVariantListWidget::Private::makeList()
{
    list = new QNKListWidget(q);
    list->setItemDelegate(new QNKVariantDelegate(list));
    list->setEditTriggers(QAbstractItemView::DoubleClicked | QAbstractItemView::EditKeyPressed
                          | QAbstractItemView::SelectedClicked | QAbstractItemView::AnyKeyPressed);
    list->setTextElideMode(Qt::ElideRight);
    list->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    list->setAccessibleName(QNKVariantListWidget::tr("Elements"));
}

void QNKVariantListWidget::Private::makeButtons()
{
    using Sign = GlyphIcon::Sign;
    addButton = makeButton(q, Sign::Plus, tr("Add an element"), keyText(Qt::Key_Insert));
    addButton->setPopupMode(QToolButton::InstantPopup);
    removeButton = makeButton(q, Sign::Minus, tr("Remove the element"), keyText(Qt::Key_Delete));
    upButton = makeButton(q, Sign::Up, tr("Move up"), keyText(Qt::ALT + Qt::Key_Up));
    downButton = makeButton(q, Sign::Down, tr("Move down"), keyText(Qt::ALT + Qt::Key_Down));
}

void QNKVariantListWidget::Private::fillTypeMenu()
{
    auto *menu = new QMenu(addButton);
    const auto types = VariantElement::types();
    for (const VariantElement::Type &type : types) {
        const QAction *action = menu->addAction(type.name);
        // Queued: a menu that closes takes the focus from an editor that has just been opened.
        connect(
            action, &QAction::triggered, q, [this, initial = type.initial] { add(initial); },
            Qt::QueuedConnection);
    }
    addButton->setMenu(menu);
}

void QNKVariantListWidget::Private::connectAll()
{
    connect(removeButton, &QToolButton::clicked, q, [this] { removeCurrent(); });
    connect(upButton, &QToolButton::clicked, q, [this] { list->moveCurrent(-1); });
    connect(downButton, &QToolButton::clicked, q, [this] { list->moveCurrent(1); });
    connect(list, &QListWidget::itemChanged, q, [this] { Q_EMIT q->valuesChanged(); });
    connect(list, &QListWidget::currentRowChanged, q, [this] { enableButtons(); });
    connect(list, &QNKListWidget::reordered, q, [this] {
        enableButtons();
        Q_EMIT q->valuesChanged();
    });
}

void QNKVariantListWidget::Private::add(const QVariant &value)
{
    auto *item = new VariantListItem(value);
    list->insertItem(list->currentRow() < 0 ? list->count() : list->currentRow() + 1, item);
    list->setCurrentItem(item);
    list->setFocus();
    enableButtons();
    Q_EMIT q->valuesChanged();
    list->editItem(item);
}

void QNKVariantListWidget::Private::removeCurrent()
{
    const int row = list->currentRow();
    if (row < 0)
        return;
    delete list->takeItem(row);
    list->setCurrentRow(qMin(row, list->count() - 1));
    enableButtons();
    Q_EMIT q->valuesChanged();
}

void QNKVariantListWidget::Private::enableButtons()
{
    const int row = list->currentRow();
    removeButton->setEnabled(row >= 0);
    upButton->setEnabled(row > 0);
    downButton->setEnabled(row >= 0 && row + 1 < list->count());
}

void QNKVariantListWidget::Private::commitOpenEditor()
{
    // The view ignores what is not an editor of its own.
    const auto candidates = list->viewport()->findChildren<QWidget *>(QString(), Qt::FindDirectChildrenOnly);
    for (QWidget *candidate : candidates)
        Q_EMIT list->itemDelegate()->commitData(candidate);
}

void QNKVariantListWidget::Private::finish(bool commit)
{
    if (finishedTold)
        return;
    finishedTold = true;
    if (commit)
        commitOpenEditor();
    Q_EMIT q->finished(commit);
}

/// The keys of the list while no element is being edited.
bool QNKVariantListWidget::Private::handleKey(const QKeyEvent *event)
{
    switch (event->key()) {
    case Qt::Key_Escape:
        finish(false);
        return true;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        finish(true);
        return true;
    case Qt::Key_Delete:
    case Qt::Key_Backspace:
        removeCurrent();
        return true;
    case Qt::Key_Insert:
        add(list->currentItem() ? VariantElement::initialLike(list->currentItem()->data(Qt::UserRole))
                                : QVariant(QString()));
        return true;
    default:
        return false;
    }
}

QNKVariantListWidget::QNKVariantListWidget(QWidget *parent, Qt::WindowFlags flags)
    : QWidget(parent, flags), d(std::make_unique<Private>())
{
    d->q = this;
    d->makeList();
    d->makeButtons();
    d->fillTypeMenu();
    d->connectAll();
    d->enableButtons();

    auto *buttons = new QHBoxLayout;
    buttons->setSpacing(0);
    for (QToolButton *button : {d->addButton, d->removeButton, d->upButton, d->downButton})
        buttons->addWidget(button);
    buttons->addStretch();
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(1, 1, 1, 1);
    column->setSpacing(0);
    column->addWidget(d->list, 1);
    column->addLayout(buttons);

    setAutoFillBackground(true);
    setAccessibleName(tr("List of values"));
    setFocusProxy(d->list);
}

QNKVariantListWidget::~QNKVariantListWidget() = default;

QVariantList QNKVariantListWidget::values() const
{
    QVariantList all;
    all.reserve(d->list->count());
    for (int row = 0; row < d->list->count(); ++row)
        all.append(d->list->item(row)->data(Qt::UserRole));
    return all;
}

void QNKVariantListWidget::setValues(const QVariantList &values)
{
    if (VariantElement::same(values, this->values()))
        return;
    d->list->clear();
    for (const QVariant &value : values)
        d->list->addItem(new VariantListItem(value));
    d->list->setCurrentRow(values.isEmpty() ? -1 : 0);
    d->enableButtons();
    Q_EMIT valuesChanged();
}

QNKListWidget *QNKVariantListWidget::list() const
{
    return d->list;
}

void QNKVariantListWidget::setItemDelegate(QAbstractItemDelegate *delegate)
{
    d->list->setItemDelegate(delegate);
}

bool QNKVariantListWidget::event(QEvent *event)
{
    // As a pop-up over a table the editor lies within reach of the table's shortcuts; its keys are its own.
    if (event->type() == QEvent::ShortcutOverride && isWindow()) {
        event->accept();
        return true;
    }
    return QWidget::event(event);
}

void QNKVariantListWidget::paintEvent(QPaintEvent *event)
{
    QWidget::paintEvent(event);
    if (!isWindow())
        return;
    QPainter painter(this);
    // Between the ground and its text, so that the edge is seen over a field in any palette.
    painter.setPen(palette().color(QPalette::Disabled, QPalette::WindowText));
    painter.drawRect(rect().adjusted(0, 0, -1, -1));
}

void QNKVariantListWidget::keyPressEvent(QKeyEvent *event)
{
    if (d->handleKey(event))
        event->accept();
    else
        QWidget::keyPressEvent(event);
}

void QNKVariantListWidget::showEvent(QShowEvent *event)
{
    d->finishedTold = false;
    QWidget::showEvent(event);
}

void QNKVariantListWidget::hideEvent(QHideEvent *event)
{
    // A pop-up that is clicked away keeps what was entered.
    if (isWindow())
        d->finish(true);
    QWidget::hideEvent(event);
}
