#include <TestMain.h>

#include <QProcess>

/// The host that the guide for other hosts shows: it works as it stands there.
class TestEmbedding : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void the_smallest_host_shows_the_editor_and_lets_go_of_it()
    {
        const Outcome outcome = run({QStringLiteral(EDITOR_PLUGIN), QStringLiteral("--check")});
        QCOMPARE(outcome.errors, QString());
        QCOMPARE(outcome.text, QStringLiteral("Metadata Editor shown\nunloaded\n"));
        QCOMPARE(outcome.status, 0);
    }

    void without_the_plugin_it_says_why()
    {
        const Outcome outcome = run({QStringLiteral("/no/such/plugin.so"), QStringLiteral("--check")});
        QCOMPARE(outcome.status, 1);
        QVERIFY2(outcome.text.contains(QStringLiteral("/no/such/plugin.so")), qPrintable(outcome.text));
    }

    void the_guide_names_every_declaration_of_the_host()
    {
        QFile guide(QStringLiteral(SOURCE_DIR "/docs/embedding.md"));
        QVERIFY(guide.open(QIODevice::ReadOnly));
        const QString text = QString::fromUtf8(guide.readAll());
        QStringList missing;
        for (const char *library : {"nkKernelServices", "nkQt4Ext", "nkKernelServicesGUI"}) {
            const QDir folder(QStringLiteral(SOURCE_DIR "/host/") + QLatin1String(library));
            for (const QFileInfo &header : folder.entryInfoList({QStringLiteral("*.h")})) {
                const QString name = header.completeBaseName();
                if (!name.endsWith(QStringLiteral("Export")) && !text.contains('`' + name + '`')) {
                    missing.append(name);
                }
            }
        }
        QCOMPARE(missing, QStringList());
    }

private:
    struct Outcome
    {
        int status;
        QString text;
        QString errors;
    };
    static Outcome run(const QStringList &words)
    {
        QProcess process;
        process.start(QStringLiteral(MINIMAL_HOST), words);
        process.waitForFinished(60000);
        const int status = process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
        QString errors = QString::fromUtf8(process.readAllStandardError());
        // Qt's platform without a display says on every start what it cannot do.
        errors.remove(QRegularExpression(QStringLiteral("This plugin does not support .*\n")));
        return {status, QString::fromUtf8(process.readAllStandardOutput()), errors};
    }
};

NK_TEST_MAIN(TestEmbedding)
#include "test_embedding.moc"
