#include <TestMain.h>

#include <kernel/document/IndexTable.h>
#include <kernel/document/KeyPool.h>
#include <kernel/document/SlotList.h>
#include <kernel/document/SlotTable.h>
#include <kernel/document/UniqueNames.h>

#include <QRandomGenerator>
#include <QSet>

#include <set>

using namespace kernel;

/// The containers under the document.
class TestTables : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void slotListStaysInOrderWhateverComesAndGoes();
    void slotListGivesRemovedSlotsTheirPlaceBack();
    void slotListTakesManyRemovalsWithoutReadingInBetween();
    void indexTableAgreesWithASet();
    void indexTableFindsAcrossGapsAfterRemoval();
    void slotTableKeepsRecordsInPlaceWhileGrowing();
    void keyPoolGivesEqualTextsOneNumber();
    void uniqueNamesCountUpwards();
    void uniqueNamesGiveReleasedNumbersAgain();
    void uniqueNamesTellBasesThatEndInDigitsApart();
};

namespace {

QVector<Slot> asVector(const std::set<Slot> &slots)
{
    return QVector<Slot>(slots.cbegin(), slots.cend());
}

} // namespace

void TestTables::slotListStaysInOrderWhateverComesAndGoes()
{
    QRandomGenerator random(17);
    SlotList list;
    std::set<Slot> expected;
    Slot next = 0;
    for (int step = 0; step < 20000; ++step) {
        const bool known = random.bounded(2) == 0 && next > 0;
        const Slot slot = known ? Slot(random.bounded(next)) : next++;
        if (expected.erase(slot) > 0) {
            list.remove(slot);
        } else {
            list.insert(slot);
            expected.insert(slot);
        }
        QCOMPARE(list.size(), int(expected.size()));
        if (random.bounded(50) == 0) {
            QCOMPARE(list.slots(), asVector(expected));
        }
    }
    QCOMPARE(list.slots(), asVector(expected));
}

void TestTables::slotListGivesRemovedSlotsTheirPlaceBack()
{
    SlotList list;
    for (const Slot slot : {3u, 5u, 8u, 13u}) {
        list.insert(slot);
    }
    list.remove(5);
    list.remove(3);
    QCOMPARE(list.slots(), (QVector<Slot>{8, 13}));
    list.insert(3);
    list.insert(5);
    QCOMPARE(list.size(), 4);
    QCOMPARE(list.at(0), 3u);
    QCOMPARE(list.at(1), 5u);
}

void TestTables::slotListTakesManyRemovalsWithoutReadingInBetween()
{
    constexpr Slot count = 200000;
    SlotList list;
    for (Slot slot = 0; slot < count; ++slot) {
        list.insert(slot);
    }
    // From the front: moving the rest up each time would take minutes.
    for (Slot slot = 0; slot + 1 < count; ++slot) {
        list.remove(slot);
        QCOMPARE(list.size(), int(count - slot - 1));
    }
    QCOMPARE(list.slots(), QVector<Slot>{count - 1});
    for (Slot slot = count - 1; slot-- > 0;) {
        list.insert(slot);
    }
    QCOMPARE(list.size(), int(count));
    QCOMPARE(list.at(4711), 4711u);
}

void TestTables::indexTableAgreesWithASet()
{
    // Few hashes, so that most numbers collide.
    const auto hashOf = [](quint32 number) { return number % 23; };
    QRandomGenerator random(4);
    IndexTable table;
    QSet<quint32> expected;
    for (int step = 0; step < 20000; ++step) {
        const quint32 number = random.bounded(400u);
        if (expected.remove(number)) {
            table.remove(number, hashOf);
        } else {
            table.insert(number, hashOf);
            expected.insert(number);
        }
        const quint32 probe = random.bounded(400u);
        const quint32 found = table.find(hashOf(probe), [probe](quint32 other) { return other == probe; });
        QCOMPARE(found, expected.contains(probe) ? probe : IndexTable::None);
        QCOMPARE(int(table.size()), expected.size());
    }
}

void TestTables::indexTableFindsAcrossGapsAfterRemoval()
{
    const auto sameHash = [](quint32) { return 14u; };
    IndexTable table;
    for (quint32 number = 0; number < 6; ++number) {
        table.insert(number, sameHash);
    }
    table.remove(0, sameHash);
    table.remove(3, sameHash);
    for (const quint32 number : {1u, 2u, 4u, 5u}) {
        QCOMPARE(table.find(14, [number](quint32 other) { return other == number; }), number);
    }
}

void TestTables::slotTableKeepsRecordsInPlaceWhileGrowing()
{
    SlotTable<int> table;
    table.append(42);
    const int *first = &table[0];
    for (int number = 1; number < 10000; ++number) {
        QCOMPARE(table.append(number), quint32(number));
    }
    QCOMPARE(&table[0], first);
    QCOMPARE(table[0], 42);
    QCOMPARE(table[9999], 9999);
}

void TestTables::keyPoolGivesEqualTextsOneNumber()
{
    KeyPool pool;
    QVector<quint32> numbers;
    for (int key = 0; key < 5000; ++key) {
        numbers.append(pool.number(QStringLiteral("key %1").arg(key)));
    }
    QCOMPARE(pool.number(QStringLiteral("key 77")), numbers.at(77));
    QCOMPARE(pool.find(QStringLiteral("key 4999")), numbers.at(4999));
    QCOMPARE(pool.text(numbers.at(1234)), QStringLiteral("key 1234"));
    QCOMPARE(pool.find(QStringLiteral("Key 77")), KeyPool::None);
}

void TestTables::uniqueNamesCountUpwards()
{
    UniqueNames names;
    QSet<QString> taken;
    const auto isTaken = [&taken](const QString &name) { return taken.contains(name); };
    QStringList given;
    for (int count = 0; count < 4; ++count) {
        given << names.unique(QStringLiteral("Set"), isTaken);
        taken.insert(given.last());
    }
    QCOMPARE(given, (QStringList{"Set", "Set2", "Set3", "Set4"}));
}

void TestTables::uniqueNamesGiveReleasedNumbersAgain()
{
    UniqueNames names;
    QSet<QString> taken{"A", "A2", "A3", "A4"};
    const auto isTaken = [&taken](const QString &name) { return taken.contains(name); };
    QCOMPARE(names.unique(QStringLiteral("A"), isTaken), QStringLiteral("A5"));
    taken.remove(QStringLiteral("A3"));
    names.released(QStringLiteral("A3"));
    QCOMPARE(names.unique(QStringLiteral("A"), isTaken), QStringLiteral("A3"));
    taken.remove(QStringLiteral("A"));
    names.released(QStringLiteral("A"));
    QCOMPARE(names.unique(QStringLiteral("A"), isTaken), QStringLiteral("A"));
}

void TestTables::uniqueNamesTellBasesThatEndInDigitsApart()
{
    UniqueNames names;
    QSet<QString> taken{"A", "A2", "A1", "A12"};
    const auto isTaken = [&taken](const QString &name) { return taken.contains(name); };
    QCOMPARE(names.unique(QStringLiteral("A1"), isTaken), QStringLiteral("A13"));
    taken.insert(QStringLiteral("A13"));
    QCOMPARE(names.unique(QStringLiteral("A"), isTaken), QStringLiteral("A3"));
    taken.remove(QStringLiteral("A12"));
    names.released(QStringLiteral("A12"));
    QCOMPARE(names.unique(QStringLiteral("A1"), isTaken), QStringLiteral("A12"));
    QCOMPARE(names.unique(QStringLiteral("A"), isTaken), QStringLiteral("A3"));
}

NK_GUILESS_TEST_MAIN(TestTables)
#include "test_tables.moc"
