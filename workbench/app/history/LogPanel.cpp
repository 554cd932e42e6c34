#include "LogPanel.h"

#include "LogFilter.h"
#include "LogModel.h"
#include "RowsView.h"

#include <nkQt4Ext/QNKSearchBox.h>
#include <nkQt4Ext/QNKToolBar.h>
#include <nkQt4Ext/nkIconManager.h>

#include <QAction>
#include <QClipboard>
#include <QComboBox>
#include <QGuiApplication>
#include <QHeaderView>
#include <QLineEdit>
#include <QMenu>
#include <QPlainTextEdit>
#include <QScrollBar>
#include <QSplitter>
#include <QVBoxLayout>

namespace {

constexpr int toolIconExtent = 18;
/// Beyond these many selected lines their texts are not shown, only copied.
constexpr int mostShown = 50;

} // namespace

LogPanel::LogPanel(QWidget *parent)
    : QWidget(parent), m_model(new LogModel(this)), m_filter(new LogFilter(m_model))
{
    setAccessibleName(tr("Log"));
    createView();
    createFilters();
    createDetail();
    createActions();
    layOut();
    connectRows();
    refresh();
    m_view->scrollToBottom();
}

LogPanel::~LogPanel() = default;

void LogPanel::createView()
{
    m_view = new RowsView(this);
    m_view->setAccessibleName(tr("Log"));
    m_view->setSelectionMode(QAbstractItemView::ExtendedSelection);
    m_view->setModel(m_filter);
    const int letter = fontMetrics().averageCharWidth();
    m_view->header()->resizeSection(LogModel::Level, 16 * letter);
    m_view->header()->resizeSection(LogModel::Time, 11 * letter);
    m_view->header()->resizeSection(LogModel::Source, 15 * letter);
    setFocusProxy(m_view);
}

void LogPanel::createFilters()
{
    m_search = new QNKSearchBox(this);
    m_search->setPlaceholderText(tr("Search the log"));
    m_search->lineEdit()->setAccessibleName(tr("Search the log"));
    connect(m_search, &QNKSearchBox::searchChanged, m_filter, &LogFilter::setText);
    connect(m_search, &QNKSearchBox::searchDisabled, m_filter, [this] { m_filter->setText(QString()); });
    m_levels = new QComboBox(this);
    m_levels->setAccessibleName(tr("Levels that are shown"));
    m_levels->addItems({tr("All lines"), tr("Warnings and errors"), tr("Errors")});
    connect(m_levels, QOverload<int>::of(&QComboBox::currentIndexChanged), m_filter, &LogFilter::setLeast);
}

void LogPanel::createDetail()
{
    m_detail = new QPlainTextEdit(this);
    m_detail->setReadOnly(true);
    m_detail->setTabChangesFocus(true);
    m_detail->setAccessibleName(tr("Whole text of the selected lines"));
    m_detail->setPlaceholderText(tr("Select a line to read all of it."));
}

QAction *LogPanel::makeAction(const QString &text, const QString &icon, const QString &category,
                              const QString &help)
{
    auto *action = new QAction(nkIconManager::getIcon(icon, category), text, this);
    action->setToolTip(help);
    return action;
}

void LogPanel::createActions()
{
    m_copy = makeAction(tr("&Copy"), QStringLiteral("Copy"), QString(),
                        tr("Copy the selected lines as text"));
    m_copy->setShortcut(QKeySequence::Copy);
    m_copy->setShortcutContext(Qt::WidgetShortcut);
    m_view->addAction(m_copy);
    m_copyAll = makeAction(tr("Copy &All"), QStringLiteral("Duplicate"), QString(),
                           tr("Copy all lines that are shown as text"));
    m_clear = makeAction(tr("C&lear"), QStringLiteral("Delete"), QString(),
                         tr("Remove all lines from the log"));
    connect(m_copy, &QAction::triggered, this,
            [this] { copyRows(m_view->selectionModel()->selectedRows()); });
    connect(m_copyAll, &QAction::triggered, this, [this] { copyRows(allRows()); });
    connect(m_clear, &QAction::triggered, m_model, &LogModel::clear);
    connect(m_view, &QWidget::customContextMenuRequested, this, &LogPanel::showMenu);
}

void LogPanel::layOut()
{
    auto *tools = new QNKToolBar(tr("Log"), this);
    tools->setIconSize(QSize(toolIconExtent, toolIconExtent));
    tools->addActions({m_copy, m_copyAll, m_clear});
    auto *top = new QHBoxLayout;
    top->setSpacing(4);
    top->addWidget(m_search, 1);
    top->addWidget(m_levels);
    top->addWidget(tools);
    auto *splitter = new QSplitter(Qt::Vertical, this);
    splitter->setChildrenCollapsible(false);
    splitter->addWidget(m_view);
    splitter->addWidget(m_detail);
    splitter->setStretchFactor(0, 3);
    splitter->setStretchFactor(1, 1);
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(4, 4, 4, 4);
    column->setSpacing(4);
    column->addLayout(top);
    column->addWidget(splitter);
}

void LogPanel::connectRows()
{
    connect(m_filter, &QAbstractItemModel::rowsAboutToBeInserted, this, [this] {
        const QScrollBar *bar = m_view->verticalScrollBar();
        m_isAtEnd = bar->value() == bar->maximum();
    });
    connect(m_filter, &QAbstractItemModel::rowsInserted, this, [this] {
        if (m_isAtEnd) {
            m_view->scrollToBottom();
        }
        refresh();
    });
    connect(m_filter, &QAbstractItemModel::rowsRemoved, this, &LogPanel::refresh);
    connect(m_filter, &QAbstractItemModel::modelReset, this, &LogPanel::refresh);
    connect(m_view->selectionModel(), &QItemSelectionModel::selectionChanged, this, &LogPanel::refresh);
}

QModelIndexList LogPanel::allRows() const
{
    QModelIndexList rows;
    for (int row = 0; row < m_filter->rowCount(); ++row) {
        rows.append(m_filter->index(row, 0));
    }
    return rows;
}

void LogPanel::copyRows(const QModelIndexList &rows)
{
    QGuiApplication::clipboard()->setText(m_filter->textOf(rows));
}

void LogPanel::refresh()
{
    const QModelIndexList selected = m_view->selectionModel()->selectedRows();
    m_detail->setPlainText(selected.size() > mostShown ? tr("%1 lines are selected.").arg(selected.size())
                                                       : m_filter->textOf(selected));
    m_copy->setEnabled(!selected.isEmpty());
    m_copyAll->setEnabled(m_filter->rowCount() > 0);
    m_clear->setEnabled(m_model->rowCount() > 0);
    m_view->setEmptyText(m_filter->isFiltering() && m_model->rowCount() > 0
                             ? tr("No line matches.\nClear the search or show all lines.")
                             : tr("Nothing to tell yet.\nWhat the program does to files, and what fails, is "
                                  "listed here."));
}

void LogPanel::showMenu(const QPoint &position)
{
    QMenu menu(this);
    menu.addAction(m_copy);
    menu.addAction(m_copyAll);
    menu.addSeparator();
    menu.addAction(m_clear);
    menu.exec(m_view->viewport()->mapToGlobal(position));
}
