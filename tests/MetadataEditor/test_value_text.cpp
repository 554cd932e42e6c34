#include "table/nkMetadataValueText.h"
#include "table/nkMetadataValueType.h"

#include <TestMain.h>
#include <nkQt4Ext/QNKDoubleSpiner.h>

#include <QDateTime>
#include <QLocale>

class TestValueText : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void shows_each_storage_type_its_own_way_data()
    {
        QTest::addColumn<QVariant>("value");
        QTest::addColumn<QString>("text");
        const QDate date(2023, 3, 2);
        QTest::newRow("invalid") << QVariant() << QString();
        QTest::newRow("string") << QVariant(QStringLiteral("a\nb")) << QStringLiteral("a\nb");
        QTest::newRow("integer") << QVariant(-7) << QStringLiteral("-7");
        QTest::newRow("long") << QVariant(Q_INT64_C(9007199254740993)) << QStringLiteral("9007199254740993");
        QTest::newRow("true") << QVariant(true) << QStringLiteral("true");
        QTest::newRow("false") << QVariant(false) << QStringLiteral("false");
        QTest::newRow("double") << QVariant(0.1) << QStringLiteral("0.1");
        QTest::newRow("float") << QVariant(0.1f) << QStringLiteral("0.1");
        QTest::newRow("date") << QVariant(date) << QStringLiteral("March 02, 2023");
        QTest::newRow("time") << QVariant(QTime(13, 45, 30)) << QStringLiteral("13:45");
        QTest::newRow("afternoon") << QVariant(QDateTime(date, QTime(15, 7, 9)))
                                   << QStringLiteral("March 02, 2023 15:07:09");
        QTest::newRow("empty list") << QVariant(QVariantList()) << QString();
        QTest::newRow("list in list") << QVariant(QVariantList{
            QStringLiteral("x"), date, QVariant(QVariantList{QStringLiteral("a"), QStringLiteral("b")})})
                                      << QStringLiteral("x, March 02, 2023, a, b");
        QTest::newRow("empty elements")
            << QVariant(QVariantList{QString(), QString()}) << QStringLiteral(", ");
    }
    void shows_each_storage_type_its_own_way()
    {
        QFETCH(QVariant, value);
        QTEST(nkMetadataValueText::text(value), "text");
    }

    void shows_numbers_as_the_float_editor_prints_them()
    {
        QNKDoubleSpiner editor;
        for (double value : {0.1, -2.5, 16777217.0, 1e-300, 1e300, 0.0}) {
            QCOMPARE(nkMetadataValueText::text(value), QNKDoubleSpiner::text(value));
            QCOMPARE(nkMetadataValueText::text(value), editor.textFromValue(value));
        }
    }

    void names_months_in_the_language_of_the_system()
    {
        const QLocale before;
        QLocale::setDefault(QLocale(QLocale::German));
        const QString text = nkMetadataValueText::text(QDate(2023, 3, 2));
        QLocale::setDefault(before);
        QCOMPARE(text, QLocale::system().toString(QDate(2023, 3, 2), QStringLiteral("MMMM dd, yyyy")));
    }

    void names_types_by_number_data()
    {
        QTest::addColumn<int>("type");
        QTest::addColumn<QString>("name");
        const QStringList names{"String", "Integer", "Float",         "Boolean",
                                "Time",   "Date",    "Date and Time", "List"};
        for (int type = 0; type < names.size(); ++type) {
            QTest::newRow(qPrintable(names.at(type))) << type << names.at(type);
        }
        QTest::newRow("tag") << 8 << QStringLiteral("Unknown");
        QTest::newRow("negative") << -1 << QStringLiteral("Unknown");
        QTest::newRow("smallest") << std::numeric_limits<int>::min() << QStringLiteral("Unknown");
    }
    void names_types_by_number()
    {
        QFETCH(int, type);
        QTEST(nkMetadataValueType::name(type), "name");
    }

    void reads_types_from_item_data_data()
    {
        QTest::addColumn<QVariant>("datum");
        QTest::addColumn<int>("type");
        QTest::newRow("type") << QVariant::fromValue(nkMetadataTypes::List) << 7;
        QTest::newRow("out of range") << QVariant::fromValue(nkMetadataTypes::ValueType(-1)) << -1;
        QTest::newRow("number") << QVariant(3) << 3;
        QTest::newRow("invalid") << QVariant() << 0;
        QTest::newRow("nonsense") << QVariant(QStringLiteral("nonsense")) << 0;
        QTest::newRow("list") << QVariant(QVariantList{1}) << 0;
    }
    void reads_types_from_item_data()
    {
        QFETCH(QVariant, datum);
        QFETCH(int, type);
        QCOMPARE(int(nkMetadataValueType::fromVariant(datum)), type);
    }

    void registers_the_type_by_its_name()
    {
        QCOMPARE(QByteArray(QMetaType::typeName(nkMetadataValueType::metaTypeId())),
                 QByteArray("nkMetadataTypes::ValueType"));
        QCOMPARE(QMetaType::type("nkMetadataTypes::ValueType"), nkMetadataValueType::metaTypeId());
    }

    void says_what_an_icon_stands_for()
    {
        QCOMPARE(nkMetadataValueText::iconWord(true, true), QStringLiteral("Tag on Object"));
        QCOMPARE(nkMetadataValueText::iconWord(true, false), QStringLiteral("Tag inside Set"));
        QCOMPARE(nkMetadataValueText::iconWord(false, true), QStringLiteral("Entry on Object"));
        QCOMPARE(nkMetadataValueText::iconWord(false, false), QStringLiteral("Entry inside Set"));
    }
};

NK_TEST_MAIN(TestValueText)
#include "test_value_text.moc"
