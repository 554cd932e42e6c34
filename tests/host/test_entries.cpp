#include "../support/SceneFixture.h"
#include "AnnouncementLog.h"
#include "TestMain.h"

#include <QUndoStack>

#include <limits>

/// Entries and entry lists: stored types, tags, taken keys, the live view.
class TestEntries : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init();

    void newEntriesHoldTheDefaultOfTheirType_data();
    void newEntriesHoldTheDefaultOfTheirType();
    void createEntryWithEightMakesATag();
    void unknownTypesAreRefused_data();
    void unknownTypesAreRefused();
    void newKeysAreUnique();
    void setValueConvertsToTheDeclaredType_data();
    void setValueConvertsToTheDeclaredType();
    void setValueRefusesWhatCannotBeConverted_data();
    void setValueRefusesWhatCannotBeConverted();
    void aTagTakesNoValue();
    void setTagDropsTheValue();
    void equalValuesOfOneTypeAreNoChange_data();
    void equalValuesOfOneTypeAreNoChange();
    void aTakenKeyIsRefused();
    void keysAreComparedCaseSensitively();
    void anEmptyKeyIsRefused();
    void aListIsALiveView();
    void appendCopiesWithNewIdsAndUniqueKeys();
    void removeTellsWhetherItWasThere();
    void undoingARemovalRestoresThePlace();
    void clearIsOneChange();
    void setsReadAndWriteValuesByKey();
    void vectorsColoursAndMatricesRoundTrip();

private:
    nkdMetadataSet m_set;
};

void TestEntries::init()
{
    SceneFixture::reset();
    m_set = nkMetadataService::the().createSet(QStringLiteral("s"), {});
}

void TestEntries::newEntriesHoldTheDefaultOfTheirType_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<int>("stored");
    QTest::newRow("string") << 0 << int(QMetaType::QString);
    QTest::newRow("integer") << 1 << int(QMetaType::Int);
    QTest::newRow("float") << 2 << int(QMetaType::Double);
    QTest::newRow("boolean") << 3 << int(QMetaType::Bool);
    QTest::newRow("time") << 4 << int(QMetaType::QTime);
    QTest::newRow("date") << 5 << int(QMetaType::QDate);
    QTest::newRow("date and time") << 6 << int(QMetaType::QDateTime);
    QTest::newRow("list") << 7 << int(QMetaType::QVariantList);
}

void TestEntries::newEntriesHoldTheDefaultOfTheirType()
{
    QFETCH(int, type);
    QFETCH(int, stored);
    const nkdMetadataEntry entry = m_set.createEntry(nkMetadataTypes::ValueType(type));
    QVERIFY(!entry.isNull());
    QVERIFY(!entry.isTag());
    QCOMPARE(int(entry.getValueType()), type);
    QCOMPARE(entry.getValue().userType(), stored);
    if (type < 4) {
        QCOMPARE(entry.getValue().toString(),
                 (QStringList{QString(), QStringLiteral("0"), QStringLiteral("0"),
                              QStringLiteral("false")}[type]));
    }
    QVERIFY(entry.getSet() == m_set);
}

void TestEntries::createEntryWithEightMakesATag()
{
    const nkdMetadataEntry tag = m_set.createEntry(nkMetadataTypes::Tag);
    QVERIFY(tag.isTag());
    QCOMPARE(tag.getValueType(), nkMetadataTypes::String);
    QVERIFY(!tag.getValue().isValid());
    QVERIFY(!tag.getKey().isEmpty());
}

void TestEntries::unknownTypesAreRefused_data()
{
    QTest::addColumn<int>("type");
    QTest::newRow("negative") << -1;
    QTest::newRow("nine") << 9;
    QTest::newRow("huge") << std::numeric_limits<int>::max();
}

void TestEntries::unknownTypesAreRefused()
{
    QFETCH(int, type);
    QVERIFY(m_set.createEntry(nkMetadataTypes::ValueType(type)).isNull());
    nkdMetadataEntry entry = m_set.createEntry(nkMetadataTypes::Integer);
    entry.setValueType(nkMetadataTypes::ValueType(type));
    QCOMPARE(entry.getValueType(), nkMetadataTypes::Integer);
}

void TestEntries::newKeysAreUnique()
{
    QStringList keys;
    for (int i = 0; i < 5; ++i) {
        keys.append(m_set.createEntry(nkMetadataTypes::String).getKey());
    }
    QCOMPARE(keys.mid(0, 3),
             (QStringList{QStringLiteral("Key"), QStringLiteral("Key2"), QStringLiteral("Key3")}));
    keys.removeDuplicates();
    QCOMPARE(keys.size(), 5);
    QCOMPARE(m_set.getUniqueKey(QStringLiteral("free")), QStringLiteral("free"));
}

void TestEntries::setValueConvertsToTheDeclaredType_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<QVariant>("given");
    QTest::addColumn<QVariant>("stored");
    const QDate date(2023, 3, 2);
    const QTime time(13, 45, 30);
    QTest::newRow("number to text") << 0 << QVariant(42) << QVariant(QStringLiteral("42"));
    QTest::newRow("text to integer") << 1 << QVariant(QStringLiteral("42")) << QVariant(42);
    QTest::newRow("integer to float") << 2 << QVariant(42) << QVariant(42.0);
    QTest::newRow("single to float") << 2 << QVariant::fromValue(1.5f) << QVariant(1.5);
    QTest::newRow("text to boolean") << 3 << QVariant(QStringLiteral("true")) << QVariant(true);
    QTest::newRow("text to time") << 4 << QVariant(QStringLiteral("13:45:30")) << QVariant(time);
    QTest::newRow("text to date") << 5 << QVariant(QStringLiteral("2023-03-02")) << QVariant(date);
    QTest::newRow("text to date and time")
        << 6 << QVariant(QStringLiteral("2023-03-02T13:45:30")) << QVariant(QDateTime(date, time));
    QTest::newRow("texts to list") << 7 << QVariant(QStringList{QStringLiteral("a"), QStringLiteral("b")})
                                   << QVariant(QVariantList{QStringLiteral("a"), QStringLiteral("b")});
}

void TestEntries::setValueConvertsToTheDeclaredType()
{
    QFETCH(int, type);
    QFETCH(QVariant, given);
    QFETCH(QVariant, stored);
    nkdMetadataEntry entry = m_set.createEntry(nkMetadataTypes::ValueType(type));
    entry.setValue(given);
    QCOMPARE(entry.getValue().userType(), stored.userType());
    QCOMPARE(entry.getValue(), stored);
    QCOMPARE(int(entry.getValueType()), type);
}

void TestEntries::setValueRefusesWhatCannotBeConverted_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<QVariant>("given");
    QTest::newRow("words to integer") << 1 << QVariant(QStringLiteral("many"));
    QTest::newRow("too large for integer") << 1 << QVariant(Q_INT64_C(3000000000));
    QTest::newRow("words to float") << 2 << QVariant(QStringLiteral("much"));
    QTest::newRow("no time") << 4 << QVariant(QStringLiteral("25:99"));
    QTest::newRow("no date") << 5 << QVariant(QStringLiteral("2023-02-30"));
    QTest::newRow("null date") << 5 << QVariant(QDate());
    QTest::newRow("invalid") << 1 << QVariant();
}

void TestEntries::setValueRefusesWhatCannotBeConverted()
{
    QFETCH(int, type);
    QFETCH(QVariant, given);
    nkdMetadataEntry entry = m_set.createEntry(nkMetadataTypes::ValueType(type));
    const QVariant before = entry.getValue();
    const int steps = kernel::Document::the().undoStack()->count();
    AnnouncementLog log;
    entry.setValue(given);
    QCOMPARE(entry.getValue(), before);
    QCOMPARE(kernel::Document::the().undoStack()->count(), steps);
    QVERIFY(log.takeFlags().isEmpty());
}

void TestEntries::aTagTakesNoValue()
{
    nkdMetadataEntry tag = m_set.createEntry(nkMetadataTypes::Tag);
    tag.setValue(QStringLiteral("v"));
    QVERIFY(tag.isTag());
    QVERIFY(!tag.getValue().isValid());
}

void TestEntries::setTagDropsTheValue()
{
    nkdMetadataEntry entry = m_set.createEntry(nkMetadataTypes::Integer);
    entry.setValue(9);
    entry.setTag(QStringLiteral("flag"));
    QVERIFY(entry.isTag());
    QCOMPARE(entry.getKey(), QStringLiteral("flag"));
    QVERIFY(!entry.getValue().isValid());
    kernel::Document::the().undo();
    QVERIFY(!entry.isTag());
    QCOMPARE(entry.getValue(), QVariant(9));
}

void TestEntries::equalValuesOfOneTypeAreNoChange_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<QVariant>("value");
    QTest::newRow("text") << 0 << QVariant(QStringLiteral("x"));
    QTest::newRow("not a number") << 2 << QVariant(std::numeric_limits<double>::quiet_NaN());
    QTest::newRow("list") << 7 << QVariant(QVariantList{1, QStringLiteral("1"), QVariantList{true}});
}

void TestEntries::equalValuesOfOneTypeAreNoChange()
{
    QFETCH(int, type);
    QFETCH(QVariant, value);
    nkdMetadataEntry entry = m_set.createEntry(nkMetadataTypes::ValueType(type));
    entry.setValue(value);
    const int steps = kernel::Document::the().undoStack()->count();
    entry.setValue(value);
    QCOMPARE(kernel::Document::the().undoStack()->count(), steps);
    if (type == nkMetadataTypes::List) {
        // QVariant calls "1" and 1 equal; a list with the other type inside is another list.
        entry.setValue(QVariantList{QStringLiteral("1"), QStringLiteral("1"), QVariantList{true}});
        QCOMPARE(kernel::Document::the().undoStack()->count(), steps + 1);
        QCOMPARE(entry.getValue().toList().constFirst().userType(), int(QMetaType::QString));
    }
}

void TestEntries::aTakenKeyIsRefused()
{
    nkdMetadataEntry first = m_set.createEntry(nkMetadataTypes::String);
    nkdMetadataEntry second = m_set.createEntry(nkMetadataTypes::String);
    const QString key = second.getKey();
    second.setKey(first.getKey());
    QCOMPARE(second.getKey(), key);
    second.setTag(first.getKey());
    QVERIFY(!second.isTag());
}

void TestEntries::keysAreComparedCaseSensitively()
{
    nkdMetadataEntry first = m_set.createEntry(nkMetadataTypes::String);
    nkdMetadataEntry second = m_set.createEntry(nkMetadataTypes::String);
    first.setKey(QStringLiteral("part"));
    second.setKey(QStringLiteral("Part"));
    QCOMPARE(second.getKey(), QStringLiteral("Part"));
    QVERIFY(m_set.getEntries().find(QStringLiteral("part")) == first);
    QVERIFY(m_set.getEntries().find(QStringLiteral("PART")).isNull());
}

void TestEntries::anEmptyKeyIsRefused()
{
    nkdMetadataEntry entry = m_set.createEntry(nkMetadataTypes::String);
    const QString key = entry.getKey();
    entry.setKey(QString());
    entry.setTag(QString());
    QCOMPARE(entry.getKey(), key);
    QVERIFY(!entry.isTag());
}

void TestEntries::aListIsALiveView()
{
    nkdMetadataEntryList list = m_set.getEntries();
    QCOMPARE(list.size(), 0);
    const nkdMetadataEntry entry = m_set.createEntry(nkMetadataTypes::String);
    QCOMPARE(list.size(), 1);
    QVERIFY(list.at(0) == entry);
    QVERIFY(list.at(1).isNull());
    QVERIFY(list.at(-1).isNull());
    QVERIFY(list.remove(entry));
    QCOMPARE(m_set.getEntries().size(), 0);
    int walked = 0;
    m_set.createEntry(nkMetadataTypes::Tag);
    for (const nkdMetadataEntry &one : list) {
        QVERIFY(one.isTag());
        ++walked;
    }
    QCOMPARE(walked, 1);
    QCOMPARE(QList<nkdMetadataEntry>(list).size(), 1);
}

void TestEntries::appendCopiesWithNewIdsAndUniqueKeys()
{
    nkdMetadataEntry source = m_set.createEntry(nkMetadataTypes::Integer);
    source.setKey(QStringLiteral("weight"));
    source.setValue(12);
    nkdMetadataSet other = nkMetadataService::the().createSet(QStringLiteral("o"), {});
    other.getEntries().append({source, nkdMetadataEntry(), source});
    QCOMPARE(other.getEntries().size(), 2);
    const nkdMetadataEntry copy = other.getEntries().at(0);
    QVERIFY(copy != source);
    QCOMPARE(copy.getKey(), QStringLiteral("weight"));
    QCOMPARE(copy.getValue(), QVariant(12));
    QCOMPARE(other.getEntries().at(1).getKey(), QStringLiteral("weight2"));
    source.setValue(13);
    QCOMPARE(copy.getValue(), QVariant(12));
}

void TestEntries::removeTellsWhetherItWasThere()
{
    const nkdMetadataEntry entry = m_set.createEntry(nkMetadataTypes::String);
    nkdMetadataSet other = nkMetadataService::the().createSet(QStringLiteral("o"), {});
    QVERIFY(!other.getEntries().remove(entry));
    QVERIFY(m_set.getEntries().remove(entry));
    QVERIFY(!m_set.getEntries().remove(entry));
    QVERIFY(!m_set.getEntries().remove(nkdMetadataEntry()));
}

void TestEntries::undoingARemovalRestoresThePlace()
{
    QList<nkdMetadataEntry> entries;
    for (int i = 0; i < 5; ++i) {
        entries.append(m_set.createEntry(nkMetadataTypes::Integer));
    }
    m_set.getEntries().remove(entries.at(2));
    kernel::Document::the().undo();
    QCOMPARE(m_set.getEntries().data(), entries);
}

void TestEntries::clearIsOneChange()
{
    for (int i = 0; i < 3; ++i) {
        m_set.createEntry(nkMetadataTypes::Integer);
    }
    const int steps = kernel::Document::the().undoStack()->count();
    AnnouncementLog log;
    m_set.getEntries().clear();
    QCOMPARE(log.takeFlags(), QVector<int>{nkMetadataTypes::EntriesChanged});
    QCOMPARE(kernel::Document::the().undoStack()->count(), steps + 1);
    m_set.getEntries().clear();
    QCOMPARE(kernel::Document::the().undoStack()->count(), steps + 1);
    kernel::Document::the().undo();
    QCOMPARE(m_set.getEntries().size(), 3);
}

void TestEntries::setsReadAndWriteValuesByKey()
{
    m_set.setValue(QStringLiteral("weight"), 12);
    QCOMPARE(m_set.getValue(QStringLiteral("weight")), QVariant(12));
    QCOMPARE(m_set.getEntries().at(0).getValueType(), nkMetadataTypes::Integer);
    m_set.setValue(QStringLiteral("weight"), 13);
    QCOMPARE(m_set.getEntries().size(), 1);
    QVERIFY(!m_set.getValue(QStringLiteral("none")).isValid());
}

void TestEntries::vectorsColoursAndMatricesRoundTrip()
{
    nkdMetadataEntry entry = m_set.createEntry(nkMetadataTypes::String);
    const QVector3D vector(1.0f, -2.5f, 3.25f);
    entry.setValueFromVector3D(vector);
    QCOMPARE(entry.getValueType(), nkMetadataTypes::List);
    QCOMPARE(entry.getValueAsVector3D(), vector);
    QCOMPARE(entry.getValueAsMatrix(nkMetadataTypes::RowOrder), QMatrix4x4());

    const QColor color(10, 20, 30);
    entry.setValueFromColor(color);
    QCOMPARE(entry.getValue(), QVariant(QStringLiteral("#0a141e")));
    QCOMPARE(entry.getValueAsColor(), color);
    entry.setValueFromColor(QColor());
    QCOMPARE(entry.getValueAsColor(), color);

    const QMatrix4x4 matrix(1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16);
    entry.setValueFromMatrix(matrix, nkMetadataTypes::RowOrder);
    QCOMPARE(entry.getValue().toList().at(1).toDouble(), 2.0);
    QCOMPARE(entry.getValueAsMatrix(nkMetadataTypes::RowOrder), matrix);
    QCOMPARE(entry.getValueAsMatrix(nkMetadataTypes::ColumnOrder), matrix.transposed());
    QVERIFY(!entry.getValueAsColor().isValid());
}

NK_TEST_MAIN(TestEntries)
#include "test_entries.moc"
