#include <TestMain.h>
#include <nkQt4Ext/QNKTreeView.h>

#include <QSignalSpy>
#include <QStandardItemModel>
#include <QtTest>

/// What a tree view says while it has nothing to show.
class TreeViewEmptyTextTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_model = std::make_unique<QStandardItemModel>();
        m_view = std::make_unique<QNKTreeView>();
        m_view->setModel(m_model.get());
        m_view->setHeaderHidden(true);
        m_view->resize(300, 200);
        m_view->show();
        QVERIFY(QTest::qWaitForWindowExposed(m_view.get()));
    }
    void cleanup() { m_view.reset(); }

    void stands_in_the_middle_while_there_are_no_rows()
    {
        QVERIFY(inked().isEmpty());
        m_view->setProperty("emptyText", QStringLiteral("Nothing here"));
        QCOMPARE(m_view->emptyText(), QStringLiteral("Nothing here"));
        const QRect text = inked();
        QVERIFY(!text.isEmpty());
        const QPoint away = text.center() - m_view->viewport()->rect().center();
        QVERIFY2(away.manhattanLength() < 12, qPrintable(QString::number(away.manhattanLength())));
        m_model->appendRow(new QStandardItem(QString()));
        QVERIFY(inked().isEmpty());
        m_model->removeRow(0);
        QCOMPARE(inked(), text);
        m_model->clear();
        QCOMPARE(inked(), text);
    }

    void is_broken_at_words_and_taken_as_it_is()
    {
        m_view->setEmptyText(QStringLiteral("<b>&one</b> ").repeated(12));
        const QRect lines = inked();
        QVERIFY(lines.height() > 3 * m_view->fontMetrics().height());
        QVERIFY(m_view->viewport()->rect().adjusted(15, 15, -15, -15).contains(lines));
        m_view->setEmptyText(QStringLiteral("one"));
        const int plain = inked().width();
        m_view->setEmptyText(QStringLiteral("<b>&one</b>"));
        QVERIFY(inked().width() > plain + 20);
    }

    void describes_the_view_only_while_it_stands_there()
    {
        m_view->setEmptyText(QStringLiteral("Nothing here"));
        QCOMPARE(m_view->accessibleDescription(), QStringLiteral("Nothing here"));
        m_model->appendRow(new QStandardItem(QStringLiteral("row")));
        QCOMPARE(m_view->accessibleDescription(), QString());
        m_model->clear();
        QCOMPARE(m_view->accessibleDescription(), QStringLiteral("Nothing here"));
    }

    void leaves_another_description_alone()
    {
        m_view->setAccessibleDescription(QStringLiteral("mine"));
        m_model->appendRow(new QStandardItem(QStringLiteral("row")));
        m_model->clear();
        QCOMPARE(m_view->accessibleDescription(), QStringLiteral("mine"));
    }

private:
    /// What differs from the ground.
    QRect inked() const
    {
        const QImage image = m_view->viewport()->grab().toImage();
        const QRgb ground = m_view->palette().color(QPalette::Base).rgb();
        QRect rect;
        for (int y = 0; y < image.height(); ++y)
            for (int x = 0; x < image.width(); ++x)
                if (image.pixel(x, y) != ground)
                    rect |= QRect(x, y, 1, 1);
        return rect;
    }

    std::unique_ptr<QStandardItemModel> m_model;
    std::unique_ptr<QNKTreeView> m_view;
};

NK_TEST_MAIN(TreeViewEmptyTextTest)
#include "test_tree_view_empty_text.moc"
