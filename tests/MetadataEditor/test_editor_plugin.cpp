#include "RecordingMainWindow.h"

#include <TestMain.h>
#include <kernel/document/Document.h>
#include <kernel/document/DocumentLoader.h>
#include <kernel/services/ServiceRegistry.h>
#include <nkKernelServices/nkMetadataService.h>
#include <nkKernelServices/nkdMetadataSet.h>
#include <nkKernelServicesGUI/nkMetadataTreeView.h>
#include <nkQt4Ext/QNKTreeView.h>
#include <nkQt4Ext/QNKViewBase.h>

#include <QFile>
#include <QLibrary>
#include <QLineEdit>

/// The plug-in as the host has it: loaded, started, used, unloaded, and nothing left of it.
class TestEditorPlugin : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        kernel::DocumentLoader loader;
        m_set = nkdMetadataSet(loader.addSet(QStringLiteral("Alpha")));
        loader.addEntry(m_set.getObjectId(), QStringLiteral("name"), nkMetadataTypes::String,
                        QStringLiteral("first"));
        loader.addEntry(m_set.getObjectId(), QStringLiteral("count"), nkMetadataTypes::Integer, 7);
        QVERIFY(loader.commit());
        m_host = std::make_unique<RecordingMainWindow>();
        kernel::ServiceRegistry::the().setMainWindowService(m_host.get());
        m_plugin = std::make_unique<QLibrary>(QStringLiteral(EDITOR_PLUGIN));
        QVERIFY2(m_plugin->load(), qPrintable(m_plugin->errorString()));
    }
    void cleanup()
    {
        unload();
        kernel::ServiceRegistry::the().setMainWindowService(nullptr);
    }

    void starts_once()
    {
        start();
        start();
        QCOMPARE(m_host->modules.size(), 1);
    }

    void leaves_no_trace_data()
    {
        QTest::addColumn<int>("round");
        QTest::newRow("first time") << 1;
        QTest::newRow("second time") << 2;
    }
    void leaves_no_trace()
    {
        start();
        const QPointer<QWidget> window = m_host->modules.first().window;
        QVERIFY(window);
        use(window);
        // As the host does at its end.
        QNKViewBase::commitOpenEditors();
        window->hide();
        kernel::Document::the().clear();
        unload();
        QVERIFY(!window);
        QVERIFY2(!isMapped(), "Something keeps the plug-in in memory.");
        useHost();
    }

private:
    void start()
    {
        const QFunctionPointer entry = m_plugin->resolve("initPlugin");
        QVERIFY(entry);
        entry();
    }

    void unload()
    {
        if (m_plugin) {
            m_plugin->unload();
            m_plugin.reset();
        }
    }

    static bool isMapped()
    {
        QFile maps(QStringLiteral("/proc/self/maps"));
        return maps.open(QIODevice::ReadOnly) && maps.readAll().contains("libMetadataEditor.so");
    }

    /// A walk through what the editor does, so that whatever it could leave behind is there to be left.
    void use(QWidget *window)
    {
        window->show();
        QCoreApplication::processEvents();
        const auto *upper = window->findChild<QWidget *>(QStringLiteral("m_upperTreeFrame"));
        auto *tree = upper->findChild<nkMetadataTreeView *>();
        QNKTreeView *table = tableOf(window);
        QVERIFY(tree && table);
        tree->selectObjects({m_set});
        QCOMPARE(table->model()->rowCount(), 2);
        window->grab();
        for (int column : {2, 3}) {
            editCell(table, column);
        }
        table->model()->setData(table->model()->index(1, 3), 8, Qt::UserRole);
        table->model()->index(0, 3).data(Qt::ToolTipRole);
        delete table->model()->mimeData({table->model()->index(0, 2)});
        window->grab();
        QCoreApplication::processEvents();
    }

    static void editCell(QNKTreeView *table, int column)
    {
        table->setCurrentIndex(table->model()->index(0, column));
        table->edit(table->currentIndex());
        auto *editor = table->viewport()->findChild<QLineEdit *>();
        QVERIFY(editor);
        QTest::keyClicks(editor, QStringLiteral("x"));
        QNKViewBase::commitOpenEditors();
        QCoreApplication::processEvents();
    }

    static QNKTreeView *tableOf(const QWidget *window)
    {
        const QList<QNKTreeView *> views = window->findChildren<QNKTreeView *>();
        for (QNKTreeView *view : views) {
            if (!qobject_cast<nkMetadataTreeView *>(view)) {
                return view;
            }
        }
        return nullptr;
    }

    /// What would stumble over something that went with the plug-in.
    static void useHost()
    {
        nkdMetadataSet set = nkMetadataService::the().createSet(QStringLiteral("Later"), {});
        set.createEntry(nkMetadataTypes::List);
        nkMetadataService::the().setSelection({set});
        const QVariant handle = QVariant::fromValue(set);
        QCOMPARE(QVariant(handle).value<nkdMetadataSet>(), set);
        const QVariant type = QVariant::fromValue(nkMetadataTypes::Date);
        QCOMPARE(QVariant(type), type);
        QVERIFY(QRegExp(QString(QLatin1String(".+"))).exactMatch(QStringLiteral("x")));
        kernel::Document::the().undo();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QCoreApplication::processEvents();
    }

    nkdMetadataSet m_set;
    std::unique_ptr<RecordingMainWindow> m_host;
    std::unique_ptr<QLibrary> m_plugin;
};

NK_TEST_MAIN(TestEditorPlugin)
#include "test_editor_plugin.moc"
