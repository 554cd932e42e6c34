#pragma once

#include "panels/EditorPanel.h"
#include "panels/SceneObjectModel.h"
#include "panels/SceneObjectView.h"

#include <kernel/document/Document.h>
#include <kernel/document/DocumentLoader.h>
#include <nkKernelServices/nkCameraService.h>
#include <nkKernelServices/nkLightService.h>
#include <nkKernelServices/nkMaterialService.h>
#include <nkKernelServices/nkScenegraphService.h>
#include <nkKernelServices/nkSceneplateService.h>
#include <nkKernelServicesGUI/nkMetadataModuleSelection.h>

#include <QtTest>

#include <memory>

Q_DECLARE_METATYPE(EditorModule)

/// One editor's panel, shown and active, over a scene made anew:
///
///     Root (node)
///       Eye, Spare (cameras)
///       Lamp, Sun (lights)
///       Plate, Board (sceneplates)
///       Arm (node)
///         Hand (node)
///     Plain (node)
///     Paints (material group)
///       Red (material)
///       Blue (material)
///     Gold (material)
class PanelFixture
{
public:
    explicit PanelFixture(EditorModule shown) : module(shown), service(EditorService::of(shown))
    {
        load();
        for (const EditorModule each : {EditorModule::Scenegraph, EditorModule::Material, EditorModule::Light,
                                        EditorModule::Camera, EditorModule::Sceneplate}) {
            EditorService::of(each).select({});
        }
        // Another editor than the one that is looked at.
        nkMetadataModuleSelection::the().setLastSelectionModule(elsewhere());
        panel = std::make_unique<EditorPanel>(shown);
        view = panel->view();
        service.listen(panel.get(), [this](EditorService::Reveal) { ++told; });
        QObject::connect(view->selectionModel(), &QItemSelectionModel::selectionChanged, panel.get(),
                         [this] { ++viewChanges; });
    }

    void show() const
    {
        panel->resize(300, 400);
        panel->show();
        panel->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(panel.get()));
        view->setFocus();
    }

    int elsewhere() const { return module == EditorModule::Scenegraph ? 1 : 0; }
    static int last() { return nkMetadataModuleSelection::the().getLastSelectionModule(); }

    quint64 id(const char *name) const { return ids.value(QLatin1String(name)); }
    QList<quint64> idsOf(const QStringList &names) const
    {
        QList<quint64> list;
        for (const QString &name : names) {
            list.append(ids.value(name));
        }
        return list;
    }
    QModelIndex row(const QString &name) const { return panel->model()->indexOf(ids.value(name)); }

    /// What the view has selected, and the service, by name.
    QStringList shownSelection() const
    {
        return names(panel->model()->idsOf(view->selectionModel()->selection()));
    }
    QStringList selection() const { return names(service.selection()); }

    /// The names of all rows, made or not, those below others behind them in brackets.
    QString rows(const QModelIndex &parent = {}) const
    {
        QStringList texts;
        for (int row = 0; row < view->model()->rowCount(parent); ++row) {
            const QModelIndex index = view->model()->index(row, 0, parent);
            const QString below = rows(index);
            texts.append(index.data().toString() + (below.isEmpty() ? QString() : '(' + below + ')'));
        }
        return texts.join(' ');
    }

    void click(const QString &name, Qt::KeyboardModifiers keys = Qt::NoModifier) const
    {
        const QModelIndex index = row(name);
        view->scrollTo(index);
        QTest::mouseClick(view->viewport(), Qt::LeftButton, keys, view->visualRect(index).center());
    }

    void forgetCounts() { told = viewChanges = 0; }

    static nkdNode node(quint64 id) { return nkdNode(nkdObject(id)); }

    const EditorModule module;
    const EditorService service;
    std::unique_ptr<EditorPanel> panel;
    SceneObjectView *view = nullptr;
    QHash<QString, quint64> ids;
    int told = 0;        // how often the service told its selection
    int viewChanges = 0; // how often the selection of the rows changed

private:
    static QStringList names(const QList<quint64> &list)
    {
        QStringList names;
        for (const quint64 id : list) {
            names.append(nkdSceneObject(nkdObject(id)).getName());
        }
        return names;
    }

    void load()
    {
        kernel::DocumentLoader loader;
        const auto add = [&](nkObjectType type, const char *name, const char *parent = "") {
            ids.insert(QLatin1String(name), loader.addObject(type, QLatin1String(name), id(parent)));
        };
        add(nkObjectType::Node, "Root");
        add(nkObjectType::Camera, "Eye", "Root");
        add(nkObjectType::Camera, "Spare", "Root");
        add(nkObjectType::Light, "Lamp", "Root");
        add(nkObjectType::Light, "Sun", "Root");
        add(nkObjectType::Sceneplate, "Plate", "Root");
        add(nkObjectType::Sceneplate, "Board", "Root");
        add(nkObjectType::Node, "Arm", "Root");
        add(nkObjectType::Node, "Hand", "Arm");
        add(nkObjectType::Node, "Plain");
        add(nkObjectType::MaterialGroup, "Paints");
        add(nkObjectType::Material, "Red", "Paints");
        add(nkObjectType::Material, "Blue", "Paints");
        add(nkObjectType::Material, "Gold");
        loader.commit();
    }
};

/// One row of test data for each panel: its module, all its rows, and two names of them.
inline void addPanelRows()
{
    QTest::addColumn<EditorModule>("module");
    QTest::addColumn<QString>("rows");
    QTest::addColumn<QString>("first");
    QTest::addColumn<QString>("second");
    QTest::newRow("scene graph") << EditorModule::Scenegraph
                                 << "Root(Eye Spare Lamp Sun Plate Board Arm(Hand)) Plain"
                                 << "Lamp"
                                 << "Arm";
    QTest::newRow("materials") << EditorModule::Material << "Paints(Red Blue) Gold"
                               << "Paints"
                               << "Blue";
    QTest::newRow("lights") << EditorModule::Light << "Lamp Sun"
                            << "Lamp"
                            << "Sun";
    QTest::newRow("cameras") << EditorModule::Camera << "Eye Spare"
                             << "Eye"
                             << "Spare";
    QTest::newRow("sceneplates") << EditorModule::Sceneplate << "Plate Board"
                                 << "Plate"
                                 << "Board";
}
