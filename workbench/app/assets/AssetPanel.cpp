#include "AssetPanel.h"

#include "AssetNotice.h"
#include "AssetQuestions.h"
#include "AssetRows.h"
#include "AssetVersionRows.h"
#include "AssetView.h"
#include "PublishableSets.h"

#include "kernel/services/AssetsService.h"
#include "kernel/services/ServiceRegistry.h"

#include <nkKernelServices/nkMetadataService.h>
#include <nkQt4Ext/QNKSearchBox.h>

#include <QAction>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QSplitter>
#include <QVBoxLayout>

using kernel::AssetInfo;
using kernel::AssetResult;
using kernel::AssetStore;

namespace {

/// How long a search waits for the next letter, in milliseconds.
constexpr int afterTyping = 150;

kernel::AssetsService &service()
{
    return kernel::ServiceRegistry::the().service<kernel::AssetsService>();
}

QPushButton *makeButton(const QString &text, const QString &help, QWidget *parent)
{
    auto *button = new QPushButton(text, parent);
    button->setToolTip(help);
    button->setAccessibleDescription(help);
    return button;
}

} // namespace

AssetPanel::AssetPanel(QWidget *parent)
    : QWidget(parent), m_rows(new AssetRows(this)), m_versionRows(new AssetVersionRows(this))
{
    setAccessibleName(tr("Assets"));
    m_soon.setSingleShot(true);
    connect(&m_soon, &QTimer::timeout, this, [this] {
        if (!visibleRegion().isEmpty()) {
            refresh();
        }
    });
    createSearch();
    createViews();
    createNotice();
    createButtons();
    layOut();
    connectViews();
    connectScene();
    updateButtons();
}

AssetPanel::~AssetPanel() = default;

void AssetPanel::createSearch()
{
    m_search = new QNKSearchBox(this);
    m_search->setObjectName(QStringLiteral("search"));
    m_search->setPlaceholderText(tr("Search assets"));
    m_search->lineEdit()->setAccessibleName(tr("Search assets"));
    m_search->lineEdit()->setToolTip(tr("Words of the name, in any order"));
    // A server is not asked for every letter.
    connect(m_search, &QNKSearchBox::searchChanged, this, [this] { m_soon.start(afterTyping); });
    connect(m_search, &QNKSearchBox::searchDisabled, this, &AssetPanel::refreshSoon);
}

void AssetPanel::createViews()
{
    m_list = new AssetView(m_rows, AssetRows::Name, this);
    m_list->setObjectName(QStringLiteral("assets"));
    m_list->setAccessibleName(tr("Assets"));
    m_list->setSelectionMode(QAbstractItemView::ExtendedSelection);
    m_versions = new AssetView(m_versionRows, AssetVersionRows::Name, this);
    m_versions->setObjectName(QStringLiteral("versions"));
    m_versions->setAccessibleName(tr("Versions of the selected asset"));
    m_versions->setEmptyText(tr("Select one asset to see its versions."));
    // Not by V: a panel behind another tab keeps its keys, and that one is the View menu's.
    m_versionsTitle = new QLabel(tr("Ver&sions"), this);
    m_versionsTitle->setBuddy(m_versions);
    setFocusProxy(m_list);
}

void AssetPanel::createNotice()
{
    m_notice = new AssetNotice(this);
    connect(m_notice->retryButton(), &QPushButton::clicked, this, &AssetPanel::refresh);
    connect(m_notice->passwordButton(), &QPushButton::clicked, this, &AssetPanel::askForPassword);
}

void AssetPanel::createButtons()
{
    m_place = makeButton(tr("&Place"), tr("Make a set of each selected asset in the scene"), this);
    m_publish = makeButton(tr("P&ublish"), tr("Make new assets of the sets selected in the Metadata Editor"),
                           this);
    m_release = makeButton(tr("E&nd Check-Out"),
                           tr("Let others modify the selected asset, without storing anything"), this);
    m_refresh = new QAction(tr("&Refresh"), this);
    m_refresh->setShortcut(QKeySequence::Refresh);
    m_refresh->setShortcutContext(Qt::WidgetWithChildrenShortcut);
    addAction(m_refresh);
    connect(m_place, &QPushButton::clicked, this, &AssetPanel::place);
    connect(m_publish, &QPushButton::clicked, this, &AssetPanel::publish);
    connect(m_release, &QPushButton::clicked, this, &AssetPanel::release);
    connect(m_refresh, &QAction::triggered, this, &AssetPanel::refresh);
}

void AssetPanel::layOut()
{
    auto *lower = new QWidget(this);
    auto *lowerColumn = new QVBoxLayout(lower);
    lowerColumn->setContentsMargins(0, 0, 0, 0);
    lowerColumn->setSpacing(4);
    lowerColumn->addWidget(m_versionsTitle);
    lowerColumn->addWidget(m_versions);
    auto *splitter = new QSplitter(Qt::Vertical, this);
    splitter->setChildrenCollapsible(false);
    splitter->addWidget(m_list);
    splitter->addWidget(lower);
    splitter->setStretchFactor(0, 3);
    splitter->setStretchFactor(1, 1);
    auto *buttons = new QHBoxLayout;
    buttons->addWidget(m_place);
    buttons->addWidget(m_publish);
    buttons->addWidget(m_release);
    buttons->addStretch();
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(4, 4, 4, 4);
    column->setSpacing(4);
    column->addWidget(m_search);
    column->addWidget(m_notice);
    column->addWidget(splitter, 1);
    column->addLayout(buttons);
}

void AssetPanel::connectViews()
{
    connect(m_list->selectionModel(), &QItemSelectionModel::selectionChanged, this, [this] {
        updateButtons();
        showVersions();
    });
    connect(m_list, &AssetView::placeRequested, this, &AssetPanel::place);
    connect(m_list, &QWidget::customContextMenuRequested, this, &AssetPanel::showMenu);
    connect(m_versions, &AssetView::placeRequested, this, &AssetPanel::placeVersion);
    connect(m_versions, &QWidget::customContextMenuRequested, this, [this](const QPoint &position) {
        QMenu menu(this);
        QAction *placing = menu.addAction(tr("&Place This Version"), this, &AssetPanel::placeVersion);
        placing->setEnabled(m_versions->currentIndex().isValid());
        menu.exec(m_versions->viewport()->mapToGlobal(position));
    });
}

void AssetPanel::connectScene()
{
    const nkMetadataService &metadata = nkMetadataService::the();
    connect(&metadata, &nkMetadataService::selectionChanged, this, &AssetPanel::updateButtons);
    connect(&metadata, &nkMetadataService::metadataChanged, this, &AssetPanel::updateButtons);
}

void AssetPanel::storeReplaced(const QString &error)
{
    m_noStore = error;
    if (AssetStore *store = AssetStore::installed()) {
        connect(store, &AssetStore::changed, this, &AssetPanel::refreshSoon);
    }
    m_rows->setAssets({});
    refreshSoon();
}

/// A panel behind others counts as visible; it is seen when it is painted.
void AssetPanel::paintEvent(QPaintEvent *event)
{
    QWidget::paintEvent(event);
    if (m_isStale && !m_soon.isActive()) {
        m_soon.start(0);
    }
}

/// Once for all that happens until the event loop runs again.
void AssetPanel::refreshSoon()
{
    m_isStale = true;
    m_soon.start(0);
}

void AssetPanel::refresh()
{
    m_soon.stop();
    m_isStale = false;
    QVector<AssetInfo> assets;
    AssetStore *store = AssetStore::installed();
    const QString words = m_search->isSearchEnabled() ? m_search->text() : QString();
    const AssetResult result = store ? store->list(words, Most + 1, assets) : AssetResult();
    if (!store) {
        m_rows->setAssets({});
        m_notice->say(m_noStore.isEmpty() ? tr("This program has no asset database.") : m_noStore, false,
                      false);
    } else if (result.isDone()) {
        showList(assets);
        showVersions();
    } else {
        showTrouble(result);
    }
    m_list->setEmptyText(emptyText());
    updateButtons();
}

void AssetPanel::showList(const QVector<AssetInfo> &assets)
{
    const QStringList selected = m_wanted.isEmpty() ? selectedIds() : m_wanted;
    m_notice->say(assets.size() > Most
                      ? tr("Only the first %1 assets are shown; search for the others.").arg(Most)
                      : QString(),
                  false, false);
    m_rows->setAssets(assets.mid(0, Most));
    m_list->selectOnly(m_rows->selectionOf(selected));
    for (const QString &id : qAsConst(m_wanted)) {
        if (m_rows->rowOf(id) < 0) {
            m_notice->say(
                tr("An asset of the scene is not in this database; remove its link or use the database "
                   "that it came from."),
                false, false);
        }
    }
    m_wanted.clear();
}

/// What was read before stays in sight.
void AssetPanel::showTrouble(const AssetResult &result)
{
    m_wanted.clear();
    m_notice->say(result.error, true, result.wantsPassword);
}

QString AssetPanel::emptyText() const
{
    if (!m_notice->text().isEmpty()) {
        return {};
    }
    return m_search->isSearchEnabled() && !m_search->text().isEmpty()
               ? tr("No name matches the search.\nPress Esc in the search field to see all.")
               : tr("There are no assets yet.\nSelect sets in the Metadata Editor and press Publish to share "
                    "them.");
}

QStringList AssetPanel::selectedIds() const
{
    return m_rows->idsOf(m_list->selectionModel()->selectedRows());
}

void AssetPanel::reveal(const QStringList &assetIds)
{
    m_wanted = assetIds;
    m_search->lineEdit()->clear();
    refresh();
}

void AssetPanel::showVersions()
{
    QVector<kernel::AssetVersion> versions;
    const QStringList ids = selectedIds();
    AssetStore *store = AssetStore::installed();
    if (ids.size() == 1 && store) {
        const AssetResult result = store->versions(ids.constFirst(), versions);
        if (!result.isDone()) {
            showTrouble(result);
        }
    }
    m_versionRows->setVersions(versions);
}

void AssetPanel::updateButtons()
{
    const QStringList ids = selectedIds();
    const int row = ids.size() == 1 ? m_rows->rowOf(ids.constFirst()) : -1;
    m_place->setEnabled(!ids.isEmpty());
    m_publish->setEnabled(AssetStore::installed() && PublishableSets::isAnySelected());
    m_release->setEnabled(row >= 0 && !m_rows->assets().at(row).holder.isEmpty());
}

void AssetPanel::place()
{
    const QStringList ids = selectedIds();
    if (!ids.isEmpty()) {
        PublishableSets::select(service().placeAssets(ids));
    }
}

void AssetPanel::placeVersion()
{
    const int version = m_versionRows->versionAt(m_versions->currentIndex().row());
    const QStringList ids = selectedIds();
    if (version > 0 && ids.size() == 1) {
        PublishableSets::select(service().placeAssets(ids, version));
    }
}

void AssetPanel::publish()
{
    const QList<nkdMetadataSet> sets = PublishableSets::selected();
    service().publishSets(sets);
    const QStringList ids = PublishableSets::assetsOf(sets);
    if (!ids.isEmpty()) {
        reveal(ids);
    }
}

void AssetPanel::release()
{
    const QStringList ids = selectedIds();
    const int row = ids.size() == 1 ? m_rows->rowOf(ids.constFirst()) : -1;
    if (row >= 0) {
        const AssetInfo asset = m_rows->assets().at(row);
        if (asset.isHeldHere || AssetQuestions::mayEndCheckOut(this, asset)) {
            service().releaseAsset(asset.id, !asset.isHeldHere);
        }
    }
}

void AssetPanel::askForPassword()
{
    QString password;
    if (AssetQuestions::password(this, password)) {
        Q_EMIT passwordEntered(password);
    }
}

void AssetPanel::showMenu(const QPoint &position)
{
    QMenu menu(this);
    menu.addAction(tr("&Place"), this, &AssetPanel::place)->setEnabled(m_place->isEnabled());
    menu.addAction(tr("E&nd Check-Out"), this, &AssetPanel::release)->setEnabled(m_release->isEnabled());
    menu.addSeparator();
    menu.addAction(m_refresh);
    menu.addAction(tr("Choose Data&base..."), this, &AssetPanel::databaseRequested);
    menu.exec(m_list->viewport()->mapToGlobal(position));
}
