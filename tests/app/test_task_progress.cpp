#include "TaskProgress.h"

#include "TestMain.h"
#include "WindowFocus.h"

#include <QElapsedTimer>
#include <QLabel>
#include <QMainWindow>
#include <QProgressBar>
#include <QProgressDialog>
#include <QPushButton>

#include <memory>

/// The box that shows long work.
class TestTaskProgress : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_window = std::make_unique<QMainWindow>();
        m_window->resize(600, 400);
        m_window->show();
        QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
        m_progress = std::make_unique<TaskProgress>(m_window.get());
    }
    void cleanup()
    {
        m_progress.reset();
        m_window.reset();
    }

    void work_that_ends_soon_shows_nothing();
    void long_work_shows_plain_text_and_how_far_it_is();
    void cancelling_ends_the_work();
    void work_that_stands_still_is_shown_and_can_be_cancelled();
    void escape_cancels();
    void a_window_that_goes_cancels();

private:
    QProgressDialog *box() const { return m_window->findChild<QProgressDialog *>(); }
    bool advanceUntilShown(double share)
    {
        m_progress->advance(share);
        return box() && box()->isVisible();
    }

    std::unique_ptr<QMainWindow> m_window;
    std::unique_ptr<TaskProgress> m_progress;
};

void TestTaskProgress::work_that_ends_soon_shows_nothing()
{
    m_progress->begin(QStringLiteral("Short"));
    QVERIFY(m_progress->advance(0.5));
    QVERIFY(m_progress->advance(1));
    QVERIFY(!box()->isVisible());
    m_progress->end();
    QVERIFY(!box());
    m_progress->end();
}

void TestTaskProgress::long_work_shows_plain_text_and_how_far_it_is()
{
    const QString text = QStringLiteral("Saving <b>&a.json</b>");
    m_progress->begin(text);
    QTRY_VERIFY(advanceUntilShown(0.3));
    QVERIFY(m_progress->advance(0.4));
    QVERIFY(box()->isModal());
    const QList<QLabel *> labels = box()->findChildren<QLabel *>();
    QCOMPARE(labels.size(), 1);
    QCOMPARE(labels.first()->text(), text);
    QCOMPARE(labels.first()->textFormat(), Qt::PlainText);
    auto *bar = box()->findChild<QProgressBar *>();
    QCOMPARE(bar->value() * 10, bar->maximum() * 4);
    QVERIFY(!bar->accessibleName().isEmpty());
    // At its end the box waits for the work.
    QVERIFY(m_progress->advance(1));
    QVERIFY(box()->isVisible());
    m_progress->end();
    QVERIFY(!box());
}

void TestTaskProgress::cancelling_ends_the_work()
{
    m_progress->begin(QStringLiteral("Long"));
    QTRY_VERIFY(advanceUntilShown(0.3));
    QTest::mouseClick(box()->findChild<QPushButton *>(), Qt::LeftButton);
    QVERIFY(!m_progress->advance(0.4));
    QVERIFY(!m_progress->advance(0.5));
    m_progress->end();
    // The next work begins anew.
    m_progress->begin(QStringLiteral("Next"));
    QVERIFY(m_progress->advance(0.1));
    m_progress->end();
}

void TestTaskProgress::work_that_stands_still_is_shown_and_can_be_cancelled()
{
    m_progress->begin(QStringLiteral("Long"));
    QElapsedTimer time;
    time.start();
    // Nobody else lets events through.
    while (!advanceUntilShown(0.3) && !time.hasExpired(10000)) {}
    QVERIFY(box()->isVisible());
    QMetaObject::invokeMethod(box(), "cancel", Qt::QueuedConnection);
    QVERIFY(!m_progress->advance(0.3));
    m_progress->end();
}

void TestTaskProgress::escape_cancels()
{
    m_progress->begin(QStringLiteral("Long"));
    QTRY_VERIFY(advanceUntilShown(0.3));
    // The key is a shortcut of the box, which counts only while the window system has made it active.
    QVERIFY(WindowFocus::waitFor(box()));
    QTest::keyClick(box(), Qt::Key_Escape);
    QVERIFY(!m_progress->advance(0.4));
    m_progress->end();
}

void TestTaskProgress::a_window_that_goes_cancels()
{
    m_progress->begin(QStringLiteral("Long"));
    QVERIFY(m_progress->advance(0.1));
    m_window.reset();
    QVERIFY(!m_progress->advance(0.2));
    m_progress->end();
}

NK_TEST_MAIN(TestTaskProgress)
#include "test_task_progress.moc"
