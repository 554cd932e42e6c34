#include "AssetDock.h"

#include "AssetPanel.h"
#include "AssetQuestions.h"

#include "kernel/services/AssetsService.h"
#include "kernel/services/ServiceRegistry.h"

#include <nkQt4Ext/nkIconManager.h>

#include <QAction>

AssetDock::AssetDock(QWidget *parent)
    : QDockWidget(tr("Assets"), parent),
      m_panel(new AssetPanel(this)),
      m_action(new QAction(
          nkIconManager::getIcon(QStringLiteral("MetadataSetAsset"), QStringLiteral("MetadataEditor")),
          tr("&Assets"), this))
{
    setObjectName(QStringLiteral("AssetPanel"));
    setWidget(m_panel);
    m_action->setCheckable(true);
    connect(m_action, &QAction::triggered, this, &AssetDock::hideOrShow);
    connect(this, &QDockWidget::visibilityChanged, this, &AssetDock::tellState);
    const auto tellStore = [this] { m_panel->storeReplaced(m_database.error()); };
    connect(&m_database, &AssetDatabase::replaced, this, tellStore);
    connect(m_panel, &AssetPanel::passwordEntered, &m_database, &AssetDatabase::setPassword);
    connect(m_panel, &AssetPanel::databaseRequested, this, &AssetDock::chooseDatabase);
    auto &service = kernel::ServiceRegistry::the().service<kernel::AssetsService>();
    connect(&service, &kernel::AssetsService::findRequested, this, &AssetDock::find);
    tellStore();
    tellState();
}

void AssetDock::chooseDatabase()
{
    QString url = AssetDatabase::url();
    if (AssetQuestions::url(this, url)) {
        AssetDatabase::setUrl(url);
    }
}

void AssetDock::find(const QStringList &assetIds)
{
    bringToFront();
    m_panel->reveal(assetIds);
}

void AssetDock::bringToFront()
{
    show();
    raise();
    m_panel->setFocus(Qt::OtherFocusReason);
}

void AssetDock::hideOrShow()
{
    // One that stands behind others is there and yet not seen.
    if (!visibleRegion().isEmpty()) {
        hide();
    } else {
        bringToFront();
    }
    tellState();
}

void AssetDock::tellState()
{
    m_action->setChecked(!isHidden());
}
