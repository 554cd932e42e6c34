#include "assets/AssetNotice.h"
#include "assets/AssetPanel.h"
#include "assets/AssetRows.h"
#include "assets/AssetView.h"

#include "interchange/assets/SqlAssetStore.h"
#include "interchange/sets/SetFileCodec.h"

#include <SceneFixture.h>
#include <TestMain.h>
#include <kernel/document/SetCodec.h>
#include <kernel/services/AssetsService.h>
#include <kernel/services/ServiceRegistry.h>
#include <nkKernelServices/nkLogService.h>
#include <nkKernelServices/nkMetadataService.h>
#include <nkQt4Ext/QNKSearchBox.h>

#include <QFile>
#include <QLineEdit>
#include <QPushButton>
#include <QTemporaryDir>

using interchange::AssetAddress;
using interchange::SqlAssetStore;

/// The panel of assets, over a database file of its own.
class TestAssetPanel : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        SceneFixture::reset();
        m_folder = std::make_unique<QTemporaryDir>();
        m_here = store("Anna");
        m_ben = store("Ben");
        kernel::SetCodec::install(&m_codec);
        kernel::AssetStore::install(m_here.get());
        m_panel = std::make_unique<AssetPanel>();
        m_panel->storeReplaced(QString());
        m_panel->resize(420, 600);
        m_panel->show();
        m_panel->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(m_panel.get()));
        QTRY_VERIFY(!m_panel->list()->emptyText().isEmpty());
    }
    void cleanup()
    {
        m_panel.reset();
        SceneFixture::reset();
        kernel::AssetStore::install(nullptr);
        kernel::SetCodec::install(nullptr);
        m_here.reset();
        m_ben.reset();
    }

    void an_empty_database_says_what_to_do()
    {
        QCOMPARE(rows(), QStringList());
        QVERIFY(m_panel->list()->emptyText().contains(QStringLiteral("press Publish")));
        QVERIFY(!m_panel->notice()->isVisible());
        QVERIFY(!m_panel->placeButton()->isEnabled());
        QVERIFY(!m_panel->releaseButton()->isEnabled());
    }

    void publishing_takes_the_selected_sets_and_shows_them()
    {
        const nkdMetadataSet chair = set("Chair");
        const nkdMetadataSet table = set("Table");
        QVERIFY(!m_panel->publishButton()->isEnabled());
        metadata().setSelection({chair, table});
        QVERIFY(m_panel->publishButton()->isEnabled());
        m_panel->publishButton()->click();
        QVERIFY(chair.isAsset() && table.isAsset());
        QCOMPARE(rows(), QStringList({"Chair 1", "Table 1"}));
        QCOMPARE(m_panel->selectedIds().size(), 2);
        QVERIFY(!m_panel->publishButton()->isEnabled());
    }

    void placing_makes_the_selected_assets_sets_of_the_scene()
    {
        publish({"Chair", "Table"});
        SceneFixture::reset();
        selectRow("Table");
        QVERIFY(m_panel->placeButton()->isEnabled());
        QTest::keyClick(m_panel->list(), Qt::Key_Return);
        QCOMPARE(metadata().getAllSets().size(), 1);
        const nkdMetadataSet placed = metadata().getAllSets().constFirst();
        QCOMPARE(placed.getName(), QStringLiteral("Table"));
        QVERIFY(placed.isAsset());
        QCOMPARE(metadata().getSelection(), QList<nkdObject>{placed});
    }

    void versions_are_listed_and_an_older_one_can_be_placed()
    {
        publish({"Chair"});
        nkdMetadataSet chair = metadata().getAllSets().constFirst();
        service().modifyAssets({chair});
        chair.setName(QStringLiteral("Stool"));
        service().saveAssets({chair});
        QTRY_COMPARE(rows(), QStringList{"Stool 2"});
        selectRow("Stool");
        QCOMPARE(m_panel->versions()->model()->rowCount(), 2);
        m_panel->versions()->setFocus();
        m_panel->versions()->setCurrentIndex(m_panel->versions()->model()->index(1, 0));
        QTest::keyClick(m_panel->versions(), Qt::Key_Return);
        QCOMPARE(metadata().getAllSets().constLast().getName(), QStringLiteral("Chair"));
    }

    void what_others_change_is_seen_on_demand_and_the_selection_stays()
    {
        publish({"Chair", "Table"});
        selectRow("Table");
        const QStringList selected = m_panel->selectedIds();
        QString id;
        QVERIFY(m_ben->publish(QStringLiteral("Bench"), "{}", id).isDone());
        QVERIFY(m_ben->checkOut(selected.constFirst(), 1).isDone());
        QTest::keyClick(m_panel->list(), Qt::Key_F5);
        QCOMPARE(rows(), QStringList({"Bench 1", "Chair 1", "Table 1 Ben"}));
        QCOMPARE(m_panel->selectedIds(), selected);
        QVERIFY(m_panel->releaseButton()->isEnabled());
    }

    void a_search_narrows_the_list_and_says_when_nothing_matches()
    {
        publish({"Chair", "Table"});
        QLineEdit *field = m_panel->searchBox()->lineEdit();
        QTest::keyClicks(field, "ABL");
        QTRY_COMPARE(rows(), QStringList{"Table 1"});
        QTest::keyClicks(field, "x");
        QTRY_COMPARE(rows(), QStringList());
        QVERIFY(m_panel->list()->emptyText().contains(QStringLiteral("No name matches")));
    }

    void finding_clears_the_search_and_selects_the_assets()
    {
        publish({"Chair", "Table"});
        QTest::keyClicks(m_panel->searchBox()->lineEdit(), "table");
        QTRY_COMPARE(rows(), QStringList{"Table 1"});
        const nkdMetadataSet chair = metadata().getAllSets().constFirst();
        const QString id = kernel::Document::the().assetId(chair.getObjectId());
        m_panel->reveal({id});
        QCOMPARE(m_panel->selectedIds(), QStringList{id});
        QVERIFY(!m_panel->notice()->isVisible());
        m_panel->reveal({QStringLiteral("elsewhere")});
        QVERIFY(m_panel->notice()->text().contains(QStringLiteral("is not in this database")));
    }

    void the_check_out_of_somebody_else_is_ended_after_a_question()
    {
        publish({"Chair"});
        const QString id = kernel::Document::the().assetId(
            metadata().getAllSets().constFirst().getObjectId());
        QVERIFY(m_ben->checkOut(id, 1).isDone());
        m_panel->reveal({id});
        {
            ModalAnswer answer = ModalAnswer::button(QMessageBox::Cancel);
            m_panel->releaseButton()->click();
            QVERIFY(answer.record().text.contains(QStringLiteral("“Chair” is checked out by Ben")));
            QCOMPARE(answer.record().defaultButton, QStringLiteral("Cancel"));
        }
        QCOMPARE(rows(), QStringList{"Chair 1 Ben"});
        ModalAnswer answer = ModalAnswer::button(QStringLiteral("End Check-Out"));
        m_panel->releaseButton()->click();
        QTRY_COMPARE(rows(), QStringList{"Chair 1"});
    }

    void a_database_that_cannot_be_read_is_told_and_read_again()
    {
        publish({"Chair"});
        m_here->setPassword(QString()); // connects anew
        QFile file(m_here->address().path());
        QVERIFY(file.rename(file.fileName() + QStringLiteral(".away")));
        QFile other(m_here->address().path());
        QVERIFY(other.open(QIODevice::WriteOnly));
        other.write("something else");
        other.close();
        QTest::keyClick(m_panel->list(), Qt::Key_F5);
        QVERIFY(m_panel->notice()->isVisible());
        QVERIFY(m_panel->notice()->text().contains(QStringLiteral("is no asset database")));
        QVERIFY(m_panel->notice()->retryButton()->isVisible());
        QVERIFY(!m_panel->notice()->passwordButton()->isVisible());
        QCOMPARE(rows(), QStringList{"Chair 1"});
        QVERIFY(other.remove() && file.rename(other.fileName()));
        m_panel->notice()->retryButton()->click();
        QVERIFY(!m_panel->notice()->isVisible());
    }

    void without_a_store_the_reason_is_told()
    {
        kernel::AssetStore::install(nullptr);
        m_panel->storeReplaced(QStringLiteral("No <b>store</b> & nothing."));
        QTRY_VERIFY(m_panel->notice()->isVisible());
        QCOMPARE(m_panel->notice()->text(), QStringLiteral("No <b>store</b> & nothing."));
        QVERIFY(!m_panel->publishButton()->isEnabled());
    }

    void a_hidden_panel_reads_nothing()
    {
        m_panel->hide();
        QString id;
        QVERIFY(m_here->publish(QStringLiteral("Chair"), "{}", id).isDone());
        QCoreApplication::processEvents();
        QCOMPARE(rows(), QStringList());
        m_panel->show();
        QTRY_COMPARE(rows(), QStringList{"Chair 1"});
    }

    void everything_has_a_name_and_is_reached_by_keys()
    {
        metadata().setSelection({set("Chair")});
        m_panel->publishButton()->click();
        QWidget *field = m_panel->searchBox()->lineEdit();
        for (const QWidget *widget :
             {static_cast<const QWidget *>(m_panel->list()),
              static_cast<const QWidget *>(m_panel->versions()), static_cast<const QWidget *>(field)}) {
            QVERIFY(!widget->accessibleName().isEmpty());
        }
        metadata().setSelection({set("Other")});
        field->setFocus();
        QSet<const QWidget *> reached;
        for (int i = 0; i < 12; ++i) {
            reached.insert(m_panel->focusWidget());
            QTest::keyClick(m_panel->focusWidget(), Qt::Key_Tab);
        }
        for (const QWidget *widget : {static_cast<const QWidget *>(m_panel->list()),
                                      static_cast<const QWidget *>(m_panel->versions()),
                                      static_cast<const QWidget *>(m_panel->placeButton()),
                                      static_cast<const QWidget *>(m_panel->publishButton())}) {
            QVERIFY2(reached.contains(widget), qPrintable(widget->objectName()));
        }
    }

private:
    static nkMetadataService &metadata() { return nkMetadataService::the(); }
    static kernel::AssetsService &service()
    {
        return kernel::ServiceRegistry::the().service<kernel::AssetsService>();
    }
    std::unique_ptr<SqlAssetStore> store(const char *name) const
    {
        const QString path = m_folder->filePath(QStringLiteral("assets.sqlite"));
        return std::make_unique<SqlAssetStore>(AssetAddress::ofFile(path), QLatin1String(name));
    }
    static nkdMetadataSet set(const char *name) { return metadata().createSet(QLatin1String(name), {}); }
    void publish(const QStringList &names)
    {
        QList<nkdMetadataSet> sets;
        for (const QString &name : names) {
            sets.append(metadata().createSet(name, {}));
        }
        service().publishSets(sets);
        QTRY_COMPARE(rows().size(), names.size());
    }
    /// Name, version and holder of every row.
    QStringList rows() const
    {
        QStringList texts;
        const QAbstractItemModel *model = m_panel->list()->model();
        for (int row = 0; row < model->rowCount(); ++row) {
            QStringList cells;
            for (const int column : {AssetRows::Name, AssetRows::Version, AssetRows::Holder}) {
                cells.append(model->index(row, column).data().toString());
            }
            texts.append(cells.join(QLatin1Char(' ')).trimmed());
        }
        return texts;
    }
    void selectRow(const char *name) const
    {
        const QAbstractItemModel *model = m_panel->list()->model();
        const QModelIndexList found = model->match(model->index(0, 0), Qt::DisplayRole, QLatin1String(name));
        QCOMPARE(found.size(), 1);
        m_panel->list()->setFocus();
        m_panel->list()->setCurrentIndex(found.constFirst());
    }

    interchange::SetFileCodec m_codec;
    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<SqlAssetStore> m_here;
    std::unique_ptr<SqlAssetStore> m_ben;
    std::unique_ptr<AssetPanel> m_panel;
};

NK_TEST_MAIN(TestAssetPanel)
#include "test_asset_panel.moc"
