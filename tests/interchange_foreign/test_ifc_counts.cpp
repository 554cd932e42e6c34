#include "IfcText.h"
#include "SavingFixture.h"
#include "TestMain.h"

#include <QRegularExpression>

/// What stands in the document after IFC was opened, counted against a search through the file's text.
class TestIfcCounts : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void findsWhatASearchFinds_data();
    void findsWhatASearchFinds();
    void aKnownBuildingHasItsKnownNumbers();

private:
    struct Counts
    {
        QSet<quint64> objects;
        int pairs = 0;
        int entries = 0;
        QMap<int, int> types;  ///< of entries, by value type; tags under their own
        QSet<QByteArray> sets; ///< by name and entries
    };

    static QByteArray generated();
    static QString building();
    static Counts searched(const QByteArray &text);
    static Counts opened();
    static int typeOf(const QByteArray &value);
};

namespace {

const QString NameOfTypeSets = QStringLiteral(" (type)");

/// The values between the outermost brackets of a record.
QList<QByteArray> values(const QByteArray &arguments)
{
    QList<QByteArray> found{QByteArray()};
    int depth = 0;
    bool isText = false;
    for (const char c : arguments) {
        isText = isText != (c == '\'');
        depth += isText ? 0 : c == '(' ? 1 : c == ')' ? -1 : 0;
        if (c == ',' && depth == 0 && !isText)
            found.append(QByteArray());
        else
            found.last().append(c);
    }
    return found;
}

QList<quint64> references(const QByteArray &value)
{
    QList<quint64> found;
    auto matches = QRegularExpression(QStringLiteral("#(\\d+)")).globalMatch(QString::fromLatin1(value));
    while (matches.hasNext())
        found.append(matches.next().captured(1).toULongLong());
    return found;
}

} // namespace

QByteArray TestIfcCounts::generated()
{
    using namespace IfcText;
    QByteArray records = object("IFCPROJECT", 1, "P");
    const QByteArrayList values{
        "IFCLABEL('a, (b); ''c''')", "IFCREAL(1.5)",    "IFCINTEGER(7)", "IFCBOOLEAN(.T.)",
        "IFCLOGICAL(.F.)",           "IFCLOGICAL(.U.)", "IFCTEXT('')",   "$",
        "IFCAREAMEASURE(3.)"};
    for (int i = 0; i < 200; ++i)
        records += object("IFCWALL", 1000 + i, "W");
    for (int i = 0; i < 300; ++i)
        records += single(2000 + i, "k" + QByteArray::number(i % 7), values.at(i % values.size()));
    for (int set = 0; set < 120; ++set) {
        QByteArrayList properties;
        for (int i = 0; i < set % 7; ++i)
            properties.append('#' + QByteArray::number(2000 + (set % 40 * 7 / 7 * 7 + i) % 300));
        records += propertySet(3000 + set, "Set " + QByteArray::number(set % 9), properties.join(','));
        QByteArrayList objects;
        for (int i = 0; i < 5; ++i)
            objects.append('#' + QByteArray::number(1000 + (set * 3 + i * 40) % 200));
        records += assignment(4000 + set, objects.join(','), 3000 + set);
    }
    return file(records);
}

QString TestIfcCounts::building()
{
    return qEnvironmentVariable("NK_MORE_SAMPLES", QStringLiteral(NK_MORE_SAMPLES))
           + QStringLiteral("/TallBuilding.ifc");
}

int TestIfcCounts::typeOf(const QByteArray &value)
{
    if (value == "$")
        return nkMetadataTypes::Tag;
    if (value.contains("(.U.)"))
        return nkMetadataTypes::String;
    if (value.startsWith("IFCBOOLEAN") || value.startsWith("IFCLOGICAL"))
        return nkMetadataTypes::Boolean;
    if (value.startsWith("IFCINTEGER"))
        return nkMetadataTypes::Integer;
    return value.startsWith("IFCREAL") || value.contains("MEASURE(") ? nkMetadataTypes::Float
                                                                     : nkMetadataTypes::String;
}

TestIfcCounts::Counts TestIfcCounts::searched(const QByteArray &text)
{
    QHash<quint64, QPair<QByteArray, QList<QByteArray>>> records;
    const QRegularExpression record(QStringLiteral("^#(\\d+)= (IFC\\w+)\\((.*)\\);\\s*$"),
                                    QRegularExpression::MultilineOption);
    auto matches = record.globalMatch(QString::fromLatin1(text));
    while (matches.hasNext()) {
        const QRegularExpressionMatch match = matches.next();
        records.insert(match.captured(1).toULongLong(),
                       {match.captured(2).toLatin1(), values(match.captured(3).toLatin1())});
    }
    Counts counts;
    QSet<QPair<quint64, QByteArray>> pairs;
    for (const auto &relation : qAsConst(records)) {
        const auto set = records.value(references(relation.second.value(5)).value(0));
        if (relation.first != "IFCRELDEFINESBYPROPERTIES" || set.first != "IFCPROPERTYSET")
            continue;
        QByteArray content = set.second.at(2);
        QList<int> types;
        for (const quint64 property : references(set.second.at(4))) {
            const QList<QByteArray> single = records.value(property).second;
            content += '\n' + single.at(0) + single.at(2);
            types.append(typeOf(single.at(2)));
        }
        counts.sets.insert(content);
        for (const quint64 object : references(relation.second.at(4))) {
            if (pairs.contains({object, content}))
                continue;
            pairs.insert({object, content});
            counts.objects.insert(object);
            counts.entries += types.size();
            for (const int type : qAsConst(types))
                ++counts.types[type];
        }
    }
    counts.pairs = pairs.size();
    return counts;
}

TestIfcCounts::Counts TestIfcCounts::opened()
{
    Counts counts;
    const QList<nkdMetadataSet> sets = nkMetadataService::the().getAllSets();
    for (const nkdMetadataSet &set : sets) {
        if (set.getName().contains(NameOfTypeSets))
            continue;
        counts.sets.insert(set.getName().toUtf8());
        for (const nkdSceneObject &object : set.getObjects()) {
            counts.objects.insert(object.getObjectId());
            ++counts.pairs;
            const QList<nkdMetadataEntry> entries = set.getEntries().data();
            counts.entries += entries.size();
            for (const nkdMetadataEntry &entry : entries)
                ++counts.types[entry.isTag() ? int(nkMetadataTypes::Tag) : int(entry.getValueType())];
        }
    }
    return counts;
}

void TestIfcCounts::findsWhatASearchFinds_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::newRow("generated") << generated();
    if (QFileInfo::exists(building()))
        QTest::newRow("building") << SavingFixture::read(building());
}

void TestIfcCounts::findsWhatASearchFinds()
{
    QFETCH(QByteArray, content);
    SavingFixture files;
    QVERIFY(files.open(files.write(QStringLiteral("a.ifc"), content)));
    const Counts expected = searched(content);
    const Counts found = opened();
    QVERIFY(expected.pairs > 100 && expected.entries > 100 && expected.types.size() > 3);
    QCOMPARE(found.objects.size(), expected.objects.size());
    QCOMPARE(found.pairs, expected.pairs);
    QCOMPARE(found.entries, expected.entries);
    QCOMPARE(found.types, expected.types);
    QCOMPARE(found.sets.size(), expected.sets.size());
    qInfo("%d objects, %d pairs, %d entries, %d sets", found.objects.size(), found.pairs, found.entries,
          found.sets.size());
}

void TestIfcCounts::aKnownBuildingHasItsKnownNumbers()
{
    SavingFixture files;
    if (!QFileInfo::exists(building()))
        return;
    QVERIFY(files.open(building()));
    const Counts found = opened();
    QCOMPARE(found.objects.size(), 66);
    QCOMPARE(found.pairs, 736);
    QCOMPARE(found.entries, 2315);
    QVERIFY(!QFileInfo::exists(building() + QStringLiteral(".metadata.json")));
}

NK_GUILESS_TEST_MAIN(TestIfcCounts)
#include "test_ifc_counts.moc"
