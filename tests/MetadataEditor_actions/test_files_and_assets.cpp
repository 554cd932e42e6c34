#include "ActionsFixture.h"

#include "actions/nkMetadataActionSelection.h"

#include <TestMain.h>
#include <interchange/sets/SetFileCodec.h>
#include <kernel/document/AssetState.h>
#include <nkKernelServices/nkAssetsService.h>
#include <nkKernelServices/nkLogService.h>

#include <QFileDialog>
#include <QLineEdit>
#include <QTemporaryDir>

namespace Selection = nkMetadataActionSelection;
using kernel::AssetState;

/// Saving and loading sets, and the commands of the asset manager.
class TestFilesAndAssets : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_fixture = std::make_unique<ActionsFixture>();
        kernel::SetCodec::install(&m_codec);
        m_fixture->show();
        m_reports = std::make_unique<QSignalSpy>(&nkLogService::the(), &nkLogService::reported);
    }
    void cleanup()
    {
        m_reports.reset();
        m_fixture.reset();
    }

    void saves_each_set_of_the_selection_once_in_order()
    {
        f().select({f().chair, f().alpha});
        QCOMPARE(f().names(Selection::setsToSave()),
                 QStringList({QStringLiteral("Alpha"), QStringLiteral("Beta")}));
        f().select({f().gamma, f().beta, f().chair, f().table});
        QCOMPARE(f().names(Selection::setsToSave()),
                 QStringList({QStringLiteral("Gamma"), QStringLiteral("Beta"), QStringLiteral("Alpha")}));
        const nkdMetadataSet own = f().ownSet(f().chair);
        f().select({own});
        QCOMPARE(Selection::setsToSave(), QList<nkdMetadataSet>{own});
        f().select({});
        QVERIFY(Selection::setsToSave().isEmpty());
    }

    void asks_where_to_save()
    {
        const QString path = m_folder.filePath(QStringLiteral("sets.json"));
        QString title;
        QStringList filters;
        ModalAnswer answer([&](QDialog *dialog) {
            auto *files = qobject_cast<QFileDialog *>(dialog);
            QVERIFY(files);
            title = files->windowTitle();
            filters = files->nameFilters();
            QCOMPARE(files->acceptMode(), QFileDialog::AcceptSave);
            QVERIFY(!files->parent());
            files->reject();
        });
        f().select({f().alpha});
        f().triggerNothing(a().saveMetadataAction());
        QVERIFY(answer.given());
        QCOMPARE(title, QStringLiteral("Save Metadata..."));
        QCOMPARE(filters, QStringList(QStringLiteral("Json File (*.json)")));
        QVERIFY(m_reports->isEmpty());
        QVERIFY(!QFile::exists(path));
    }

    void saves_the_selected_sets_into_the_chosen_file()
    {
        const QString path = m_folder.filePath(QStringLiteral("chosen.json"));
        ModalAnswer answer = ModalAnswer::file(path);
        // The chair carries Alpha and Beta: Alpha is saved once.
        f().select({f().chair, f().alpha});
        f().triggerNothing(a().saveMetadataAction());
        QVERIFY(m_reports->isEmpty());
        const QByteArray text = contentOf(path);
        QCOMPARE(text.count("\"name\":"), 2);
        QVERIFY(text.contains(f().alpha.getJson()));
        QVERIFY(text.contains(f().beta.getJson()));
    }

    void a_file_that_cannot_be_written_is_the_hosts_to_report()
    {
        const QString path = m_folder.filePath(QStringLiteral("no/folder.json"));
        f().select({f().alpha});
        ModalAnswer answer([&](QDialog *dialog) {
            dialog->findChild<QLineEdit *>(QStringLiteral("fileNameEdit"))->setText(path);
            dialog->QDialog::accept();
        });
        f().triggerNothing(a().saveMetadataAction());
        QVERIFY(isReported(path));
    }

    void loads_sets_onto_the_selected_objects_in_one_step()
    {
        const QString path = m_folder.filePath(QStringLiteral("loaded.json"));
        nkMetadataService::the().saveSets({f().alpha, f().beta}, path);
        ModalAnswer answer = ModalAnswer::file(path);
        f().select({f().table, f().gamma, f().paint});
        f().triggerOneStep(a().loadMetadataAction(), QStringLiteral("Load Metadata Sets"));
        QVERIFY(m_reports->isEmpty());
        for (const char *name : {"Alpha2", "Beta2"}) {
            QCOMPARE(f().carriers(f().setNamed(QLatin1String(name))),
                     QStringList({QStringLiteral("Table"), QStringLiteral("Paint")}));
        }
        QCOMPARE(f().keys(f().setNamed(QStringLiteral("Alpha2"))), f().keys(f().alpha));
    }

    void a_cancelled_load_changes_nothing()
    {
        QString title;
        QStringList filters;
        bool scopeOpen = false;
        ModalAnswer answer([&](QDialog *dialog) {
            auto *files = qobject_cast<QFileDialog *>(dialog);
            QVERIFY(files);
            title = files->windowTitle();
            filters = files->nameFilters();
            QCOMPARE(files->acceptMode(), QFileDialog::AcceptOpen);
            scopeOpen = kernel::Document::the().isScopeOpen();
            files->reject();
        });
        f().select({f().chair});
        f().triggerNothing(a().loadMetadataAction());
        QVERIFY(answer.given());
        QCOMPARE(title, QStringLiteral("Load Metadata..."));
        QCOMPARE(filters, QStringList(QStringLiteral("Json File (*.json)")));
        QVERIFY(scopeOpen);
        QVERIFY(!kernel::Document::the().isScopeOpen());
        QVERIFY(m_reports->isEmpty());
    }

    void a_file_that_cannot_be_loaded_is_the_hosts_to_report()
    {
        const QString path = m_folder.filePath(QStringLiteral("garbage.json"));
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write("no sets");
        file.close();
        ModalAnswer answer = ModalAnswer::file(path);
        f().select({f().chair});
        f().triggerNothing(a().loadMetadataAction());
        QVERIFY(isReported(path));
        QVERIFY(isReported(QStringLiteral("line 1, column 2, at $")));
    }

    void picks_the_assets_that_a_command_applies_to()
    {
        nkdMetadataSet locked = asset("LockedAtRest", AssetState::AtRest, true);
        nkdMetadataSet atRest = asset("AtRest", AssetState::AtRest, false);
        nkdMetadataSet lockedEdited = asset("LockedEdited", AssetState::Edited, true);
        nkdMetadataSet edited = asset("Edited", AssetState::Edited, false);
        f().select({edited, f().alpha, locked, f().chair, atRest, lockedEdited});
        using Sets = QList<nkdMetadataSet>;
        QCOMPARE(Selection::assetsToModify(), Sets({atRest}));
        QCOMPARE(Selection::assetsToStore(), Sets({edited}));
        QCOMPARE(Selection::assets(), Sets({edited, locked, atRest, lockedEdited}));
        QCOMPARE(Selection::unlockedAssets(), Sets({edited, atRest}));
    }

    /// The host of today answers an asset operation with a report when it gets sets, and with nothing when
    /// it gets none: that tells which action reaches which operation with which sets.
    void hands_assets_to_the_asset_manager_data()
    {
        QTest::addColumn<int>("action");
        QTest::addColumn<bool>("takesAtRest");
        QTest::addColumn<bool>("takesEdited");
        QTest::addColumn<bool>("takesLocked");
        QTest::newRow("modify") << int(nkMetadataAction::ModifyAsset) << true << false << false;
        QTest::newRow("store") << int(nkMetadataAction::SaveInAssetManager) << false << true << false;
        QTest::newRow("find") << int(nkMetadataAction::FindInAssetManager) << true << true << true;
        QTest::newRow("reload") << int(nkMetadataAction::ReloadFromAssetManager) << true << true << false;
        QTest::newRow("remove") << int(nkMetadataAction::RemoveAssetLink) << true << true << false;
    }
    void hands_assets_to_the_asset_manager()
    {
        QFETCH(int, action);
        QFETCH(bool, takesAtRest);
        QFETCH(bool, takesEdited);
        QFETCH(bool, takesLocked);
        QAction *const command = a().action(nkMetadataAction::Id(action));
        const auto isTaken = [&](const nkdMetadataSet &set) {
            m_reports->clear();
            f().select({set});
            command->setEnabled(true);
            command->trigger();
            return !m_reports->isEmpty();
        };
        QVERIFY(!isTaken(f().alpha));
        QCOMPARE(isTaken(asset("AtRest", AssetState::AtRest, false)), takesAtRest);
        QCOMPARE(isTaken(asset("Edited", AssetState::Edited, false)), takesEdited);
        QCOMPARE(isTaken(asset("Locked", AssetState::AtRest, true)), takesLocked);
        QCOMPARE(isTaken(asset("LockedEdited", AssetState::Edited, true)), takesLocked);
    }

    void each_asset_command_is_another_operation()
    {
        QSet<QString> texts;
        for (const int id : {nkMetadataAction::ModifyAsset, nkMetadataAction::SaveInAssetManager,
                             nkMetadataAction::FindInAssetManager, nkMetadataAction::ReloadFromAssetManager,
                             nkMetadataAction::RemoveAssetLink}) {
            m_reports->clear();
            f().select(
                {asset("AtRest", AssetState::AtRest, false), asset("Edited", AssetState::Edited, false)});
            a().action(nkMetadataAction::Id(id))->trigger();
            QCOMPARE(m_reports->size(), 1);
            texts.insert(m_reports->first().at(2).toString());
        }
        QCOMPARE(texts.size(), 5);
    }

private:
    static nkdMetadataSet asset(const char *name, AssetState state, bool locked)
    {
        nkdMetadataSet set = nkMetadataService::the().createSet(QLatin1String(name), {});
        set.setLocked(locked);
        kernel::Document::the().setAssetState(set.getObjectId(), state, QLatin1String(name));
        return set;
    }

    static QByteArray contentOf(const QString &path)
    {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    bool isReported(const QString &text) const
    {
        for (const QVariantList &report : qAsConst(*m_reports)) {
            if (report.at(2).toString().contains(text)) {
                return true;
            }
        }
        return false;
    }

    ActionsFixture &f() const { return *m_fixture; }
    nkMetadataActions &a() const { return *m_fixture->actions; }

    interchange::SetFileCodec m_codec;
    QTemporaryDir m_folder;
    std::unique_ptr<ActionsFixture> m_fixture;
    std::unique_ptr<QSignalSpy> m_reports;
};

NK_TEST_MAIN(TestFilesAndAssets)
#include "test_files_and_assets.moc"
