#include "WindowFixture.h"

#include "table/nkMetadataIconFilterBar.h"
#include "table/nkMetadataKeyValueHeader.h"
#include "table/nkMetadataSearchBar.h"
#include "table/nkMetadataTypeFilterBar.h"

#include <TestMain.h>
#include <nkQt4Ext/QNKSearchBox.h>
#include <nkQt4Ext/QNKTypeMenu.h>

#include <QAction>
#include <QLayout>
#include <QLineEdit>
#include <QStandardItemModel>

/// The filter row: its fields, what they do to the table, and how they follow the header.
class TestFilterFields : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_editor = std::make_unique<WindowFixture>();
        m_editor->show();
        m_editor->select({m_editor->alpha, m_editor->beta});
    }
    void cleanup() { m_editor.reset(); }

    void every_column_has_its_named_field_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("toolTip");
        QTest::newRow("0") << "StateFilter"
                           << "Set a set state filter";
        QTest::newRow("1") << "NameFilter"
                           << "Set a set name filter";
        QTest::newRow("2") << "KeyFilter"
                           << "Set a key name filter";
        QTest::newRow("3") << "ValueFilter"
                           << "Set a value name filter";
        QTest::newRow("4") << "TypeFilter"
                           << "Set a data type filter";
    }
    void every_column_has_its_named_field()
    {
        QFETCH(QString, name);
        const QWidget *widget = field(name);
        QVERIFY(widget);
        QTEST(widget->toolTip(), "toolTip");
        QTEST(widget->accessibleName(), "toolTip");
        QCOMPARE(widget->isVisible(), name != QLatin1String("NameFilter"));
    }

    void states_are_offered_in_two_groups()
    {
        QCOMPARE(menuTexts<nkMetadataIconFilterBar>(),
                 (QStringList{"Locked", "Unlocked", "-", "Asset", "Unassigned"}));
    }

    void types_are_offered_in_one_group()
    {
        QCOMPARE(menuTexts<nkMetadataTypeFilterBar>(),
                 (QStringList{"String", "Integer", "Float", "Boolean", "Time", "Date", "DateTime", "List",
                              "Tag"}));
    }

    void bars_show_neither_search_nor_search_depth()
    {
        for (const QString &name : {QStringLiteral("StateFilter"), QStringLiteral("TypeFilter")}) {
            const auto *bar = qobject_cast<const QNKFilterBar *>(field(name));
            QVERIFY(bar->searchLineEdit()->isHidden());
        }
    }

    void typing_filters_the_table()
    {
        edit("KeyFilter")->setText(QStringLiteral("COU"));
        QCOMPARE(m_editor->keys(), QStringList{"count"});
        edit("KeyFilter")->clear();
        edit("ValueFilter")->setText(QStringLiteral("second"));
        QCOMPARE(m_editor->keys(), QStringList{"name"});
    }

    void a_search_that_is_switched_off_filters_nothing()
    {
        auto *box = qobject_cast<QNKSearchBox *>(field("KeyFilter"));
        box->lineEdit()->setText(QStringLiteral("count"));
        box->setSearchEnabled(false);
        QCOMPARE(m_editor->keys().size(), 4);
        box->setSearchEnabled(true);
        QCOMPARE(m_editor->keys(), QStringList{"count"});
    }

    void bars_filter_and_are_switched()
    {
        auto *types = qobject_cast<QNKFilterBar *>(field("TypeFilter"));
        types->setTypeFilter({8});
        QCOMPARE(m_editor->keys(), QStringList{"checked"});
        types->setTypeFilteringEnabled(false);
        QCOMPARE(m_editor->keys().size(), 4);
        auto *states = qobject_cast<QNKFilterBar *>(field("StateFilter"));
        states->setTypeFilter({1});
        QVERIFY(m_editor->keys().isEmpty());
        states->setTypeFilteringEnabled(false);
        QCOMPARE(m_editor->keys().size(), 4);
    }

    void a_hidden_column_loses_its_filter_data()
    {
        QTest::addColumn<int>("column");
        for (int column = 0; column < 5; ++column) {
            QTest::addRow("%d", column) << column;
        }
    }
    void a_hidden_column_loses_its_filter()
    {
        QFETCH(int, column);
        header()->setColumnVisibility(column, true);
        filterBy(column);
        QVERIFY(m_editor->keys().size() < 4);
        header()->setColumnVisibility(column, false);
        QCOMPARE(m_editor->keys().size(), 4);
        header()->setColumnVisibility(column, true);
        QCOMPARE(m_editor->keys().size(), 4);
    }

    void fields_stand_under_their_columns()
    {
        header()->resizeSection(2, 150);
        settle();
        for (const char *name : {"StateFilter", "TypeFilter", "KeyFilter"}) {
            const int column = columnOf(name);
            QCOMPARE(field(name)->width(), header()->sectionSize(column));
            QCOMPARE(field(name)->x(), header()->sectionViewportPosition(column));
        }
        QCOMPARE(field("ValueFilter")->geometry().right(), strip()->contentsRect().right());
    }

    void fields_follow_a_moved_column()
    {
        const int type = header()->visualIndex(4);
        header()->moveSection(header()->visualIndex(2), type);
        settle();
        QVERIFY(field("KeyFilter")->x() < field("TypeFilter")->x());
        QCOMPARE(tabOrderAfter("StateFilter").first(), QStringLiteral("KeyFilter"));
    }

    void tab_walks_the_fields_from_left_to_right_data()
    {
        QTest::addColumn<bool>("isSwapped");
        QTest::newRow("as set up") << false;
        QTest::newRow("value before key") << true;
    }
    void tab_walks_the_fields_from_left_to_right()
    {
        QFETCH(bool, isSwapped);
        if (isSwapped) {
            header()->moveSection(header()->visualIndex(3), header()->visualIndex(2));
            settle();
        }
        QLineEdit *first = edit(isSwapped ? "ValueFilter" : "KeyFilter");
        QLineEdit *second = edit(isSwapped ? "KeyFilter" : "ValueFilter");
        first->setFocus();
        QVERIFY(QTest::qWaitFor([&] { return first->hasFocus(); }));
        for (int i = 0; i < 6 && !second->hasFocus(); ++i) {
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        }
        QVERIFY(second->hasFocus());
    }

    void the_last_visible_field_stretches()
    {
        header()->setColumnVisibility(3, false);
        settle();
        QVERIFY(field("ValueFilter")->isHidden());
        QCOMPARE(field("KeyFilter")->geometry().right(), strip()->contentsRect().right());
        QCOMPARE(field("KeyFilter")->maximumWidth(), QWIDGETSIZE_MAX);
    }

    void with_all_columns_hidden_nothing_stretches()
    {
        for (int column = 0; column < 5; ++column) {
            m_editor->view()->setColumnHidden(column, true);
        }
        strip()->onUpdate();
        for (const char *name : {"StateFilter", "NameFilter", "KeyFilter", "ValueFilter", "TypeFilter"}) {
            QVERIFY(field(name)->isHidden());
            QCOMPARE(field(name)->maximumWidth(), header()->sectionSize(columnOf(name)));
        }
    }

    void a_field_without_text_keeps_its_place_and_no_tab_stop()
    {
        QHeaderView header(Qt::Horizontal);
        QStandardItemModel model(0, 2);
        header.setModel(&model);
        QWidget window;
        auto *strip = new nkMetadataSearchBar(&header, &window);
        auto *plain = new QWidget;
        auto *holder = new QWidget;
        auto *lineEdit = new QLineEdit(holder);
        strip->setWidgets({plain, holder});
        QCOMPARE(strip->layout()->count(), 2);
        QCOMPARE(strip->layout()->itemAt(0)->widget(), plain);
        QCOMPARE(lineEdit->nextInFocusChain() == plain, false);
        QCOMPARE(strip->sizePolicy().horizontalPolicy(), QSizePolicy::Expanding);
        QCOMPARE(strip->layout()->spacing(), 0);
        QCOMPARE(strip->layout()->contentsMargins(), QMargins());
    }

private:
    static void settle()
    {
        QCoreApplication::processEvents();
        QCoreApplication::processEvents();
    }

    nkMetadataSearchBar *strip() const { return m_editor->window->findChild<nkMetadataSearchBar *>(); }
    nkMetadataKeyValueHeader *header() const
    {
        return m_editor->window->findChild<nkMetadataKeyValueHeader *>();
    }
    QWidget *field(const QString &name) const { return strip()->findChild<QWidget *>(name); }
    QWidget *field(const char *name) const { return field(QLatin1String(name)); }
    QLineEdit *edit(const char *name) const { return qobject_cast<QNKSearchBox *>(field(name))->lineEdit(); }

    static int columnOf(const char *name)
    {
        return QStringList{"StateFilter", "NameFilter", "KeyFilter", "ValueFilter", "TypeFilter"}.indexOf(
            QLatin1String(name));
    }

    void filterBy(int column)
    {
        switch (column) {
        case 0:
            return qobject_cast<QNKFilterBar *>(field("StateFilter"))->setTypeFilter({1});
        case 1:
            return edit("NameFilter")->setText(QStringLiteral("Beta"));
        case 2:
            return edit("KeyFilter")->setText(QStringLiteral("count"));
        case 3:
            return edit("ValueFilter")->setText(QStringLiteral("first"));
        default:
            return qobject_cast<QNKFilterBar *>(field("TypeFilter"))->setTypeFilter({8});
        }
    }

    /// The named fields in the order in which they stand, from the named one on.
    QStringList tabOrderAfter(const char *name) const
    {
        QStringList names;
        bool isBehind = false;
        for (int i = 0; i < strip()->layout()->count(); ++i) {
            const QWidget *widget = strip()->layout()->itemAt(i)->widget();
            if (isBehind && widget->isVisible()) {
                names.append(widget->objectName());
            }
            isBehind = isBehind || widget->objectName() == QLatin1String(name);
        }
        return names;
    }

    template <typename Bar>
    QStringList menuTexts() const
    {
        QStringList texts;
        const QList<QAction *> actions = strip()->findChild<Bar *>()->typeMenu()->actions();
        for (const QAction *action : actions) {
            texts.append(action->isSeparator() ? QStringLiteral("-") : action->text());
        }
        // What stands before the first category, such as the enabling switch, is the bar's own.
        const QString first = std::is_same<Bar, nkMetadataIconFilterBar>::value ? "Locked" : "String";
        return texts.mid(texts.indexOf(first));
    }

    std::unique_ptr<WindowFixture> m_editor;
};

NK_TEST_MAIN(TestFilterFields)
#include "test_filter_fields.moc"
