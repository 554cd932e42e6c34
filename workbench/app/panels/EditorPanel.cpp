#include "EditorPanel.h"

#include "EditorCommands.h"
#include "SceneObjectModel.h"
#include "SceneObjectView.h"

#include "kernel/document/Document.h"

#include <nkKernelServices/nkInternalUiService.h>
#include <nkKernelServicesGUI/nkMetadataModuleSelection.h>
#include <nkQt4Ext/QNKSearchBox.h>
#include <nkQt4Ext/QNKToolBar.h>

#include <QAction>
#include <QLineEdit>
#include <QMenu>
#include <QScopedValueRollback>
#include <QSet>
#include <QVBoxLayout>

using Reveal = EditorService::Reveal;

namespace {

/// Device-independent pixels; the tools share their row with the search.
constexpr int toolIconExtent = 18;

} // namespace

EditorPanel::EditorPanel(EditorModule module, QWidget *parent)
    : QWidget(parent),
      m_module(module),
      m_text(EditorText::of(module)),
      m_service(EditorService::of(module)),
      m_model(new SceneObjectModel(module, this))
{
    setAccessibleName(m_text.title);
    createSearch();
    createView();
    createCommands();
    layOut();
    connectSearch();
    connectRows();
    connectSelections();
    updateEmptyText();
    pull(Reveal::Never);
}

EditorPanel::~EditorPanel()
{
    // The view commits an open editor when it goes, and the scene tells of it: nobody half gone is to hear that.
    delete m_commands;
    m_model->disconnect(this);
    m_view->selectionModel()->disconnect(this);
    kernel::Document::the().disconnect(this);
}

void EditorPanel::createSearch()
{
    m_search = new QNKSearchBox(this);
    m_search->setObjectName(QStringLiteral("search"));
    m_search->setPlaceholderText(m_text.search);
    m_search->lineEdit()->setAccessibleName(m_text.search);
    m_search->lineEdit()->setToolTip(tr("Part of a name; * stands for any characters and ? for one"));
}

void EditorPanel::createView()
{
    m_view = new SceneObjectView(m_model, this);
    m_view->setObjectName(QStringLiteral("objects"));
    m_view->setAccessibleName(m_text.title);
    setFocusProxy(m_view);
}

void EditorPanel::createCommands()
{
    m_commands = new EditorCommands(this);
    connect(m_model, &SceneObjectModel::moveRequested, m_commands, &EditorCommands::move);
    m_showMetadata = new QAction(tr("Show &Metadata"), this);
    m_showMetadata->setObjectName(QStringLiteral("showMetadata"));
    connect(m_showMetadata, &QAction::triggered, this, &EditorPanel::showMetadata);
}

void EditorPanel::layOut()
{
    auto *tools = new QNKToolBar(m_text.title, this);
    tools->setIconSize(QSize(toolIconExtent, toolIconExtent));
    tools->addActions(m_commands->toolBarActions());
    auto *top = new QHBoxLayout;
    top->setSpacing(4);
    top->addWidget(m_search, 1);
    top->addWidget(tools);
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(4, 4, 4, 4);
    column->setSpacing(4);
    column->addLayout(top);
    column->addWidget(m_view);
}

void EditorPanel::connectSearch()
{
    connect(m_search, &QNKSearchBox::searchChanged, this, &EditorPanel::search);
    connect(m_search, &QNKSearchBox::searchDisabled, this, [this] { search(QString()); });
    connect(m_search->lineEdit(), &QLineEdit::returnPressed, m_view,
            [this] { m_view->setFocus(Qt::OtherFocusReason); });
}

void EditorPanel::connectRows()
{
    connect(m_view, &QWidget::customContextMenuRequested, this, &EditorPanel::showMenu);
    connect(&kernel::Document::the(), &kernel::Document::treeFixedChanged, this,
            &EditorPanel::updateEmptyText);
    connect(m_model, &SceneObjectModel::followed, this, [this] {
        updateEmptyText();
        pull(Reveal::Never);
    });
}

void EditorPanel::connectSelections()
{
    connect(m_view->selectionModel(), &QItemSelectionModel::selectionChanged, this, [this] {
        if (!m_pulling && !m_model->isFollowing()) {
            push();
        }
    });
    // A click on what is selected already selects nothing new, but it is in this editor.
    connect(m_view, &QAbstractItemView::clicked, this, &EditorPanel::becomeLast);
    m_service.listen(this, [this](Reveal reveal) {
        if (!m_pushing) {
            pull(reveal);
        }
        m_commands->update();
    });
}

void EditorPanel::search(const QString &text)
{
    QNKViewBase::commitOpenEditors();
    m_model->search(text);
}

QList<quint64> EditorPanel::viewSelection() const
{
    return m_model->idsOf(m_view->selectionModel()->selection());
}

/// Those that were selected before come first, as they were; the new ones follow.
QList<quint64> EditorPanel::inOrderOfSelection(const QList<quint64> &ids) const
{
    QSet<quint64> left(ids.cbegin(), ids.cend());
    QList<quint64> ordered;
    ordered.reserve(ids.size());
    const QList<quint64> before = m_service.selection();
    for (const QList<quint64> &list : {before, ids}) {
        for (const quint64 id : list) {
            if (left.remove(id)) {
                ordered.append(id);
            }
        }
    }
    return ordered;
}

void EditorPanel::becomeLast()
{
    if (nkMetadataModuleSelection::the().getLastSelectionModule() != int(m_module)) {
        select(m_service.selection());
    }
}

void EditorPanel::push()
{
    select(inOrderOfSelection(viewSelection()));
}

/// The editor of the last selection first: whoever hears of a selection asks whose it is.
void EditorPanel::select(const QList<quint64> &ids)
{
    {
        const QScopedValueRollback<bool> guard(m_pushing, true);
        nkMetadataModuleSelection::the().setLastSelectionModule(int(m_module));
        m_service.select(ids);
    }
    if (m_service.selection() != ids) {
        pull(Reveal::Never); // somebody who heard of it has selected something else
    }
}

void EditorPanel::pull(Reveal reveal)
{
    const QList<quint64> ids = m_service.selection();
    const QList<quint64> before = viewSelection();
    const QItemSelection selection = m_model->selectionOf(ids);
    {
        const QScopedValueRollback<bool> guard(m_pulling, true);
        m_view->selectionModel()->select(selection, QItemSelectionModel::ClearAndSelect);
        const QModelIndex first = m_model->indexOf(ids.value(0));
        if (first.isValid() && !m_view->selectionModel()->isSelected(m_view->currentIndex())) {
            m_view->setCurrentQuietly(first);
        }
    }
    const bool hasNew = !ids.isEmpty() && !before.contains(ids.constFirst());
    if (reveal == Reveal::Always || (reveal == Reveal::WhenNew && hasNew)) {
        revealFirst();
    }
}

void EditorPanel::selectObjects(const QList<quint64> &ids)
{
    select(ids);
    pull(Reveal::Never);
    const QModelIndex first = m_model->indexOf(ids.value(0));
    if (first.isValid()) {
        m_view->setCurrentQuietly(first);
        m_view->scrollTo(first);
    }
}

void EditorPanel::renameObject(quint64 id)
{
    if (!m_model->indexOf(id).isValid()) {
        m_search->lineEdit()->clear();
    }
    const QModelIndex index = m_model->indexOf(id);
    if (index.flags().testFlag(Qt::ItemIsEditable)) {
        m_view->setFocus(Qt::OtherFocusReason);
        m_view->setCurrentQuietly(index);
        m_view->scrollTo(index);
        m_view->edit(index);
    }
}

void EditorPanel::revealFirst()
{
    const QModelIndex first = m_model->indexOf(m_service.selection().value(0));
    if (first.isValid()) {
        m_view->scrollTo(first);
    }
}

void EditorPanel::showMenu(const QPoint &position)
{
    m_showMetadata->setEnabled(m_view->selectionModel()->hasSelection());
    m_commands->update();
    QMenu menu(this);
    menu.addAction(m_showMetadata);
    menu.addSeparator();
    m_commands->fillMenu(&menu);
    menu.exec(m_view->viewport()->mapToGlobal(position));
}

void EditorPanel::showMetadata()
{
    becomeLast();
    Q_EMIT nkInternalUiService::the().requestMetadataEditorSelectionModeInLowerTree();
    Q_EMIT metadataRequested();
}

void EditorPanel::updateEmptyText()
{
    if (m_model->isSearching()) {
        m_view->setEmptyText(tr("No name matches the search.\nPress Esc in the search field to see all."));
    } else if (kernel::Document::the().isTreeFixed()) {
        // How to make some, which the second line says, is no advice here.
        m_view->setEmptyText(m_text.empty.section(QLatin1Char('\n'), 0, 0));
    } else {
        m_view->setEmptyText(m_text.empty);
    }
}
