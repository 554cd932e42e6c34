#include "SignalChecker.h"
#include "WordProxy.h"

#include <TestMain.h>
#include <nkQt4Ext/QNKSortFilterProxyModel.h>

#include <QAbstractItemModelTester>
#include <QSignalSpy>
#include <QStandardItemModel>

#include <algorithm>

class TestSortFilterProxy : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void initTestCase()
    {
        // What QSignalSpy has to keep.
        qRegisterMetaType<QList<QPersistentModelIndex>>();
        qRegisterMetaType<QAbstractItemModel::LayoutChangeHint>();
        qRegisterMetaType<Qt::Orientation>();
    }

    void whatNobodyLooksAtIsNotAskedFor();
    void aFilterKeepsTheOrderWithoutComparing();
    void keysOrderTextsAsTheComparisonDoes();
    void rowsThatAreEqualKeepTheOrderOfTheSource();
    void aColumnThatIsNotThereLeavesTheOrderOfTheSource();
    void withoutDynamicSortFilterChangedRowsStayWhereTheyAre();
    void sortingTheSameWayAgainTellsNothing();
    void selectionsAreMappedByRuns();
    void rowsAreRemovedThroughTheProxy();
    void rowsAreInsertedBeforeTheRowAtThatPlace();
    void withoutASourceEverythingIsEmpty();
    void aSourceThatDiesLeavesNothing();
    void headersAreThoseOfTheSource();
    void aListenerThatChangesTheSourceIsFollowed();
    void indexesOfColumnsButTheFirstHaveNoChildren();
};

namespace {

/// Rows of one text each, the second cell as it is asked for.
void fill(QStandardItemModel &model, const QStringList &texts)
{
    for (const QString &text : texts)
        model.appendRow({new QStandardItem(text), new QStandardItem(text.toUpper())});
}

QStringList shownTexts(const QAbstractItemModel &model, const QModelIndex &parent = {})
{
    QStringList texts;
    for (int row = 0; row < model.rowCount(parent); ++row)
        texts.append(model.index(row, 0, parent).data().toString());
    return texts;
}

} // namespace

void TestSortFilterProxy::whatNobodyLooksAtIsNotAskedFor()
{
    QStandardItemModel rows;
    fill(rows, {QStringLiteral("a"), QStringLiteral("b")});
    fill(rows, {QStringLiteral("c")});
    for (int i = 0; i < 50; ++i)
        rows.item(0)->appendRow(new QStandardItem(QStringLiteral("below")));
    WordProxy proxy(true);
    proxy.setRecursiveFilteringEnabled(true);
    proxy.setRecursiveAcceptEnabled(true);
    proxy.setSourceModel(&rows);
    QCOMPARE(proxy.asked, 0);
    QCOMPARE(proxy.rowCount(), 3);
    QVERIFY(proxy.hasChildren(proxy.index(0, 0)));
    QVERIFY2(proxy.asked < 10, qPrintable(QString::number(proxy.asked)));
    QCOMPARE(proxy.rowCount(proxy.index(0, 0)), 50);
}

void TestSortFilterProxy::aFilterKeepsTheOrderWithoutComparing()
{
    QStandardItemModel rows;
    QStringList texts;
    for (int i = 0; i < 200; ++i)
        texts.append(QString::number((i * 37) % 200));
    fill(rows, texts);
    WordProxy proxy(false);
    proxy.setSourceModel(&rows);
    proxy.sort(0);
    QCOMPARE(proxy.rowCount(), 200);
    proxy.compared = 0;
    proxy.setWord(QStringLiteral("7"));
    QCOMPARE(shownTexts(proxy).mid(0, 3), (QStringList{"7", "17", "27"}));
    proxy.setWord({});
    QCOMPARE(shownTexts(proxy).mid(0, 3), (QStringList{"0", "1", "2"}));
    QCOMPARE(proxy.compared, 0);
}

void TestSortFilterProxy::keysOrderTextsAsTheComparisonDoes()
{
    QStringList texts{QString(),
                      QStringLiteral("Part 9"),
                      QStringLiteral("Part 10"),
                      QStringLiteral("part 10"),
                      QStringLiteral("part 010"),
                      QStringLiteral("0"),
                      QStringLiteral("00"),
                      QStringLiteral("a/"),
                      QStringLiteral("a:"),
                      QStringLiteral("\u00e4"),
                      QStringLiteral("\u00c4"),
                      QString(QChar(0)),
                      QString(QChar(1)),
                      QString(QChar(2)),
                      QStringLiteral("a") + QChar(0),
                      QStringLiteral("a") + QChar(0) + QStringLiteral("b"),
                      QString(QChar(0xd800)),
                      QString(QChar(0xe000)),
                      QString::fromUcs4(U"\U0001F600", 1),
                      QString(300, QLatin1Char('9')),
                      QString(299, QLatin1Char('9')) + QLatin1Char('8'),
                      QString(254, QLatin1Char('9')),
                      QString(255, QLatin1Char('1'))};
    QRandomGenerator random(5);
    const QString letters = QStringLiteral("aAb0129.\u00df\u0130");
    for (int i = 0; i < 300; ++i) {
        QString text;
        for (int length = int(random.bounded(6)); length > 0; --length)
            text.append(letters[int(random.bounded(letters.size()))]);
        texts.append(text);
    }
    class Keys : public QNKSortFilterProxyModel
    {
    public:
        using QNKSortFilterProxyModel::appendInvertedTextSortKey;
        using QNKSortFilterProxyModel::appendTextSortKey;
        using QNKSortFilterProxyModel::lessThan;
    };
    const Keys keys;
    for (const QString &left : qAsConst(texts)) {
        for (const QString &right : qAsConst(texts)) {
            QByteArray a;
            QByteArray b;
            Keys::appendTextSortKey(left, a);
            Keys::appendTextSortKey(right, b);
            QCOMPARE(a < b, keys.lessThan(left, right));
            QCOMPARE(a == b, left == right);
            QVERIFY(left == right || !b.startsWith(a));
            QByteArray upsideDownA;
            QByteArray upsideDownB;
            Keys::appendInvertedTextSortKey(left, upsideDownA);
            Keys::appendInvertedTextSortKey(right, upsideDownB);
            QCOMPARE(upsideDownA < upsideDownB, keys.lessThan(right, left));
        }
    }
}

void TestSortFilterProxy::rowsThatAreEqualKeepTheOrderOfTheSource()
{
    for (const bool withKeys : {false, true}) {
        QStandardItemModel rows;
        fill(rows, QStringList{"b", "a", "b", "a"});
        WordProxy proxy(withKeys);
        proxy.setSourceModel(&rows);
        const auto sourceRows = [&] {
            QVector<int> found;
            for (int row = 0; row < proxy.rowCount(); ++row)
                found.append(proxy.mapToSource(proxy.index(row, 0)).row());
            return found;
        };
        proxy.sort(0, Qt::AscendingOrder);
        QCOMPARE(sourceRows(), (QVector<int>{1, 3, 0, 2}));
        proxy.sort(0, Qt::DescendingOrder);
        QCOMPARE(sourceRows(), (QVector<int>{0, 2, 1, 3}));
    }
}

void TestSortFilterProxy::aColumnThatIsNotThereLeavesTheOrderOfTheSource()
{
    QStandardItemModel rows;
    fill(rows, QStringList{"b", "a"});
    WordProxy proxy(true);
    proxy.setSourceModel(&rows);
    proxy.sort(0);
    QCOMPARE(shownTexts(proxy), (QStringList{"a", "b"}));
    proxy.sort(7);
    QCOMPARE(shownTexts(proxy), (QStringList{"b", "a"}));
    QCOMPARE(proxy.sortColumn(), 7);
    proxy.sort(-1, Qt::DescendingOrder);
    QCOMPARE(shownTexts(proxy), (QStringList{"b", "a"}));
    QCOMPARE(proxy.sortOrder(), Qt::DescendingOrder);
}

void TestSortFilterProxy::withoutDynamicSortFilterChangedRowsStayWhereTheyAre()
{
    QStandardItemModel rows;
    fill(rows, QStringList{"a1", "a2", "a3"});
    WordProxy proxy(true);
    proxy.setSourceModel(&rows);
    proxy.setWord(QStringLiteral("a"));
    proxy.sort(0);
    QVERIFY(proxy.dynamicSortFilter());
    proxy.setDynamicSortFilter(false);
    QVERIFY(!proxy.dynamicSortFilter());
    QCOMPARE(proxy.rowCount(), 3);
    QSignalSpy told(&proxy, &QAbstractItemModel::dataChanged);
    rows.item(0)->setText(QStringLiteral("a9"));
    rows.item(1)->setText(QStringLiteral("b"));
    QCOMPARE(shownTexts(proxy), (QStringList{"a9", "b", "a3"}));
    QCOMPARE(told.size(), 2);
    proxy.setDynamicSortFilter(true);
    QCOMPARE(shownTexts(proxy), (QStringList{"a3", "a9"}));
}

void TestSortFilterProxy::sortingTheSameWayAgainTellsNothing()
{
    QStandardItemModel rows;
    fill(rows, QStringList{"b", "a"});
    WordProxy proxy(true);
    proxy.setSourceModel(&rows);
    proxy.sort(0);
    QSignalSpy told(&proxy, &QAbstractItemModel::layoutChanged);
    proxy.sort(0);
    QCOMPARE(told.size(), 0);
    proxy.sort(0, Qt::DescendingOrder);
    QCOMPARE(told.size(), 1);
}

void TestSortFilterProxy::selectionsAreMappedByRuns()
{
    QStandardItemModel rows;
    fill(rows, QStringList{"a", "b", "ab", "c", "ac", "a"});
    WordProxy proxy(true);
    proxy.setSourceModel(&rows);
    proxy.setWord(QStringLiteral("a")); // shows the source rows 0, 2, 4, 5
    const QItemSelection all(proxy.index(0, 0), proxy.index(3, 1));
    const QItemSelection source = proxy.mapSelectionToSource(all);
    QCOMPARE(source.size(), 3);
    QCOMPARE(source.last(), QItemSelectionRange(rows.index(4, 0), rows.index(5, 1)));
    QCOMPARE(source.indexes().size(), 8);
    const QItemSelection back = proxy.mapSelectionFromSource(
        QItemSelection(rows.index(0, 0), rows.index(5, 1)));
    QCOMPARE(back, all);
}

void TestSortFilterProxy::rowsAreRemovedThroughTheProxy()
{
    QStandardItemModel rows;
    fill(rows, QStringList{"c", "b", "a", "d"});
    WordProxy proxy(true);
    proxy.setSourceModel(&rows);
    proxy.sort(0);
    QVERIFY(proxy.removeRows(1, 2));
    QCOMPARE(shownTexts(rows), (QStringList{"a", "d"}));
    QCOMPARE(shownTexts(proxy), (QStringList{"a", "d"}));
    QVERIFY(!proxy.removeRows(1, 2));
}

void TestSortFilterProxy::rowsAreInsertedBeforeTheRowAtThatPlace()
{
    QStandardItemModel rows;
    fill(rows, QStringList{"b", "a"});
    WordProxy proxy(true);
    proxy.setSourceModel(&rows);
    proxy.sort(0);
    QVERIFY(proxy.insertRows(0, 1)); // before "a", the second of the source
    QCOMPARE(shownTexts(rows), (QStringList{"b", QString(), "a"}));
    QVERIFY(proxy.insertRows(proxy.rowCount(), 1));
    QCOMPARE(rows.rowCount(), 4);
    QVERIFY(!proxy.insertRows(9, 1));
}

void TestSortFilterProxy::withoutASourceEverythingIsEmpty()
{
    WordProxy proxy(true);
    const QAbstractItemModelTester tester(&proxy, QAbstractItemModelTester::FailureReportingMode::Fatal);
    proxy.refilter();
    proxy.sort(0);
    QCOMPARE(proxy.rowCount(), 0);
    QCOMPARE(proxy.columnCount(), 0);
    QVERIFY(!proxy.hasChildren());
    QVERIFY(!proxy.index(0, 0).isValid());
    QVERIFY(!proxy.headerData(0, Qt::Horizontal).isValid());
    QVERIFY(!proxy.removeRows(0, 1));
    QStandardItemModel rows;
    fill(rows, QStringList{"b", "a"});
    proxy.setSourceModel(&rows);
    QCOMPARE(shownTexts(proxy), (QStringList{"a", "b"}));
    proxy.setSourceModel(nullptr);
    QCOMPARE(proxy.rowCount(), 0);
    rows.appendRow(new QStandardItem); // nobody listens
}

void TestSortFilterProxy::aSourceThatDiesLeavesNothing()
{
    auto rows = std::make_unique<QStandardItemModel>();
    fill(*rows, QStringList{"b", "a"});
    WordProxy proxy(true);
    proxy.setSourceModel(rows.get());
    QPersistentModelIndex kept = proxy.index(1, 0);
    QSignalSpy told(&proxy, &QAbstractItemModel::modelReset);
    rows.reset();
    QCOMPARE(told.size(), 1);
    QVERIFY(!kept.isValid());
    QCOMPARE(proxy.rowCount(), 0);
}

void TestSortFilterProxy::headersAreThoseOfTheSource()
{
    QStandardItemModel rows;
    fill(rows, QStringList{"b", "a"});
    rows.setHorizontalHeaderLabels({"first", "second"});
    rows.setVerticalHeaderLabels({"row of b", "row of a"});
    WordProxy proxy(true);
    proxy.setSourceModel(&rows);
    proxy.sort(0);
    QCOMPARE(proxy.headerData(1, Qt::Horizontal).toString(), QStringLiteral("second"));
    QCOMPARE(proxy.headerData(0, Qt::Vertical).toString(), QStringLiteral("row of a"));
    QVERIFY(!proxy.headerData(5, Qt::Vertical).isValid());
    QSignalSpy told(&proxy, &QAbstractItemModel::headerDataChanged);
    QVERIFY(proxy.setHeaderData(0, Qt::Vertical, QStringLiteral("new")));
    QCOMPARE(rows.headerData(1, Qt::Vertical).toString(), QStringLiteral("new"));
    QCOMPARE(told.size(), 1);
    proxy.setWord(QStringLiteral("none"));
    QCOMPARE(proxy.headerData(0, Qt::Horizontal).toString(), QStringLiteral("first"));
}

void TestSortFilterProxy::aListenerThatChangesTheSourceIsFollowed()
{
    QStandardItemModel rows;
    QStringList texts;
    for (int i = 0; i < 12; ++i)
        texts.append(i % 2 ? QStringLiteral("a%1").arg(i) : QStringLiteral("b%1").arg(i));
    fill(rows, texts);
    WordProxy proxy(true);
    proxy.setSourceModel(&rows);
    proxy.setWord(QStringLiteral("a"));
    SignalChecker checker(&proxy);
    bool isDone = false;
    connect(&proxy, &QAbstractItemModel::rowsRemoved, this, [&] {
        if (!isDone) {
            isDone = true;
            rows.insertRow(0, new QStandardItem(QStringLiteral("a99")));
        }
    });
    rows.blockSignals(true);
    for (int row = 0; row < 12; row += 3)
        rows.item(row)->setText(row % 2 ? QStringLiteral("b") : QStringLiteral("a") + QString::number(row));
    rows.blockSignals(false);
    Q_EMIT rows.dataChanged(rows.index(0, 0), rows.index(11, 0));
    QVERIFY(isDone);
    QCOMPARE(shownTexts(proxy), (QStringList{"a99", "a0", "a1", "a5", "a6", "a7", "a11"}));
    QCOMPARE(checker.fault(), QString());
}

void TestSortFilterProxy::indexesOfColumnsButTheFirstHaveNoChildren()
{
    QStandardItemModel rows;
    fill(rows, QStringList{"a"});
    rows.item(0)->appendRow(new QStandardItem(QStringLiteral("below")));
    WordProxy proxy(true);
    proxy.setSourceModel(&rows);
    QCOMPARE(proxy.rowCount(proxy.index(0, 0)), 1);
    QCOMPARE(proxy.rowCount(proxy.index(0, 1)), 0);
    QVERIFY(!proxy.hasChildren(proxy.index(0, 1)));
}

NK_TEST_MAIN(TestSortFilterProxy)
#include "test_sort_filter_proxy.moc"
