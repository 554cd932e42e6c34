#include "IfcText.h"
#include "SavingFixture.h"
#include "TestMain.h"

#include <interchange/ifc/IfcReader.h>
#include <kernel/services/Progress.h>

#include <QElapsedTimer>

#include <random>

using namespace IfcText;

/// Bad IFC: refused with a sentence or read around, quickly, and the open scene stays as it is.
class TestIfcDamage : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void badFilesLeaveTheSceneAlone_data();
    void badFilesLeaveTheSceneAlone();
    void everyTruncationIsRefused();
    void aMissingLastLineIsReadAround();
    void damagedRecordsAreReadAround();
    void mutatedFilesAreReadOrRefused();
    void shortFilesThatSayMuchAreRefused_data();
    void shortFilesThatSayMuchAreRefused();
    void aMillionRecordsAreReadInTime();

private:
    SceneFile::Result open(const QByteArray &content);
    static bool isRead(const QByteArray &content);

    SavingFixture m_files;
    QString m_before;
};

void TestIfcDamage::init()
{
    QVERIFY(m_files.open(m_files.write(QStringLiteral("good.ifc"), file(taggedHouse()))));
    m_before = SavingFixture::dump();
    QVERIFY(m_before.contains(QStringLiteral("Pset_WallCommon")));
}

SceneFile::Result TestIfcDamage::open(const QByteArray &content)
{
    return SceneFile::open(m_files.write(QStringLiteral("bad.ifc"), content));
}

bool TestIfcDamage::isRead(const QByteArray &content)
{
    interchange::IfcReader reader;
    interchange::ForeignScene scene;
    kernel::Progress progress(QStringLiteral("test"));
    return reader.readText(content, scene, progress);
}

void TestIfcDamage::badFilesLeaveTheSceneAlone_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QString>("reason");
    const QByteArray whole = file(taggedHouse());
    QTest::newRow("empty") << QByteArray() << QStringLiteral("the file is empty");
    QTest::newRow("binary") << QByteArray(5000, '\x9c') << QStringLiteral("ISO-10303-21");
    QTest::newRow("zeros") << QByteArray(5000, '\0') << QStringLiteral("ISO-10303-21");
    QTest::newRow("text") << QByteArray("<html>") << QStringLiteral("ISO-10303-21");
    QTest::newRow("only the first line") << QByteArray("ISO-10303-21;") << QStringLiteral("no data");
    QTest::newRow("only a header") << whole.left(whole.indexOf("DATA;")) << QStringLiteral("no data");
    QTest::newRow("half") << whole.left(whole.size() / 2) << QStringLiteral("ends before its data");
    QTest::newRow("a text without end")
        << QByteArray(whole).replace("'House',$", "'House,$") << QStringLiteral("ends before its data");
    QTest::newRow("a comment without end")
        << QByteArray(whole).replace("#5=", "/* #5=") << QStringLiteral("ends before its data");
    QTest::newRow("no schema") << QByteArray(whole).replace("FILE_SCHEMA", "FILE_SOMETHING")
                               << QStringLiteral("schema");
}

void TestIfcDamage::badFilesLeaveTheSceneAlone()
{
    QFETCH(QByteArray, content);
    QFETCH(QString, reason);
    const SceneFile::Result result = open(content);
    QVERIFY2(result.error.contains(reason), qPrintable(result.error));
    QVERIFY(result.error.contains(QStringLiteral("bad.ifc")) && result.error.endsWith(QLatin1Char('.')));
    QCOMPARE(SavingFixture::dump(), m_before);
}

void TestIfcDamage::everyTruncationIsRefused()
{
    const QByteArray whole = file(taggedHouse());
    const int end = whole.lastIndexOf("ENDSEC;") + 7;
    for (int size = 1; size < end; size += 7) {
        QVERIFY2(!open(whole.left(size)).error.isEmpty(), qPrintable(QString::number(size)));
        QCOMPARE(SavingFixture::dump(), m_before);
    }
}

void TestIfcDamage::aMissingLastLineIsReadAround()
{
    const QByteArray whole = file(taggedHouse());
    QVERIFY(open(whole.left(whole.lastIndexOf("END-ISO"))).isOpen());
    QCOMPARE(SavingFixture::dump(), m_before);
    const int end = whole.lastIndexOf("ENDSEC;");
    QVERIFY(open(whole.left(end) + whole.mid(end + 8)).isOpen());
    QCOMPARE(SavingFixture::dump(), m_before);
}

void TestIfcDamage::damagedRecordsAreReadAround()
{
    const SceneFile::Result result = open(
        file("#;\n#x=IFCWALL();\n#99999999999999999999999999=IFCWALL('a');\nnonsense;\n#8 IFCWALL('a');\n"
             "#9=(IFCA('x')IFCB('y'));\n#10=IFCWALL;\n;\n"
             + taggedHouse() + "#11=IFCWALL('" + id(11) + "',#5,;\n#12=!USER('x');\n"));
    QVERIFY2(result.isOpen(), qPrintable(result.error));
    QCOMPARE(SavingFixture::dump(), m_before);
    QVERIFY(result.report.untouched().size() >= 6);
    QCOMPARE(result.report.untouched().at(0).reason, interchange::ImportReason::BrokenRecord);
}

/// Ten thousand files with a few bytes changed, cut out, doubled or exchanged.
void TestIfcDamage::mutatedFilesAreReadOrRefused()
{
    const QByteArray whole = file(taggedHouse());
    std::mt19937 random(20240229);
    const auto upTo = [&random](int limit) { return int(random() % uint(limit)); };
    const QByteArray alphabet("#=();,'\"$*./\\X0123456789ABCIFC_\n\0\xff", 34);
    int openedCount = 0;
    QElapsedTimer timer;
    for (int round = 0; round < 10000; ++round) {
        QByteArray content = whole;
        for (int change = upTo(4); change >= 0; --change) {
            const int at = upTo(content.size() - 1);
            switch (upTo(4)) {
            case 0:
                content[at] = alphabet.at(upTo(alphabet.size()));
                break;
            case 1:
                content.remove(at, upTo(30));
                break;
            case 2:
                content.insert(at, content.mid(upTo(content.size()), upTo(200)));
                break;
            default:
                content.replace('#' + QByteArray::number(10 + upTo(60)),
                                '#' + QByteArray::number(10 + upTo(60)));
            }
        }
        timer.start();
        openedCount += isRead(content) ? 1 : 0;
        // Making a scene of it costs more than reading it.
        if (round % 10 == 0) {
            const SceneFile::Result result = open(content);
            QVERIFY(result.isOpen() != !result.error.isEmpty());
        }
        QVERIFY2(timer.elapsed() < 5000, content.constData());
    }
    QVERIFY2(openedCount > 1000 && openedCount < 9900, qPrintable(QString::number(openedCount)));
}

void TestIfcDamage::shortFilesThatSayMuchAreRefused_data()
{
    QTest::addColumn<QByteArray>("records");
    QByteArrayList walls;
    QByteArrayList sets;
    QByteArray records;
    for (int i = 0; i < 4000; ++i) {
        walls.append('#' + QByteArray::number(10000 + i));
        records += object("IFCWALL", 10000 + i, "W");
    }
    for (int i = 0; i < 4000; ++i) {
        sets.append('#' + QByteArray::number(20000 + i));
        records += propertySet(20000 + i, "S" + QByteArray::number(i), "");
    }
    QTest::newRow("types") << records + "#1= IFCWALLTYPE('" + id(1) + "',#5,$,$,$,(" + sets.join(',')
                                  + "));\n"
                                  + relation("IFCRELDEFINESBYTYPE", 2, '(' + walls.join(',') + "),#1");
    QByteArray complex = single(1, "a", "IFCREAL(1.)");
    for (int level = 2; level < 9; ++level) {
        QByteArrayList inner;
        for (int i = 0; i < 20; ++i)
            inner.append('#' + QByteArray::number(level - 1));
        complex += '#' + QByteArray::number(level) + "= IFCCOMPLEXPROPERTY('c',$,'u',(" + inner.join(',')
                   + "));\n";
    }
    QTest::newRow("complex properties")
        << complex + object("IFCWALL", 20, "W") + propertySet(30, "S", "#8") + assignment(31, "#20", 30);
    QByteArrayList quantities;
    QByteArray lengths;
    for (int i = 0; i < 4000; ++i) {
        quantities.append('#' + QByteArray::number(30000 + i));
        lengths += '#' + QByteArray::number(30000 + i) + "= IFCQUANTITYLENGTH('q" + QByteArray::number(i)
                   + "',$,$,1.);\n";
    }
    QTest::newRow("quantities") << records + lengths + "#1= IFCELEMENTQUANTITY('" + id(1) + "',#5,'Q',$,$,("
                                       + quantities.join(',') + "));\n" + assignment(2, walls.join(','), 1);
}

void TestIfcDamage::shortFilesThatSayMuchAreRefused()
{
    QFETCH(QByteArray, records);
    const SceneFile::Result result = open(file(records));
    QVERIFY2(result.error.contains(QStringLiteral("more properties")), qPrintable(result.error));
    QCOMPARE(SavingFixture::dump(), m_before);
}

void TestIfcDamage::aMillionRecordsAreReadInTime()
{
    QByteArray records = taggedHouse();
    for (int i = 0; i < 1000000; ++i)
        records += '#' + QByteArray::number(1000000 + i) + "= IFCCARTESIANPOINT((0.,1.,2.5E-3));\n";
    QElapsedTimer timer;
    timer.start();
    QVERIFY(open(file(records)).isOpen());
    qInfo("%lld ms for %d MiB", timer.elapsed(), records.size() >> 20);
    QCOMPARE(SavingFixture::dump(), m_before);
    QVERIFY(timer.elapsed() < 30000);
}

NK_GUILESS_TEST_MAIN(TestIfcDamage)
#include "test_ifc_damage.moc"
