#include "../support/SceneFixture.h"
#include "TestMain.h"

#include <nkKernelServices/nkMetadataService.h>

/// Retyping an entry keeps what can be kept, and undo restores the old value with the old type.
class TestRetyping : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init() { SceneFixture::reset(); }

    void keepsWhatCanBeKept_data();
    void keepsWhatCanBeKept();
    void turnsTagsIntoEntriesAndBack();
    void toTheSameTypeIsNoChange();
};

void TestRetyping::keepsWhatCanBeKept_data()
{
    QTest::addColumn<int>("from");
    QTest::addColumn<QVariant>("before");
    QTest::addColumn<int>("to");
    QTest::addColumn<QVariant>("after");
    const QVariant text42(QStringLiteral("42"));
    const QDate date(2023, 3, 2);
    const QTime time(13, 45, 30);
    QTest::newRow("text to integer") << 0 << text42 << 1 << QVariant(42);
    QTest::newRow("integer to text") << 1 << QVariant(42) << 0 << text42;
    QTest::newRow("integer to float") << 1 << QVariant(42) << 2 << QVariant(42.0);
    QTest::newRow("float to integer") << 2 << QVariant(42.0) << 1 << QVariant(42);
    QTest::newRow("text to float") << 0 << QVariant(QStringLiteral("0.1")) << 2 << QVariant(0.1);
    QTest::newRow("float to text") << 2 << QVariant(0.1) << 0 << QVariant(QStringLiteral("0.1"));
    QTest::newRow("integer to boolean") << 1 << QVariant(42) << 3 << QVariant(true);
    QTest::newRow("zero to boolean") << 1 << QVariant(0) << 3 << QVariant(false);
    QTest::newRow("boolean to integer") << 3 << QVariant(true) << 1 << QVariant(1);
    QTest::newRow("boolean to text") << 3 << QVariant(true) << 0 << QVariant(QStringLiteral("true"));
    QTest::newRow("text to boolean") << 0 << QVariant(QStringLiteral("true")) << 3 << QVariant(true);
    QTest::newRow("date to text") << 5 << QVariant(date) << 0 << QVariant(QStringLiteral("2023-03-02"));
    QTest::newRow("text to date") << 0 << QVariant(QStringLiteral("2023-03-02")) << 5 << QVariant(date);
    QTest::newRow("text to time") << 0 << QVariant(QStringLiteral("13:45:30")) << 4 << QVariant(time);
    QTest::newRow("text to date and time")
        << 0 << QVariant(QStringLiteral("2023-03-02T13:45:30")) << 6 << QVariant(QDateTime(date, time));
    QTest::newRow("list to text") << 7 << QVariant(QVariantList{QStringLiteral("a"), 1}) << 0
                                  << QVariant(QStringLiteral("a, 1"));
    QTest::newRow("words to integer: default") << 0 << QVariant(QStringLiteral("many")) << 1 << QVariant(0);
    QTest::newRow("too large: default") << 2 << QVariant(1e300) << 1 << QVariant(0);
    QTest::newRow("words to boolean: default")
        << 0 << QVariant(QStringLiteral("maybe")) << 3 << QVariant(false);
}

void TestRetyping::keepsWhatCanBeKept()
{
    QFETCH(int, from);
    QFETCH(QVariant, before);
    QFETCH(int, to);
    QFETCH(QVariant, after);
    nkdMetadataSet set = nkMetadataService::the().createSet(QStringLiteral("s"), {});
    nkdMetadataEntry entry = set.createEntry(nkMetadataTypes::ValueType(from));
    entry.setValue(before);
    QCOMPARE(entry.getValue(), before);

    entry.setValueType(nkMetadataTypes::ValueType(to));
    QCOMPARE(int(entry.getValueType()), to);
    QCOMPARE(entry.getValue().userType(), after.userType());
    QCOMPARE(entry.getValue(), after);

    QVERIFY(kernel::Document::the().undo());
    QCOMPARE(int(entry.getValueType()), from);
    QCOMPARE(entry.getValue().userType(), before.userType());
    QCOMPARE(entry.getValue(), before);
}

void TestRetyping::turnsTagsIntoEntriesAndBack()
{
    nkdMetadataSet set = nkMetadataService::the().createSet(QStringLiteral("s"), {});
    nkdMetadataEntry entry = set.createEntry(nkMetadataTypes::Tag);
    entry.setValueType(nkMetadataTypes::Integer);
    QVERIFY(!entry.isTag());
    QCOMPARE(entry.getValue(), QVariant(0));
    entry.setValueType(nkMetadataTypes::Tag);
    QVERIFY(entry.isTag());
    QVERIFY(!entry.getValue().isValid());
}

void TestRetyping::toTheSameTypeIsNoChange()
{
    nkdMetadataSet set = nkMetadataService::the().createSet(QStringLiteral("s"), {});
    nkdMetadataEntry entry = set.createEntry(nkMetadataTypes::Integer);
    entry.setValueType(nkMetadataTypes::Integer);
    QVERIFY(kernel::Document::the().undo());
    QVERIFY(!entry.isAlive());
}

NK_GUILESS_TEST_MAIN(TestRetyping)
#include "test_retyping.moc"
