#pragma once

#include "actions/nkMetadataActions.h"
#include "actions/nkMetadataActionsHandler.h"
#include "tree/nkMetadataTreeWidget.h"

#include <SceneFixture.h>
#include <kernel/document/Document.h>
#include <kernel/document/DocumentLoader.h>
#include <nkKernelServices/nkMetadataService.h>
#include <nkKernelServices/nkdMaterialGroupNode.h>
#include <nkKernelServices/nkdMetadata.h>
#include <nkKernelServicesGUI/nkMetadataTreeView.h>

#include "../kernel_property/SceneSnapshot.h"

#include <QMainWindow>
#include <QUndoStack>
#include <QVBoxLayout>
#include <QtTest>

#include <functional>
#include <memory>

/// The catalogue and two trees in a window, over a scene made anew, with an empty history.
///
///     Alpha   "a" = "1", "b" = "2"; on Chair, Cam and Paint
///     Beta    "c" = "3"; on Chair
///     Gamma   no entries, on nothing
///     Chair (node) with own entry "own" = "4", Table (node), Cam, Lamp, Plate, Paint, Group of materials
class ActionsFixture
{
public:
    ActionsFixture()
    {
        // Clipboards too.
        SceneFixture::reset();
        fill();
        actions = new nkMetadataActions(&window);
        auto *area = new QWidget;
        auto *layout = new QVBoxLayout(area);
        upper = new nkMetadataTreeWidget(&window);
        lower = new nkMetadataTreeWidget(&window);
        elsewhere = new QWidget;
        elsewhere->setFocusPolicy(Qt::StrongFocus);
        for (QWidget *widget : QList<QWidget *>{upper, lower, elsewhere}) {
            layout->addWidget(widget);
        }
        window.setCentralWidget(area);
        lower->setMode(TreeMode::AllObjects);
        upper->reload();
    }

    ~ActionsFixture() { nkMetadataService::the().setSelection({}); }

    /// Shows the window and gives the upper tree, which lists sets, the keyboard focus.
    void show()
    {
        window.resize(500, 600);
        window.show();
        window.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&window));
        upper->getTreeView()->setFocus();
        QTRY_VERIFY(upper->getTreeView()->hasFocus());
    }

    nkMetadataActionsHandler *handler() const { return actions->handler(); }

    static void select(const QList<nkdObject> &objects) { nkMetadataService::the().setSelection(objects); }

    static QUndoStack *stack() { return kernel::Document::the().undoStack(); }

    SceneSnapshot snapshot() const
    {
        QList<quint64> ids;
        for (const nkdSceneObject &object :
             QList<nkdSceneObject>{chair, table, cam, lamp, plate, paint, group}) {
            ids.append(object.getObjectId());
        }
        return SceneSnapshot::take(ids);
    }

    /// Triggers the action: one undo step that can be undone and redone whole.
    /// @param title of the step; empty: the host's own
    void triggerOneStep(QAction *action, const QString &title = QString()) const
    {
        const SceneSnapshot before = snapshot();
        const int steps = stack()->count();
        QVERIFY(action->isEnabled());
        action->trigger();
        const SceneSnapshot after = snapshot();
        QVERIFY(before != after);
        QCOMPARE(stack()->count(), steps + 1);
        if (!title.isEmpty()) {
            QCOMPARE(stack()->undoText(), title);
        }
        QVERIFY(kernel::Document::the().undo());
        QCOMPARE(snapshot().differenceFrom(before), QString());
        QVERIFY(kernel::Document::the().redo());
        QCOMPARE(snapshot().differenceFrom(after), QString());
    }

    /// Triggers the action, whose state does not matter: nothing changes and no undo step is made.
    void triggerNothing(QAction *action) const
    {
        const SceneSnapshot before = snapshot();
        const int steps = stack()->count();
        const bool wasEnabled = action->isEnabled();
        action->setEnabled(true);
        action->trigger();
        action->setEnabled(wasEnabled);
        QCOMPARE(snapshot().differenceFrom(before), QString());
        QCOMPARE(stack()->count(), steps);
    }

    static QStringList names(const QList<nkdMetadataSet> &sets)
    {
        QStringList names;
        for (const nkdMetadataSet &set : sets) {
            names.append(set.getName());
        }
        return names;
    }

    static QStringList keys(const nkdMetadataSet &set)
    {
        QStringList keys;
        for (const nkdMetadataEntry &entry : set.getEntries()) {
            keys.append(entry.getKey());
        }
        return keys;
    }

    static QStringList carriers(const nkdMetadataSet &set)
    {
        QStringList names;
        for (const nkdSceneObject &object : set.getObjects()) {
            names.append(object.getName());
        }
        return names;
    }

    static nkdMetadataSet ownSet(const nkdSceneObject &object)
    {
        return nkdMetadata::fromObject(object).getObjectSet();
    }

    static nkdMetadataSet setNamed(const QString &name)
    {
        for (const nkdMetadataSet &set : nkMetadataService::the().getAllSets()) {
            if (set.getName() == name) {
                return set;
            }
        }
        return nkdMetadataSet();
    }

    nkdMetadataSet alpha;
    nkdMetadataSet beta;
    nkdMetadataSet gamma;
    nkdNode chair;
    nkdNode table;
    nkdNode cam;
    nkdNode lamp;
    nkdNode plate;
    nkdMaterial paint;
    nkdMaterialGroupNode group;

    QMainWindow window;
    nkMetadataActions *actions = nullptr;
    nkMetadataTreeWidget *upper = nullptr;
    nkMetadataTreeWidget *lower = nullptr;
    /// Takes the focus away from the trees.
    QWidget *elsewhere = nullptr;

private:
    void fill()
    {
        kernel::DocumentLoader loader;
        const auto object = [&loader](nkObjectType type, const char *name) {
            return nkdObject(loader.addObject(type, QLatin1String(name)), type);
        };
        const auto set = [&loader](const char *name, const QStringList &keys) {
            const quint64 id = loader.addSet(QLatin1String(name));
            for (const QString &key : keys) {
                loader.addEntry(id, key, nkMetadataTypes::String, key + key);
            }
            return nkdMetadataSet(id);
        };
        chair = nkdNode(object(nkObjectType::Node, "Chair"));
        table = nkdNode(object(nkObjectType::Node, "Table"));
        cam = nkdNode(object(nkObjectType::Camera, "Cam"));
        lamp = nkdNode(object(nkObjectType::Light, "Lamp"));
        plate = nkdNode(object(nkObjectType::Sceneplate, "Plate"));
        paint = nkdMaterial(object(nkObjectType::Material, "Paint"));
        group = nkdMaterialGroupNode(object(nkObjectType::MaterialGroup, "Group"));
        alpha = set("Alpha", {QStringLiteral("a"), QStringLiteral("b")});
        beta = set("Beta", {QStringLiteral("c")});
        gamma = set("Gamma", {});
        loader.addEntry(loader.objectSet(chair.getObjectId()), QStringLiteral("own"), nkMetadataTypes::String,
                        QStringLiteral("4"));
        for (const nkdObject &carrier : QList<nkdObject>{chair, cam, paint}) {
            loader.assign(alpha.getObjectId(), carrier.getObjectId());
        }
        loader.assign(beta.getObjectId(), chair.getObjectId());
        loader.commit();
    }
};
