#pragma once

#include "RecordingMainWindow.h"
#include "frame/nkMetadataEditorModule.h"
#include "frame/nkMetadataEditorUpdater.h"
#include "table/nkMetadataKeyValueModel.h"
#include "table/nkMetadataKeyValueTreeView.h"
#include "tree/nkMetadataTreeWidget.h"

#include <kernel/document/Document.h>
#include <kernel/document/DocumentLoader.h>
#include <kernel/services/ServiceRegistry.h>
#include <nkKernelServices/nkMetadataService.h>
#include <nkKernelServices/nkdMetadataSet.h>
#include <nkKernelServicesGUI/nkMetadataTreeView.h>

#include <QtTest>

#include <memory>

/// The editor window over a scene made anew, registered with a main window that only takes notes.
///
///     Alpha (red)    "name" = "first", "count" = 7, tag "checked"; on Chair
///     Beta (blue)    "name" = "second"; on Chair
///     Gamma          no entries
///     Chair (node)   own entry "weight" = 4.5
///     Paint (material)
class WindowFixture
{
public:
    WindowFixture()
    {
        fill();
        kernel::ServiceRegistry::the().setMainWindowService(&host);
        window = std::make_unique<nkMetadataEditorModule>(nullptr, QString());
    }

    ~WindowFixture()
    {
        window.reset();
        kernel::ServiceRegistry::the().setMainWindowService(nullptr);
        nkMetadataService::the().setSelection({});
    }

    void show()
    {
        window->show();
        window->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(window.get()));
        settle();
    }

    /// Lets the updater deliver.
    static void settle() { QCoreApplication::processEvents(); }

    nkMetadataTreeWidget *tree() const { return window->treeWidgets().first(); }
    nkMetadataKeyValueTreeView *view() const { return window->findChild<nkMetadataKeyValueTreeView *>(); }

    void select(const QList<nkdObject> &objects) const { tree()->getTreeView()->selectObjects(objects); }

    QStringList treeNames() const { return texts(tree()->getTreeView()->model(), 0); }
    QStringList keys() const { return texts(view()->model(), 2); }

    static nkdMetadataEntry entry(const nkdMetadataSet &set, const char *key)
    {
        return set.getEntries().find(QLatin1String(key));
    }

    QModelIndex cell(const QString &key, int column) const
    {
        const QAbstractItemModel *model = view()->model();
        for (int row = 0; row < model->rowCount(); ++row) {
            if (model->index(row, 2).data().toString() == key) {
                return model->index(row, column);
            }
        }
        return QModelIndex();
    }

    RecordingMainWindow host;
    std::unique_ptr<nkMetadataEditorModule> window;
    nkdMetadataSet alpha;
    nkdMetadataSet beta;
    nkdMetadataSet gamma;
    nkdSceneObject chair;
    nkdSceneObject paint;

private:
    static QStringList texts(const QAbstractItemModel *model, int column)
    {
        QStringList texts;
        for (int row = 0; row < model->rowCount(); ++row) {
            texts.append(model->index(row, column).data().toString());
        }
        return texts;
    }

    void fill()
    {
        kernel::DocumentLoader loader;
        const quint64 alphaId = loader.addSet(QStringLiteral("Alpha"), QColor(255, 0, 0));
        const quint64 betaId = loader.addSet(QStringLiteral("Beta"), QColor(0, 0, 255));
        const quint64 gammaId = loader.addSet(QStringLiteral("Gamma"));
        const quint64 chairId = loader.addObject(nkObjectType::Node, QStringLiteral("Chair"));
        const quint64 paintId = loader.addObject(nkObjectType::Material, QStringLiteral("Paint"));
        loader.addEntry(alphaId, QStringLiteral("name"), nkMetadataTypes::String, QStringLiteral("first"));
        loader.addEntry(alphaId, QStringLiteral("count"), nkMetadataTypes::Integer, 7);
        loader.addTag(alphaId, QStringLiteral("checked"));
        loader.addEntry(betaId, QStringLiteral("name"), nkMetadataTypes::String, QStringLiteral("second"));
        loader.addEntry(loader.objectSet(chairId), QStringLiteral("weight"), nkMetadataTypes::Float, 4.5);
        loader.assign(alphaId, chairId);
        loader.assign(betaId, chairId);
        loader.commit();
        alpha = nkdMetadataSet(alphaId);
        beta = nkdMetadataSet(betaId);
        gamma = nkdMetadataSet(gammaId);
        chair = nkdSceneObject(nkdObject(chairId));
        paint = nkdSceneObject(nkdObject(paintId));
    }
};
