#include "WindowFixture.h"

#include "table/nkMetadataKeyValueHeader.h"
#include "table/nkMetadataSearchBar.h"

#include <TestMain.h>

#include <QAction>
#include <QFrame>
#include <QGridLayout>
#include <QSplitter>
#include <QStatusBar>

namespace {

struct ExpectedWidget
{
    const char *name;
    const char *className;
    const char *parent;
    int horizontal; ///< size policy; -1: the class's own
    int vertical;
};

const QVector<ExpectedWidget> &expectedWidgets()
{
    using Policy = QSizePolicy;
    static const QVector<ExpectedWidget> widgets{
        {"centralwidget", "QWidget", "nkMetadataEditorGUI", -1, -1},
        {"m_searchFrame", "QFrame", "centralwidget", Policy::Preferred, Policy::Fixed},
        {"m_horizontalSplitter", "QSplitter", "centralwidget", Policy::Expanding, Policy::Expanding},
        {"m_verticalTreeSplitter", "QSplitter", "m_horizontalSplitter", -1, -1},
        {"m_upperTreeFrame", "QFrame", "m_verticalTreeSplitter", Policy::Preferred, Policy::Expanding},
        {"m_lowerTreeFrame", "QFrame", "m_verticalTreeSplitter", Policy::Preferred, Policy::Expanding},
        {"m_verticalTableSplitter", "QSplitter", "m_horizontalSplitter", -1, -1},
        {"m_keyValueFrame", "QFrame", "m_verticalTableSplitter", Policy::Expanding, Policy::Expanding},
        {"m_propertyFrame", "QFrame", "m_verticalTableSplitter", Policy::Expanding, Policy::Fixed},
        {"statusbar", "QStatusBar", "nkMetadataEditorGUI", -1, -1},
    };
    return widgets;
}

/// A window with the form and nothing else.
class PlainForm : public QMainWindow, public Ui::nkMetadataEditorGUI
{
public:
    PlainForm() { setupUi(this); }
};

} // namespace

/// The form of the window, and where the window puts its parts.
class TestWindowForm : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { m_editor = std::make_unique<WindowFixture>(); }
    void cleanup() { m_editor.reset(); }

    void holds_each_widget_in_its_place_data()
    {
        QTest::addColumn<int>("row");
        for (int row = 0; row < expectedWidgets().size(); ++row) {
            QTest::newRow(expectedWidgets().at(row).name) << row;
        }
    }
    void holds_each_widget_in_its_place()
    {
        QFETCH(int, row);
        const ExpectedWidget &expected = expectedWidgets().at(row);
        const PlainForm form;
        const auto *widget = form.findChild<QWidget *>(QLatin1String(expected.name));
        QVERIFY(widget);
        QCOMPARE(QString::fromLatin1(widget->metaObject()->className()),
                 QString::fromLatin1(expected.className));
        QCOMPARE(widget->parentWidget()->objectName(), QString::fromLatin1(expected.parent));
        const QSizePolicy policy = widget->sizePolicy();
        if (expected.horizontal >= 0) {
            QCOMPARE(int(policy.horizontalPolicy()), expected.horizontal);
            QCOMPARE(int(policy.verticalPolicy()), expected.vertical);
            QCOMPARE(policy.horizontalStretch() + policy.verticalStretch(), 0);
            QVERIFY(!policy.hasHeightForWidth());
        }
    }

    void holds_bare_frames_alone()
    {
        const PlainForm form;
        for (const QFrame *frame : {form.m_searchFrame, form.m_upperTreeFrame, form.m_lowerTreeFrame,
                                    form.m_keyValueFrame, form.m_propertyFrame}) {
            QCOMPARE(frame->frameShape(), QFrame::NoFrame);
            QCOMPARE(frame->frameShadow(), QFrame::Plain);
            QCOMPARE(frame->lineWidth(), 0);
        }
    }

    void stands_in_rows_and_splitters()
    {
        const PlainForm form;
        QCOMPARE(form.objectName(), QStringLiteral("nkMetadataEditorGUI"));
        QCOMPARE(form.size(), QSize(1088, 630));
        QCOMPARE(form.windowTitle(), QStringLiteral("MainWindow"));
        QCOMPARE(form.centralWidget(), form.centralwidget);
        QCOMPARE(form.gridLayout->objectName(), QStringLiteral("gridLayout"));
        QCOMPARE(form.gridLayout->itemAtPosition(0, 0)->widget(), form.m_searchFrame);
        QCOMPARE(form.gridLayout->itemAtPosition(1, 0)->widget(), form.m_horizontalSplitter);
        QCOMPARE(form.gridLayout->count(), 2);
        QCOMPARE(form.m_horizontalSplitter->orientation(), Qt::Horizontal);
        QCOMPARE(form.m_verticalTreeSplitter->orientation(), Qt::Vertical);
        QCOMPARE(form.m_verticalTableSplitter->orientation(), Qt::Vertical);
        QCOMPARE(parts(form.m_horizontalSplitter),
                 (QStringList{"m_verticalTreeSplitter", "m_verticalTableSplitter"}));
        QCOMPARE(parts(form.m_verticalTreeSplitter), (QStringList{"m_upperTreeFrame", "m_lowerTreeFrame"}));
        QCOMPARE(parts(form.m_verticalTableSplitter), (QStringList{"m_keyValueFrame", "m_propertyFrame"}));
    }

    void has_three_actions_that_stand_nowhere()
    {
        const PlainForm form;
        const QList<QAction *> actions = form.findChildren<QAction *>(QString(), Qt::FindDirectChildrenOnly);
        QStringList found;
        for (const QAction *action : actions) {
            QVERIFY(action->associatedWidgets().isEmpty());
            found.append(action->objectName() + QLatin1Char('=') + action->text()
                         + (action->isCheckable() ? QStringLiteral(" checkable") : QString())
                         + (action->isChecked() ? QStringLiteral(" checked") : QString()));
        }
        QCOMPARE(found, (QStringList{"m_querySceneAction=Scene", "actionMaterial_Editor=Material Editor",
                                     "m_liveSearch=Live Search checkable checked"}));
        QVERIFY(!form.menuWidget());
    }

    void keeps_the_forms_widgets_in_the_window()
    {
        QVERIFY(!part<QWidget>("m_searchFrame"));
        for (const ExpectedWidget &expected : expectedWidgets()) {
            QVERIFY(QLatin1String(expected.name) == QLatin1String("m_searchFrame")
                    || part<QWidget>(expected.name));
        }
        QCOMPARE(m_editor->window->statusBar(), part<QStatusBar>("statusbar"));
        QCOMPARE(m_editor->window->parent(), nullptr);
    }

    void gives_the_trees_one_third_of_the_width()
    {
        m_editor->show();
        const QList<int> sizes = part<QSplitter>("m_horizontalSplitter")->sizes();
        QCOMPARE(sizes.size(), 2);
        QVERIFY2(qAbs(2 * sizes.first() - sizes.last()) <= 2,
                 qPrintable(QStringLiteral("%1 and %2").arg(sizes.first()).arg(sizes.last())));
    }

    void puts_its_parts_into_the_frames_without_margins()
    {
        QCOMPARE(inside("m_upperTreeFrame"), QList<QWidget *>{m_editor->window->treeWidgets().first()});
        QCOMPARE(inside("m_lowerTreeFrame"), QList<QWidget *>{m_editor->window->treeWidgets().last()});
        QCOMPARE(inside("m_keyValueFrame"),
                 (QList<QWidget *>{m_editor->window->findChild<nkMetadataSearchBar *>(), m_editor->view()}));
        for (const char *frame :
             {"m_upperTreeFrame", "m_lowerTreeFrame", "m_keyValueFrame", "m_propertyFrame"}) {
            QCOMPARE(part<QFrame>(frame)->layout()->contentsMargins(), QMargins());
        }
    }

    void starts_with_the_property_panel_hidden() { QVERIFY(part<QFrame>("m_propertyFrame")->isHidden()); }

    void shows_the_columns_of_the_table_in_their_order()
    {
        const auto *header = m_editor->window->findChild<nkMetadataKeyValueHeader *>();
        QCOMPARE(m_editor->view()->header(), header);
        QStringList shown;
        for (int visual = 0; visual < header->count(); ++visual) {
            const int column = header->logicalIndex(visual);
            const QString title = m_editor->view()->model()->headerData(column, Qt::Horizontal).toString();
            shown.append(header->isSectionHidden(column) ? QStringLiteral("(%1)").arg(title) : title);
        }
        QCOMPARE(shown, (QStringList{"", "(Assignment)", "Type", "Key", "Value"}));
    }

private:
    static QStringList parts(const QSplitter *splitter)
    {
        QStringList names;
        for (int i = 0; i < splitter->count(); ++i) {
            names.append(splitter->widget(i)->objectName());
        }
        return names;
    }

    template <typename Part>
    Part *part(const char *name) const
    {
        return m_editor->window->findChild<Part *>(QLatin1String(name));
    }

    QList<QWidget *> inside(const char *frame) const
    {
        QList<QWidget *> widgets;
        const QLayout *layout = part<QFrame>(frame)->layout();
        for (int i = 0; i < layout->count(); ++i) {
            widgets.append(layout->itemAt(i)->widget());
        }
        return widgets;
    }

    std::unique_ptr<WindowFixture> m_editor;
};

NK_TEST_MAIN(TestWindowForm)
#include "test_window_form.moc"
