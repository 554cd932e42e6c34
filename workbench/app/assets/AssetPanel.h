#pragma once

#include "kernel/services/AssetStore.h"

#include <QStringList>
#include <QTimer>
#include <QWidget>

class AssetRows;
class AssetVersionRows;
class AssetView;
class AssetNotice;
class QAction;
class QLabel;
class QNKSearchBox;
class QPushButton;

/// The panel of assets: a list with a search and with who has which checked out, the versions of the selected one, and
/// commands to place them in the scene, to publish selected sets, and to end a check-out.
///
/// It reads the installed asset store when it is seen, when it or the scene has changed something there, and on
/// demand; it reads nothing while it is hidden.
class AssetPanel : public QWidget
{
    Q_OBJECT
public:
    /// How many assets are listed at most.
    static constexpr int Most = 2000;

    explicit AssetPanel(QWidget *parent = nullptr);
    ~AssetPanel() override;

    /// Lists everything and selects these assets.
    void reveal(const QStringList &assetIds);
    /// Another store was installed. @param error why there is none, where there is none
    void storeReplaced(const QString &error);

    AssetView *list() const { return m_list; }
    AssetView *versions() const { return m_versions; }
    AssetNotice *notice() const { return m_notice; }
    QNKSearchBox *searchBox() const { return m_search; }
    QPushButton *placeButton() const { return m_place; }
    QPushButton *publishButton() const { return m_publish; }
    QPushButton *releaseButton() const { return m_release; }
    /// The assets of the selected rows.
    QStringList selectedIds() const;

Q_SIGNALS:
    /// A person has entered this password for the database.
    void passwordEntered(const QString &password);
    /// A person wants to use another database.
    void databaseRequested();

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    void createSearch();
    void createViews();
    void createButtons();
    void createNotice();
    void layOut();
    void connectViews();
    void connectScene();
    void refreshSoon();
    void refresh();
    void showList(const QVector<kernel::AssetInfo> &assets);
    void showTrouble(const kernel::AssetResult &result);
    void showVersions();
    void updateButtons();
    void place();
    void placeVersion();
    void publish();
    void release();
    void askForPassword();
    void showMenu(const QPoint &position);
    QString emptyText() const;

    AssetRows *m_rows;
    AssetVersionRows *m_versionRows;
    QNKSearchBox *m_search = nullptr;
    AssetView *m_list = nullptr;
    AssetView *m_versions = nullptr;
    QLabel *m_versionsTitle = nullptr;
    AssetNotice *m_notice = nullptr;
    QPushButton *m_place = nullptr;
    QPushButton *m_publish = nullptr;
    QPushButton *m_release = nullptr;
    QAction *m_refresh = nullptr;
    QTimer m_soon;
    /// What reveal() asked for and was not listed yet.
    QStringList m_wanted;
    QString m_noStore;
    /// What is shown was read before something changed.
    bool m_isStale = true;
};
