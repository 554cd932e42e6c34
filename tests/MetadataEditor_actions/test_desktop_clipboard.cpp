#include "ActionsFixture.h"

#include <TestMain.h>
#include <interchange/sets/SetFileCodec.h>

#include <QClipboard>

/// The commands and what other programs put on the desktop's clipboard.
class TestDesktopClipboard : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        QGuiApplication::clipboard()->clear();
        m_fixture = std::make_unique<ActionsFixture>();
        kernel::SetCodec::install(&m_codec);
        m_fixture->show();
        // What the editor's window does; the catalogue alone listens to nothing.
        QObject::connect(&nkMetadataService::the(), &nkMetadataService::metadataChanged, f().handler(),
                         &nkMetadataActionsHandler::updateActionStates);
        f().select({f().table});
    }
    void cleanup() { m_fixture.reset(); }

    void paste_follows_other_programs()
    {
        QVERIFY(!paste()->isEnabled());
        foreign(QString::fromUtf8(f().alpha.getJson()));
        QVERIFY(paste()->isEnabled());
        foreign(QStringLiteral("a letter"));
        QVERIFY(!paste()->isEnabled());
        f().select({f().alpha});
        a().action(nkMetadataAction::Copy)->trigger();
        f().select({f().table});
        QVERIFY(paste()->isEnabled());
        foreign(QStringLiteral("key=value"));
        QVERIFY(!paste()->isEnabled());
    }

    void sets_of_other_programs_are_pasted_in_one_step()
    {
        foreign(QString::fromUtf8(f().alpha.getJson()));
        f().triggerOneStep(paste());
        const nkdMetadataSet set = f().setNamed(QStringLiteral("Alpha2"));
        QCOMPARE(f().keys(set), f().keys(f().alpha));
        QCOMPARE(f().carriers(set), QStringList(QStringLiteral("Table")));
    }

    void copied_sets_reach_other_programs()
    {
        f().select({f().beta, f().alpha});
        a().action(nkMetadataAction::Copy)->trigger();
        const QString text = QGuiApplication::clipboard()->text();
        QVERIFY(text.indexOf(QString::fromUtf8(f().beta.getJson()))
                < text.indexOf(QString::fromUtf8(f().alpha.getJson())));
        QVERIFY(text.contains(QString::fromUtf8(f().beta.getJson())));
    }

private:
    static void foreign(const QString &text) { QGuiApplication::clipboard()->setText(text); }
    QAction *paste() const { return a().action(nkMetadataAction::Paste); }
    ActionsFixture &f() const { return *m_fixture; }
    nkMetadataActions &a() const { return *m_fixture->actions; }

    interchange::SetFileCodec m_codec;
    std::unique_ptr<ActionsFixture> m_fixture;
};

NK_TEST_MAIN(TestDesktopClipboard)
#include "test_desktop_clipboard.moc"
