#include "GuiScene.h"

#include <TestMain.h>
#include <nkKernelServices/nkPreferencesService.h>
#include <nkKernelServices/nkQueryService.h>
#include <nkKernelServicesGUI/nkAdvancedSearch.h>
#include <nkKernelServicesGUI/nkAdvancedSearchBar.h>
#include <nkQt4Ext/QNKFilterBar.h>

#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QSignalSpy>
#include <QTimer>
#include <QToolButton>
#include <QTreeWidget>
#include <QVBoxLayout>

class TestAdvancedSearch : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        GuiScene::load();
        nkPreferencesService::the().setStringListValue(recentKey(), {}, true);
        m_window = std::make_unique<QWidget>();
        m_filterBar = new QNKFilterBar(m_window.get());
        m_search = new nkAdvancedSearch(5, m_filterBar, m_window.get());
        m_bar = m_search->getSearchBar();
        QVBoxLayout *column = new QVBoxLayout(m_window.get());
        column->addWidget(m_filterBar);
        column->addWidget(m_bar);
        m_told = std::make_unique<QSignalSpy>(m_search, &nkAdvancedSearch::searchChanged);
        m_window->show();
        m_window->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
    }

    void cleanup()
    {
        m_told.reset();
        m_window.reset();
    }

    void the_bar_is_the_widget_and_belongs_to_the_window()
    {
        QCOMPARE(m_search->getWidget(), m_bar);
        QCOMPARE(m_bar->parentWidget(), m_window.get());
        QCOMPARE(m_bar->getState(), 0);
    }

    void typing_searches_once_a_pause_is_made()
    {
        QTest::keyClicks(field(), QStringLiteral("red"));
        QCOMPARE(m_told->count(), 0);
        QTRY_COMPARE(m_told->count(), 1);
        QCOMPARE(m_told->first(), (QVariantList{true, QStringLiteral("red")}));
    }

    void the_pause_is_three_hundred_milliseconds()
    {
        QElapsedTimer clock;
        clock.start();
        QTest::keyClicks(field(), QStringLiteral("red"));
        QTRY_COMPARE(m_told->count(), 1);
        QVERIFY(clock.elapsed() >= 295);
    }

    void return_searches_at_once_and_again()
    {
        QTest::keyClicks(field(), QStringLiteral("red"));
        QTest::keyClick(field(), Qt::Key_Return);
        QCOMPARE(m_told->count(), 1);
        QTest::keyClick(field(), Qt::Key_Return);
        QCOMPARE(m_told->count(), 2);
        QCOMPARE(m_told->last(), (QVariantList{true, QStringLiteral("red")}));
    }

    void return_leaves_nothing_to_be_searched_later()
    {
        QTest::keyClicks(field(), QStringLiteral("red"));
        QTest::keyClick(field(), Qt::Key_Return);
        QEventLoop loop;
        QTimer::singleShot(350, &loop, &QEventLoop::quit);
        loop.exec();
        QCOMPARE(m_told->count(), 1);
    }

    void an_emptied_field_ends_the_search_at_once()
    {
        search(QStringLiteral("r"));
        m_bar->setState(nkAdvancedSearchBar::Succeeded);
        QTest::keyClick(field(), Qt::Key_Backspace);
        QCOMPARE(m_told->last(), (QVariantList{false, QString()}));
        QCOMPARE(m_bar->getState(), int(nkAdvancedSearchBar::Idle));
    }

    void an_empty_field_searches_nothing()
    {
        QTest::keyClick(field(), Qt::Key_Return);
        QTest::keyClicks(field(), QStringLiteral("  "));
        QTest::keyClick(field(), Qt::Key_Return);
        QCOMPARE(m_told->count(), 0);
    }

    void the_switch_ends_and_resumes_the_search()
    {
        search(QStringLiteral("red"));
        QToolButton *onOff = m_bar->findChild<QToolButton *>(QStringLiteral("SearchSwitch"));
        QVERIFY(onOff && onOff->isChecked());
        onOff->click();
        QCOMPARE(m_told->last(), (QVariantList{false, QString()}));
        QCOMPARE(field()->text(), QStringLiteral("red"));
        onOff->click();
        QCOMPARE(m_told->last(), (QVariantList{true, QStringLiteral("red")}));
    }

    void return_switches_the_search_on()
    {
        QToolButton *onOff = m_bar->findChild<QToolButton *>(QStringLiteral("SearchSwitch"));
        onOff->click();
        search(QStringLiteral("red"));
        QVERIFY(onOff->isChecked());
        QCOMPARE(m_told->count(), 1);
    }

    void states_are_shown_and_unknown_ones_ignored()
    {
        m_bar->setState(nkAdvancedSearchBar::Running);
        const QString running = stateText();
        QVERIFY(!running.isEmpty());
        m_bar->setState(nkAdvancedSearchBar::Succeeded);
        QVERIFY(!stateText().isEmpty() && stateText() != running);
        m_bar->setState(nkAdvancedSearchBar::Failed);
        QVERIFY(!stateText().isEmpty() && stateText() != running);
        m_bar->setState(4);
        m_bar->setState(-1);
        QCOMPARE(m_bar->getState(), int(nkAdvancedSearchBar::Failed));
        m_bar->setState(nkAdvancedSearchBar::Idle);
        QVERIFY(stateText().isEmpty());
    }

    void the_keyboard_goes_on_to_the_names_of_the_tree()
    {
        QWidget *next = field();
        bool found = false;
        for (int i = 0; i < 20 && !found; ++i) {
            next = next->nextInFocusChain();
            found = next == m_filterBar->searchLineEdit();
        }
        QVERIFY(found);
    }

    void a_search_needs_no_filter_bar()
    {
        const nkAdvancedSearch search(5, nullptr, m_window.get());
        QVERIFY(search.getWidget());
    }

    void a_found_state_tells_how_many_sets()
    {
        connectToService();
        search(QStringLiteral("red"));
        QTRY_COMPARE(stateText(), QStringLiteral("1 set found"));
        search(QStringLiteral(" or blue"));
        QTRY_COMPARE(stateText(), QStringLiteral("2 sets found"));
        field()->clear();
        search(QStringLiteral("nowhere"));
        QTRY_COMPARE(stateText(), QStringLiteral("No set found"));
    }

    void a_query_that_cannot_be_read_is_told_with_its_place()
    {
        connectToService();
        search(QStringLiteral("red or (blue"));
        QTRY_COMPARE(m_bar->getState(), int(nkAdvancedSearchBar::Failed));
        QCOMPARE(stateText(), QStringLiteral("The bracket at character 8 ((blue) is not closed: add \")\"."));
        QLabel *label = m_bar->findChild<QLabel *>(QStringLiteral("SearchState"));
        QVERIFY(label->isVisible() && label->wordWrap());
        QCOMPARE(label->textFormat(), Qt::PlainText);
    }

    void a_reason_is_readable_in_a_narrow_bar()
    {
        connectToService();
        m_filterBar->hide();
        m_window->resize(200, 300);
        search(QStringLiteral("red or (blue and a great deal more"));
        QLabel *label = m_bar->findChild<QLabel *>(QStringLiteral("SearchState"));
        QTRY_COMPARE(m_bar->getState(), int(nkAdvancedSearchBar::Failed));
        QTRY_VERIFY(label->isVisible() && label->height() >= label->heightForWidth(label->width()));
        QVERIFY2(label->height() > label->fontMetrics().height() * 3 / 2,
                 qPrintable(QString::number(label->width())));
        QVERIFY(label->geometry().right() <= m_bar->width());
    }

    void a_searched_query_is_recent()
    {
        connectToService();
        search(QStringLiteral("red"));
        QTRY_COMPARE(recent(), QStringList{"red"});
        field()->clear();
        search(QStringLiteral("a & b"));
        QTRY_COMPARE(recent(), (QStringList{"a & b", "red"}));
        field()->clear();
        search(QStringLiteral("red"));
        QTRY_COMPARE(recent(), (QStringList{"red", "a & b"}));
    }

    void queries_on_the_way_and_bad_ones_are_not_recent()
    {
        connectToService();
        QTest::keyClicks(field(), QStringLiteral("re"));
        QTRY_COMPARE(m_bar->getState(), int(nkAdvancedSearchBar::Succeeded));
        QCOMPARE(recent(), QStringList());
        search(QStringLiteral(" ("));
        QTRY_COMPARE(m_bar->getState(), int(nkAdvancedSearchBar::Failed));
        QCOMPARE(recent(), QStringList());
    }

    void a_query_that_is_left_is_recent()
    {
        connectToService();
        QTest::keyClicks(field(), QStringLiteral("red"));
        QTRY_COMPARE(m_bar->getState(), int(nkAdvancedSearchBar::Succeeded));
        field()->setFocus();
        m_filterBar->searchLineEdit()->setFocus();
        QTRY_COMPARE(recent(), QStringList{"red"});
    }

    void recent_queries_are_few_and_short()
    {
        connectToService();
        for (int number = 0; number < 14; ++number) {
            field()->clear();
            search(QStringLiteral("word%1").arg(number));
            QTRY_COMPARE(recent().value(0), QStringLiteral("word%1").arg(number));
        }
        QCOMPARE(recent().size(), 12);
        QCOMPARE(recent().last(), QStringLiteral("word2"));
        field()->setText(QString(1001, QLatin1Char('x')));
        QTest::keyClick(field(), Qt::Key_Return);
        QTRY_COMPARE(stateText(), QStringLiteral("No set found"));
        QCOMPARE(recent().first(), QStringLiteral("word13"));
    }

    void each_module_has_its_own_recent_queries()
    {
        connectToService();
        search(QStringLiteral("red"));
        QTRY_COMPARE(recent(), QStringList{"red"});
        nkAdvancedSearch other(6, nullptr, m_window.get());
        QMenu *menu = other.getSearchBar()->findChild<QMenu *>(QStringLiteral("RecentSearchesMenu"));
        Q_EMIT menu->aboutToShow();
        QCOMPARE(menu->actions().size(), 1);
        QVERIFY(!menu->actions().first()->isEnabled());
    }

    void down_offers_the_recent_queries_and_return_searches_one()
    {
        nkPreferencesService::the().setStringListValue(recentKey(), {"a & b\tc", "blue"}, true);
        QTest::keyClick(field(), Qt::Key_Down);
        QMenu *menu = recentMenu();
        QTRY_VERIFY(menu->isVisible());
        QCOMPARE(menu->actions().first()->text(), QStringLiteral("a && b c"));
        QTest::keyClick(menu, Qt::Key_Down);
        QTest::keyClick(menu, Qt::Key_Return);
        QCOMPARE(field()->text(), QStringLiteral("blue"));
        QCOMPARE(m_told->last(), (QVariantList{true, QStringLiteral("blue")}));
        QCOMPARE(m_told->count(), 1);
    }

    void recent_queries_can_be_cleared()
    {
        nkPreferencesService::the().setStringListValue(recentKey(), {"red"}, true);
        QTest::keyClick(field(), Qt::Key_Down, Qt::AltModifier);
        QTRY_VERIFY(recentMenu()->isVisible());
        QTest::keyClick(recentMenu(), Qt::Key_Up);
        QTest::keyClick(recentMenu(), Qt::Key_Return);
        QCOMPARE(recent(), QStringList());
        QCOMPARE(m_told->count(), 0);
    }

    void help_offers_examples_that_can_all_be_read()
    {
        connectToService();
        QTreeWidget *examples = openHelp();
        QVERIFY(examples->topLevelItemCount() > 8);
        QStringList queries;
        for (int row = 0; row < examples->topLevelItemCount(); ++row) {
            queries.append(examples->topLevelItem(row)->text(0));
            QVERIFY(!examples->topLevelItem(row)->text(1).isEmpty());
        }
        QTest::keyClick(examples, Qt::Key_Escape);
        for (const QString &query : qAsConst(queries)) {
            field()->setText(query);
            QTest::keyClick(field(), Qt::Key_Return);
            QTRY_COMPARE(m_bar->getState(), int(nkAdvancedSearchBar::Succeeded));
        }
    }

    void a_clicked_example_is_put_beside_the_query()
    {
        field()->setText(QStringLiteral("red"));
        QTreeWidget *examples = openHelp();
        QTreeWidgetItem *item = examples->findItems(QStringLiteral("key:colour"), Qt::MatchExactly).value(0);
        QVERIFY(item);
        QTest::mouseClick(examples->viewport(), Qt::LeftButton, {}, examples->visualItemRect(item).center());
        QCOMPARE(field()->text(), QStringLiteral("red key:colour"));
        QTRY_COMPARE(m_told->count(), 1);
        QVERIFY(!m_bar->findChild<QTreeWidget *>() || !m_bar->findChild<QTreeWidget *>()->isVisible());
    }

    void return_puts_the_current_example_into_an_empty_field()
    {
        QTreeWidget *examples = openHelp();
        QTest::keyClick(examples, Qt::Key_Down);
        QTest::keyClick(examples, Qt::Key_Return);
        QCOMPARE(field()->text(), QStringLiteral("red large"));
    }

    void the_buttons_have_names_and_take_the_keyboard()
    {
        const QList<QToolButton *> buttons = m_bar->findChildren<QToolButton *>(QString(),
                                                                                Qt::FindDirectChildrenOnly);
        QCOMPARE(buttons.size(), 3);
        for (const QToolButton *button : buttons) {
            QVERIFY(!button->accessibleName().isEmpty());
            QVERIFY(!button->toolTip().isEmpty());
            QCOMPARE(button->focusPolicy(), Qt::StrongFocus);
        }
    }

    void clearing_the_field_by_its_button_ends_the_search()
    {
        search(QStringLiteral("red"));
        QToolButton *clear = field()->findChild<QToolButton *>();
        QVERIFY(clear);
        clear->click();
        QCOMPARE(m_told->last(), (QVariantList{false, QString()}));
    }

private:
    static QString recentKey() { return QStringLiteral("AdvancedSearch/5/RecentQueries"); }
    static QStringList recent() { return nkPreferencesService::the().getStringListValue(recentKey()); }
    QMenu *recentMenu() const { return m_bar->findChild<QMenu *>(QStringLiteral("RecentSearchesMenu")); }

    // As the window does it.
    void connectToService()
    {
        nkQueryService *service = &nkQueryService::the();
        connect(m_search, &nkAdvancedSearch::searchChanged, service,
                [service](bool enabled, const QString &query) {
                    enabled ? service->startAsyncMetadataQuery(query) : service->cancelAsyncMetadataQuery();
                });
        connect(service, &nkQueryService::asyncMetadataQueryStarted, m_bar,
                [this] { m_bar->setState(nkAdvancedSearchBar::Running); });
        connect(service, &nkQueryService::asyncMetadataQueryFinished, m_bar, [this](bool ok) {
            m_bar->setState(ok ? nkAdvancedSearchBar::Succeeded : nkAdvancedSearchBar::Failed);
        });
    }

    QTreeWidget *openHelp()
    {
        field()->setFocus();
        QTest::keyClick(field(), Qt::Key_F1);
        QTreeWidget *examples = m_bar->findChild<QTreeWidget *>();
        return examples && examples->isVisible() ? examples : nullptr;
    }

    QLineEdit *field() const { return m_bar->lineEdit(); }

    void search(const QString &query)
    {
        QTest::keyClicks(field(), query);
        QTest::keyClick(field(), Qt::Key_Return);
    }

    QString stateText() const { return m_bar->findChild<QLabel *>(QStringLiteral("SearchState"))->text(); }

    std::unique_ptr<QWidget> m_window;
    QNKFilterBar *m_filterBar = nullptr;
    nkAdvancedSearch *m_search = nullptr;
    nkAdvancedSearchBar *m_bar = nullptr;
    std::unique_ptr<QSignalSpy> m_told;
};

NK_TEST_MAIN(TestAdvancedSearch)
#include "test_advanced_search.moc"
