#include "TestMain.h"

#include <interchange/gltf/GltfTransform.h>
#include <interchange/json/JsonReader.h>

#include <QtTest>

#include <cmath>
#include <random>

using namespace interchange;

/// Places of nodes: what is multiplied, inverted and taken apart is what it was.
class TestSceneTransform : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void membersThatAreNotWhatTheyShouldBeCountAsAbsent();
    void anInverseUndoes();
    void flatPlacesHaveNoInverse();
    void stepsGiveTheSamePlaceAgain();
    void mirroredPlacesComeApart();
    void bentPlacesAreSaidToBe();
    void numbersAreWrittenWithoutNoise();

private:
    static GltfTransform of(const QByteArray &node)
    {
        JsonTree tree;
        JsonReader().read(node, tree);
        return GltfTransform::ofNode(tree.root());
    }
    static QVector<double> numbers(const GltfTransform &transform)
    {
        QVector<double> values;
        for (const QByteArray &text : transform.text(false).mid(1).chopped(1).split(','))
            values.append(text.toDouble());
        return values;
    }
    static bool isNear(const GltfTransform &a, const GltfTransform &b)
    {
        const QVector<double> x = numbers(a);
        const QVector<double> y = numbers(b);
        return std::equal(x.begin(), x.end(), y.begin(), [](double one, double other) {
            return std::abs(one - other) < 1e-7 * std::max(1.0, std::abs(one));
        });
    }
    double number() { return (double(m_random() % 20001) - 10000) / 1000; }
    GltfTransform any(bool isMirrored);

    std::mt19937 m_random;
};

GltfTransform TestSceneTransform::any(bool isMirrored)
{
    GltfTransform::Steps steps;
    steps.translation = {number(), number(), number()};
    steps.rotation = {number(), number(), number(), number() + 0.0005};
    double length = 0;
    for (const double part : steps.rotation)
        length += part * part;
    for (double &part : steps.rotation)
        part /= std::sqrt(length);
    steps.scale = {std::abs(number()) + 0.1, std::abs(number()) + 0.1, std::abs(number()) + 0.1};
    if (isMirrored)
        steps.scale[m_random() % 3] *= -1;
    return GltfTransform::of(steps);
}

void TestSceneTransform::membersThatAreNotWhatTheyShouldBeCountAsAbsent()
{
    QVERIFY(of("{}").isIdentity());
    for (const char *odd : {R"({"matrix":[1,2]})", R"({"translation":["1",2,3]})", R"({"scale":7})",
                            R"({"rotation":[0,0,0,1,0]})", R"({"scale":[1e400,1,1]})"})
        QVERIFY2(of(odd).isIdentity(), odd);
    QCOMPARE(of(R"({"translation":[1,2,3],"scale":[2,2,2]})").text(false),
             QByteArray("[2,0,0,0,0,2,0,0,0,0,2,0,1,2,3,1]"));
}

void TestSceneTransform::anInverseUndoes()
{
    for (int i = 0; i < 200; ++i) {
        const GltfTransform transform = any(i % 2 == 0) * any(i % 3 == 0);
        const auto inverse = transform.inverted();
        QVERIFY(inverse);
        QVERIFY(isNear(*inverse * transform, GltfTransform()));
    }
}

void TestSceneTransform::flatPlacesHaveNoInverse()
{
    QVERIFY(!of(R"({"scale":[1,0,1]})").inverted());
    QVERIFY(!of(R"({"scale":[1e-200,1e-200,1e-200]})").inverted());
}

void TestSceneTransform::stepsGiveTheSamePlaceAgain()
{
    for (int i = 0; i < 500; ++i) {
        const GltfTransform transform = any(false);
        bool isExact = false;
        QVERIFY(isNear(GltfTransform::of(transform.steps(isExact)), transform));
        QVERIFY(isExact);
    }
    // Half a turn round each axis, where the last part of the quaternion is nothing.
    for (const char *turn : {"[1,0,0,0]", "[0,1,0,0]", "[0,0,1,0]"}) {
        const GltfTransform transform = of(QByteArray(R"({"rotation":)") + turn + '}');
        bool isExact = false;
        QVERIFY(isNear(GltfTransform::of(transform.steps(isExact)), transform) && isExact);
    }
}

void TestSceneTransform::mirroredPlacesComeApart()
{
    for (int i = 0; i < 200; ++i) {
        const GltfTransform transform = any(true);
        bool isExact = false;
        QVERIFY(isNear(GltfTransform::of(transform.steps(isExact)), transform));
        QVERIFY(isExact);
    }
}

void TestSceneTransform::bentPlacesAreSaidToBe()
{
    bool isExact = true;
    of(R"({"matrix":[1,0,0,0, 0.5,1,0,0, 0,0,1,0, 0,0,0,1]})").steps(isExact);
    QVERIFY(!isExact);
}

void TestSceneTransform::numbersAreWrittenWithoutNoise()
{
    QCOMPARE(GltfTransform::text(std::array<double, 3>{1.2999999999999998, -1, 2.7e-17}, true),
             QByteArray("[1.3, -1, 0]"));
}

NK_TEST_MAIN(TestSceneTransform)
#include "test_scene_transform.moc"
