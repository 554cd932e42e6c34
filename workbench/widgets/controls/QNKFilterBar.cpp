#include "nkQt4Ext/QNKFilterBar.h"

#include "GlyphIcon.h"
#include "SearchLineEdit.h"
#include "nkQt4Ext/QNKInlineButton.h"
#include "nkQt4Ext/QNKTypeMenu.h"

#include <QHBoxLayout>

struct QNKFilterBar::Private
{
    QNKFilterBar *q = nullptr;
    SearchLineEdit *search = nullptr;
    QNKInlineButton *depth = nullptr;
    QNKInlineButton *types = nullptr;
    QNKTypeMenu *menu = nullptr;
    QAction *enabling = nullptr;

    void makeSearch();
    void makeTypes();
    void connectAll();
    /// Says on the button what the menu lets through.
    void showTypes() const;
};

void QNKFilterBar::Private::makeSearch()
{
    search = new SearchLineEdit(q);
    search->setPlaceholderText(tr("Search"));
    depth = new QNKInlineButton(q);
    depth->setIcon(GlyphIcon::make(GlyphIcon::Sign::Depth));
    depth->setToolTip(tr("Search in all levels of the list"));
    depth->setAccessibleName(tr("Search depth"));
}

void QNKFilterBar::Private::makeTypes()
{
    menu = new QNKTypeMenu(q);
    enabling = menu->addAction(tr("Filter Enabled"));
    enabling->setCheckable(true);
    enabling->setChecked(true);
    menu->addSeparator();
    types = new QNKInlineButton(q);
    types->setCheckable(false);
    types->setTerminated(true);
    types->setMenu(menu);
    types->setPopupMode(QToolButton::InstantPopup);
    types->setToolTip(tr("Choose what the list shows"));
    types->setAccessibleName(tr("Filter"));
}

void QNKFilterBar::Private::connectAll()
{
    connect(search, &QLineEdit::textChanged, q, &QNKFilterBar::nameFilterChanged);
    connect(depth, &QNKInlineButton::toggled, q, &QNKFilterBar::recursiveFilteringToggled);
    connect(menu, &QNKTypeMenu::checkedTypesChanged, q, [this](const QList<int> &numbers) {
        showTypes();
        Q_EMIT q->typeFilterChanged(numbers);
    });
    connect(enabling, &QAction::toggled, q, [this](bool enabled) {
        showTypes();
        Q_EMIT q->typeFilteringToggled(enabled);
    });
}

void QNKFilterBar::Private::showTypes() const
{
    QStringList ticked;
    const auto actions = menu->actions();
    for (const QAction *action : actions) {
        if (action != enabling && action->isChecked())
            ticked.append(action->text().replace(QLatin1String("&&"), QLatin1String("&")));
    }
    const bool filtering = enabling->isChecked() && !ticked.isEmpty();
    const QString shown = filtering ? ticked.join(QStringLiteral(", ")) : tr("All");
    types->setIcon(GlyphIcon::make(filtering ? GlyphIcon::Sign::FunnelActive : GlyphIcon::Sign::Funnel));
    // Beside the search, which needs the room, the button stays a sign.
    types->setText(search->isHidden() ? shown : QString());
    types->setAccessibleDescription(shown);
}

QNKFilterBar::QNKFilterBar(QWidget *parent) : QWidget(parent), d(std::make_unique<Private>())
{
    d->q = this;
    d->makeSearch();
    d->makeTypes();
    d->connectAll();

    auto *row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(0);
    row->addWidget(d->search, 1);
    row->addWidget(d->depth);
    row->addWidget(d->types);

    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    setFocusProxy(d->search);
    d->showTypes();
}

QNKFilterBar::~QNKFilterBar() = default;

void QNKFilterBar::addTypesToMenu(const QList<int> &numbers)
{
    for (const int number : numbers)
        d->menu->addType(number, getLabel(number), getCategory(number));
}

QNKTypeMenu *QNKFilterBar::typeMenu() const
{
    return d->menu;
}

void QNKFilterBar::setSearchVisible(bool visible, bool clear)
{
    d->search->setVisible(visible);
    // Alone in the bar the button takes all of it and says in words what it lets through.
    d->types->setSizePolicy(visible ? QSizePolicy::Fixed : QSizePolicy::Expanding, QSizePolicy::Preferred);
    d->showTypes();
    setFocusProxy(visible ? static_cast<QWidget *>(d->search) : d->types);
    if (!visible && clear)
        d->search->clear();
}

void QNKFilterBar::setRecursiveFilterVisible(bool visible)
{
    d->depth->setVisible(visible);
}

void QNKFilterBar::setNameFilterToolTip(const QString &toolTip)
{
    d->search->setToolTip(toolTip);
}

QLineEdit *QNKFilterBar::searchLineEdit() const
{
    return d->search;
}

QString QNKFilterBar::nameFilter() const
{
    return d->search->text();
}

bool QNKFilterBar::isRecursiveFilteringEnabled() const
{
    return d->depth->isChecked();
}

void QNKFilterBar::setRecursiveFilteringEnabled(bool enabled)
{
    d->depth->setChecked(enabled);
}

bool QNKFilterBar::isTypeFilteringEnabled() const
{
    return d->enabling->isChecked();
}

void QNKFilterBar::setTypeFilteringEnabled(bool enabled)
{
    d->enabling->setChecked(enabled);
}

QList<int> QNKFilterBar::typeFilter() const
{
    return d->menu->checkedTypes();
}

void QNKFilterBar::setTypeFilter(const QList<int> &numbers)
{
    d->menu->setCheckedTypes(numbers);
}

void QNKFilterBar::clear()
{
    d->search->clear();
    d->menu->setCheckedTypes({});
}

QString QNKFilterBar::getLabel(int) const
{
    return {};
}

int QNKFilterBar::getCategory(int) const
{
    return 1;
}
