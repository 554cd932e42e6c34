#include <TestMain.h>

#include "NewsRecorder.h"

#include <kernel/document/DocumentLoader.h>
#include <nkKernelServices/nkdMetadata.h>

#include <QUndoStack>

#include <cmath>

using kernel::Document;
using T = nkMetadataTypes;

/// Entries: keys, values, types, tags, and the entry clipboard.
class TestEntries : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init();
    void newEntriesHaveUniqueKeysAndDefaults();
    void unknownTypesAreRefused();
    void takenAndEmptyKeysAreRefused();
    void keysAreComparedCaseSensitively();
    void largeSetsFindAndRenameKeys();
    void valuesConvertToTheDeclaredTypeOrAreRefused();
    void writingWhatIsThereIsNoChange();
    void retypingKeepsWhatCanBeKept();
    void undoingARetypingRestoresValueAndType();
    void tagsHaveNoValue();
    void turningIntoATagDropsTheValue();
    void removalsUndoToTheirPlace();
    void clearingIsOneStep();
    void appendedCopiesGetNewIdsAndUniqueKeys();
    void appendingASetToItselfEnds();
    void settingByKeyMakesTheFittingEntry();
    void theEntryClipboardKeepsContents();
    void clipboardEntriesStandInNoSet();
    void vectorsColorsAndMatricesTravel();
    void valuesThatAreNoVectorColorOrMatrix();
    void numberTextIsRememberedWhileItIsANumber();
    void theListIsALiveView();

private:
    Document &m_document = Document::the();
    nkMetadataService &m_service = nkMetadataService::the();
    nkdMetadataSet m_set;
};

namespace {

QStringList keysOf(const nkdMetadataSet &set)
{
    QStringList keys;
    for (const nkdMetadataEntry &entry : set.getEntries().data()) {
        keys << entry.getKey();
    }
    return keys;
}

} // namespace

void TestEntries::init()
{
    QVERIFY(m_document.clear());
    m_set = m_service.createSet(QStringLiteral("S"), {});
}

void TestEntries::newEntriesHaveUniqueKeysAndDefaults()
{
    for (const T::ValueType type :
         {T::String, T::Integer, T::Float, T::Boolean, T::Time, T::Date, T::DateTime, T::List}) {
        const nkdMetadataEntry entry = m_set.createEntry(type);
        QCOMPARE(entry.getValueType(), type);
        QVERIFY(entry.getValue().isValid() && !entry.isTag());
    }
    m_set.createEntry(T::Tag);
    m_set.createEntry(T::Tag);
    QCOMPARE(keysOf(m_set),
             (QStringList{"Key", "Key2", "Key3", "Key4", "Key5", "Key6", "Key7", "Key8", "Tag", "Tag2"}));
    QCOMPARE(m_set.getUniqueKey(QString()), QStringLiteral("Key9"));
    QCOMPARE(nkdMetadataSet().getUniqueKey(QStringLiteral("a")), QString());
}

void TestEntries::unknownTypesAreRefused()
{
    QVERIFY(m_set.createEntry(T::ValueType(9)).isNull());
    QVERIFY(m_set.createEntry(T::ValueType(-1)).isNull());
    nkdMetadataEntry entry = m_set.createEntry(T::Integer);
    entry.setValueType(T::ValueType(9));
    entry.setValueType(T::ValueType(-1));
    QCOMPARE(entry.getValueType(), T::Integer);
}

void TestEntries::takenAndEmptyKeysAreRefused()
{
    nkdMetadataEntry a = m_set.createEntry(T::String);
    nkdMetadataEntry b = m_set.createEntry(T::String);
    const int steps = m_document.undoStack()->count();
    b.setKey(a.getKey());
    b.setKey(QString());
    b.setKey(b.getKey());
    b.setTag(a.getKey());
    b.setTag(QString());
    QCOMPARE(keysOf(m_set), (QStringList{"Key", "Key2"}));
    QVERIFY(!b.isTag());
    QCOMPARE(m_document.undoStack()->count(), steps);
    b.setKey(QStringLiteral("new"));
    QVERIFY(m_set.getEntries().find(QStringLiteral("Key2")).isNull());
    QCOMPARE(m_set.getEntries().find(QStringLiteral("new")), b);
    m_document.undo();
    QCOMPARE(b.getKey(), QStringLiteral("Key2"));
}

void TestEntries::keysAreComparedCaseSensitively()
{
    nkdMetadataEntry entry = m_set.createEntry(T::String);
    m_set.createEntry(T::String).setKey(QStringLiteral("key"));
    QCOMPARE(keysOf(m_set), (QStringList{"Key", "key"}));
    QCOMPARE(m_set.getEntries().find(QStringLiteral("Key")), entry);
}

void TestEntries::largeSetsFindAndRenameKeys()
{
    QList<nkdMetadataEntry> entries;
    for (int count = 0; count < 200; ++count) {
        entries << m_set.createEntry(T::Integer);
    }
    QCOMPARE(entries.last().getKey(), QStringLiteral("Key200"));
    entries[99].setKey(QStringLiteral("a"));
    QVERIFY(m_set.getEntries().find(QStringLiteral("Key100")).isNull());
    QCOMPARE(m_set.createEntry(T::String).getKey(), QStringLiteral("Key100"));
    QVERIFY(m_set.getEntries().remove(entries.at(49)));
    QCOMPARE(m_set.getUniqueKey(QStringLiteral("Key")), QStringLiteral("Key50"));
    m_document.undo();
    QCOMPARE(m_set.getUniqueKey(QStringLiteral("Key")), QStringLiteral("Key201"));
    QCOMPARE(m_set.getEntries().find(QStringLiteral("Key50")), entries.at(49));
    QCOMPARE(m_set.getEntries().find(QStringLiteral("a")), entries.at(99));
}

void TestEntries::valuesConvertToTheDeclaredTypeOrAreRefused()
{
    nkdMetadataEntry entry = m_set.createEntry(T::Integer);
    entry.setValue(QStringLiteral("42"));
    QCOMPARE(entry.getValue(), QVariant(42));
    QCOMPARE(entry.getValue().userType(), int(QMetaType::Int));
    entry.setValue(QStringLiteral("word"));
    entry.setValue(QVariant());
    entry.setValue(1e20);
    QCOMPARE(entry.getValue(), QVariant(42));
    QCOMPARE(entry.getValueType(), T::Integer);
}

void TestEntries::writingWhatIsThereIsNoChange()
{
    nkdMetadataEntry number = m_set.createEntry(T::Float);
    number.setValue(std::nan(""));
    nkdMetadataEntry list = m_set.createEntry(T::List);
    list.setValue(QVariantList{1, std::nan("")});
    NewsRecorder news;
    const int steps = m_document.undoStack()->count();
    number.setValue(std::nan(""));
    list.setValue(QVariantList{1, std::nan("")});
    list.setValueType(T::List);
    m_set.setColor(m_set.getColor());
    m_set.setName(m_set.getName());
    m_set.setLocked(false);
    QCOMPARE(m_document.undoStack()->count(), steps);
    QVERIFY(news.take().isEmpty());
    list.setValue(QVariantList{1.0, std::nan("")});
    QCOMPARE(m_document.undoStack()->count(), steps + 1);
}

void TestEntries::retypingKeepsWhatCanBeKept()
{
    nkdMetadataEntry entry = m_set.createEntry(T::String);
    entry.setValue(QStringLiteral("42"));
    entry.setValueType(T::Integer);
    QCOMPARE(entry.getValue(), QVariant(42));
    entry.setValueType(T::Float);
    QCOMPARE(entry.getValue(), QVariant(42.0));
    entry.setValueType(T::Boolean);
    QCOMPARE(entry.getValue(), QVariant(true));
    entry.setValueType(T::String);
    QCOMPARE(entry.getValue(), QVariant("true"));
    entry.setValueType(T::Integer);
    entry.setValueType(T::Date);
    QCOMPARE(entry.getValue(), QVariant(QDate::currentDate()));
    entry.setValueType(T::String);
    QCOMPARE(entry.getValue(), QVariant(QDate::currentDate().toString(Qt::ISODate)));
    entry.setValue(QStringLiteral("a, b"));
    entry.setValueType(T::List);
    QCOMPARE(entry.getValue(), QVariant(QVariantList{"a", "b"}));
    entry.setValueType(T::Integer);
    QCOMPARE(entry.getValue(), QVariant(0));
}

void TestEntries::undoingARetypingRestoresValueAndType()
{
    nkdMetadataEntry entry = m_set.createEntry(T::String);
    entry.setValue(QStringLiteral("not a date"));
    entry.setValueType(T::DateTime);
    QCOMPARE(entry.getValueType(), T::DateTime);
    m_document.undo();
    QCOMPARE(entry.getValueType(), T::String);
    QCOMPARE(entry.getValue(), QVariant("not a date"));
}

void TestEntries::tagsHaveNoValue()
{
    nkdMetadataEntry tag = m_set.createEntry(T::Tag);
    QVERIFY(tag.isTag());
    QCOMPARE(tag.getValueType(), T::String);
    QVERIFY(!tag.getValue().isValid());
    tag.setValue(QStringLiteral("x"));
    QVERIFY(tag.isTag());
    QVERIFY(!m_set.getValue(QStringLiteral("Tag")).isValid());
    tag.setValueType(T::String);
    QVERIFY(!tag.isTag());
    QCOMPARE(tag.getValue(), QVariant(QString()));
    QVERIFY(tag.getValue().isValid());
}

void TestEntries::turningIntoATagDropsTheValue()
{
    nkdMetadataEntry entry = m_set.createEntry(T::Integer);
    entry.setValue(5);
    entry.setTag(QStringLiteral("seen"));
    QVERIFY(entry.isTag() && !entry.getValue().isValid());
    QCOMPARE(entry.getKey(), QStringLiteral("seen"));
    m_document.undo();
    QCOMPARE(entry.getValue(), QVariant(5));
    QCOMPARE(entry.getKey(), QStringLiteral("Key"));
    entry.setValueType(T::Tag);
    QVERIFY(entry.isTag());
    const int steps = m_document.undoStack()->count();
    entry.setValueType(T::Tag);
    entry.setTag(QStringLiteral("Key"));
    QCOMPARE(m_document.undoStack()->count(), steps);
}

void TestEntries::removalsUndoToTheirPlace()
{
    QList<nkdMetadataEntry> entries;
    for (int count = 0; count < 40; ++count) {
        entries << m_set.createEntry(T::Integer);
    }
    for (const int index : {3, 0, 39, 20, 4}) {
        QVERIFY(m_set.getEntries().remove(entries.at(index)));
        QVERIFY(!m_set.getEntries().remove(entries.at(index)));
    }
    QCOMPARE(m_set.getEntries().size(), 35);
    for (int step = 0; step < 5; ++step) {
        m_document.undo();
    }
    QCOMPARE(m_set.getEntries().data(), entries);
    QVERIFY(!m_service.createSet(QString(), {}).getEntries().remove(entries.at(1)));
}

void TestEntries::clearingIsOneStep()
{
    for (int count = 0; count < 5; ++count) {
        m_set.createEntry(T::Tag);
    }
    const QStringList keys = keysOf(m_set);
    m_set.setLocked(true);
    const int steps = m_document.undoStack()->count();
    m_set.getEntries().clear();
    QVERIFY(m_set.getEntries().isEmpty());
    m_set.getEntries().clear();
    QCOMPARE(m_document.undoStack()->count(), steps + 1);
    m_document.undo();
    QCOMPARE(keysOf(m_set), keys);
}

void TestEntries::appendedCopiesGetNewIdsAndUniqueKeys()
{
    nkdMetadataEntry entry = m_set.createEntry(T::Integer);
    entry.setValue(7);
    nkdMetadataSet other = m_service.createSet(QString(), {});
    other.getEntries().append({entry, nkdMetadataEntry(), entry});
    QCOMPARE(keysOf(other), (QStringList{"Key", "Key2"}));
    QVERIFY(other.getEntries().at(0) != entry);
    QCOMPARE(other.getEntries().at(1).getValue(), QVariant(7));
    m_document.undo();
    QVERIFY(other.getEntries().isEmpty());
}

void TestEntries::appendingASetToItselfEnds()
{
    m_set.createEntry(T::Integer);
    m_set.createEntry(T::Tag);
    m_set.getEntries().append(m_set.getEntries());
    QCOMPARE(keysOf(m_set), (QStringList{"Key", "Tag", "Key2", "Tag2"}));
    QVERIFY(m_set.getEntries().at(3).isTag());
}

void TestEntries::settingByKeyMakesTheFittingEntry()
{
    m_set.setValue(QStringLiteral("i"), 3);
    m_set.setValue(QStringLiteral("f"), 0.5);
    m_set.setValue(QStringLiteral("long"), Q_INT64_C(9007199254740993));
    m_set.setValue(QStringLiteral("i"), QStringLiteral("4"));
    m_set.setValue(QString(), 1);
    m_set.setValue(QStringLiteral("nothing"), QVariant());
    QCOMPARE(keysOf(m_set), (QStringList{"i", "f", "long"}));
    QCOMPARE(m_set.getValue(QStringLiteral("i")), QVariant(4));
    QCOMPARE(m_set.getEntries().at(1).getValueType(), T::Float);
    QVERIFY(m_document.isNumberText(m_set.getEntries().at(2).getObjectId()));
}

void TestEntries::theEntryClipboardKeepsContents()
{
    nkdMetadataEntry entry = m_set.createEntry(T::Integer);
    entry.setValue(1);
    m_service.copyEntries({entry, nkdMetadataEntry()});
    entry.setValue(2);
    m_set.getEntries().remove(entry);
    const QList<nkdMetadataEntry> copied = m_service.getClipboardEntries();
    QCOMPARE(copied.size(), 1);
    QCOMPARE(copied.first().getValue(), QVariant(1));
    nkdMetadataSet locked = m_service.createSet(QString(), {});
    locked.setLocked(true);
    m_service.pasteEntries({m_set, locked, m_set, nkdMetadataSet()});
    QCOMPARE(keysOf(m_set), QStringList{"Key"});
    QVERIFY(locked.getEntries().isEmpty());
    m_service.pasteEntries({m_set});
    QCOMPARE(keysOf(m_set), (QStringList{"Key", "Key2"}));
}

void TestEntries::clipboardEntriesStandInNoSet()
{
    m_service.copyEntries({m_set.createEntry(T::Integer)});
    nkdMetadataEntry copied = m_service.getClipboardEntries().first();
    QVERIFY(!copied.isNull() && !copied.isAlive() && copied.getSet().isNull());
    QCOMPARE(nkdObject(copied.getObjectId()).getType(), nkObjectType::MetadataEntry);
    copied.setValue(5);
    copied.setKey(QStringLiteral("other"));
    QCOMPARE(copied.getValue(), QVariant(0));
    m_set.getEntries().append({copied});
    QCOMPARE(keysOf(m_set), (QStringList{"Key", "Key2"}));
    m_service.copyEntries({m_set.getEntries().at(1)});
    QVERIFY(copied.getKey().isEmpty());
}

void TestEntries::vectorsColorsAndMatricesTravel()
{
    nkdMetadataEntry entry = m_set.createEntry(T::String);
    entry.setValueFromVector3D(QVector3D(1.5f, -2.0f, 3.0f));
    QCOMPARE(entry.getValueType(), T::List);
    QCOMPARE(entry.getValueAsVector3D(), QVector3D(1.5f, -2.0f, 3.0f));
    QMatrix4x4 matrix;
    matrix.translate(1, 2, 3);
    entry.setValueFromMatrix(matrix, T::RowOrder);
    QCOMPARE(entry.getValue().toList().at(3).toDouble(), 1.0);
    QCOMPARE(entry.getValueAsMatrix(T::RowOrder), matrix);
    QCOMPARE(entry.getValueAsMatrix(T::ColumnOrder), matrix.transposed());
    entry.setValueFromMatrix(matrix, T::ColumnOrder);
    QCOMPARE(entry.getValue().toList().at(12).toDouble(), 1.0);
    entry.setValueFromColor(QColor(1, 2, 3));
    QCOMPARE(entry.getValueType(), T::String);
    QCOMPARE(entry.getValue(), QVariant("#010203"));
    entry.setValueFromColor(QColor(1, 2, 3, 4));
    QCOMPARE(entry.getValue(), QVariant("#04010203"));
    QCOMPARE(entry.getValueAsColor(), QColor(1, 2, 3, 4));
    entry.setValueFromColor(QColor());
    QCOMPARE(entry.getValue(), QVariant("#04010203"));
}

void TestEntries::valuesThatAreNoVectorColorOrMatrix()
{
    nkdMetadataEntry entry = m_set.createEntry(T::String);
    entry.setValue(QStringLiteral("no colour"));
    QVERIFY(!entry.getValueAsColor().isValid());
    QVERIFY(entry.getValueAsVector3D().isNull());
    QVERIFY(entry.getValueAsMatrix(T::RowOrder).isIdentity());
    entry.setValueType(T::List);
    entry.setValue(QVariantList{1, 0.5, QStringLiteral("x")});
    QVERIFY(entry.getValueAsVector3D().isNull() && !entry.getValueAsColor().isValid());
    entry.setValue(QVariantList{1, 0.5, 0});
    QCOMPARE(entry.getValueAsColor().name(), QStringLiteral("#ff8000"));
    entry.setValue(QVariantList{1, 0.5, 2});
    QVERIFY(!entry.getValueAsColor().isValid());
}

void TestEntries::numberTextIsRememberedWhileItIsANumber()
{
    kernel::DocumentLoader loader;
    const quint64 set = loader.addSet(QStringLiteral("S"));
    const quint64 id = loader.addNumberText(set, QStringLiteral("n"), QStringLiteral("12345678901"));
    const quint64 word = loader.addNumberText(set, QStringLiteral("w"), QStringLiteral("word"));
    QVERIFY(loader.commit());
    nkdMetadataEntry entry(id);
    QVERIFY(m_document.isNumberText(id) && !m_document.isNumberText(word));
    QCOMPARE(entry.getValueType(), T::String);
    entry.setValue(QStringLiteral("12345678902"));
    QVERIFY(m_document.isNumberText(id));
    entry.setValue(QStringLiteral("about 12"));
    QVERIFY(!m_document.isNumberText(id));
    entry.setValue(QStringLiteral("12345678903"));
    QVERIFY(!m_document.isNumberText(id));
    m_document.undo();
    m_document.undo();
    QVERIFY(m_document.isNumberText(id));
}

void TestEntries::theListIsALiveView()
{
    const nkdMetadataEntryList list = m_set.getEntries();
    QVERIFY(list.isEmpty());
    const nkdMetadataEntry entry = m_set.createEntry(T::String);
    QCOMPARE(list.size(), 1);
    QCOMPARE(list[0], entry);
    QVERIFY(list.at(1).isNull() && list.at(-1).isNull());
    int walked = 0;
    for (const nkdMetadataEntry &each : list) {
        QCOMPARE(each, entry);
        ++walked;
    }
    QCOMPARE(walked, 1);
    nkdMetadataEntryList nothing;
    nothing.append({entry});
    nothing.clear();
    QVERIFY(nothing.isEmpty() && !nothing.remove(entry) && nothing.find(QStringLiteral("Key")).isNull());
}

NK_GUILESS_TEST_MAIN(TestEntries)
#include "test_entries.moc"
