#include "../MetadataEditor/EditingFixture.h"

#include <TestMain.h>
#include <gui/preferences/MetadataCompletions.h>
#include <interchange/libraries/StringLibraries.h>

#include <QAbstractItemView>
#include <QCompleter>
#include <QFile>
#include <QTemporaryDir>

/// Words of the active library in the editors of the table: typed, chosen, refused.
class TestCompletingEditors : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_folder = std::make_unique<QTemporaryDir>();
        m_libraries = std::make_unique<interchange::StringLibraries>();
        MetadataCompletions::setSource(
            {[this](const QString &text, int limit) { return m_libraries->completions(text, limit); },
             {},
             {}});
        m_editor = std::make_unique<EditingFixture>();
        m_editor->showTypes();
    }
    void cleanup()
    {
        QNKViewBase::commitOpenEditors();
        MetadataCompletions::setSource({});
        m_editor.reset();
        m_libraries.reset();
        use({}, -1);
    }

    void keys_and_texts_are_offered_words_of_the_active_library_data()
    {
        QTest::addColumn<int>("column");
        QTest::newRow("key") << 2;
        QTest::newRow("value") << 3;
    }
    void keys_and_texts_are_offered_words_of_the_active_library()
    {
        QFETCH(int, column);
        readLibrary("oak\nwhite oak\npine\n");
        QWidget *editor = openCleared(column);
        QTest::keyClicks(editor, "oa");
        QCOMPARE(offered(), (QStringList{"oak", "white oak"}));
        QTest::keyClick(popup(), Qt::Key_Down);
        QTest::keyClick(popup(), Qt::Key_Down);
        QTest::keyClick(popup(), Qt::Key_Return);
        QVERIFY2(m_editor->editor(), "choosing a word is not committing it");
        m_editor->press(Qt::Key_Return);
        const nkdMetadataEntry entry = m_editor->types.getEntries().data().constFirst();
        QCOMPARE(column == 2 ? entry.getKey() : entry.getValue().toString(), QStringLiteral("white oak"));
    }

    void escape_leaves_the_list_and_then_the_editor()
    {
        readLibrary("oak\n");
        QWidget *editor = openCleared(3);
        QTest::keyClicks(editor, "oa");
        QTest::keyClick(popup(), Qt::Key_Down);
        QTest::keyClick(popup(), Qt::Key_Escape);
        QVERIFY(!popup()->isVisible());
        QCOMPARE(qobject_cast<QLineEdit *>(m_editor->editor())->text(), QStringLiteral("oa"));
        m_editor->press(Qt::Key_Escape);
        QVERIFY(!m_editor->editor());
        QCOMPARE(m_editor->of("string").getValue().toString(), QStringLiteral("some text"));
    }

    void the_mouse_chooses_a_word()
    {
        readLibrary("oak\noaken\n");
        QTest::keyClicks(openCleared(3), "oa");
        const QModelIndex second = popup()->model()->index(1, 0);
        QTest::mouseClick(popup()->viewport(), Qt::LeftButton, {}, popup()->visualRect(second).center());
        QTRY_VERIFY(!popup()->isVisible());
        m_editor->press(Qt::Key_Return);
        QCOMPARE(m_editor->of("string").getValue().toString(), QStringLiteral("oaken"));
    }

    void the_scenes_keys_are_offered_without_a_library()
    {
        use({}, -1);
        m_libraries->start();
        QTest::keyClicks(openCleared(3), "che");
        QCOMPARE(offered(), QStringList{"checked"});
        QTest::keyClick(popup(), Qt::Key_Escape);
    }

    void a_library_chosen_while_an_editor_is_open_feeds_it()
    {
        QWidget *editor = openCleared(3);
        readLibrary("oak\n");
        QTest::keyClicks(editor, "oa");
        QCOMPARE(offered(), QStringList{"oak"});
        QTest::keyClick(popup(), Qt::Key_Escape);
    }

private:
    static void use(const QStringList &paths, int index)
    {
        nkMetadataService::the().setStringLibraries(paths);
        nkMetadataService::the().setActiveStringLibraryIndex(index);
    }

    void readLibrary(const QByteArray &text)
    {
        QFile file(m_folder->filePath("words.txt"));
        QVERIFY(file.open(QIODevice::WriteOnly) && file.write(text) == text.size());
        file.close();
        const QSignalSpy settled(m_libraries.get(), &interchange::StringLibraries::settled);
        use({file.fileName()}, 0);
        m_libraries->start();
        QTRY_COMPARE(settled.size(), 1);
    }

    QWidget *openCleared(int column) const
    {
        auto *editor = qobject_cast<QLineEdit *>(m_editor->open("string", column));
        Q_ASSERT(editor);
        editor->clear();
        return editor;
    }

    QAbstractItemView *popup() const { return m_editor->editor()->findChild<QCompleter *>()->popup(); }

    QStringList offered() const
    {
        QStringList texts;
        for (int row = 0; popup()->isVisible() && row < popup()->model()->rowCount(); ++row) {
            texts.append(popup()->model()->index(row, 0).data().toString());
        }
        return texts;
    }

    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<interchange::StringLibraries> m_libraries;
    std::unique_ptr<EditingFixture> m_editor;
};

NK_TEST_MAIN(TestCompletingEditors)
#include "test_completing_editors.moc"
