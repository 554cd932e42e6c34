#include "StartScreen.h"

#include "RecentList.h"

#include <nkKernelServices/nkPreferencesService.h>
#include <nkQt4Ext/nkIconManager.h>

#include <QDockWidget>
#include <QEvent>
#include <QGuiApplication>
#include <QLabel>
#include <QMainWindow>
#include <QMenuBar>
#include <QPushButton>
#include <QStatusBar>
#include <QStyle>
#include <QVBoxLayout>

namespace {

constexpr int mostWidth = 820;
constexpr int mostHeight = 560;
constexpr int margin = 24;
constexpr int gap = 28;
constexpr double titleSize = 1.9;

QLabel *makeText(const QString &text, QWidget *parent)
{
    auto *label = new QLabel(text, parent);
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    return label;
}

QIcon standardIcon(const QWidget *widget, QStyle::StandardPixmap name)
{
    return widget->style()->standardIcon(name, nullptr, widget);
}

} // namespace

StartScreen::StartScreen(QMainWindow *window) : QWidget(window), m_window(window)
{
    setObjectName(QStringLiteral("StartScreen"));
    setAccessibleName(tr("Start"));
    setAutoFillBackground(true);
    auto *body = new QWidget(this);
    body->setMaximumSize(mostWidth, mostHeight);
    auto *columns = new QHBoxLayout;
    columns->setSpacing(gap);
    columns->addWidget(makeWays());
    columns->addWidget(makeRecent(), 1);
    auto *rows = new QVBoxLayout(body);
    rows->setContentsMargins(margin, margin, margin, margin);
    rows->setSpacing(gap);
    rows->addWidget(makeHead());
    rows->addLayout(columns, 1);
    auto *middle = new QGridLayout(this);
    middle->setContentsMargins(0, 0, 0, 0);
    middle->addWidget(body);
    connect(&nkPreferencesService::the(), &nkPreferencesService::valueChanged, this, [this] {
        if (isVisible()) {
            m_recent->refresh();
            updateButtons();
        }
    });
    window->installEventFilter(this);
    hide();
}

QWidget *StartScreen::makeHead()
{
    auto *head = new QWidget(this);
    QLabel *title = makeText(QGuiApplication::applicationDisplayName(), head);
    QFont font = title->font();
    font.setPointSizeF(font.pointSizeF() * titleSize);
    title->setFont(font);
    auto *rows = new QVBoxLayout(head);
    rows->setContentsMargins(0, 0, 0, 0);
    rows->addWidget(title);
    rows->addWidget(makeText(tr("Open a 3D scene and keep the metadata of its objects."), head));
    return head;
}

QWidget *StartScreen::makeWays()
{
    auto *ways = new QWidget(this);
    auto *column = new QVBoxLayout(ways);
    column->setContentsMargins(0, 0, 0, 0);
    m_browse = addWay(column, tr("&Open..."), QStringLiteral("startOpen"),
                      standardIcon(this, QStyle::SP_DialogOpenButton));
    connect(m_browse, &QPushButton::clicked, this, &StartScreen::openRequested);
    connect(addWay(column, tr("&New"), QStringLiteral("startNew"), standardIcon(this, QStyle::SP_FileIcon)),
            &QPushButton::clicked, this, &StartScreen::newRequested);
    connect(addWay(column, tr("Open the &Sample Scene"), QStringLiteral("startSample"),
                   nkIconManager::getIcon(QStringLiteral("Node"), QStringLiteral("General"))),
            &QPushButton::clicked, this, &StartScreen::sampleRequested);
    column->addSpacing(gap / 2);
    column->addWidget(makeText(tr("Or drop a file anywhere onto this window."), ways));
    column->addStretch();
    return ways;
}

QPushButton *StartScreen::addWay(QVBoxLayout *column, const QString &text, const QString &name,
                                 const QIcon &icon)
{
    auto *button = new QPushButton(icon, text, this);
    button->setObjectName(name);
    // Return presses what has the focus, as in a dialog.
    button->setAutoDefault(true);
    button->setStyleSheet(QStringLiteral("text-align: left; padding: 8px 14px;"));
    column->addWidget(button);
    return button;
}

QWidget *StartScreen::makeRecent()
{
    auto *recent = new QWidget(this);
    m_recent = new RecentList(recent);
    m_recent->setObjectName(QStringLiteral("startRecent"));
    QLabel *label = makeText(tr("&Recent scenes"), recent);
    label->setBuddy(m_recent);
    m_openRecent = new QPushButton(tr("O&pen Scene"), recent);
    m_removeRecent = new QPushButton(tr("Re&move from List"), recent);
    for (QPushButton *button : {m_openRecent, m_removeRecent}) {
        button->setAutoDefault(true);
        button->setStyleSheet(QStringLiteral("padding: 5px 12px;"));
    }
    m_openRecent->setObjectName(QStringLiteral("startOpenRecent"));
    m_removeRecent->setObjectName(QStringLiteral("startRemoveRecent"));
    auto *buttons = new QHBoxLayout;
    buttons->addWidget(m_openRecent);
    buttons->addWidget(m_removeRecent);
    buttons->addStretch();
    auto *rows = new QVBoxLayout(recent);
    rows->setContentsMargins(0, 0, 0, 0);
    rows->addWidget(label);
    rows->addWidget(m_recent, 1);
    rows->addLayout(buttons);
    // The list is made anew when a scene is opened; it must not be in the middle of a click then.
    connect(m_recent, &RecentList::chosen, this, &StartScreen::chosen, Qt::QueuedConnection);
    connect(m_recent, &QListWidget::currentRowChanged, this, &StartScreen::updateButtons);
    connect(m_openRecent, &QPushButton::clicked, m_recent, &RecentList::openCurrent);
    connect(m_removeRecent, &QPushButton::clicked, m_recent, &RecentList::removeCurrent);
    return recent;
}

void StartScreen::open()
{
    m_recent->refresh();
    // The scene of a moment ago, not the one that was chosen when the list was seen last.
    m_recent->setCurrentRow(0);
    updateButtons();
    coverDocks();
    setDocksEnabled(false);
    show();
    raise();
    QWidget *first = m_recent->count() > 0 ? static_cast<QWidget *>(m_recent) : m_browse;
    first->setFocus(Qt::OtherFocusReason);
}

void StartScreen::close()
{
    setDocksEnabled(true);
    hide();
}

bool StartScreen::eventFilter(QObject *watched, QEvent *event)
{
    const QEvent::Type type = event->type();
    if (watched == m_window && !isHidden() && (type == QEvent::Resize || type == QEvent::LayoutRequest)) {
        coverDocks();
    }
    return QWidget::eventFilter(watched, event);
}

bool StartScreen::focusNextPrevChild(bool next)
{
    if (!isVisible()) {
        return QWidget::focusNextPrevChild(next);
    }
    QWidget *widget = focusWidget() ? focusWidget() : m_browse;
    do {
        widget = next ? widget->nextInFocusChain() : widget->previousInFocusChain();
    } while (!isAncestorOf(widget) || !widget->isEnabled() || !widget->isVisibleTo(this)
             || !(widget->focusPolicy() & Qt::TabFocus));
    widget->setFocus(next ? Qt::TabFocusReason : Qt::BacktabFocusReason);
    return true;
}

/// All between the menu and the status line.
void StartScreen::coverDocks()
{
    const int top = m_window->menuBar()->geometry().bottom() + 1;
    const int bottom = m_window->statusBar()->isVisibleTo(m_window) ? m_window->statusBar()->height() : 0;
    setGeometry(0, top, m_window->width(), m_window->height() - top - bottom);
    raise();
}

void StartScreen::setDocksEnabled(bool enabled) const
{
    const QList<QDockWidget *> docks = m_window->findChildren<QDockWidget *>(QString(),
                                                                             Qt::FindDirectChildrenOnly);
    for (QDockWidget *dock : docks) {
        dock->setEnabled(enabled);
    }
}

void StartScreen::updateButtons()
{
    m_openRecent->setEnabled(m_recent->canOpenCurrent());
    m_removeRecent->setEnabled(m_recent->currentItem() != nullptr);
}
