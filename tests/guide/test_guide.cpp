#include "TestMain.h"

#include <QDir>
#include <QImage>
#include <QProcess>
#include <QProcessEnvironment>
#include <QRegularExpression>
#include <QTemporaryDir>

/// The guide and the program: every picture of a page can be made, every one that is made is in a page and is kept, and
/// every text that a page quotes stands in the program.
class TestGuide : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void initTestCase();
    void there_are_ten_pages_and_the_contents_name_each_of_them();
    void pages_are_short();
    void every_picture_that_a_page_shows_is_made();
    void every_picture_that_is_made_is_shown_and_kept();
    void pictures_are_small_files();
    void every_link_leads_somewhere();
    void every_quoted_text_stands_in_the_program_data();
    void every_quoted_text_stands_in_the_program();

private:
    static QStringList pages()
    {
        return QDir(QStringLiteral(GUIDE)).entryList({QStringLiteral("*.md")}, QDir::Files, QDir::Name);
    }
    static QString read(const QString &path)
    {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
    }
    static QString page(const QString &name) { return read(QDir(QStringLiteral(GUIDE)).filePath(name)); }
    /// The first groups of all places where a pattern matches.
    static QStringList found(const QString &text, const char *pattern)
    {
        QStringList groups;
        auto match = QRegularExpression(QLatin1String(pattern)).globalMatch(text);
        while (match.hasNext()) {
            groups.append(match.next().captured(1));
        }
        return groups;
    }
    static QStringList shown()
    {
        QStringList names;
        for (const QString &name : pages()) {
            names += found(page(name), R"(!\[[^\]]*\]\(pictures/([^)]+)\))");
        }
        names.sort();
        return names;
    }
    QStringList made() const
    {
        return QDir(m_folder.path()).entryList({QStringLiteral("*.png")}, QDir::Files, QDir::Name);
    }

    QTemporaryDir m_folder;
    QStringList m_texts;
};

void TestGuide::initTestCase()
{
    QProcess process;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("xcb"));
    process.setProcessEnvironment(environment);
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.start(QStringLiteral(WITH_DISPLAY), {QStringLiteral(GUIDE_PICTURES), m_folder.path()});
    QVERIFY(process.waitForFinished(120000));
    QVERIFY2(process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0,
             process.readAll().constData());
    m_texts = read(m_folder.filePath(QStringLiteral("texts.txt"))).split(QLatin1Char('\n'));
    QVERIFY(m_texts.size() > 100);
}

void TestGuide::there_are_ten_pages_and_the_contents_name_each_of_them()
{
    QStringList names = pages();
    QVERIFY(names.removeOne(QStringLiteral("README.md")));
    QCOMPARE(names.size(), 10);
    QCOMPARE(found(page(QStringLiteral("README.md")), R"((?m)^\d+\. \[[^\]]+\]\(([^)]+)\)$)"), names);
}

void TestGuide::pages_are_short()
{
    for (const QString &name : pages()) {
        QVERIFY2(page(name).count(QLatin1Char('\n')) <= 60, qPrintable(name));
    }
}

void TestGuide::every_picture_that_a_page_shows_is_made()
{
    for (const QString &name : shown()) {
        QVERIFY2(!QImage(m_folder.filePath(name)).isNull(), qPrintable(name));
    }
}

void TestGuide::every_picture_that_is_made_is_shown_and_kept()
{
    QCOMPARE(made(), shown());
    const QDir kept(QStringLiteral(GUIDE) + QStringLiteral("/pictures"));
    QCOMPARE(kept.entryList(QDir::Files, QDir::Name), shown());
}

void TestGuide::pictures_are_small_files()
{
    const QDir kept(QStringLiteral(GUIDE) + QStringLiteral("/pictures"));
    for (const QFileInfo &picture : kept.entryInfoList(QDir::Files)) {
        QVERIFY2(picture.size() < 150 * 1024, qPrintable(picture.fileName()));
    }
}

void TestGuide::every_link_leads_somewhere()
{
    for (const QString &name : pages()) {
        for (const QString &link : found(page(name), R"(\]\(([^)#]+)[^)]*\))")) {
            QVERIFY2(QFileInfo::exists(QDir(QStringLiteral(GUIDE)).filePath(link)),
                     qPrintable(name + QStringLiteral(": ") + link));
        }
    }
}

void TestGuide::every_quoted_text_stands_in_the_program_data()
{
    QTest::addColumn<QString>("quoted");
    for (const QString &name : pages()) {
        QStringList quoted = found(page(name), R"(\*\*([^*]+)\*\*)");
        if (name == QLatin1String("README.md")) {
            quoted.removeOne(QStringLiteral("bold"));
        }
        quoted.removeDuplicates();
        for (const QString &text : qAsConst(quoted)) {
            QTest::newRow(qPrintable(name + QStringLiteral(": ") + text)) << text;
        }
    }
}

void TestGuide::every_quoted_text_stands_in_the_program()
{
    QFETCH(QString, quoted);
    for (const QString &text : quoted.split(QStringLiteral(" > "))) {
        QVERIFY2(m_texts.contains(text), qPrintable(text));
    }
}

NK_GUILESS_TEST_MAIN(TestGuide)
#include "test_guide.moc"
