#include "TestRows.h"

#include <TestMain.h>
#include <nkQt4Ext/QNKCustomFilterProxyModel.h>
#include <nkQt4Ext/QNKTreeView.h>

#include <QDateEdit>
#include <QLineEdit>
#include <QSignalSpy>
#include <QStyledItemDelegate>

class OpenEditorTest;
Q_DECLARE_METATYPE(std::function<void(OpenEditorTest *)>)

/// A delegate whose editor for column 1 is a date edit, to see that more than line edits are kept.
class DateDelegate : public QStyledItemDelegate
{
    Q_OBJECT
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    QWidget *createEditor(QWidget *parent, const QStyleOptionViewItem &, const QModelIndex &) const override
    {
        return new QDateEdit(parent);
    }
    void setEditorData(QWidget *editor, const QModelIndex &) const override
    {
        static_cast<QDateEdit *>(editor)->setDate(QDate(2001, 2, 3));
    }
    void setModelData(QWidget *, QAbstractItemModel *, const QModelIndex &) const override {}
};

/// What happens to an open editor and the text being typed when rows change under it.
class OpenEditorTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void typedTextSurvives_data();
    void typedTextSurvives();
    void untouchedEditorShowsTheNewValue();
    void dateBeingTypedSurvivesReset();
    void escapeRestores();
    void editorOfGoneRowClosesWithoutWriting_data();
    void editorOfGoneRowClosesWithoutWriting();
    void filterThatHidesTheRowCommitsFirst();
    void filterThatKeepsTheRowKeepsTheEditor();
    void commitOpenEditorsWritesAndCloses();
    void selectionChangeCommitsFirst();
    void equalSelectionKeepsTheEditor();
    void selectionInAnotherViewCommitsToo();
    void rowChangeCommitsFirst();
    void reloadInsideCommitDoesNotReopen();
    void commitThatDeletesTheViewIsSurvived();
    void selectionInsideCommitDoesNotCommitTwice();
    void indexWidgetsAreNoEditors();

private:
    std::unique_ptr<TestSource> m_source;
    std::unique_ptr<TestModel> m_model;
    std::unique_ptr<QNKCustomFilterProxyModel> m_proxy;
    QPointer<QNKTreeView> m_view;
    QVector<QPair<quint64, QString>> m_written;

    QModelIndex shown(quint64 id, int column = 0) const;
    QLineEdit *editor() const { return m_view->viewport()->findChild<QLineEdit *>(); }
    QLineEdit *openAndType(quint64 id, const QString &text);
};

void OpenEditorTest::init()
{
    m_source = std::make_unique<TestSource>();
    m_source->rows = testRows({1, 2, 3, 4, 5, 6, 7, 8});
    m_model = std::make_unique<TestModel>(m_source.get());
    m_source->onUserDataChanged = [this](quint64 id, int column) {
        const QString text = m_model->indexFromId(id, column).data(Qt::UserRole).toString();
        m_written.append({id, text});
        for (TestSource::Row &row : m_source->rows) {
            if (row.id == id)
                row.text = text;
        }
    };
    m_proxy = std::make_unique<QNKCustomFilterProxyModel>();
    m_proxy->setSourceModel(m_model.get());
    m_view = new QNKTreeView;
    m_view->setSelectionMode(QAbstractItemView::ExtendedSelection);
    m_view->setModel(m_proxy.get());
    m_view->show();
    m_view->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(m_view));
}

void OpenEditorTest::cleanup()
{
    delete m_view;
    m_proxy.reset();
    m_model.reset();
    QCOMPARE(m_source->living, 0);
    m_source.reset();
    m_written.clear();
}

QModelIndex OpenEditorTest::shown(quint64 id, int column) const
{
    return m_proxy->mapFromSource(m_model->indexFromId(id, column));
}

/// Opens the editor of a row's text and types a text, leaving the cursor behind its second character.
QLineEdit *OpenEditorTest::openAndType(quint64 id, const QString &text)
{
    m_view->setCurrentIndex(shown(id));
    m_view->edit(shown(id));
    QLineEdit *const edit = editor();
    if (!edit)
        qFatal("no editor");
    QTest::keyClicks(edit, text);
    edit->setCursorPosition(2);
    return edit;
}

void OpenEditorTest::typedTextSurvives_data()
{
    QTest::addColumn<std::function<void(OpenEditorTest *)>>("change");
    using Test = OpenEditorTest;
    const auto row = [](const char *name, const std::function<void(Test *)> &change) {
        QTest::newRow(name) << change;
    };
    row("reload", [](Test *t) { t->m_model->reload(); });
    row("changed cell", [](Test *t) {
        t->m_source->rows[2].text = QStringLiteral("from elsewhere");
        t->m_model->reload();
    });
    row("changed row", [](Test *t) {
        t->m_source->rows[2].text = QStringLiteral("from elsewhere");
        t->m_source->rows[2].number = 99;
        t->m_model->reload();
    });
    row("notification", [](Test *t) {
        t->m_model->itemFromIndex(t->m_model->indexFromId(3))->setText(QStringLiteral("told"), 0);
    });
    row("row before", [](Test *t) {
        t->m_source->rows.prepend(testRows({100}).first());
        t->m_model->reload();
    });
    row("reset", [](Test *t) {
        t->m_source->rows = testRows({100, 101, 102, 103, 104, 105, 106, 3});
        t->m_model->reload();
    });
    row("order", [](Test *t) {
        std::reverse(t->m_source->rows.begin(), t->m_source->rows.end());
        t->m_model->reload();
    });
    row("sort", [](Test *t) { t->m_proxy->sort(0, Qt::DescendingOrder); });
    row("filter", [](Test *t) { t->m_proxy->setFilterWildcard(QStringLiteral("3")); });
    row("twice reset", [](Test *t) {
        t->m_source->rows = testRows({100, 101, 102, 103, 104, 105, 106, 3});
        t->m_model->reload();
        t->m_source->rows = testRows({3, 1, 2, 4, 5, 6, 7, 8});
        t->m_model->reload();
    });
}

void OpenEditorTest::typedTextSurvives()
{
    QFETCH(std::function<void(OpenEditorTest *)>, change);
    openAndType(3, QStringLiteral("typed"));
    change(this);
    QCoreApplication::processEvents();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QLineEdit *const edit = editor();
    QVERIFY(edit);
    QVERIFY(edit->isVisible());
    QVERIFY(edit->hasFocus());
    QCOMPARE(edit->text(), QStringLiteral("typed"));
    QCOMPARE(edit->cursorPosition(), 2);
    QVERIFY(!edit->hasSelectedText());
    QVERIFY(m_written.isEmpty());
    QCOMPARE(m_view->indexWidget(shown(3)), edit);

    QTest::keyClick(edit, Qt::Key_Return);
    QCoreApplication::processEvents();
    QCOMPARE(m_written, (QVector<QPair<quint64, QString>>{{3, QStringLiteral("typed")}}));
    QVERIFY(!m_view->indexWidget(shown(3)));
}

void OpenEditorTest::untouchedEditorShowsTheNewValue()
{
    m_view->setCurrentIndex(shown(3));
    m_view->edit(shown(3));
    QCOMPARE(editor()->text(), QStringLiteral("row 3"));
    m_source->rows[2].text = QStringLiteral("from elsewhere");
    m_model->reload();
    QCOMPARE(editor()->text(), QStringLiteral("from elsewhere"));
    m_source->rows[2].text = QStringLiteral("again");
    m_model->reload();
    QCOMPARE(editor()->text(), QStringLiteral("again"));
}

void OpenEditorTest::dateBeingTypedSurvivesReset()
{
    DateDelegate delegate;
    m_view->setItemDelegateForColumn(1, &delegate);
    m_view->setCurrentIndex(shown(3, 1));
    m_view->edit(shown(3, 1));
    auto *edit = m_view->viewport()->findChild<QDateEdit *>();
    QVERIFY(edit);
    edit->setDate(QDate(2020, 5, 6));
    const QString text = edit->text();
    m_source->rows = testRows({100, 101, 102, 103, 104, 105, 106, 3});
    m_model->reload();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    edit = m_view->viewport()->findChild<QDateEdit *>();
    QVERIFY(edit);
    QCOMPARE(edit->date(), QDate(2020, 5, 6));
    QCOMPARE(edit->text(), text);
}

void OpenEditorTest::escapeRestores()
{
    QLineEdit *const edit = openAndType(3, QStringLiteral("typed"));
    m_model->reload();
    QTest::keyClick(edit, Qt::Key_Escape);
    QCoreApplication::processEvents();
    QVERIFY(!m_view->indexWidget(shown(3)));
    QVERIFY(m_written.isEmpty());
    QCOMPARE(shown(3).data().toString(), QStringLiteral("row 3"));
}

void OpenEditorTest::editorOfGoneRowClosesWithoutWriting_data()
{
    QTest::addColumn<QVector<quint64>>("left");
    QTest::newRow("removed") << QVector<quint64>{1, 2, 4, 5, 6, 7, 8};
    QTest::newRow("reset") << QVector<quint64>{100, 101, 102, 103};
    QTest::newRow("emptied") << QVector<quint64>{};
}

void OpenEditorTest::editorOfGoneRowClosesWithoutWriting()
{
    QFETCH(QVector<quint64>, left);
    openAndType(3, QStringLiteral("typed"));
    m_source->rows = testRows(left);
    m_model->reload();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QCoreApplication::processEvents();
    QVERIFY(!editor());
    QVERIFY(m_written.isEmpty());
    QVERIFY(m_view->hasFocus());
    for (int row = 0; row < m_proxy->rowCount(); ++row)
        QVERIFY(m_proxy->index(row, 0).data().toString().startsWith(QLatin1String("row ")));
    m_source->rows.append(testRows({3}).first()); // the view can edit again
    m_model->reload();
    m_view->edit(shown(3));
    QVERIFY(editor());
}

void OpenEditorTest::filterThatHidesTheRowCommitsFirst()
{
    openAndType(3, QStringLiteral("typed"));
    m_proxy->setFilterWildcard(QStringLiteral("5"));
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QCOMPARE(m_written, (QVector<QPair<quint64, QString>>{{3, QStringLiteral("typed")}}));
    QVERIFY(!editor());
}

void OpenEditorTest::filterThatKeepsTheRowKeepsTheEditor()
{
    openAndType(3, QStringLiteral("typed"));
    m_proxy->setFilterWildcard(QStringLiteral("row"));
    QCOMPARE(m_written.size(), 0);
    QCOMPARE(editor()->text(), QStringLiteral("typed"));
    m_proxy->setFilterWildcard(QStringLiteral("3"));
    QCOMPARE(m_written.size(), 0);
    QCOMPARE(editor()->text(), QStringLiteral("typed"));
}

void OpenEditorTest::commitOpenEditorsWritesAndCloses()
{
    QNKViewBase::commitOpenEditors(); // none is open
    openAndType(3, QStringLiteral("typed"));
    QSignalSpy data(m_model.get(), &QAbstractItemModel::dataChanged);
    QNKViewBase::commitOpenEditors();
    QCOMPARE(m_written, (QVector<QPair<quint64, QString>>{{3, QStringLiteral("typed")}}));
    QVERIFY(!m_view->indexWidget(shown(3)));
    QCOMPARE(data.count(), 1);
    QNKViewBase::commitOpenEditors();
    QCOMPARE(m_written.size(), 1);
}

void OpenEditorTest::selectionChangeCommitsFirst()
{
    openAndType(3, QStringLiteral("typed"));
    int writtenBefore = -1;
    connect(m_view->selectionModel(), &QItemSelectionModel::selectionChanged, this,
            [&] { writtenBefore = m_written.size(); });
    m_view->selectionModel()->select(shown(5), QItemSelectionModel::ClearAndSelect);
    QCOMPARE(writtenBefore, 1);
    QVERIFY(!m_view->indexWidget(shown(3)));
    QVERIFY(m_view->selectionModel()->isSelected(shown(5)));
}

void OpenEditorTest::equalSelectionKeepsTheEditor()
{
    QLineEdit *const edit = openAndType(3, QStringLiteral("typed"));
    m_view->selectionModel()->select(shown(3),
                                     QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
    m_view->selectionModel()->setCurrentIndex(shown(3), QItemSelectionModel::NoUpdate);
    QCOMPARE(m_view->indexWidget(shown(3)), edit);
    QVERIFY(m_written.isEmpty());
}

void OpenEditorTest::selectionInAnotherViewCommitsToo()
{
    QNKTreeView other;
    other.setModel(m_model.get());
    other.setSelectionMode(QAbstractItemView::MultiSelection);
    openAndType(3, QStringLiteral("typed"));
    other.selectAll();
    QCOMPARE(m_written.size(), 1);
    QVERIFY(!m_view->indexWidget(shown(3)));
}

void OpenEditorTest::rowChangeCommitsFirst()
{
    openAndType(3, QStringLiteral("typed"));
    m_proxy->sort(0); // the commit moves the row
    m_view->selectionModel()->setCurrentIndex(shown(4), QItemSelectionModel::NoUpdate);
    QCOMPARE(m_written.size(), 1);
    QCOMPARE(m_view->currentIndex(), shown(4));
}

void OpenEditorTest::reloadInsideCommitDoesNotReopen()
{
    const auto write = m_source->onUserDataChanged;
    m_source->onUserDataChanged = [this, write](quint64 id, int column) {
        write(id, column);
        m_source->rows = testRows({100, 101, 102, 103, 104, 105, 106, 3});
        m_model->reload();
    };
    QLineEdit *const edit = openAndType(3, QStringLiteral("typed"));
    QTest::keyClick(edit, Qt::Key_Return);
    QCoreApplication::processEvents();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QCOMPARE(m_written.size(), 1);
    QVERIFY(!editor());
    m_view->edit(shown(3));
    QVERIFY(editor());
}

void OpenEditorTest::commitThatDeletesTheViewIsSurvived()
{
    QNKTreeView other; // stands behind in the list of views
    other.setModel(m_model.get());
    openAndType(3, QStringLiteral("typed"));
    bool deleted = false;
    connect(m_proxy.get(), &QAbstractItemModel::dataChanged, this, [&] {
        if (!deleted)
            m_view->deleteLater();
        deleted = true;
    });
    QNKViewBase::commitOpenEditors();
    QVERIFY(deleted);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QNKViewBase::commitOpenEditors();
}

void OpenEditorTest::selectionInsideCommitDoesNotCommitTwice()
{
    const auto write = m_source->onUserDataChanged;
    m_source->onUserDataChanged = [this, write](quint64 id, int column) {
        write(id, column);
        m_view->selectionModel()->select(shown(5), QItemSelectionModel::ClearAndSelect);
    };
    openAndType(3, QStringLiteral("typed"));
    QNKViewBase::commitOpenEditors();
    QCOMPARE(m_written.size(), 1);
    QVERIFY(!m_view->indexWidget(shown(3)));
    QVERIFY(m_view->selectionModel()->isSelected(shown(5)));
}

void OpenEditorTest::indexWidgetsAreNoEditors()
{
    m_view->setIndexWidget(shown(3), new QLineEdit(QStringLiteral("stays")));
    m_view->setCurrentIndex(shown(3));
    QNKViewBase::commitOpenEditors();
    QVERIFY(m_view->indexWidget(shown(3)));
    QVERIFY(m_written.isEmpty());
}

NK_TEST_MAIN(OpenEditorTest)
#include "test_open_editor.moc"
