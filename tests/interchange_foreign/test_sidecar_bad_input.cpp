#include "SidecarFixture.h"
#include "TestMain.h"

#include <QElapsedTimer>

#include <random>

using namespace interchange;
using Saved = SceneFile::Saved;

/// Sidecars that are damaged: the model opens without them, and they stay as they are.
class TestSidecarBadInput : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void saysWhatIsWrong_data();
    void saysWhatIsWrong();
    void mutatedOnesAreReadOrLeftAlone();

private:
    SidecarFixture m_f;
    QByteArray m_good;
    QString m_plain;
};

void TestSidecarBadInput::initTestCase()
{
    QVERIFY(m_f.openHouse());
    m_plain = m_f.dump();
    m_f.editEverything();
    QCOMPARE(m_f.save().outcome, Saved::Done);
    m_good = m_f.sidecar();
}

void TestSidecarBadInput::saysWhatIsWrong_data()
{
    QTest::addColumn<QByteArray>("what");
    QTest::addColumn<QByteArray>("instead");
    QTest::addColumn<QString>("reason");
    const auto add = [](const char *what, const char *instead, const char *reason) {
        QTest::newRow(instead) << QByteArray(what) << QByteArray(instead) << QString::fromUtf8(reason);
    };
    add("\"version\":1,\"sets\"", "\"version\":3,\"sets\"", "version");
    add("\"version\":1,\"sets\"", "\"sets\"", "version");
    add("metadata-sidecar", "metadata-side", "format");
    add("\"objects\":[\n{", "\"more\":1,\"objects\":[\n{", "no member of this name");
    add("\"assets\"", "\"asset\"", "no member of this name");
    add("\"set\":0", "\"set\":77", "place in a list");
    add("\"set\":0", "\"set\":-1", "place in a list");
    add("\"set\":0", "\"set\":\"0\"", "place in a list");
    add("\"atRest\"", "\"resting\"", "state of an asset");
    add("\"locked\":true", "\"locked\":1", "locked");
    add("\"type\":\"date\"", "\"type\":\"day\"", "no type of entries");
    add("\"name\":\"Site\"", "\"name\":5", "names of objects");
    add("{\"node\":", "{\"node\":\"\",\"x\":", "no member of this name");
    add("\"node\":\"0000000000000000000011\"", "\"node\":\"0000000000000000000010\"", "has this key");
    add("\"node\":\"0000000000000000000011\"", "\"node\":\"\"", "has a key");
    add("\"node\":\"0000000000000000000011\"", "\"node\":\"a\",\"material\":\"a\"", "has a key");
    add("\"assigned\":[", "\"assigned\":[[],", "object in braces");
    add("\"own\":{", "\"own\":[],\"x\":{", "no member");
}

void TestSidecarBadInput::saysWhatIsWrong()
{
    QFETCH(QByteArray, what);
    QFETCH(QByteArray, instead);
    QFETCH(QString, reason);
    QByteArray bad = m_good;
    const int at = bad.indexOf(what);
    QVERIFY(at >= 0);
    bad.replace(at, what.size(), instead);
    m_f.writeSidecar(bad);
    QVERIFY(m_f.reopen());
    QCOMPARE(m_f.dump(), m_plain);
    QCOMPARE(m_f.report.refused().size(), 1);
    const QString detail = m_f.report.refused().at(0).detail;
    QVERIFY2(detail.contains(reason) && detail.contains(QStringLiteral("line ")), qPrintable(detail));
    QCOMPARE(m_f.sidecar(), bad);
}

void TestSidecarBadInput::mutatedOnesAreReadOrLeftAlone()
{
    std::mt19937 random(19980401);
    const auto upTo = [&random](int limit) { return int(random() % uint(limit)); };
    const QByteArray alphabet("{}[]:,\"\\0123456789-etrufals\n\0\xff", 30);
    int readCount = 0;
    QElapsedTimer timer;
    for (int round = 0; round < 5000; ++round) {
        QByteArray content = m_good;
        for (int change = upTo(3); change >= 0; --change) {
            const int at = upTo(content.size() - 1);
            if (upTo(3) == 0)
                content[at] = alphabet.at(upTo(alphabet.size()));
            else if (upTo(2) == 0)
                content.remove(at, upTo(20));
            else
                content.insert(at, content.mid(upTo(content.size()), upTo(60)));
        }
        m_f.writeSidecar(content);
        timer.start();
        QVERIFY(m_f.reopen());
        QVERIFY(timer.elapsed() < 5000);
        const auto &refused = m_f.report.refused();
        const bool isLeftAlone = !refused.isEmpty() && refused.at(0).reason == ImportReason::ForeignSidecar;
        readCount += isLeftAlone ? 0 : 1;
        if (isLeftAlone && round % 50 == 0)
            QCOMPARE(m_f.dump(), m_plain);
        QCOMPARE(m_f.save().outcome, Saved::Done);
        QCOMPARE(m_f.sidecar(), content);
    }
    QVERIFY2(readCount > 50 && readCount < 4900, qPrintable(QString::number(readCount)));
}

NK_GUILESS_TEST_MAIN(TestSidecarBadInput)
#include "test_sidecar_bad_input.moc"
