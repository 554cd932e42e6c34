#include <interchange/ifc/StepArguments.h>
#include <interchange/ifc/StepText.h>

#include <TestMain.h>

using namespace interchange;

/// The texts and values of STEP records.
class TestStepText : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void decodesTexts_data();
    void decodesTexts();
    void readsEveryKindOfValue();
    void readsValuesOverSeveralLinesAndComments();
    void findsReferences();
    void refusesWhatIsNoValue_data();
    void refusesWhatIsNoValue();
    void refusesBottomlessBrackets();
};

void TestStepText::decodesTexts_data()
{
    QTest::addColumn<QByteArray>("inside");
    QTest::addColumn<QString>("text");
    QTest::newRow("plain") << QByteArray("Wall 12 #") << QStringLiteral("Wall 12 #");
    QTest::newRow("doubled quote") << QByteArray("it''s") << QStringLiteral("it's");
    QTest::newRow("backslash") << QByteArray("C:\\\\a") << QStringLiteral("C:\\a");
    QTest::newRow("code units") << QByteArray("a\\X2\\00E400DF\\X0\\b") << QStringLiteral("aäßb");
    QTest::newRow("pair of units") << QByteArray("\\X2\\D83DDE00\\X0\\") << QStringLiteral("😀");
    QTest::newRow("half a pair") << QByteArray("\\X2\\D83D\\X0\\") << QString(QChar::ReplacementCharacter);
    QTest::newRow("code points") << QByteArray("\\X4\\0001F600\\X0\\") << QStringLiteral("😀");
    QTest::newRow("Latin-1 byte") << QByteArray("\\X\\E4\\X\\41") << QStringLiteral("äA");
    QTest::newRow("upper half") << QByteArray("\\S\\D\\S\\v") << QStringLiteral("Äö");
    QTest::newRow("page of Cyrillic") << QByteArray("\\PE\\\\S\\0") << QStringLiteral("А");
    QTest::newRow("UTF-8") << QByteArray("Tür") << QStringLiteral("Tür");
    QTest::newRow("bytes of Latin-1") << QByteArray("T\xfcr") << QStringLiteral("Tür");
    QTest::newRow("line break") << QByteArray("two \r\nlines") << QStringLiteral("two lines");
    QTest::newRow("markup") << QByteArray("<b>&amp;</b>") << QStringLiteral("<b>&amp;</b>");
    QTest::newRow("no end of units") << QByteArray("\\X2\\00E4") << QStringLiteral("\\X2\\00E4");
    QTest::newRow("no units") << QByteArray("\\X2\\00Q4\\X0\\") << QStringLiteral("\\X2\\00Q4\\X0\\");
    QTest::newRow("escape of nothing")
        << QByteArray("\\Q\\ \\X\\ \\S\\") << QStringLiteral("\\Q\\ \\X\\ \\S\\");
    QTest::newRow("nothing") << QByteArray() << QString();
}

void TestStepText::decodesTexts()
{
    QFETCH(QByteArray, inside);
    QFETCH(QString, text);
    QCOMPARE(stepText({inside.constData(), size_t(inside.size())}), text);
}

void TestStepText::readsEveryKindOfValue()
{
    StepArguments arguments;
    QVERIFY(arguments.read("($,*,-12,1.E-3,'it''s',.T.,\"0FF\",#7,IFCLABEL('x'),(1,(2,3)),())"));
    const std::vector<std::pair<StepKind, std::string_view>> expected{
        {StepKind::Omitted, "$"},  {StepKind::Derived, "*"},   {StepKind::Integer, "-12"},
        {StepKind::Real, "1.E-3"}, {StepKind::Text, "it''s"},  {StepKind::Enumeration, "T"},
        {StepKind::Binary, "0FF"}, {StepKind::Reference, "7"}, {StepKind::Typed, "IFCLABEL"},
        {StepKind::List, ""},      {StepKind::List, ""}};
    for (size_t i = 0; i < expected.size(); ++i) {
        QCOMPARE(int(arguments.at(int(i)).kind), int(expected[i].first));
        QVERIFY(arguments.at(int(i)).text == expected[i].second);
    }
    QVERIFY(arguments.inner(arguments.at(8)).text == "x");
    QCOMPARE(arguments.children(arguments.at(9)).size(), size_t(2));
    QCOMPARE(arguments.children(*arguments.children(arguments.at(9)).at(1)).size(), size_t(2));
    QVERIFY(arguments.children(arguments.at(10)).empty());
    QCOMPARE(int(arguments.at(99).kind), int(StepKind::Omitted));
}

void TestStepText::readsValuesOverSeveralLinesAndComments()
{
    StepArguments arguments;
    QVERIFY(arguments.read(" ( /* the ' name ) */ 'a' ,\r\n\t IFCREAL ( 2. ) /**/ )"));
    QVERIFY(arguments.at(0).text == "a");
    QVERIFY(arguments.inner(arguments.at(1)).text == "2.");
}

void TestStepText::findsReferences()
{
    StepArguments arguments;
    QVERIFY(
        arguments.read("(#4,(#5,$,#6),IFCPROPERTYSETDEFINITIONSET((#7,#8)),'x',#99999999999999999999999)"));
    QCOMPARE(arguments.references(arguments.at(0)), std::vector<quint64>{4});
    QCOMPARE(arguments.references(arguments.at(1)), (std::vector<quint64>{5, 6}));
    QCOMPARE(arguments.references(arguments.at(2)), (std::vector<quint64>{7, 8}));
    QVERIFY(arguments.references(arguments.at(3)).empty());
    QCOMPARE(arguments.references(arguments.at(4)), std::vector<quint64>{0});
}

void TestStepText::refusesWhatIsNoValue_data()
{
    QTest::addColumn<QByteArray>("text");
    for (const char *text : {"", "1", "(", "(1", "(1 2)", "(,1)", "(1,)", "('a)", "(#)", "(.T)", "(IFCLABEL)",
                             "(IFCLABEL())", "(IFCLABEL('a','b'))", "(?)", "(+)", "((1)", "('a'b)"})
        QTest::newRow(text) << QByteArray(text);
}

void TestStepText::refusesWhatIsNoValue()
{
    QFETCH(QByteArray, text);
    StepArguments arguments;
    QVERIFY(!arguments.read({text.constData(), size_t(text.size())}));
    QCOMPARE(int(arguments.at(0).kind), int(StepKind::Omitted));
}

void TestStepText::refusesBottomlessBrackets()
{
    StepArguments arguments;
    for (const int depth : {StepArguments::MaximalDepth, StepArguments::MaximalDepth + 1, 1000000}) {
        const QByteArray text = '(' + QByteArray(depth, '(') + QByteArray(depth, ')') + ')';
        QCOMPARE(arguments.read({text.constData(), size_t(text.size())}),
                 depth == StepArguments::MaximalDepth);
    }
}

NK_GUILESS_TEST_MAIN(TestStepText)
#include "test_step_text.moc"
