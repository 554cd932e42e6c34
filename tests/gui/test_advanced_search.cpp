#include <TestMain.h>
#include <nkKernelServices/nkQueryService.h>
#include <nkKernelServicesGUI/nkAdvancedSearch.h>
#include <nkKernelServicesGUI/nkAdvancedSearchBar.h>
#include <nkQt4Ext/QNKFilterBar.h>

#include <QLabel>
#include <QLineEdit>
#include <QSignalSpy>
#include <QTimer>
#include <QToolButton>

class TestAdvancedSearch : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_window = std::make_unique<QWidget>();
        m_filterBar = new QNKFilterBar(m_window.get());
        m_search = new nkAdvancedSearch(5, m_filterBar, m_window.get());
        m_bar = m_search->getSearchBar();
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

private:
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
