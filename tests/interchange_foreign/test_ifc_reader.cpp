#include "IfcText.h"

#include <interchange/ifc/IfcReader.h>
#include <interchange/ifc/IfcTree.h>
#include <kernel/services/Progress.h>

#include <TestMain.h>

#include <QTemporaryDir>

using namespace interchange;
using namespace IfcText;
using Type = nkMetadataTypes::ValueType;

/// What is read from IFC: objects, sets, entries and what is said about the rest.
class TestIfcReader : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void isForIfcBySuffixOrContent();
    void readsTheSpatialTree();
    void namesAndKeysOfObjects();
    void readsNestedAndUnlinkedObjects();
    void readsEveryTypeOfValue_data();
    void readsEveryTypeOfValue();
    void readsPropertiesWithSeveralValues();
    void leavesTablesAndReferencesAlone();
    void flattensComplexProperties();
    void makesOneSetOfEqualOnes();
    void assignsSetsOfTypesWhereTheObjectHasNone();
    void quantitiesBecomeOwnEntries();
    void readsMaterials();
    void doubledPropertiesAreReported();
    void readsAroundRingsAndMissingRecords();
    void theFirstOfDoubledRecordsCounts();
    void readsOtherSchemasWithANote();
    void deepTreesAreCut();

private:
    bool read(const QByteArray &content);
    ForeignScene::Entry entry(const IndexRange &range, const char *key) const;
    QStringList keys(const IndexRange &range) const;
    /// "House>Site", one a node, in the order of the nodes.
    QStringList tree() const;
    static QStringList texts(const QVector<ImportReport::Item> &items, ImportReason reason);

    QTemporaryDir m_folder;
    ForeignScene m_scene;
    QString m_error;
};

void TestIfcReader::init()
{
    m_scene = ForeignScene();
    m_error.clear();
}

bool TestIfcReader::read(const QByteArray &content)
{
    QFile file(m_folder.filePath(QStringLiteral("a.ifc")));
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
        qWarning("cannot write");
    file.close();
    kernel::Progress progress(QStringLiteral("test"));
    IfcReader reader;
    const bool isRead = reader.read(file.fileName(), m_scene, progress);
    m_error = reader.error().reason();
    return isRead;
}

ForeignScene::Entry TestIfcReader::entry(const IndexRange &range, const char *key) const
{
    for (quint32 i = range.first; i < range.end(); ++i) {
        if (m_scene.entries[i].key == QString::fromUtf8(key))
            return m_scene.entries[i];
    }
    return ForeignScene::Entry();
}

QStringList TestIfcReader::keys(const IndexRange &range) const
{
    QStringList found;
    for (quint32 i = range.first; i < range.end(); ++i)
        found.append(m_scene.entries[i].key);
    return found;
}

QStringList TestIfcReader::tree() const
{
    QStringList lines;
    for (const ForeignScene::Node &node : m_scene.nodes) {
        const QString parent = node.parent < 0 ? QString() : m_scene.nodes[size_t(node.parent)].name;
        lines.append(parent + QLatin1Char('>') + node.name);
    }
    return lines;
}

QStringList TestIfcReader::texts(const QVector<ImportReport::Item> &items, ImportReason reason)
{
    QStringList found;
    for (const ImportReport::Item &item : items) {
        if (item.reason == reason)
            found.append(item.path);
    }
    return found;
}

void TestIfcReader::isForIfcBySuffixOrContent()
{
    const IfcReader reader;
    QVERIFY(reader.isFor(QStringLiteral("ifc"), "anything"));
    QVERIFY(reader.isFor(QStringLiteral("txt"), "ISO-10303-21;"));
    QVERIFY(reader.isFor(QString(), "\xef\xbb\xbf \r\n/* by hand */\nISO-10303-21;"));
    QVERIFY(!reader.isFor(QStringLiteral("obj"), "v 0 0 0"));
    QVERIFY(!reader.isFor(QString(), "/* ISO-10303-21;"));
}

void TestIfcReader::readsTheSpatialTree()
{
    QVERIFY2(read(file(house())), qPrintable(m_error));
    QCOMPARE(tree(),
             (QStringList{">House", "House>Site", "Site>Home", "Home>Ground floor", "Ground floor>Wall",
                          "Wall>Hole", "Ground floor>Wall", "Ground floor>Door 22", ">Zone"}));
    QVERIFY(m_scene.report.isClean());
    QVERIFY(m_scene.sets.empty() && m_scene.entries.empty() && m_scene.materials.empty());
}

void TestIfcReader::namesAndKeysOfObjects()
{
    const QByteArray same = "#90= IFCWALL('" + id(20) + "',#5,'T\\X2\\00FC\\X0\\r <b>\n&',$,$,$,$,$);\n";
    QVERIFY(read(file(house() + same + QByteArray(same).replace("#90", "#91"))));
    QCOMPARE(m_scene.nodes[4].key, QString::fromLatin1(id(20)));
    QCOMPARE(m_scene.nodes[9].name, QStringLiteral("Tür <b>&"));
    QCOMPARE(m_scene.nodes[9].key, QString::fromLatin1(id(20)) + QStringLiteral(" (2)"));
    QCOMPARE(m_scene.nodes[10].key, QString::fromLatin1(id(20)) + QStringLiteral(" (3)"));
    QCOMPARE(texts(m_scene.report.notes(), ImportReason::DoubledIdentifier), (QStringList{"#90", "#91"}));
}

void TestIfcReader::readsNestedAndUnlinkedObjects()
{
    // A type that nobody knows is an object as long as it looks like one; types, styles and persons are none.
    QVERIFY(
        read(file(house() + object("IFCTASK", 80, "Task") + object("IFCTASK", 81, "Step")
                  + relation("IFCRELNESTS", 82, "#80,(#81)") + object("IFCSOMETHINGNEW", 83, "New")
                  + object("IFCWALLTYPE", 84, "Type") + object("IFCDOORSTYLE", 85, "Style")
                  + "#86= IFCPERSON('id','Family',$,$,$,$,$,$);\n#87= IFCSURFACESTYLE('x',.BOTH.,());\n")));
    QCOMPARE(tree().mid(9), (QStringList{">Task", "Task>Step", ">New"}));
}

void TestIfcReader::readsEveryTypeOfValue_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<int>("type");
    QTest::addColumn<QVariant>("value");
    const auto add = [](const char *text, int type, const QVariant &value) {
        QTest::newRow(text) << QByteArray(text) << type << value;
    };
    add("IFCINTEGER(-5)", Type::Integer, -5);
    add("IFCINTEGER(2147483648)", Type::String, QStringLiteral("2147483648"));
    add("IFCCOUNTMEASURE(3)", Type::Integer, 3);
    add("IFCCOUNTMEASURE(3.)", Type::Integer, 3);
    add("IFCCOUNTMEASURE(3.5)", Type::Float, 3.5);
    add("IFCREAL(1.E-3)", Type::Float, 0.001);
    add("IFCREAL(7)", Type::Float, 7.0);
    add("IFCLENGTHMEASURE(4000.)", Type::Float, 4000.0);
    add("IFCTHERMALTRANSMITTANCEMEASURE(2)", Type::Float, 2.0);
    add("IFCREAL(1.E999)", Type::String, QStringLiteral("1.E999"));
    add("IFCBOOLEAN(.T.)", Type::Boolean, true);
    add("IFCBOOLEAN(.F.)", Type::Boolean, false);
    add("IFCLOGICAL(.T.)", Type::Boolean, true);
    add("IFCLOGICAL(.U.)", Type::String, QStringLiteral("unknown"));
    add("IFCLABEL('it''s \\X2\\20AC\\X0\\')", Type::String, QStringLiteral("it's €"));
    add("IFCTEXT('')", Type::String, QString());
    add("IFCIDENTIFIER('0012')", Type::String, QStringLiteral("0012"));
    add("IFCSOMEENUM(.NOTDEFINED.)", Type::String, QStringLiteral("NOTDEFINED"));
    add("IFCBINARY(\"0AF\")", Type::String, QStringLiteral("0AF"));
    add("IFCTIMESTAMP(1600000000)", Type::Integer, 1600000000);
    add("IFCCOMPOUNDPLANEANGLEMEASURE((42,21,-31))", Type::List, QVariantList({42, 21, -31}));
    add("12", Type::Integer, 12);
    add("'untyped'", Type::String, QStringLiteral("untyped"));
    add("$", Type::Tag, QVariant());
    add("*", Type::Tag, QVariant());
}

void TestIfcReader::readsEveryTypeOfValue()
{
    QFETCH(QByteArray, text);
    QFETCH(int, type);
    QFETCH(QVariant, value);
    QVERIFY(read(
        file(house() + single(40, "Key", text) + propertySet(50, "Set", "#40") + assignment(60, "#20", 50))));
    QCOMPARE(m_scene.sets.size(), size_t(1));
    const ForeignScene::Entry found = entry(m_scene.sets[0].entries, "Key");
    QCOMPARE(found.isTag, type == Type::Tag);
    QCOMPARE(found.isTag ? int(Type::Tag) : int(found.type), type);
    QCOMPARE(found.value, value);
    QCOMPARE(found.value.userType(), value.userType());
    const bool isConverted = text.contains("2147483648") || text.contains("E999") || text.contains(".U.");
    QCOMPARE(m_scene.report.converted().size(), isConverted ? 1 : 0);
    QCOMPARE(m_scene.report.keptCount(), isConverted ? 0 : 1);
}

void TestIfcReader::readsPropertiesWithSeveralValues()
{
    QVERIFY(read(file(
        house()
        + "#40= IFCPROPERTYENUMERATEDVALUE('Status',$,(IFCLABEL('NEW'),IFCLABEL('OLD')),#49);\n"
          "#41= IFCPROPERTYLISTVALUE('Sizes',$,(IFCLENGTHMEASURE(1.),IFCINTEGER(2),IFCBOOLEAN(.F.)),$);\n"
          "#42= IFCPROPERTYBOUNDEDVALUE('Range',$,IFCREAL(9.),IFCREAL(1.),$);\n"
          "#43= IFCPROPERTYBOUNDEDVALUE('Up to',$,IFCREAL(9.),$,$);\n"
          "#44= IFCPROPERTYBOUNDEDVALUE('Open',$,$,$,$);\n#45= IFCPROPERTYENUMERATEDVALUE('None',$,$,$);\n"
        + propertySet(50, "Set", "#40,#41,#42,#43,#44,#45") + assignment(60, "#20", 50))));
    const IndexRange range = m_scene.sets.at(0).entries;
    QCOMPARE(entry(range, "Status").value, QVariant(QVariantList{"NEW", "OLD"}));
    QCOMPARE(entry(range, "Sizes").value, QVariant(QVariantList{1.0, 2, false}));
    QCOMPARE(entry(range, "Range").value, QVariant(QVariantList{1.0, 9.0}));
    QCOMPARE(entry(range, "Up to").value, QVariant(QVariantList{QVariant(), 9.0}));
    QVERIFY(entry(range, "Open").isTag && entry(range, "None").isTag);
    QCOMPARE(m_scene.report.keptCount(), 6);
}

void TestIfcReader::leavesTablesAndReferencesAlone()
{
    QVERIFY(read(file(house()
                      + "#40= IFCPROPERTYTABLEVALUE('Table',$,(IFCREAL(1.)),(IFCREAL(2.)),$,$,$);\n"
                        "#41= IFCPROPERTYREFERENCEVALUE('Ref',$,$,#5);\n#42= IFCDOORLININGPROPERTIES('"
                      + id(42) + "',#5,$,$,1.);\n" + propertySet(50, "Set", "#40,#41")
                      + propertySet(51, "Nobody''s", "#40") + assignment(60, "#20", 50)
                      + assignment(61, "#20", 42))));
    QCOMPARE(m_scene.sets.size(), size_t(1));
    QCOMPARE(m_scene.sets[0].entries.count, 0U);
    QCOMPARE(texts(m_scene.report.untouched(), ImportReason::UnreadableProperty),
             (QStringList{"#40 Table", "#41 Ref", "#42"}));
    QCOMPARE(texts(m_scene.report.untouched(), ImportReason::UnassignedSet), QStringList{"#51"});
}

void TestIfcReader::flattensComplexProperties()
{
    QVERIFY(read(file(house() + single(40, "a", "IFCREAL(1.)")
                      + "#41= IFCCOMPLEXPROPERTY('Inner',$,'u',(#40));\n"
                        "#42= IFCCOMPLEXPROPERTY('Outer',$,'u',(#40,#41));\n"
                        "#43= IFCCOMPLEXPROPERTY('Ring',$,'u',(#43));\n"
                      + propertySet(50, "Set", "#42,#43") + assignment(60, "#20", 50))));
    QCOMPARE(keys(m_scene.sets.at(0).entries), (QStringList{"Outer.a", "Outer.Inner.a"}));
    QCOMPARE(m_scene.report.untouched().size(), 1);
}

void TestIfcReader::makesOneSetOfEqualOnes()
{
    const QByteArray records = house() + single(40, "a", "IFCREAL(1.)") + single(41, "a", "IFCREAL(1.0)")
                               + single(42, "a", "IFCREAL(2.)") + propertySet(50, "Set", "#40")
                               + propertySet(51, "Set", "#41") + propertySet(52, "Set", "#42")
                               + propertySet(53, "Other", "#40") + propertySet(54, "Set", "#40,#42")
                               + assignment(60, "#20", 50) + assignment(61, "#21,#22", 51)
                               + assignment(62, "#20,#20", 51) + assignment(63, "#21", 52)
                               + assignment(64, "#21", 53);
    QVERIFY(read(file(records)));
    QCOMPARE(m_scene.sets.size(), size_t(3));
    QCOMPARE(m_scene.sets[0].name, QStringLiteral("Set"));
    QCOMPARE(m_scene.sets[0].nodes, (std::vector<quint32>{4, 6, 7}));
    QCOMPARE(m_scene.sets[1].nodes, std::vector<quint32>{6});
    QCOMPARE(m_scene.sets[2].name, QStringLiteral("Other"));
}

void TestIfcReader::assignsSetsOfTypesWhereTheObjectHasNone()
{
    QVERIFY(read(file(house() + single(40, "a", "IFCREAL(1.)") + propertySet(50, "Set", "#40")
                      + propertySet(51, "Set", "#40") + propertySet(52, "More", "#40") + "#70= IFCWALLTYPE('"
                      + id(70) + "',#5,'Type',$,$,(#51,#52),$,$,$,.STANDARD.);\n"
                      + relation("IFCRELDEFINESBYTYPE", 71, "(#20,#21),#70") + assignment(60, "#20", 50))));
    QStringList found;
    for (const ForeignScene::Set &set : m_scene.sets)
        found.append(QStringLiteral("%1 %2").arg(set.name).arg(set.nodes.size()));
    QCOMPARE(found, (QStringList{"Set 1", "Set (type) 1", "More (type) 2"}));
    QCOMPARE(m_scene.sets[1].nodes, std::vector<quint32>{6});
}

void TestIfcReader::quantitiesBecomeOwnEntries()
{
    QVERIFY(read(file(
        house()
        + "#40= IFCQUANTITYLENGTH('Length',$,$,4.5);\n#41= IFCQUANTITYCOUNT('Count',$,$,3.);\n"
          "#42= IFCQUANTITYAREA('Area',$,$,2);\n#43= IFCPHYSICALCOMPLEXQUANTITY('C',$,(#40),$,$,$);\n"
          "#50= IFCELEMENTQUANTITY('"
        + id(50) + "',#5,'Base',$,$,(#40,#41,#42,#43));\n" + assignment(60, "#20,#21", 50)
        + assignment(61, "#20", 50) + "#44= IFCQUANTITYLENGTH('Length',$,$,5.);\n#51= IFCELEMENTQUANTITY('"
        + id(51) + "',#5,'Base',$,$,(#44));\n" + assignment(62, "#20", 51))));
    QVERIFY(m_scene.sets.empty());
    const IndexRange own = m_scene.nodes[4].entries;
    QCOMPARE(keys(own), (QStringList{"Base.Length", "Base.Count", "Base.Area"}));
    QCOMPARE(entry(own, "Base.Length").value, QVariant(4.5));
    QCOMPARE(entry(own, "Base.Count").value, QVariant(3));
    QCOMPARE(entry(own, "Base.Area").value, QVariant(2.0));
    QCOMPARE(m_scene.nodes[6].entries.count, 3U);
    QCOMPARE(texts(m_scene.report.untouched(), ImportReason::UnreadableProperty), QStringList{"#43 Base.C"});
    QCOMPARE(texts(m_scene.report.untouched(), ImportReason::DoubledProperty),
             QStringList{QString::fromLatin1(id(20)) + QStringLiteral(" Base.Length")});
}

void TestIfcReader::readsMaterials()
{
    QVERIFY(read(file("#1= IFCMATERIAL('Oak');\n#2= IFCMATERIAL('Oak');\n#3= IFCMATERIAL('');\n"
                      "#4= IFCMATERIALLIST((#1,#2));\n#5=IFCMATERIAL('Oak (2)');\n")));
    QStringList found;
    for (const ForeignScene::Material &material : m_scene.materials)
        found.append(material.name + QLatin1Char('=') + material.key);
    QCOMPARE(found, (QStringList{"Oak=Oak", "Oak=Oak (2)", "Material 3=Material 3", "Oak (2)=Oak (2) (2)"}));
}

void TestIfcReader::doubledPropertiesAreReported()
{
    QVERIFY(read(file(house() + single(40, "a", "IFCREAL(1.)") + single(41, "a", "IFCREAL(2.)")
                      + propertySet(50, "Set", "#40,#41,#40") + assignment(60, "#20", 50))));
    QCOMPARE(keys(m_scene.sets.at(0).entries), QStringList{"a"});
    QCOMPARE(entry(m_scene.sets.at(0).entries, "a").value, QVariant(1.0));
    QCOMPARE(texts(m_scene.report.untouched(), ImportReason::DoubledProperty), QStringList{"#41 a"});
}

void TestIfcReader::readsAroundRingsAndMissingRecords()
{
    QVERIFY(read(file(object("IFCWALL", 1, "A") + object("IFCWALL", 2, "B") + object("IFCWALL", 3, "C")
                      + relation("IFCRELAGGREGATES", 10, "#1,(#2,#1,#77)")
                      + relation("IFCRELAGGREGATES", 11, "#2,(#1)") + relation("IFCRELNESTS", 12, "#3,(#2)")
                      + relation("IFCRELAGGREGATES", 13, "#88,(#3)") + propertySet(20, "Set", "#99")
                      + assignment(21, "#3,#98", 20) + assignment(22, "#3", 97))));
    QCOMPARE(tree(), (QStringList{">C", ">A", "A>B"}));
    QCOMPARE(texts(m_scene.report.notes(), ImportReason::LoopInTree), QStringList{"#1"});
    QCOMPARE(texts(m_scene.report.notes(), ImportReason::SecondPlace), (QStringList{"#1", "#2"}));
    QCOMPARE(texts(m_scene.report.notes(), ImportReason::MissingRecord),
             (QStringList{"#77", "#3", "#98", "#97"}));
    QCOMPARE(texts(m_scene.report.untouched(), ImportReason::MissingRecord), QStringList{"#99"});
    QCOMPARE(m_scene.sets.at(0).nodes, std::vector<quint32>{0});
}

void TestIfcReader::theFirstOfDoubledRecordsCounts()
{
    QVERIFY(read(file(object("IFCWALL", 2, "B") + object("IFCWALL", 1, "A")
                      + QByteArray(object("IFCWALL", 2, "C")).replace(id(2), id(3)))));
    QCOMPARE(tree(), (QStringList{">B", ">A"}));
    QCOMPARE(texts(m_scene.report.untouched(), ImportReason::DoubledRecord), QStringList{"#2"});
}

void TestIfcReader::readsOtherSchemasWithANote()
{
    QVERIFY(read(file(taggedHouse(), "IFC4")));
    QCOMPARE(m_scene.sets.size(), size_t(2));
    QCOMPARE(texts(m_scene.report.notes(), ImportReason::OtherSchema), QStringList{"IFC4"});
    init();
    QVERIFY(!read(file(taggedHouse(), "AUTOMOTIVE_DESIGN")));
    QVERIFY(m_error.contains(QStringLiteral("“AUTOMOTIVE_DESIGN”")));
}

void TestIfcReader::deepTreesAreCut()
{
    QByteArray records;
    constexpr int count = 2000;
    for (int i = 1; i <= count; ++i)
        records += object("IFCWALL", i, "W" + QByteArray::number(i));
    for (int i = 1; i < count; ++i)
        records += relation("IFCRELAGGREGATES", 10000 + i,
                            '#' + QByteArray::number(i) + ",(#" + QByteArray::number(i + 1) + ')');
    QVERIFY(read(file(records)));
    QCOMPARE(m_scene.nodes.size(), size_t(count));
    QCOMPARE(texts(m_scene.report.notes(), ImportReason::TooDeepInTree).size(),
             (count - 1) / IfcTree::MaximalDepth);
    QCOMPARE(std::count_if(m_scene.nodes.begin(), m_scene.nodes.end(),
                           [](const ForeignScene::Node &node) { return node.parent < 0; }),
             4);
}

NK_GUILESS_TEST_MAIN(TestIfcReader)
#include "test_ifc_reader.moc"
