#include "Crash.h"
#include "MainWindow.h"
#include "Workbench.h"
#include "files/Autosave.h"
#include "files/ImportReportDialog.h"
#include "files/RecoverySlot.h"
#include "files/SceneSession.h"

#include <ModalAnswer.h>
#include <TestMain.h>
#include <nkKernelServices/nkMetadataService.h>
#include <nkKernelServices/nkPlatformService.h>

#include <QAbstractButton>
#include <QDir>
#include <QLoggingCategory>
#include <QTemporaryDir>

/// Starting with a file when a scene waits to be recovered: one question at a time, and nothing takes another's place.
class TestStartRecovery : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init();
    void cleanup();
    void aStartWithAFileAsksAboutRecoveryFirst_data();
    void aStartWithAFileAsksAboutRecoveryFirst();
    void aStartWithAFileThatCannotBeReadIsToldAfterTheQuestion();
    void aStartWithoutACopyOpensTheFileAtOnce();

private:
    QString write(const QString &name, const QByteArray &content) const
    {
        QFile file(m_folder->filePath(name));
        return file.open(QIODevice::WriteOnly) && file.write(content) == content.size() ? file.fileName()
                                                                                        : QString();
    }
    static QString root() { return nkPlatformService::the().getUserDataDirectory() + "recovery"; }
    SceneSession *session() const { return m_workbench->session(); }
    /// Leaves a copy of the scene, with a change.
    void crash() const
    {
        Crash::after([this] {
            nkMetadataService::the().createSet(QStringLiteral("Fresh"), {});
            m_workbench->autosave()->write();
        });
    }
    void end()
    {
        m_workbench.reset();
        m_workbench = std::make_unique<Workbench>();
    }

    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<Workbench> m_workbench;
    QString m_path;
};

void TestStartRecovery::init()
{
    QLoggingCategory::setFilterRules(QStringLiteral("workbench.info=false"));
    QDir(root()).removeRecursively();
    m_folder = std::make_unique<QTemporaryDir>();
    m_path = write(QStringLiteral("a & b.gltf"), R"({"asset":{"version":"2.0"},"nodes":[{"name":"Part"}]})");
    m_workbench = std::make_unique<Workbench>();
    QCOMPARE(m_workbench->open(m_path), QString());
}

void TestStartRecovery::cleanup()
{
    m_workbench.reset();
}

void TestStartRecovery::aStartWithAFileAsksAboutRecoveryFirst_data()
{
    QTest::addColumn<QString>("answer");
    QTest::addColumn<bool>("isRestored");
    QTest::newRow("restore") << QStringLiteral("Restore") << true;
    QTest::newRow("discard") << QStringLiteral("Discard") << false;
    QTest::newRow("later") << QStringLiteral("Ask Later") << false;
}

void TestStartRecovery::aStartWithAFileAsksAboutRecoveryFirst()
{
    QFETCH(QString, answer);
    QFETCH(bool, isRestored);
    crash();
    // Its metadata has oddities: a report comes with it.
    const QString other = write(QStringLiteral("other.gltf"),
                                R"({"asset":{"version":"2.0"},"nodes":[{"name":"N","extras":[1]}]})");
    end();
    bool isWindowThere = false;
    QString openBefore;
    int reportsBefore = 0;
    const auto reports = [this] {
        return m_workbench->window()->findChildren<ImportReportDialog *>().size();
    };
    const ModalAnswer question(ModalAnswer::DialogAction([&](QDialog *dialog) {
        isWindowThere = m_workbench->window()->isVisible();
        openBefore = session()->path();
        reportsBefore = reports();
        for (QAbstractButton *button : qobject_cast<QMessageBox *>(dialog)->buttons()) {
            if (button->text().remove(QLatin1Char('&')) == answer) {
                button->click();
            }
        }
    }));
    QCOMPARE(m_workbench->start(other), QString());
    QTRY_COMPARE(session()->path(), isRestored ? m_path : other);
    QVERIFY(isWindowThere);
    QCOMPARE(openBefore, QString());
    QCOMPARE(reportsBefore, 0);
    QCOMPARE(reports(), isRestored ? 0 : 1);
    QCOMPARE(session()->isModified(), isRestored);
    QCOMPARE(QDir(root()).isEmpty(), answer == QLatin1String("Discard"));
}

void TestStartRecovery::aStartWithAFileThatCannotBeReadIsToldAfterTheQuestion()
{
    crash();
    end();
    const ModalAnswer later = ModalAnswer::button(QStringLiteral("Ask Later"));
    const ModalAnswer told = ModalAnswer::button(QMessageBox::Ok);
    QCOMPARE(m_workbench->start(m_folder->filePath(QStringLiteral("none.gltf"))), QString());
    QTRY_VERIFY(told.given());
    QVERIFY2(told.record().text.contains(QStringLiteral("none.gltf")), qPrintable(told.record().text));
}

void TestStartRecovery::aStartWithoutACopyOpensTheFileAtOnce()
{
    end();
    QVERIFY(m_workbench->start(m_folder->filePath(QStringLiteral("none.gltf"))).contains("none.gltf"));
    QVERIFY(!m_workbench->window()->isVisible());
    QCOMPARE(m_workbench->start(m_path), QString());
    QCOMPARE(session()->path(), m_path);
    QVERIFY(m_workbench->window()->isVisible());
}

NK_TEST_MAIN(TestStartRecovery)
#include "test_start_recovery.moc"
