#include <nkKernelServicesGUI/nkAdvancedSearchBar.h>

#include "QueryHelp.h"
#include "RecentQueries.h"
#include "SearchTexts.h"
#include "gui/dialogs/ValueText.h"

#include <nkKernelServices/nkQueryService.h>

#include <QCoreApplication>
#include <QEvent>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QSignalBlocker>
#include <QStyle>
#include <QToolButton>

namespace {

// How long a person pauses before what was typed is searched: milliseconds.
constexpr int livePause = 300;

QString text(const char *source)
{
    return QCoreApplication::translate("Metadata", source);
}

QToolButton *createButton(QWidget *parent, const char *objectName, const QString &name,
                          const QString &toolTip)
{
    QToolButton *button = new QToolButton(parent);
    button->setObjectName(QLatin1String(objectName));
    button->setAutoRaise(true);
    button->setFocusPolicy(Qt::StrongFocus);
    button->setAccessibleName(name);
    button->setToolTip(toolTip);
    return button;
}

} // namespace

nkAdvancedSearchBar::nkAdvancedSearchBar(QWidget *parent)
    : QWidget(parent),
      m_lineEdit(new QLineEdit(this)),
      m_switch(createButton(this, "SearchSwitch", text("Advanced search on"),
                            text("Switches the advanced search on and off."))),
      m_recent(createButton(this, "RecentSearches", text("Recent searches"),
                            text("Offers the recent searches (Down in the field)."))),
      m_recentMenu(new QMenu(this)),
      m_help(
          createButton(this, "SearchHelp", text("Search help"), text("Shows examples (F1 in the field)."))),
      m_stateIcon(new QLabel(this)),
      m_stateLabel(new QLabel(this))
{
    setUpField();
    setUpSwitch();
    setUpRecent();
    setUpHelp();
    setUpState();
    QVBoxLayout *rows = new QVBoxLayout(this);
    rows->setContentsMargins(0, 0, 0, 0);
    rows->setSpacing(2);
    rows->addLayout(createFieldRow());
    rows->addLayout(createStateRow());
    rows->addStretch();
    setFocusProxy(m_lineEdit);
    showIcons();
    showState();
}

nkAdvancedSearchBar::~nkAdvancedSearchBar() = default;

QHBoxLayout *nkAdvancedSearchBar::createFieldRow()
{
    QHBoxLayout *row = new QHBoxLayout;
    row->setSpacing(2);
    row->addWidget(m_switch);
    row->addWidget(m_lineEdit, 1);
    row->addWidget(m_recent);
    row->addWidget(m_help);
    return row;
}

// The icon stays with the first line of a reason that takes several.
QHBoxLayout *nkAdvancedSearchBar::createStateRow()
{
    QHBoxLayout *row = new QHBoxLayout;
    row->setContentsMargins(4, 0, 4, 0);
    row->addWidget(m_stateIcon, 0, Qt::AlignTop);
    row->addWidget(m_stateLabel, 1);
    return row;
}

void nkAdvancedSearchBar::setUpField()
{
    m_lineEdit->setClearButtonEnabled(true);
    m_lineEdit->setPlaceholderText(text("Search keys, values and sets"));
    m_lineEdit->setAccessibleName(text("Advanced search"));
    m_lineEdit->installEventFilter(this);
    m_pause.setSingleShot(true);
    m_pause.setInterval(livePause);
    connect(&m_pause, &QTimer::timeout, this, &nkAdvancedSearchBar::search);
    connect(m_lineEdit, &QLineEdit::textEdited, this, &nkAdvancedSearchBar::onTextEdited);
    connect(m_lineEdit, &QLineEdit::returnPressed, this, &nkAdvancedSearchBar::onReturnPressed);
    connect(m_lineEdit, &QLineEdit::editingFinished, this, &nkAdvancedSearchBar::onEditingFinished);
}

// Keys of the field alone: the trees below have Down for themselves. A line edit has no use for them.
bool nkAdvancedSearchBar::eventFilter(QObject *watched, QEvent *event)
{
    if (watched != m_lineEdit || event->type() != QEvent::KeyPress) {
        return QWidget::eventFilter(watched, event);
    }
    switch (static_cast<QKeyEvent *>(event)->key()) {
    case Qt::Key_Down:
        showRecent();
        return true;
    case Qt::Key_F1:
        showHelp();
        return true;
    default:
        return false;
    }
}

void nkAdvancedSearchBar::setUpSwitch()
{
    m_switch->setCheckable(true);
    m_switch->setChecked(true);
    connect(m_switch, &QToolButton::toggled, this, &nkAdvancedSearchBar::search);
}

void nkAdvancedSearchBar::setUpRecent()
{
    m_recentMenu->setObjectName(QStringLiteral("RecentSearchesMenu"));
    m_recent->setArrowType(Qt::DownArrow);
    connect(m_recent, &QToolButton::clicked, this, &nkAdvancedSearchBar::showRecent);
    connect(m_recentMenu, &QMenu::aboutToShow, this, &nkAdvancedSearchBar::fillRecent);
}

void nkAdvancedSearchBar::setUpHelp()
{
    m_help->setText(QStringLiteral("?"));
    connect(m_help, &QToolButton::clicked, this, &nkAdvancedSearchBar::showHelp);
}

void nkAdvancedSearchBar::setUpState()
{
    m_stateLabel->setTextFormat(Qt::PlainText);
    m_stateLabel->setObjectName(QStringLiteral("SearchState"));
    m_stateLabel->setWordWrap(true);
    m_stateLabel->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    m_stateLabel->setMinimumWidth(1);
    m_stateLabel->setTextInteractionFlags(Qt::TextSelectableByMouse);
    connect(&nkQueryService::the(), &nkQueryService::asyncMetadataQueryFinished, this,
            [this](bool ok, const QList<nkdMetadataSet> &sets) { onFound(ok ? sets.size() : -1); });
}

void nkAdvancedSearchBar::showIcons()
{
    m_switch->setIcon(style()->standardIcon(QStyle::SP_FileDialogContentsView, nullptr, this));
}

void nkAdvancedSearchBar::changeEvent(QEvent *event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::StyleChange || event->type() == QEvent::PaletteChange) {
        showIcons();
        showState();
    }
}

// An emptied field ends the search at once; anything else waits for a pause.
void nkAdvancedSearchBar::onTextEdited()
{
    m_settled = false;
    if (m_lineEdit->text().trimmed().isEmpty()) {
        search();
    } else if (m_switch->isChecked()) {
        m_pause.start();
    }
}

// Who asks for a search wants it on, and once.
void nkAdvancedSearchBar::onReturnPressed()
{
    {
        const QSignalBlocker silence(m_switch);
        m_switch->setChecked(true);
    }
    m_settled = true;
    search();
}

// Who leaves the field is done with its query.
void nkAdvancedSearchBar::onEditingFinished()
{
    m_settled = true;
    if (m_state == Succeeded && m_query == m_lineEdit->text()) {
        remember();
    }
}

void nkAdvancedSearchBar::search()
{
    m_pause.stop();
    const QString query = m_lineEdit->text();
    if (m_switch->isChecked() && !query.trimmed().isEmpty()) {
        tell(true, query);
    } else if (!m_query.isEmpty()) {
        setState(Idle);
        tell(false, QString());
    }
}

void nkAdvancedSearchBar::searchFor(const QString &query)
{
    m_lineEdit->setText(query);
    m_lineEdit->setFocus();
    onReturnPressed();
}

void nkAdvancedSearchBar::tell(bool enabled, const QString &query)
{
    m_query = query;
    Q_EMIT searchChanged(enabled, query);
}

// Recent searches -----------------------------------------------------------------------------------------

void nkAdvancedSearchBar::remember()
{
    RecentQueries(m_module).add(m_query);
}

void nkAdvancedSearchBar::fillRecent()
{
    m_recentMenu->clear();
    const QStringList queries = RecentQueries(m_module).list();
    for (const QString &query : queries) {
        connect(m_recentMenu->addAction(SearchTexts::inMenu(query)), &QAction::triggered, this,
                [this, query] { searchFor(query); });
    }
    if (queries.isEmpty()) {
        m_recentMenu->addAction(text("No recent searches"))->setEnabled(false);
        return;
    }
    m_recentMenu->addSeparator();
    connect(m_recentMenu->addAction(text("Clear Recent Searches")), &QAction::triggered, this,
            [module = m_module] { RecentQueries(module).clear(); });
}

void nkAdvancedSearchBar::showRecent()
{
    m_recentMenu->popup(m_lineEdit->mapToGlobal(QPoint(0, m_lineEdit->height())));
    if (!m_recentMenu->actions().isEmpty()) {
        m_recentMenu->setActiveAction(m_recentMenu->actions().constFirst());
    }
}

// Help ----------------------------------------------------------------------------------------------------

void nkAdvancedSearchBar::showHelp()
{
    QueryHelp *help = new QueryHelp(this);
    help->setAttribute(Qt::WA_DeleteOnClose);
    connect(help, &QueryHelp::chosen, this, &nkAdvancedSearchBar::insertExample);
    help->popUp(this);
}

// Beside what is there already: conditions side by side mean all of them.
void nkAdvancedSearchBar::insertExample(const QString &example)
{
    const QString before = m_lineEdit->text().left(m_lineEdit->cursorPosition());
    const bool needsBlank = !before.isEmpty() && !before.back().isSpace()
                            && before.back() != QLatin1Char('(');
    m_lineEdit->deselect();
    m_lineEdit->setFocus();
    m_lineEdit->insert(needsBlank ? QLatin1Char(' ') + example : example);
    onTextEdited();
}

// State ---------------------------------------------------------------------------------------------------

void nkAdvancedSearchBar::setState(int state)
{
    if (state < Idle || state > Running) {
        return;
    }
    m_state = state;
    if (state == Running || state == Idle) {
        m_found = -1;
    }
    if (state == Succeeded && m_settled) {
        remember();
    }
    showState();
}

// The answer and the state of it come in either order.
void nkAdvancedSearchBar::onFound(int count)
{
    m_found = count;
    showState();
}

QString nkAdvancedSearchBar::stateText() const
{
    switch (m_state) {
    case Succeeded:
        return SearchTexts::found(m_found);
    case Failed: {
        const QString reason = nkQueryService::the().getQueryError();
        return reason.isEmpty() ? text("The search failed") : reason;
    }
    case Running:
        return text("Searching\u2026");
    default:
        return QString();
    }
}

void nkAdvancedSearchBar::showState()
{
    static const QStyle::StandardPixmap icons[] = {QStyle::SP_CustomBase, QStyle::SP_DialogApplyButton,
                                                   QStyle::SP_MessageBoxWarning, QStyle::SP_BrowserReload};
    const int side = style()->pixelMetric(QStyle::PM_SmallIconSize, nullptr, this);
    const QString words = stateText();
    m_stateIcon->setPixmap(
        m_state == Idle ? QPixmap() : style()->standardIcon(icons[m_state], nullptr, this).pixmap(side));
    m_stateLabel->setText(ValueText::oneLine(words));
    m_stateLabel->setAccessibleName(words);
    // Without a state its row takes no room.
    m_stateIcon->setVisible(m_state != Idle);
    m_stateLabel->setVisible(m_state != Idle);
}
