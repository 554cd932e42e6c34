#include <TestMain.h>
#include <gui/preferences/MetadataCompletions.h>
#include <nkKernelServicesGUI/nkMetadataGUIUtils.h>

#include <QAbstractItemView>
#include <QCompleter>
#include <QContextMenuEvent>
#include <QMenu>

/// Where the line edits of metadata take their words from, and how a typed word gets into a library.
class TestMetadataCompletions : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_added.clear();
        m_edit.reset(nkMetadataGUIUtils::createMetadataLineEdit(nullptr));
        m_edit->show();
        m_edit->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(m_edit.get()));
    }
    void cleanup()
    {
        MetadataCompletions::setSource({});
        m_edit.reset();
    }

    void offers_the_words_of_the_source()
    {
        setSource(QString());
        QTest::keyClicks(m_edit.get(), "oa");
        QVERIFY(popup()->isVisible());
        QCOMPARE(popup()->model()->index(0, 0).data().toString(), QStringLiteral("oa, most 12"));
        QTest::keyClick(popup(), Qt::Key_Down);
        QTest::keyClick(popup(), Qt::Key_Return);
        QCOMPARE(m_edit->text(), QStringLiteral("oa, most 12"));
    }

    void offers_nothing_without_a_source()
    {
        QTest::keyClicks(m_edit.get(), "oa");
        QVERIFY(!popup()->isVisible());
        QVERIFY(!menuOffers("oa"));
    }

    void the_context_menu_adds_the_word_to_the_library()
    {
        setSource(QStringLiteral("Trees.txt"));
        m_edit->setText(" oak ");
        const ModalAnswer answer = ModalAnswer::menu("Add \"oak\" to \"Trees.txt\"");
        askForMenu();
        QVERIFY(answer.given());
        QCOMPARE(m_added, QStringList{"oak"});
    }

    void the_context_menu_has_its_other_entries()
    {
        setSource(QStringLiteral("Trees.txt"));
        m_edit->setText("oak");
        const ModalAnswer answer = ModalAnswer::menu("Select All\tCtrl+A");
        askForMenu();
        QCOMPARE(m_edit->selectedText(), QStringLiteral("oak"));
        QVERIFY(m_added.isEmpty());
    }

    void the_context_menu_offers_nothing_no_library_would_take()
    {
        setSource(QString());
        QVERIFY(!menuOffers("oak"));
        QVERIFY(m_added.isEmpty());
    }

    void words_are_plain_text_in_the_menu()
    {
        setSource(QStringLiteral("a & %1.txt"));
        m_edit->setText("%2 & <b>");
        QString shown;
        const ModalAnswer answer = ModalAnswer::menu(ModalAnswer::MenuAction([&shown](QMenu *menu) {
            shown = menu->actions().constLast()->text();
            menu->close();
        }));
        askForMenu();
        QCOMPARE(shown, QStringLiteral("Add \"%2 && <b>\" to \"a && %1.txt\""));
    }

    void long_words_are_shown_shortened_and_added_whole()
    {
        const QString word(200, QLatin1Char('x'));
        setSource(QStringLiteral("a.txt"));
        m_edit->setText(word);
        const ModalAnswer answer = ModalAnswer::menu(ModalAnswer::MenuAction([](QMenu *menu) {
            QVERIFY(menu->actions().constLast()->text().size() < 80);
            menu->setActiveAction(menu->actions().constLast());
            QTest::keyClick(menu, Qt::Key_Return);
        }));
        askForMenu();
        QCOMPARE(m_added, QStringList{word});
    }

private:
    void setSource(const QString &library)
    {
        MetadataCompletions::setSource({[](const QString &text, int limit) {
                                            return QStringList{
                                                QStringLiteral("%1, most %2").arg(text).arg(limit)};
                                        },
                                        [library](const QString &) { return library; },
                                        [this](const QString &word) { m_added.append(word); }});
    }

    QAbstractItemView *popup() const { return m_edit->findChild<QCompleter *>()->popup(); }

    void askForMenu() const
    {
        QContextMenuEvent event(QContextMenuEvent::Keyboard, QPoint(1, 1), m_edit->mapToGlobal(QPoint(1, 1)));
        QCoreApplication::sendEvent(m_edit.get(), &event);
        QTRY_VERIFY(!QApplication::activePopupWidget());
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }

    bool menuOffers(const QString &word) const
    {
        m_edit->setText(word);
        bool offers = false;
        const ModalAnswer answer = ModalAnswer::menu(ModalAnswer::MenuAction([&offers](QMenu *menu) {
            for (const QAction *action : menu->actions()) {
                offers = offers || action->text().startsWith("Add ");
            }
            menu->close();
        }));
        askForMenu();
        return offers;
    }

    std::unique_ptr<QNKStringCompleterLineEdit> m_edit;
    QStringList m_added;
};

NK_TEST_MAIN(TestMetadataCompletions)
#include "test_metadata_completions.moc"
