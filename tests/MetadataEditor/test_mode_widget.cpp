#include "tree/nkMetadataModeWidget.h"

#include <TestMain.h>
#include <nkQt4Ext/QNKComboBox.h>
#include <nkQt4Ext/QNKInlineButton.h>

/// The switch of what a tree lists.
class TestModeWidget : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init()
    {
        m_widget = std::make_unique<nkMetadataModeWidget>();
        m_told.clear();
        connect(m_widget.get(), &nkMetadataModeWidget::modeChanged, this,
                [this](TreeMode mode) { m_told.append(int(mode)); });
    }

    void offers_the_lists_in_the_order_of_the_modes()
    {
        QStringList texts;
        for (int i = 0; i < combo()->count(); ++i) {
            texts.append(combo()->itemText(i));
            QVERIFY(!combo()->itemData(i).isValid());
        }
        QCOMPARE(texts, (QStringList{"Sets", "Scenegraph", "Material Editor", "Camera Editor", "Light Editor",
                                     "Sceneplate Editor", "All Objects"}));
        QCOMPARE(combo()->objectName(), QStringLiteral("MetadataModeSwitch"));
        QCOMPARE(combo()->sizePolicy().horizontalPolicy(), QSizePolicy::Expanding);
        QVERIFY(button()->isTerminated());
        QVERIFY(!combo()->accessibleName().isEmpty() && !button()->accessibleName().isEmpty());
    }

    void the_mode_it_shows_is_no_change()
    {
        m_widget->setMode(TreeMode::Sets);
        QCOMPARE(m_told, QList<int>());
        combo()->setCurrentIndex(0);
        QCOMPARE(m_told, QList<int>());
    }

    void choosing_a_list_tells_it_once()
    {
        combo()->setCurrentIndex(2);
        QCOMPARE(m_told, QList<int>{2});
        QCOMPARE(m_widget->getMode(), TreeMode::Materials);
        m_widget->setMode(TreeMode::Lights);
        QCOMPARE(m_told, (QList<int>{2, 4}));
        QCOMPARE(combo()->currentIndex(), 4);
    }

    void the_last_selection_disables_the_lists_and_returns_to_the_one_before()
    {
        m_widget->setMode(TreeMode::Cameras);
        m_told.clear();
        m_widget->setMode(TreeMode::LastSelection);
        QCOMPARE(m_told, QList<int>{7});
        QVERIFY(!combo()->isEnabled());
        QVERIFY(button()->isChecked());
        QCOMPARE(combo()->currentIndex(), 3);
        button()->click();
        QCOMPARE(m_told, (QList<int>{7, 3}));
        QVERIFY(combo()->isEnabled());
        QVERIFY(!button()->isChecked());
        button()->click();
        QCOMPARE(m_told, (QList<int>{7, 3, 7}));
    }

private:
    QNKComboBox *combo() const { return m_widget->findChild<QNKComboBox *>(); }
    QNKInlineButton *button() const { return m_widget->findChild<QNKInlineButton *>(); }

    std::unique_ptr<nkMetadataModeWidget> m_widget;
    QList<int> m_told;
};

NK_TEST_MAIN(TestModeWidget)
#include "test_mode_widget.moc"
