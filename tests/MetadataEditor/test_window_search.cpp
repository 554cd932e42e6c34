#include "WindowFixture.h"

#include <TestMain.h>
#include <nkKernelServices/nkQueryService.h>
#include <nkKernelServicesGUI/nkAdvancedSearch.h>
#include <nkKernelServicesGUI/nkAdvancedSearchBar.h>

#include <QFrame>
#include <QGridLayout>
#include <QLineEdit>

/// The advanced search in the window: what it does to the upper tree.
class TestWindowSearch : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_editor = std::make_unique<WindowFixture>();
        m_editor->show();
        lower()->setMode(TreeMode::Sets);
    }
    void cleanup()
    {
        nkQueryService::the().cancelAsyncMetadataQuery();
        m_editor.reset();
    }

    void stands_above_everything_else()
    {
        const QMainWindow *window = m_editor->window.get();
        QVERIFY(!window->findChild<QFrame *>(QStringLiteral("m_searchFrame")));
        const auto *grid = window->centralWidget()->findChild<QGridLayout *>(QStringLiteral("gridLayout"));
        QCOMPARE(grid->itemAtPosition(0, 0)->widget(), bar());
        QCOMPARE(grid->itemAtPosition(1, 0)->widget()->objectName(), QStringLiteral("m_horizontalSplitter"));
        QCOMPARE(grid->count(), 2);
        QVERIFY(bar()->isVisible());
    }

    void takes_no_more_height_than_it_needs()
    {
        m_editor->window->resize(1088, 950);
        WindowFixture::settle();
        const int idle = bar()->height();
        QVERIFY2(idle <= bar()->lineEdit()->height() + 12, qPrintable(QString::number(idle)));
        Q_EMIT nkQueryService::the().asyncMetadataQueryStarted();
        WindowFixture::settle();
        QVERIFY(bar()->height() >= bar()->minimumSizeHint().height());
        Q_EMIT nkQueryService::the().asyncMetadataQueryFinished(true, {});
        WindowFixture::settle();
        QVERIFY(bar()->height() < 3 * idle);
    }

    void is_the_search_of_this_module()
    {
        QCOMPARE(bar()->objectName(), QStringLiteral("AdvancedSearchBar5"));
        QCOMPARE(m_editor->window->findChildren<nkAdvancedSearch *>().size(), 1);
    }

    void leads_on_to_the_trees_from_top_to_bottom()
    {
        QList<QWidget *> stations{bar()->lineEdit(),
                                  m_editor->tree()->findChild<QLineEdit *>(),
                                  m_editor->tree()->getTreeView(),
                                  lower()->findChild<QLineEdit *>(),
                                  lower()->getTreeView(),
                                  m_editor->view()};
        bar()->lineEdit()->setFocus();
        for (int steps = 0; steps < 60 && !stations.isEmpty(); ++steps) {
            QWidget *focus = QApplication::focusWidget();
            QVERIFY(focus);
            const int station = stations.indexOf(focus);
            QVERIFY2(station <= 0, qPrintable(QString::fromLatin1(focus->metaObject()->className())));
            if (station == 0) {
                stations.removeFirst();
            }
            QTest::keyClick(focus, Qt::Key_Tab);
        }
        QVERIFY(stations.isEmpty());
    }

    void shows_that_a_search_runs_and_how_it_ended()
    {
        Q_EMIT nkQueryService::the().asyncMetadataQueryStarted();
        QCOMPARE(bar()->getState(), 3);
        Q_EMIT nkQueryService::the().asyncMetadataQueryFinished(true, {});
        QCOMPARE(bar()->getState(), 1);
        Q_EMIT nkQueryService::the().asyncMetadataQueryFinished(false, {});
        QCOMPARE(bar()->getState(), 2);
    }

    void finds_sets_by_what_their_entries_hold()
    {
        search(QStringLiteral("value:nowhere"));
        QCOMPARE(bar()->getState(), 3);
        QTRY_COMPARE(bar()->getState(), 1);
        QVERIFY(m_editor->treeNames().isEmpty());
        bar()->lineEdit()->selectAll();
        search(QStringLiteral("set:Gamma"));
        QTRY_COMPARE(m_editor->treeNames(), QStringList{"Gamma"});
        QCOMPARE(bar()->getState(), 1);
    }

    void tells_a_query_that_it_cannot_read()
    {
        search(QStringLiteral("(second"));
        QTRY_COMPARE(bar()->getState(), 2);
        QVERIFY(m_editor->treeNames().isEmpty());
    }

    void leaves_the_sets_found_in_the_upper_tree_alone()
    {
        search(QStringLiteral("gamma"));
        Q_EMIT nkQueryService::the().asyncMetadataQueryFinished(true, {m_editor->gamma});
        QCOMPARE(m_editor->treeNames(), QStringList{"Gamma"});
        QCOMPARE(lower()->getTreeView()->model()->rowCount(), 3);
    }

    void finds_nothing_where_nothing_matches()
    {
        search(QStringLiteral("second"));
        Q_EMIT nkQueryService::the().asyncMetadataQueryFinished(true, {});
        QVERIFY(m_editor->treeNames().isEmpty());
    }

    void lists_everything_again_when_it_is_switched_off()
    {
        search(QStringLiteral("second"));
        Q_EMIT nkQueryService::the().asyncMetadataQueryFinished(true, {m_editor->beta});
        bar()->lineEdit()->selectAll();
        QTest::keyClick(bar()->lineEdit(), Qt::Key_Delete);
        QCOMPARE(m_editor->treeNames().size(), 3);
        QCOMPARE(bar()->getState(), 0);
    }

    void results_filter_nothing_while_it_is_off()
    {
        Q_EMIT nkQueryService::the().asyncMetadataQueryFinished(true, {m_editor->beta});
        QCOMPARE(m_editor->treeNames().size(), 3);
    }

    void works_together_with_the_trees_own_filter()
    {
        search(QStringLiteral("second"));
        Q_EMIT nkQueryService::the().asyncMetadataQueryFinished(true, {m_editor->alpha, m_editor->beta});
        m_editor->tree()->findChild<QLineEdit *>()->setText(QStringLiteral("alp"));
        QCOMPARE(m_editor->treeNames(), QStringList{"Alpha"});
    }

    void a_set_that_is_filtered_out_leaves_the_selection()
    {
        m_editor->select({m_editor->alpha, m_editor->beta});
        search(QStringLiteral("second"));
        Q_EMIT nkQueryService::the().asyncMetadataQueryFinished(true, {m_editor->beta});
        QVERIFY(!nkMetadataService::the().getSelection().contains(m_editor->alpha));
    }

private:
    nkMetadataTreeWidget *lower() const { return m_editor->window->treeWidgets().last(); }
    nkAdvancedSearchBar *bar() const { return m_editor->window->findChild<nkAdvancedSearchBar *>(); }

    /// Types a query and asks for it.
    void search(const QString &query)
    {
        bar()->lineEdit()->setFocus();
        QTest::keyClicks(bar()->lineEdit(), query);
        QTest::keyClick(bar()->lineEdit(), Qt::Key_Return);
    }

    std::unique_ptr<WindowFixture> m_editor;
};

NK_TEST_MAIN(TestWindowSearch)
#include "test_window_search.moc"
