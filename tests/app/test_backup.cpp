#include "../interchange/FaultyFileCalls.h"
#include "MainWindow.h"
#include "Workbench.h"
#include "files/BackupCopy.h"
#include "files/SceneSession.h"
#include "preferences/Options.h"

#include <ModalAnswer.h>
#include <TestMain.h>
#include <kernel/document/Document.h>
#include <nkKernelServices/nkMetadataService.h>
#include <nkKernelServices/nkdMetadata.h>

#include <QAction>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QLoggingCategory>
#include <QMenu>
#include <QTemporaryDir>

using kernel::Document;

/// What a save replaces stays beside the file where the person wants it, and where file dialogs begin.
class TestBackup : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init()
    {
        QLoggingCategory::setFilterRules(QStringLiteral("workbench.info=false"));
        Options::backup.store(1);
        m_folder = std::make_unique<QTemporaryDir>();
        m_path = write(QStringLiteral("a.gltf"), scene("1"));
        m_workbench = std::make_unique<Workbench>();
        QCOMPARE(m_workbench->open(m_path), QString());
        m_workbench->show();
    }
    void cleanup()
    {
        Options::backup.store(0);
        Options::defaultFolder.store(QString());
        m_workbench.reset();
    }

    void without_the_wish_there_is_none()
    {
        Options::backup.store(0);
        change(2);
        save();
        QCOMPARE(read(m_path), scene("2"));
        QCOMPARE(backup(), QByteArray("none"));
    }

    void the_file_before_the_save_stays_beside_it()
    {
        change(2);
        save();
        QCOMPARE(read(m_path), scene("2"));
        QCOMPARE(backup(), scene("1"));
        change(3);
        save();
        QCOMPARE(backup(), scene("2"));
    }

    void saving_without_a_change_keeps_the_older_one()
    {
        change(2);
        save();
        save();
        QCOMPARE(backup(), scene("1"));
    }

    void a_new_file_has_none_and_one_that_is_taken_has()
    {
        const QString other = write(QStringLiteral("other.gltf"), scene("7"));
        change(2);
        QCOMPARE(session()->save(m_folder->filePath("new.gltf")).outcome, SceneFile::Saved::Done);
        QVERIFY(!QFile::exists(m_folder->filePath("new.gltf~")));
        QCOMPARE(session()->save(other).outcome, SceneFile::Saved::Done);
        QCOMPARE(read(other + "~"), scene("7"));
    }

    void what_somebody_else_made_of_the_file_is_kept_when_it_is_overwritten()
    {
        change(2);
        save();
        write(QStringLiteral("a.gltf"), scene("9"));
        change(3);
        QCOMPARE(session()->save(m_path).outcome, SceneFile::Saved::ChangedElsewhere);
        QCOMPARE(backup(), scene("1"));
        QCOMPARE(session()->save(m_path, SceneFile::IfChanged::Overwrite).outcome, SceneFile::Saved::Done);
        QCOMPARE(backup(), scene("9"));
        QCOMPARE(read(m_path), scene("3"));
    }

    void without_a_backup_nothing_is_overwritten()
    {
        QVERIFY(QDir().mkpath(m_path + "~"));
        change(2);
        const SceneFile::Saved saved = session()->save(m_path);
        QCOMPARE(saved.outcome, SceneFile::Saved::Failed);
        QVERIFY2(saved.error.contains(QStringLiteral("its backup copy cannot be written")),
                 qPrintable(saved.error));
        QCOMPARE(read(m_path), scene("1"));
        QVERIFY(session()->isModified());
    }

    void an_error_of_any_call_leaves_a_whole_backup_and_a_whole_file()
    {
        change(2);
        save();
        for (int at = 1; at < 200; ++at) {
            FaultyFileCalls faulty;
            faulty.fault = FaultyFileCalls::Error;
            faulty.at = at;
            const QString error = BackupCopy::make(m_path);
            const QByteArray kept = backup();
            QVERIFY(kept == scene("1") || kept == scene("2"));
            QCOMPARE(read(m_path), scene("2"));
            if (faulty.made < at) {
                QVERIFY(at > 5);
                QCOMPARE(error, QString());
                return;
            }
        }
        QFAIL("it never came to its end");
    }

    void nobody_may_read_the_backup_who_may_not_read_the_file()
    {
        QVERIFY(QFile::setPermissions(m_path, QFile::ReadOwner | QFile::WriteOwner));
        change(2);
        save();
        QVERIFY(!(QFile::permissions(m_path + "~") & (QFile::ReadGroup | QFile::ReadOther)));
    }

    void file_dialogs_begin_in_the_chosen_folder_while_no_scene_is_open()
    {
        QTemporaryDir chosen;
        Options::defaultFolder.store(chosen.path());
        QCOMPARE(folderOfDialog(), m_folder->path());
        trigger("fileNew");
        QCOMPARE(folderOfDialog(), chosen.path());
        Options::defaultFolder.store(chosen.filePath("gone"));
        QCOMPARE(folderOfDialog(), m_folder->path());
        // The sample is no scene of the person's.
        const QFileInfo sample(Workbench::sampleScene());
        const bool isMade = sample.dir().mkpath(QStringLiteral("."))
                            && QFile::copy(m_path, sample.filePath());
        const QString error = m_workbench->open(sample.filePath());
        QVERIFY(!isMade || QFile::remove(sample.filePath()));
        QCOMPARE(error, QString());
        Options::defaultFolder.store(chosen.path());
        QCOMPARE(folderOfDialog(), chosen.path());
    }

private:
    QString write(const QString &name, const QByteArray &content) const
    {
        QFile file(m_folder->filePath(name));
        return file.open(QIODevice::WriteOnly) && file.write(content) == content.size() ? file.fileName()
                                                                                        : QString();
    }
    static QByteArray read(const QString &path)
    {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("none");
    }
    QByteArray backup() const { return read(m_path + "~"); }
    static QByteArray scene(const QByteArray &value)
    {
        return R"({"asset":{"version":"2.0"},"nodes":[{"name":"Part","extras":{"k":)" + value + "}}]}";
    }
    static void change(int value)
    {
        const nkdSceneObject part{nkdObject(Document::the().topLevelNodes().value(0))};
        nkdMetadata::fromObject(part).getObjectSet().getEntries().find(QStringLiteral("k")).setValue(value);
    }
    SceneSession *session() const { return m_workbench->session(); }
    void trigger(const char *name) const
    {
        m_workbench->window()->fileMenu()->findChild<QAction *>(QLatin1String(name))->trigger();
    }
    void save() const { trigger("fileSave"); }
    QString folderOfDialog() const
    {
        QString folder;
        const ModalAnswer answer(ModalAnswer::DialogAction([&folder](QDialog *dialog) {
            folder = qobject_cast<QFileDialog *>(dialog)->directory().absolutePath();
            dialog->reject();
        }));
        trigger("fileOpen");
        return folder;
    }

    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<Workbench> m_workbench;
    QString m_path;
};

NK_TEST_MAIN(TestBackup)
#include "test_backup.moc"
