#include "QueryFixture.h"

#include <TestMain.h>

#include <functional>

using namespace QueryFixture;

namespace {

/// A query and what it has to be true of, told by the handles alone.
struct RandomQuery
{
    QString text;
    std::function<bool(const nkdMetadataSet &)> truth;
};

using EntryTruth = std::function<bool(const nkdMetadataEntry &)>;

std::function<bool(const nkdMetadataSet &)> anyEntry(const EntryTruth &truth)
{
    return [truth](const nkdMetadataSet &set) {
        const QList<nkdMetadataEntry> entries = set.getEntries();
        return std::any_of(entries.cbegin(), entries.cend(), truth);
    };
}

bool holds(const QString &text, const QString &word)
{
    return text.contains(word, Qt::CaseInsensitive);
}

/// The values of the scenes: texts, whole numbers, quarters, truths. Written out by nothing of the kernel.
QString written(const nkdMetadataEntry &entry)
{
    const QVariant value = entry.getValue();
    return value.userType() == QMetaType::Double ? QString::number(value.toDouble()) : value.toString();
}

bool compared(const QVariant &value, const QString &sign, int number)
{
    if (!value.isValid()) {
        return false;
    }
    const bool isNumber = value.userType() == QMetaType::Int || value.userType() == QMetaType::Double;
    const double left = value.toDouble();
    if (sign == QLatin1String("=") || sign == QLatin1String("!=")) {
        const bool equal = isNumber ? left == number
                           : value.userType() == QMetaType::Bool
                               ? value.toBool() == (number != 0)
                               : value.toString() == QString::number(number);
        return equal == (sign == QLatin1String("="));
    }
    return isNumber && (sign == QLatin1String("<") ? left < number : left > number);
}

} // namespace

/// Random queries over random scenes find what a plain evaluation of the same conditions finds.
class TestQueryProperty : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void random_queries_find_what_plain_evaluation_finds_data();
    void random_queries_find_what_plain_evaluation_finds();

private:
    int pick(int count) { return int(m_random.bounded(quint32(count))); }
    QString word() { return m_words.at(pick(m_words.size())); }
    void makeScene();
    void fill(const nkdMetadataSet &set);
    RandomQuery query(int depth);
    RandomQuery condition();
    RandomQuery narrowed(const QString &word);
    RandomQuery comparison();
    QVector<quint64> plainly(const RandomQuery &query) const;

    QRandomGenerator m_random;
    const QStringList m_words = {"a",   "B", "ab",   "Red",    "red",  "1",   "12", "-3",       "0.25",
                                 "tru", "e", "a b",  "\"",     "\\",   "and", "or", "\xC3\x84", "(",
                                 "/",   "=", "key:", "colour", "Colo", "%1",  " ",  "x<y",      "not"};
    QList<nkdSceneObject> m_objects;
};

void TestQueryProperty::makeScene()
{
    SceneFixture::reset();
    m_objects.clear();
    for (int count = 0; count < 6; ++count) {
        const quint64 parent = count > 2 ? m_objects.at(pick(2)).getObjectId() : 0;
        m_objects.append(SceneFixture::node(word(), parent));
    }
    for (int count = 0; count < 12; ++count) {
        QList<nkdSceneObject> carriers;
        for (const nkdSceneObject &object : qAsConst(m_objects)) {
            if (pick(4) == 0) {
                carriers.append(object);
            }
        }
        fill(set(word(), carriers));
    }
    for (const nkdSceneObject &object : qAsConst(m_objects)) {
        fill(nkdMetadata::fromObject(object).getObjectSet());
    }
}

void TestQueryProperty::fill(const nkdMetadataSet &set)
{
    for (int count = pick(5); count > 0; --count) {
        const T::ValueType types[] = {T::String, T::String, T::Integer, T::Float, T::Boolean, T::Tag};
        const T::ValueType type = types[pick(6)];
        QVariant value;
        if (type == T::String) {
            value = word() + (pick(2) == 0 ? word() : QString());
        } else if (type != T::Tag) {
            value = type == T::Float     ? QVariant((pick(40) - 20) / 4.0)
                    : type == T::Boolean ? QVariant(pick(2) == 0)
                                         : QVariant(pick(30) - 15);
        }
        add(set, set.getUniqueKey(word()), type, value);
    }
}

RandomQuery TestQueryProperty::query(int depth)
{
    if (depth == 0 || pick(4) == 0) {
        return condition();
    }
    const RandomQuery left = query(depth - 1);
    if (pick(4) == 0) {
        return {QStringLiteral("not (") + left.text + QLatin1Char(')'),
                [left](const nkdMetadataSet &set) { return !left.truth(set); }};
    }
    const RandomQuery right = query(depth - 1);
    const QString brackets = QStringLiteral("(") + left.text + QStringLiteral(")");
    if (pick(2) == 0) {
        return {brackets + QStringLiteral(" OR (") + right.text + QLatin1Char(')'),
                [left, right](const nkdMetadataSet &set) { return left.truth(set) || right.truth(set); }};
    }
    return {brackets + (pick(2) == 0 ? QStringLiteral(" and (") : QStringLiteral("(")) + right.text
                + QLatin1Char(')'),
            [left, right](const nkdMetadataSet &set) { return left.truth(set) && right.truth(set); }};
}

RandomQuery TestQueryProperty::condition()
{
    const QString text = word();
    switch (pick(4)) {
    case 0:
        return comparison();
    case 1:
        return narrowed(text);
    default:
        break;
    }
    QString escaped = text;
    escaped.replace(QLatin1Char('\\'), QLatin1String("\\\\"))
        .replace(QLatin1Char('"'), QLatin1String("\\\""));
    const auto inEntry = anyEntry([text](const nkdMetadataEntry &entry) {
        return holds(entry.getKey(), text) || (!entry.isTag() && holds(written(entry), text));
    });
    return {QLatin1Char('"') + escaped + QLatin1Char('"'), [text, inEntry](const nkdMetadataSet &set) {
                return holds(set.getName(), text) || inEntry(set);
            }};
}

RandomQuery TestQueryProperty::narrowed(const QString &word)
{
    switch (pick(5)) {
    case 0:
        return {nkdMetadata::getKeyQuery(word),
                anyEntry([word](const nkdMetadataEntry &entry) { return holds(entry.getKey(), word); })};
    case 1:
        return {nkdMetadata::getValueQuery(word), anyEntry([word](const nkdMetadataEntry &entry) {
                    return !entry.isTag() && holds(written(entry), word);
                })};
    case 2:
        return {nkdMetadata::getSetQuery(word),
                [word](const nkdMetadataSet &set) { return holds(set.getName(), word); }};
    case 3: {
        const T::ValueType type = T::ValueType(pick(9));
        return {nkdMetadata::getValueTypeQuery(type), anyEntry([type](const nkdMetadataEntry &entry) {
                    return entry.isTag() ? type == T::Tag : entry.getValueType() == type;
                })};
    }
    default:
        return {nkdMetadata::getKeyQuery(word).replace(0, 3, QStringLiteral("object")),
                [word](const nkdMetadataSet &set) {
                    const QList<nkdSceneObject> objects = set.getObjects();
                    return std::any_of(
                        objects.cbegin(), objects.cend(),
                        [word](const nkdSceneObject &object) { return holds(object.getName(), word); });
                }};
    }
}

/// Of texts only = and !=: their order is tested by itself.
RandomQuery TestQueryProperty::comparison()
{
    const QString sign = QStringList{"=", "!=", "<", ">"}.at(pick(4));
    const bool ordered = sign == QLatin1String("<") || sign == QLatin1String(">");
    const int number = pick(20) - 10;
    const QString key = QStringList{"a", "B", "red", "Colour"}.at(pick(4));
    const QString text = QStringLiteral("\"%1\" %2 %3").arg(key, sign, QString::number(number));
    const auto truth = anyEntry([key, sign, number](const nkdMetadataEntry &entry) {
        return entry.getKey().compare(key, Qt::CaseInsensitive) == 0
               && compared(entry.getValue(), sign, number);
    });
    if (!ordered) {
        return {text, truth};
    }
    return {QStringLiteral("(%1 not type:String not type:Boolean)").arg(text),
            [truth](const nkdMetadataSet &set) {
                const auto ofOtherType = anyEntry([](const nkdMetadataEntry &entry) {
                    return !entry.isTag()
                           && (entry.getValueType() == T::String || entry.getValueType() == T::Boolean);
                });
                return truth(set) && !ofOtherType(set);
            }};
}

QVector<quint64> TestQueryProperty::plainly(const RandomQuery &query) const
{
    QList<nkdMetadataSet> sets = nkMetadataService::the().getAllSets();
    const QList<quint64> nodes = kernel::Document::the().objects(nkObjectType::Node);
    for (const quint64 node : nodes) {
        const nkdMetadata metadata(node);
        if (metadata.hasObjectEntries()) {
            sets.append(metadata.getObjectSet());
        }
    }
    QVector<quint64> ids;
    for (const nkdMetadataSet &set : qAsConst(sets)) {
        if (query.truth(set)) {
            ids.append(set.getObjectId());
        }
    }
    return ids;
}

void TestQueryProperty::random_queries_find_what_plain_evaluation_finds_data()
{
    QTest::addColumn<quint32>("seed");
    for (quint32 seed = 1; seed <= 20; ++seed) {
        QTest::addRow("seed %u", seed) << seed;
    }
}

void TestQueryProperty::random_queries_find_what_plain_evaluation_finds()
{
    QFETCH(quint32, seed);
    m_random.seed(seed);
    makeScene();
    for (int round = 0; round < 150; ++round) {
        const RandomQuery random = query(3);
        QVERIFY2(idsOf(random.text) == plainly(random), qPrintable(random.text));
    }
}

NK_GUILESS_TEST_MAIN(TestQueryProperty)
#include "test_query_property.moc"
