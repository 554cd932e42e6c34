#include "SceneStatus.h"

#include "panels/EditorService.h"

#include "kernel/document/Document.h"

#include <nkKernelServices/nkMetadataService.h>
#include <nkKernelServicesGUI/nkMetadataModuleSelection.h>

#include <QLocale>

using kernel::Document;

namespace {

const QVector<EditorModule> &modules()
{
    static const QVector<EditorModule> all{EditorModule::Scenegraph, EditorModule::Material,
                                           EditorModule::Light, EditorModule::Camera,
                                           EditorModule::Sceneplate};
    return all;
}

int selectedCount()
{
    const auto last = EditorModule(nkMetadataModuleSelection::the().getLastSelectionModule());
    return modules().contains(last) ? EditorService::of(last).selection().size() : 0;
}

QString number(int count)
{
    return QLocale().toString(count);
}

QString objectsText(int selected, int all)
{
    const QString objects = all == 1 ? SceneStatus::tr("1 object")
                                     : SceneStatus::tr("%1 objects").arg(number(all));
    return selected == 0 ? objects : SceneStatus::tr("%1 of %2 selected").arg(number(selected), objects);
}

} // namespace

SceneStatus::SceneStatus(QWidget *parent) : QLabel(parent)
{
    setObjectName(QStringLiteral("sceneStatus"));
    setTextFormat(Qt::PlainText);
    setAccessibleName(tr("Counts of selection and scene"));
    m_soon.setSingleShot(true);
    connect(&m_soon, &QTimer::timeout, this, &SceneStatus::count);
    listen();
    count();
}

SceneStatus::~SceneStatus() = default;

void SceneStatus::listen()
{
    const auto soon = [this] { m_soon.start(0); };
    connect(&Document::the(), &Document::sceneChanged, this, soon);
    connect(&nkMetadataService::the(), &nkMetadataService::metadataChanged, this, soon);
    connect(&nkMetadataModuleSelection::the(), &nkMetadataModuleSelection::lastSelectionModuleChanged, this,
            soon);
    for (const EditorModule module : modules()) {
        EditorService::of(module).listen(this, [soon](EditorService::Reveal) { soon(); });
    }
}

void SceneStatus::count()
{
    const Document &document = Document::the();
    const int sets = document.setCount();
    const int entries = document.entryCount();
    const QStringList texts{objectsText(selectedCount(), document.objectCount()),
                            sets == 1 ? tr("1 set") : tr("%1 sets").arg(number(sets)),
                            entries == 1 ? tr("1 entry") : tr("%1 entries").arg(number(entries))};
    setText(texts.join(QStringLiteral(" · ")));
}
