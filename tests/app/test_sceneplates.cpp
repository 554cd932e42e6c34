#include "PanelFixture.h"

#include "panels/EditorCommands.h"

#include <ModalAnswer.h>
#include <TestMain.h>
#include <nkKernelServices/nkLogService.h>

#include <QAction>
#include <QImage>
#include <QLineEdit>
#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QUndoStack>

using kernel::Document;
using kernel::SceneplatePlacement;
using C = EditorCommand;

/// The panel of sceneplates: made from image files, in front or behind.
class TestSceneplates : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void initTestCase();
    void aSceneplateIsMadeFromAnImage_data();
    void aSceneplateIsMadeFromAnImage();
    void nobodyChoosingAFileMakesNothing();
    void aFileThatIsNoImageIsRefused_data();
    void aFileThatIsNoImageIsRefused();
    void thePlacementIsToggledAndShown();
    void anotherImageIsChosen();
    void aMissingImageIsShownAsSuch();
    void theNoteIsDrawnBesideTheName();

private:
    QString path(const QString &name) const { return m_folder.filePath(name); }
    void write(const QString &name, const QByteArray &content) const
    {
        QFile file(path(name));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(content);
    }
    static QAction *action(const PanelFixture &f, C command) { return f.panel->commands()->action(command); }
    static QString note(const PanelFixture &f, quint64 id)
    {
        return f.panel->model()->indexOf(id).data(SceneObjectModel::NoteRole).toString();
    }

    QTemporaryDir m_folder;
};

void TestSceneplates::initTestCase()
{
    // Nothing that compresses well: cut in the middle, its head is whole.
    QImage image(60, 50, QImage::Format_RGB32);
    QRandomGenerator random(3);
    random.fillRange(reinterpret_cast<quint32 *>(image.bits()), image.width() * image.height());
    QVERIFY(image.save(path("sky.png")) && image.save(path("sea.jpg")));
    // Called like something else: the content counts.
    QVERIFY(image.save(path("photo.dat"), "PNG"));
    QVERIFY(image.save(path("drawing.bmp")));
    QFile whole(path("sky.png"));
    QVERIFY(whole.open(QIODevice::ReadOnly));
    const QByteArray bytes = whole.readAll();
    write("cut.png", bytes.left(bytes.size() / 2));
    write("text.png", "not an image at all");
    write("empty.png", "");
}

void TestSceneplates::aSceneplateIsMadeFromAnImage_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<QString>("name");
    QTest::newRow("PNG") << "sky.png"
                         << "sky";
    QTest::newRow("JPEG") << "sea.jpg"
                          << "sea";
    QTest::newRow("another ending") << "photo.dat"
                                    << "photo";
}

void TestSceneplates::aSceneplateIsMadeFromAnImage()
{
    QFETCH(QString, file);
    QFETCH(QString, name);
    PanelFixture f(EditorModule::Sceneplate);
    f.show();
    const ModalAnswer answer = ModalAnswer::file(path(file));
    action(f, C::NewSceneplate)->trigger();
    QCOMPARE(f.rows(), "Plate Board " + name);
    QCOMPARE(f.selection(), QStringList{name});
    const quint64 id = f.service.selection().value(0);
    QCOMPARE(Document::the().sceneplateImage(id), path(file));
    QCOMPARE(note(f, id), QStringLiteral("behind"));
    QVERIFY(f.view->viewport()->findChild<QLineEdit *>()); // to be named
    QCOMPARE(Document::the().undoStack()->undoText(), QStringLiteral("Create Sceneplate"));
    QVERIFY(Document::the().undo());
    QCOMPARE(f.rows(), QStringLiteral("Plate Board"));
}

void TestSceneplates::nobodyChoosingAFileMakesNothing()
{
    PanelFixture f(EditorModule::Sceneplate);
    f.show();
    const ModalAnswer answer = ModalAnswer::reject();
    action(f, C::NewSceneplate)->trigger();
    QCOMPARE(f.rows(), QStringLiteral("Plate Board"));
}

void TestSceneplates::aFileThatIsNoImageIsRefused_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<QString>("reason");
    QTest::newRow("another format") << "drawing.bmp"
                                    << "is no PNG or JPEG image";
    QTest::newRow("text") << "text.png"
                          << "is no PNG or JPEG image";
    QTest::newRow("empty") << "empty.png"
                           << "is no PNG or JPEG image";
    QTest::newRow("cut off") << "cut.png"
                             << "is damaged";
}

void TestSceneplates::aFileThatIsNoImageIsRefused()
{
    QFETCH(QString, file);
    QFETCH(QString, reason);
    PanelFixture f(EditorModule::Sceneplate);
    f.show();
    QSignalSpy reported(&nkLogService::the(), &nkLogService::reported);
    const ModalAnswer answer = ModalAnswer::file(path(file));
    action(f, C::NewSceneplate)->trigger();
    QCOMPARE(reported.count(), 1);
    QCOMPARE(reported.at(0).at(0).toInt(), 2);
    QVERIFY(reported.at(0).at(2).toString().contains(reason));
    QVERIFY(reported.at(0).at(2).toString().contains(path(file)));
    QCOMPARE(f.rows(), QStringLiteral("Plate Board"));
    QCOMPARE(Document::the().undoStack()->count(), 0);
}

void TestSceneplates::thePlacementIsToggledAndShown()
{
    PanelFixture f(EditorModule::Sceneplate);
    f.show();
    Document::the().setSceneplateImage(f.id("Plate"), path("sky.png"));
    Document::the().setSceneplateImage(f.id("Board"), path("sea.jpg"));
    Document::the().undoStack()->clear();
    f.click(QStringLiteral("Plate"));
    f.click(QStringLiteral("Board"), Qt::ControlModifier);
    QAction *inFront = action(f, C::InFront);
    QVERIFY(!inFront->isChecked());
    QSignalSpy changes(f.panel->model(), &QAbstractItemModel::dataChanged);
    inFront->trigger();
    QVERIFY(inFront->isChecked());
    QVERIFY(changes.count() > 0);
    QCOMPARE(note(f, f.id("Plate")), QStringLiteral("in front"));
    QVERIFY(f.row("Board").data(Qt::AccessibleTextRole).toString().contains(QLatin1String("in front")));
    QVERIFY(Document::the().undo());
    QCOMPARE(note(f, f.id("Board")), QStringLiteral("behind"));
    QVERIFY(!inFront->isChecked());
    QVERIFY(!Document::the().undo()); // one step for both
}

void TestSceneplates::anotherImageIsChosen()
{
    PanelFixture f(EditorModule::Sceneplate);
    f.show();
    f.click(QStringLiteral("Board"));
    const ModalAnswer answer = ModalAnswer::file(path("sky.png"));
    action(f, C::ChooseImage)->trigger();
    QCOMPARE(Document::the().sceneplateImage(f.id("Board")), path("sky.png"));
    QVERIFY(f.row("Board").data(Qt::ToolTipRole).toString().contains(QLatin1String("sky.png")));
    QVERIFY(Document::the().undo());
    QCOMPARE(note(f, f.id("Board")), QStringLiteral("no image"));
}

void TestSceneplates::aMissingImageIsShownAsSuch()
{
    PanelFixture f(EditorModule::Sceneplate);
    f.show();
    Document::the().setSceneplateImage(f.id("Board"), path("gone.png"));
    QCOMPARE(note(f, f.id("Board")), QStringLiteral("image missing"));
}

void TestSceneplates::theNoteIsDrawnBesideTheName()
{
    PanelFixture f(EditorModule::Sceneplate);
    f.show();
    const QImage before = f.view->viewport()->grab().toImage();
    Document::the().setSceneplateImage(f.id("Board"), path("sky.png"));
    QVERIFY(f.view->viewport()->grab().toImage() != before);
}

NK_TEST_MAIN(TestSceneplates)
#include "test_sceneplates.moc"
