#include "../interchange_foreign/IfcText.h"
#include "Crash.h"
#include "MainWindow.h"
#include "Workbench.h"
#include "files/Autosave.h"
#include "files/SceneSession.h"

#include <ModalAnswer.h>
#include <TestMain.h>
#include <nkKernelServices/nkMetadataService.h>

#include <QAction>
#include <QFileInfo>
#include <QLoggingCategory>
#include <QMenu>
#include <QTemporaryDir>

/// Copies for recovery of scenes whose files are never written: the model itself with the metadata of the copy.
class TestModelRecovery : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init();
    void cleanup() { m_workbench.reset(); }
    void theModelIsOpenedWithTheMetadataOfTheCopy_data();
    void theModelIsOpenedWithTheMetadataOfTheCopy();
    void aModelThatIsGoneIsOpenedFromTheCopy();
    void metadataThatHasChangedSinceIsNotOverwrittenWithoutAQuestion();

private:
    static void write(const QString &path, const QByteArray &content)
    {
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly) && file.write(content) == content.size());
    }
    static QByteArray read(const QString &path)
    {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("no such file");
    }
    QString sidecar() const { return m_path + QStringLiteral(".metadata.json"); }
    void trigger(const char *name) const
    {
        m_workbench->window()->fileMenu()->findChild<QAction *>(QLatin1String(name))->trigger();
    }
    void restart()
    {
        m_workbench.reset();
        m_workbench = std::make_unique<Workbench>();
        m_workbench->show();
    }
    void restore() const
    {
        const ModalAnswer yes = ModalAnswer::button(QStringLiteral("Restore"));
        m_workbench->offerRecovery();
        QVERIFY(yes.given());
    }

    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<Workbench> m_workbench;
    QString m_path;
};

void TestModelRecovery::init()
{
    QLoggingCategory::setFilterRules(QStringLiteral("workbench.info=false"));
    m_folder = std::make_unique<QTemporaryDir>();
    m_path = m_folder->filePath(QStringLiteral("house.ifc"));
    write(m_path, IfcText::file(IfcText::taggedHouse()));
    m_workbench = std::make_unique<Workbench>();
    m_workbench->show();
    QCOMPARE(m_workbench->open(m_path), QString());
}

void TestModelRecovery::theModelIsOpenedWithTheMetadataOfTheCopy_data()
{
    QTest::addColumn<bool>("wasSaved");
    QTest::newRow("never saved") << false;
    QTest::newRow("saved before") << true;
}

void TestModelRecovery::theModelIsOpenedWithTheMetadataOfTheCopy()
{
    QFETCH(bool, wasSaved);
    nkMetadataService &service = nkMetadataService::the();
    if (wasSaved) {
        service.createSet(QStringLiteral("Saved"), {});
        trigger("fileSave");
    }
    Crash::after([this, &service] {
        service.createSet(QStringLiteral("Typed"), {});
        m_workbench->autosave()->write();
    });
    restart();
    restore();
    QCOMPARE(m_workbench->session()->path(), m_path);
    QVERIFY(m_workbench->session()->isModified());
    trigger("fileSave");
    QVERIFY(!m_workbench->session()->isModified());
    const QByteArray saved = read(sidecar());
    QVERIFY(saved.contains("\"Typed\""));
    QCOMPARE(saved.contains("\"Saved\""), wasSaved);
    QCOMPARE(read(m_path), IfcText::file(IfcText::taggedHouse()));
}

void TestModelRecovery::aModelThatIsGoneIsOpenedFromTheCopy()
{
    Crash::after([this] {
        nkMetadataService::the().createSet(QStringLiteral("Typed"), {});
        m_workbench->autosave()->write();
    });
    QVERIFY(QFile::remove(m_path));
    restart();
    restore();
    QCOMPARE(m_workbench->session()->path(), m_path);
    QVERIFY(m_workbench->session()->isModified());
    QVERIFY(!nkMetadataService::the().getAllSets().isEmpty());
}

void TestModelRecovery::metadataThatHasChangedSinceIsNotOverwrittenWithoutAQuestion()
{
    nkMetadataService &service = nkMetadataService::the();
    service.createSet(QStringLiteral("Saved"), {});
    trigger("fileSave");
    Crash::after([this, &service] {
        service.createSet(QStringLiteral("Typed"), {});
        m_workbench->autosave()->write();
    });
    const QByteArray changed = read(sidecar()).replace("Saved", "Other");
    write(sidecar(), changed);
    restart();
    restore();
    const ModalAnswer cancel = ModalAnswer::button(QStringLiteral("Cancel"));
    trigger("fileSave");
    QVERIFY(cancel.record().text.contains(QStringLiteral("another program")));
    QCOMPARE(read(sidecar()), changed);
}

NK_TEST_MAIN(TestModelRecovery)
#include "test_model_recovery.moc"
