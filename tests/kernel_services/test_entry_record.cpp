#include "TestMain.h"

#include <kernel/document/Document.h>
#include <kernel/services/EntryValueStream.h>
#include <nkKernelServices/nkMetadataEntryMime.h>
#include <nkKernelServices/nkMetadataService.h>

#include <QBuffer>
#include <QTimeZone>

#include <random>

namespace {

QByteArray written(const nkMetadataEntryMime &record)
{
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    stream << record;
    return bytes;
}

nkMetadataEntryMime read(const QByteArray &bytes, QDataStream::Status *status)
{
    QDataStream stream(bytes);
    nkMetadataEntryMime record;
    stream >> record;
    *status = stream.status();
    return record;
}

nkdMetadataEntry entry(nkMetadataTypes::ValueType type, const QVariant &value)
{
    const nkdMetadataSet set = nkMetadataService::the().createSet(QString(), {});
    nkdMetadataEntry made = nkdMetadataSet(set).createEntry(type);
    if (value.isValid()) {
        made.setValue(value);
    }
    return made;
}

QVariant throughStream(const QVariant &value, QDataStream::Status *status)
{
    QByteArray bytes;
    QDataStream out(&bytes, QIODevice::WriteOnly);
    kernel::EntryValueStream::write(out, value);
    QDataStream in(bytes);
    const QVariant result = kernel::EntryValueStream::read(in);
    *status = in.status();
    return result;
}

QVariant nested(int levels)
{
    QVariant value = QStringLiteral("core");
    for (int i = 0; i < levels; ++i) {
        value = QVariantList({value});
    }
    return value;
}

} // namespace

/// The drag record of an entry and its way through a stream.
class TestEntryRecord : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup() { kernel::Document::the().clear(); }

    void carriesEveryType_data();
    void carriesEveryType();
    void carriesATag();
    void carriesManyInOneStream();
    void staysAsItWasWhenTheEntryChanges();
    void isInvalidWithoutAnEntry();
    void keepsDoublesInASinglePrecisionStream();
    void refusesAnotherVersion();
    void refusesEveryCut();
    void refusesAValueOfAnotherType();
    void refusesLyingCounts();
    void survivesRandomDamage();
    void leavesAFailedStreamAlone();
    void carriesWhatListsMayHold();
    void writesOtherTypesAsText();
    void boundsListsInLists();
};

void TestEntryRecord::carriesEveryType_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<QVariant>("value");
    QTest::newRow("string") << int(nkMetadataTypes::String)
                            << QVariant(QStringLiteral("a\n\u00e4\U0001F600"));
    QTest::newRow("empty string") << int(nkMetadataTypes::String) << QVariant(QStringLiteral(""));
    QTest::newRow("integer") << int(nkMetadataTypes::Integer) << QVariant(-2147483647 - 1);
    QTest::newRow("float") << int(nkMetadataTypes::Float) << QVariant(0.1);
    QTest::newRow("boolean") << int(nkMetadataTypes::Boolean) << QVariant(true);
    QTest::newRow("time") << int(nkMetadataTypes::Time) << QVariant(QTime(23, 59, 59, 999));
    QTest::newRow("date") << int(nkMetadataTypes::Date) << QVariant(QDate(1, 1, 1));
    QTest::newRow("date and time") << int(nkMetadataTypes::DateTime)
                                   << QVariant(QDateTime(QDate(2020, 2, 29), QTime(1, 2, 3, 4)));
    QTest::newRow("list") << int(nkMetadataTypes::List)
                          << QVariant(QVariantList({1, QStringLiteral("b"), 0.5, false}));
    QTest::newRow("empty list") << int(nkMetadataTypes::List) << QVariant(QVariantList());
}

void TestEntryRecord::carriesEveryType()
{
    QFETCH(int, type);
    QFETCH(QVariant, value);
    nkdMetadataEntry original = entry(nkMetadataTypes::ValueType(type), value);
    original.setKey(QStringLiteral("Key <b>%1</b>"));
    QDataStream::Status status = QDataStream::Ok;
    const nkMetadataEntryMime record = read(written(nkMetadataEntryMime(original)), &status);
    QCOMPARE(status, QDataStream::Ok);
    QVERIFY(record.isValid());
    QCOMPARE(record.getEntryId(), original.getObjectId());
    QCOMPARE(record.getSetId(), original.getSet().getObjectId());
    QCOMPARE(record.getKey(), QStringLiteral("Key <b>%1</b>"));
    QVERIFY(!record.isTag());
    QCOMPARE(int(record.getValueType()), type);
    QCOMPARE(record.getValue().userType(), value.userType());
    QCOMPARE(record.getValue(), value);
}

void TestEntryRecord::carriesATag()
{
    const nkdMetadataEntry tag = entry(nkMetadataTypes::Tag, QVariant());
    QDataStream::Status status = QDataStream::Ok;
    const nkMetadataEntryMime record = read(written(nkMetadataEntryMime(tag)), &status);
    QCOMPARE(status, QDataStream::Ok);
    QVERIFY(record.isTag());
    QCOMPARE(record.getKey(), tag.getKey());
    QCOMPARE(record.getValueType(), nkMetadataTypes::String);
    QVERIFY(!record.getValue().isValid());
}

void TestEntryRecord::carriesManyInOneStream()
{
    QByteArray bytes;
    QDataStream out(&bytes, QIODevice::WriteOnly);
    for (int i = 0; i < 100; ++i) {
        out << nkMetadataEntryMime(entry(nkMetadataTypes::Integer, i)) << nkMetadataEntryMime();
    }
    QDataStream in(bytes);
    for (int i = 0; i < 100; ++i) {
        nkMetadataEntryMime record;
        nkMetadataEntryMime none;
        in >> record >> none;
        QCOMPARE(record.getValue(), QVariant(i));
        QVERIFY(!none.isValid());
    }
    QCOMPARE(in.status(), QDataStream::Ok);
    QVERIFY(in.atEnd());
}

void TestEntryRecord::staysAsItWasWhenTheEntryChanges()
{
    nkdMetadataEntry original = entry(nkMetadataTypes::Integer, 1);
    const nkMetadataEntryMime record(original);
    original.setValue(2);
    original.getSet().getEntries().remove(original);
    QCOMPARE(record.getValue(), QVariant(1));
    QVERIFY(record.isValid());
}

void TestEntryRecord::isInvalidWithoutAnEntry()
{
    nkdMetadataEntry dead = entry(nkMetadataTypes::Integer, 1);
    dead.getSet().getEntries().clear();
    QVERIFY(!nkMetadataEntryMime(nkdMetadataEntry()).isValid());
    QVERIFY(!nkMetadataEntryMime(dead).isValid());
    QDataStream::Status status = QDataStream::Ok;
    QVERIFY(!read(written(nkMetadataEntryMime()), &status).isValid());
    QCOMPARE(status, QDataStream::Ok);
}

void TestEntryRecord::keepsDoublesInASinglePrecisionStream()
{
    QByteArray bytes;
    QDataStream out(&bytes, QIODevice::WriteOnly);
    out.setFloatingPointPrecision(QDataStream::SinglePrecision);
    out << nkMetadataEntryMime(entry(nkMetadataTypes::Float, 0.123456789012345));
    QDataStream in(bytes);
    in.setFloatingPointPrecision(QDataStream::SinglePrecision);
    nkMetadataEntryMime record;
    in >> record;
    QCOMPARE(record.getValue().toDouble(), 0.123456789012345);
}

void TestEntryRecord::refusesAnotherVersion()
{
    QByteArray bytes = written(nkMetadataEntryMime(entry(nkMetadataTypes::Integer, 1)));
    bytes[1] = char(bytes[1] + 1);
    QDataStream::Status status = QDataStream::Ok;
    QVERIFY(!read(bytes, &status).isValid());
    QCOMPARE(status, QDataStream::ReadCorruptData);
}

void TestEntryRecord::refusesEveryCut()
{
    const QVariantList list({QStringLiteral("text"), 1, 2.5, true, QDate(2020, 1, 1)});
    const QByteArray bytes = written(nkMetadataEntryMime(entry(nkMetadataTypes::List, list)));
    for (int length = 0; length < bytes.size(); ++length) {
        QDataStream::Status status = QDataStream::Ok;
        const nkMetadataEntryMime record = read(bytes.left(length), &status);
        QVERIFY(!record.isValid());
        QVERIFY(record.getKey().isEmpty());
        QVERIFY(!record.getValue().isValid());
        QCOMPARE(status, QDataStream::ReadCorruptData);
    }
}

void TestEntryRecord::refusesAValueOfAnotherType()
{
    QByteArray bytes = written(nkMetadataEntryMime(entry(nkMetadataTypes::Boolean, true)));
    // The last two bytes are the kind of the value and the boolean itself.
    for (const int kind : {0, 1, 2, 3, 5, 200}) {
        bytes[bytes.size() - 2] = char(kind);
        QDataStream::Status status = QDataStream::Ok;
        QVERIFY(!read(bytes + QByteArray(16, '\0'), &status).isValid());
        QCOMPARE(status, QDataStream::ReadCorruptData);
    }
}

void TestEntryRecord::refusesLyingCounts()
{
    QByteArray bytes = written(nkMetadataEntryMime(entry(nkMetadataTypes::List, QVariantList())));
    // The last four bytes are the length of the list.
    bytes.replace(bytes.size() - 4, 4, "\xff\xff\xff\xff", 4);
    QDataStream::Status status = QDataStream::Ok;
    QVERIFY(!read(bytes, &status).isValid());
    QCOMPARE(status, QDataStream::ReadCorruptData);
}

void TestEntryRecord::survivesRandomDamage()
{
    const QVariantList list({QStringLiteral("text"), 1, QVariantList({QTime(1, 2)}), true,
                             QDateTime(QDate(2020, 1, 1), QTime(), Qt::OffsetFromUTC, 3600)});
    const QByteArray bytes = written(nkMetadataEntryMime(entry(nkMetadataTypes::List, list)));
    std::mt19937 random(12345);
    for (int round = 0; round < 10000; ++round) {
        QByteArray damaged = bytes;
        damaged[int(random() % uint(bytes.size()))] = char(random());
        QDataStream::Status status = QDataStream::Ok;
        const nkMetadataEntryMime record = read(damaged, &status);
        QVERIFY(status == QDataStream::Ok || (status == QDataStream::ReadCorruptData && !record.isValid()));
    }
}

void TestEntryRecord::leavesAFailedStreamAlone()
{
    const QByteArray bytes = written(nkMetadataEntryMime(entry(nkMetadataTypes::Integer, 1)));
    QDataStream stream(bytes);
    stream.setStatus(QDataStream::ReadPastEnd);
    nkMetadataEntryMime record(entry(nkMetadataTypes::Integer, 2));
    stream >> record;
    QVERIFY(!record.isValid());
    QCOMPARE(stream.status(), QDataStream::ReadPastEnd);
}

void TestEntryRecord::carriesWhatListsMayHold()
{
    const QVariantList list({QVariant(), Q_INT64_C(-1099511627776), Q_UINT64_C(18446744073709551615), 7u,
                             QVariantList({QVariantList()}),
                             QDateTime(QDate(2020, 7, 1), QTime(12, 0), QTimeZone("Europe/Berlin"))});
    QDataStream::Status status = QDataStream::Ok;
    const QVariantList result = throughStream(list, &status).toList();
    QCOMPARE(status, QDataStream::Ok);
    QCOMPARE(result, list);
    QCOMPARE(result.at(1).userType(), int(QMetaType::LongLong));
    QCOMPARE(result.at(5).toDateTime().timeZone(), QTimeZone("Europe/Berlin"));
}

void TestEntryRecord::writesOtherTypesAsText()
{
    QDataStream::Status status = QDataStream::Ok;
    QCOMPARE(throughStream(QUrl(QStringLiteral("file:///a")), &status),
             QVariant(QStringLiteral("file:///a")));
    QCOMPARE(throughStream(QStringList({QStringLiteral("a")}), &status),
             QVariant(QVariantList({QStringLiteral("a")})));
    QCOMPARE(status, QDataStream::Ok);
}

void TestEntryRecord::boundsListsInLists()
{
    QDataStream::Status status = QDataStream::Ok;
    QCOMPARE(throughStream(nested(16), &status), nested(16));
    QCOMPARE(status, QDataStream::Ok);
    QVERIFY(throughStream(nested(5000), &status).isValid());
    QCOMPARE(status, QDataStream::Ok);

    QByteArray tower;
    QDataStream out(&tower, QIODevice::WriteOnly);
    for (int i = 0; i < 100000; ++i) {
        out << quint8(8) << quint32(1);
    }
    QDataStream in(tower);
    QVERIFY(!kernel::EntryValueStream::read(in).isValid());
    QCOMPARE(in.status(), QDataStream::ReadCorruptData);
}

NK_GUILESS_TEST_MAIN(TestEntryRecord)
#include "test_entry_record.moc"
