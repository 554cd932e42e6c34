#include "HeaderBodies.h"
#include "LayerCheck.h"
#include "TestMain.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <memory>

/// The check of the rooms on planted violations, and on what it must leave alone.
class LayerCheckTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void judgesIncludes_data();
    void judgesIncludes();
    void refusesAWayAroundTheDoorsByARelativePath();
    void refusesADoorOpenedByAForm();
    void refusesAFileInNoRoom();
    void refusesCodeAmongTheDeclarations();
    void namesFileAndLine();
    void readsIncludesThatAreNotCompiled();
    void ignoresIncludesInComments();
    void findsBodiesInDeclarations_data();
    void findsBodiesInDeclarations();

private:
    void write(const QString &file, const QByteArray &text);
    QStringList check() const;

    std::unique_ptr<QTemporaryDir> m_root;
};

void LayerCheckTest::init()
{
    m_root = std::make_unique<QTemporaryDir>();
    for (const char *file :
         {"host/nkKernelServices/nkdNode.h", "host/nkQt4Ext/QNKTreeView.h",
          "host/nkKernelServicesGUI/nkModel.h", "workbench/kernel/Document.h", "workbench/widgets/Rows.h",
          "workbench/interchange/gltf/GltfReader.h", "workbench/interchange/importer/FlatForm.h",
          "workbench/app/MainWindow.h", "MetadataEditor/frame/Window.h", "MetadataEditor/table/Table.h",
          "MetadataEditor/tree/Tree.h", "MetadataEditor/actions/Actions.h",
          "MetadataEditor/preferences/Page.h"})
        write(QLatin1String(file), "#pragma once\n");
}

void LayerCheckTest::write(const QString &file, const QByteArray &text)
{
    const QString path = m_root->filePath(file);
    QVERIFY(QDir().mkpath(QFileInfo(path).path()));
    QFile out(path);
    QVERIFY(out.open(QFile::WriteOnly));
    QCOMPARE(out.write(text), text.size());
}

QStringList LayerCheckTest::check() const
{
    QStringList lines;
    const LayerCheck check(m_root->path(), QStringLiteral(NK_QT_INCLUDE_DIR), RoomTable::ofProject());
    for (const Violation &violation : check.run())
        lines += violation.toString();
    return lines;
}

void LayerCheckTest::judgesIncludes_data()
{
    QTest::addColumn<QString>("folder");
    QTest::addColumn<QString>("include");
    QTest::addColumn<bool>("allowed");
    const struct
    {
        const char *folder;
        const char *include;
        bool allowed;
    } rows[] = {
        {"host/nkKernelServices", "<QColor>", true},
        {"host/nkKernelServices", "<QWidget>", false},
        {"host/nkKernelServices", "<QtWidgets/QWidget>", false},
        {"host/nkKernelServices", "<QtWidgets>", false},
        {"host/nkKernelServices", "<qwidget.h>", false},
        {"host/nkKernelServices", "<nkQt4Ext/QNKTreeView.h>", false},
        {"host/nkQt4Ext", "<nkKernelServices/nkdNode.h>", false},
        {"host/nkKernelServicesGUI", "<nkKernelServices/nkdNode.h>", true},
        {"host/nkKernelServicesGUI", "<kernel/Document.h>", false},
        {"MetadataEditor/frame", "\"table/Table.h\"", true},
        {"MetadataEditor/frame", "<nkKernelServicesGUI/nkModel.h>", true},
        {"MetadataEditor/table", "\"actions/Actions.h\"", true},
        {"MetadataEditor/table", "\"tree/Tree.h\"", false},
        {"MetadataEditor/table", "\"frame/Window.h\"", false},
        {"MetadataEditor/tree", "\"table/Table.h\"", true},
        {"MetadataEditor/tree", "\"frame/Window.h\"", false},
        {"MetadataEditor/actions", "\"frame/Window.h\"", true},
        {"MetadataEditor/actions", "\"tree/Tree.h\"", false},
        {"MetadataEditor/preferences", "\"frame/Window.h\"", false},
        {"MetadataEditor/table", "<kernel/Document.h>", false},
        {"MetadataEditor/table", "<unistd.h>", false},
        {"MetadataEditor/table", "<QFile>", true},
        {"MetadataEditor/table", "<QtTest>", false},
        {"workbench/kernel", "<QUndoStack>", true},
        {"workbench/kernel", "<QUndoCommand>", true},
        {"workbench/kernel", "<QUndoView>", false},
        {"workbench/kernel", "<QMessageBox>", false},
        {"workbench/kernel", "<nkQt4Ext/QNKTreeView.h>", false},
        {"workbench/kernel", "<unistd.h>", true},
        {"workbench/kernel", "<vector>", true},
        {"workbench/widgets", "<nkKernelServices/nkdNode.h>", false},
        {"workbench/gui", "<nkKernelServices/nkdNode.h>", true},
        {"workbench/gui", "<kernel/Document.h>", false},
        {"workbench/gui", "<widgets/Rows.h>", false},
        {"workbench/interchange", "<kernel/Document.h>", true},
        {"workbench/interchange", "<QLabel>", false},
        {"workbench/interchange", "<QSqlQuery>", false},
        {"workbench/interchange/assets", "<QSqlQuery>", true},
        {"workbench/kernel", "<QSqlQuery>", false},
        {"workbench/app", "<QSqlQuery>", false},
        {"workbench/importer", "<assimp/scene.h>", true},
        {"workbench/importer", "<interchange/importer/FlatForm.h>", true},
        {"workbench/importer", "<interchange/gltf/GltfReader.h>", false},
        {"workbench/importer", "<QString>", false},
        {"workbench/interchange", "<assimp/scene.h>", false},
        {"workbench/app", "<assimp/scene.h>", false},
        {"workbench/app", "<interchange/gltf/GltfReader.h>", true},
        {"workbench/app", "<table/Table.h>", false},
        {"workbench/app", "<somewhere/else.h>", false},
    };
    for (const auto &row : rows)
        QTest::addRow("%s: %s", row.folder, row.include)
            << QString::fromLatin1(row.folder) << QString::fromLatin1(row.include) << row.allowed;
}

void LayerCheckTest::judgesIncludes()
{
    QFETCH(QString, folder);
    QFETCH(QString, include);
    QFETCH(bool, allowed);
    write(folder + QLatin1String("/Planted.h"), "#include " + include.toLatin1() + '\n');
    const QStringList lines = check();
    QVERIFY2(lines.isEmpty() == allowed, qPrintable(lines.join(QLatin1Char('\n'))));
}

void LayerCheckTest::refusesAWayAroundTheDoorsByARelativePath()
{
    write(QStringLiteral("MetadataEditor/table/Planted.cpp"),
          "#include \"../../workbench/kernel/Document.h\"\n");
    QCOMPARE(check().size(), 1);
}

void LayerCheckTest::refusesADoorOpenedByAForm()
{
    write(QStringLiteral("MetadataEditor/preferences/Page.ui"),
          "<ui>\n <customwidget>\n  <header>table/Table.h</header>\n </customwidget>\n</ui>\n");
    QCOMPARE(check().size(), 1);
}

void LayerCheckTest::refusesAFileInNoRoom()
{
    write(QStringLiteral("workbench/attic/Old.cpp"), "\n");
    QCOMPARE(check().size(), 1);
}

void LayerCheckTest::refusesCodeAmongTheDeclarations()
{
    write(QStringLiteral("host/nkQt4Ext/QNKTreeView.cpp"), "#include \"QNKTreeView.h\"\n");
    QCOMPARE(check().size(), 1);
}

void LayerCheckTest::namesFileAndLine()
{
    write(QStringLiteral("workbench/kernel/Planted.cpp"), "\n\n#include <QLabel>\n");
    QCOMPARE(check(),
             QStringList(QStringLiteral(
                 "workbench/kernel/Planted.cpp:3: workbench/kernel has no door to QLabel of QtWidgets")));
}

void LayerCheckTest::readsIncludesThatAreNotCompiled()
{
    write(QStringLiteral("workbench/kernel/Planted.cpp"), "#if 0\n  #  include <QLabel>\n#endif\n");
    QCOMPARE(check().size(), 1);
}

void LayerCheckTest::ignoresIncludesInComments()
{
    write(QStringLiteral("workbench/kernel/Planted.cpp"),
          "const char *a = \"/*\";\n// #include <QLabel>\n/*\n#include <QLabel>\n*/\n");
    QCOMPARE(check(), QStringList());
}

void LayerCheckTest::findsBodiesInDeclarations_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<int>("line");
    QTest::newRow("a declaration") << QByteArray("class A\n{\npublic:\n    int f() const;\n};\n") << 0;
    QTest::newRow("an accessor") << QByteArray(
        "class A : public B\n{\npublic:\n    int f() const { return m; }\n};\n")
                                 << 0;
    QTest::newRow("an empty constructor")
        << QByteArray("class A\n{\npublic:\n    A(int m) : m_m(m) {}\n};\n") << 0;
    QTest::newRow("an enumeration") << QByteArray("enum class A : int { One, Two };\n") << 0;
    QTest::newRow("an initialised member") << QByteArray("struct A\n{\n    int m = {0};\n};\n") << 0;
    QTest::newRow("a template") << QByteArray("template <typename T>\nT f()\n{\n    T t;\n    return t;\n}\n")
                                << 0;
    QTest::newRow("text in a comment") << QByteArray("// void f() { a(); b(); c(); d(); }\nint f();\n") << 0;
    QTest::newRow("four statements") << QByteArray(
        "class A\n{\npublic:\n    int f() { a(); b(); c(); return d(); }\n};\n")
                                     << 4;
    QTest::newRow("a loop") << QByteArray("inline void f()\n{\n    while (a()) {\n    }\n}\n") << 2;
    QTest::newRow("behind a scope") << QByteArray(
        "namespace n {\nclass A {};\n}\nvoid f() { a(); b(); c(); d(); }\n")
                                    << 4;
    QTest::newRow("a destructor") << QByteArray("class A\n{\npublic:\n    ~A() { a(); b(); c(); d(); }\n};\n")
                                  << 4;
}

void LayerCheckTest::findsBodiesInDeclarations()
{
    QFETCH(QByteArray, text);
    QFETCH(int, line);
    const Violations found = HeaderBodies::inHeader(QStringLiteral("a.h"), text);
    QCOMPARE(found.size(), line == 0 ? 0 : 1);
    if (line > 0)
        QCOMPARE(found.first().line, line);
}

NK_GUILESS_TEST_MAIN(LayerCheckTest)
#include "test_layer_check.moc"
