#include "SavingFixture.h"
#include "SceneVariety.h"
#include "TestMain.h"

#include <nkKernelServices/nkScopedUndo.h>

#include <QDateTime>
#include <QTimeZone>
#include <QUndoStack>

#include <limits>
#include <random>

using T = nkMetadataTypes;

/// Random edits: what is saved and opened again is the same document, and saving it once more the same file.
class TestSceneSavingProperty : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void whatIsSavedIsWhatIsOpenedAgain_data();
    void whatIsSavedIsWhatIsOpenedAgain();

private:
    using Edit = void (TestSceneSavingProperty::*)();

    int number(int end) { return int(m_random() % quint32(end)); }
    template <typename List>
    auto any(const List &list)
    {
        return list.at(number(list.size()));
    }
    QString text();
    QVariant value(T::ValueType type);
    QVariant element();
    nkdMetadataSet anySet();
    nkdSceneObject anyObject();
    nkdMetadataEntry anyEntry();

    void setValue();
    void retype();
    void rename();
    void create();
    void remove();
    void clear();
    void paste();
    void createSet();
    void deleteSet();
    void assign();
    void unassign();
    void colour();
    void lock();
    void nameObject();
    void asset();
    void undo() { kernel::Document::the().undo(); }

    std::mt19937 m_random;
};

QString TestSceneSavingProperty::text()
{
    static const QStringList texts{
        "plain",  "",           "a.b",          "nested.a", "nested.b.c",   "nested",  "matrix", "a\\.b",
        "\"\"",   "é 𝄞",        "\x01\n\t\"\\", "<b>&%1",   "5000000000",   "1e400",   "true",   "null",
        "extras", "2024-02-29", "NaN",          "twice",    "nested.b.new", "objects", "0"};
    return any(texts);
}

QVariant TestSceneSavingProperty::element()
{
    switch (number(12)) {
    case 0:
        return number(1000) - 500;
    case 1:
        return number(1000) / 8.0;
    case 2:
        return number(2) == 0;
    case 3:
        return QVariant();
    case 4:
        return QDate(1800 + number(400), 1 + number(12), 1);
    case 5:
        return QTime(number(24), number(60), 0, number(2));
    case 6:
        return QVariantList{1, QVariantList{QStringLiteral("deep")}};
    case 7:
        return qlonglong(number(1000)) << 40;
    case 8:
        return std::numeric_limits<double>::infinity();
    default:
        return text();
    }
}

QVariant TestSceneSavingProperty::value(T::ValueType type)
{
    static const QVector<double> floats{0.0,
                                        -0.0,
                                        1.0,
                                        0.1,
                                        1e300,
                                        -5e-324,
                                        std::numeric_limits<double>::infinity(),
                                        std::numeric_limits<double>::quiet_NaN()};
    const QDate date(1 + number(4000), 1 + number(12), 1 + number(28));
    const QTime time(number(24), number(60), number(60), number(1000));
    switch (type) {
    case T::Integer:
        return any(QVector<int>{0, -1, std::numeric_limits<int>::max(), std::numeric_limits<int>::min(), 42});
    case T::Float:
        return any(floats);
    case T::Boolean:
        return number(2) == 0;
    case T::Time:
        return time;
    case T::Date:
        return date;
    case T::DateTime:
        return any(QVector<QDateTime>{QDateTime(date, time), QDateTime(date, time, Qt::UTC),
                                      QDateTime(date, time, Qt::OffsetFromUTC, 5400),
                                      QDateTime(date, time, QTimeZone("Europe/Berlin"))});
    case T::List: {
        QVariantList list;
        for (int i = number(4); i > 0; --i)
            list.append(element());
        return list;
    }
    default:
        return text();
    }
}

nkdSceneObject TestSceneSavingProperty::anyObject()
{
    return nkdSceneObject(nkdObject(any(SavingFixture::allObjects())));
}

nkdMetadataSet TestSceneSavingProperty::anySet()
{
    const QList<nkdMetadataSet> shared = nkMetadataService::the().getAllSets();
    return shared.isEmpty() || number(4) > 0 ? SavingFixture::ownSet(anyObject()) : any(shared);
}

nkdMetadataEntry TestSceneSavingProperty::anyEntry()
{
    const QList<nkdMetadataEntry> entries = anySet().getEntries().data();
    return entries.isEmpty() ? nkdMetadataEntry() : any(entries);
}

void TestSceneSavingProperty::setValue()
{
    nkdMetadataEntry entry = anyEntry();
    entry.setValue(value(entry.getValueType()));
}

void TestSceneSavingProperty::retype()
{
    anyEntry().setValueType(T::ValueType(number(9)));
}

void TestSceneSavingProperty::rename()
{
    anyEntry().setKey(text());
}

void TestSceneSavingProperty::create()
{
    nkdMetadataEntry entry = anySet().createEntry(T::ValueType(number(9)));
    entry.setKey(text());
    entry.setValue(value(entry.getValueType()));
}

void TestSceneSavingProperty::remove()
{
    const nkdMetadataEntry entry = anyEntry();
    entry.getSet().getEntries().remove(entry);
}

void TestSceneSavingProperty::clear()
{
    if (number(4) == 0)
        anySet().getEntries().clear();
}

void TestSceneSavingProperty::paste()
{
    const QList<nkdMetadataEntry> entries = anySet().getEntries().data();
    anySet().getEntries().append(entries.mid(0, 3));
}

void TestSceneSavingProperty::createSet()
{
    nkMetadataService::the().createSet(text(), {anyObject(), anyObject()});
}

void TestSceneSavingProperty::deleteSet()
{
    nkMetadataService::the().deleteSets({anySet()});
}

void TestSceneSavingProperty::assign()
{
    nkMetadataService::the().assignSets({anyObject(), anyObject()},
                                        nkMetadataService::the().getAllSets().mid(0, 3));
}

void TestSceneSavingProperty::unassign()
{
    nkMetadataService::the().removeAssignments(nkMetadataService::the().getAllSets().mid(number(3), 1),
                                               {anyObject()});
}

void TestSceneSavingProperty::colour()
{
    anySet().setColor(QColor(number(256), number(256), number(256)));
}

void TestSceneSavingProperty::lock()
{
    anySet().setLocked(number(3) == 0);
    anyObject().setLocked(number(3) == 0);
}

void TestSceneSavingProperty::nameObject()
{
    const QString name = text();
    if (!name.isEmpty())
        anyObject().setName(name);
}

void TestSceneSavingProperty::asset()
{
    const QList<nkdMetadataSet> sets = nkMetadataService::the().getAllSets();
    if (!sets.isEmpty())
        kernel::Document::the().setAssetState(any(sets).getObjectId(), kernel::AssetState(number(3)), text());
}

void TestSceneSavingProperty::whatIsSavedIsWhatIsOpenedAgain_data()
{
    QTest::addColumn<int>("variant");
    for (int i = 0; i < SceneVariety::Count; ++i)
        QTest::addRow("made %d", i) << i;
}

void TestSceneSavingProperty::whatIsSavedIsWhatIsOpenedAgain()
{
    static const QVector<Edit> edits{
        &TestSceneSavingProperty::setValue,   &TestSceneSavingProperty::setValue,
        &TestSceneSavingProperty::retype,     &TestSceneSavingProperty::rename,
        &TestSceneSavingProperty::rename,     &TestSceneSavingProperty::create,
        &TestSceneSavingProperty::create,     &TestSceneSavingProperty::remove,
        &TestSceneSavingProperty::clear,      &TestSceneSavingProperty::paste,
        &TestSceneSavingProperty::createSet,  &TestSceneSavingProperty::deleteSet,
        &TestSceneSavingProperty::assign,     &TestSceneSavingProperty::unassign,
        &TestSceneSavingProperty::colour,     &TestSceneSavingProperty::lock,
        &TestSceneSavingProperty::nameObject, &TestSceneSavingProperty::asset,
        &TestSceneSavingProperty::undo};
    QFETCH(int, variant);
    m_random.seed(quint32(variant) + 1);
    SavingFixture scene;
    QVERIFY(scene.openContent(SceneVariety::file(variant)));
    for (int round = 0; round < 30; ++round) {
        for (int i = 1 + number(8); i > 0; --i)
            (this->*any(edits))();
        const QString expected = SavingFixture::dump();
        const QByteArray saved = scene.saved();
        QCOMPARE(SavingFixture::dump(), expected);
        // Every other time the file is opened again; otherwise work goes on.
        const bool goesOn = round % 2 == 0;
        if (goesOn)
            QCOMPARE(scene.saved(), saved);
        SavingFixture again;
        if (!goesOn) {
            QVERIFY2(again.open(scene.path), saved.constData());
            QVERIFY(again.report.refused().isEmpty());
            QCOMPARE(SavingFixture::dump(), expected);
            QCOMPARE(again.saved(), saved);
            scene.source = again.source;
        }
    }
}

NK_TEST_MAIN(TestSceneSavingProperty)
#include "test_scene_saving_property.moc"
