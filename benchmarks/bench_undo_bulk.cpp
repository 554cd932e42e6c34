#include "harness/BenchmarkRegistry.h"

#include <kernel/document/Document.h>
#include <kernel/document/DocumentLoader.h>
#include <nkKernelServices/nkScopedUndo.h>
#include <nkKernelServices/nkdMetadataEntry.h>

#include <QUndoStack>
#include <QVariant>
#include <QVector>

#include <memory>

namespace {

class PlainScene;

/// One value change as an undo command of its own.
class ChangeValue : public QUndoCommand
{
public:
    ChangeValue(PlainScene *scene, int index, const QVariant &value, QUndoCommand *parent);
    void undo() override;
    void redo() override;

private:
    PlainScene *m_scene;
    int m_index;
    QVariant m_before;
    QVariant m_after;
};

/// Values and an undo stack, nothing else.
class PlainScene
{
public:
    explicit PlainScene(qint64 size) : values(int(size), QVariant(0)) {}

    void changeAll()
    {
        auto *macro = new QUndoCommand;
        for (int index = 0; index < values.size(); ++index) {
            const QVariant value(index + 1);
            if (values.at(index) != value) {
                new ChangeValue(this, index, value, macro);
            }
        }
        stack.push(macro);
    }

    QVector<QVariant> values;
    QUndoStack stack;
};

ChangeValue::ChangeValue(PlainScene *scene, int index, const QVariant &value, QUndoCommand *parent)
    : QUndoCommand(parent), m_scene(scene), m_index(index), m_before(scene->values.at(index)), m_after(value)
{}

void ChangeValue::undo()
{
    m_scene->values[m_index] = m_before;
}

void ChangeValue::redo()
{
    m_scene->values[m_index] = m_after;
}

std::shared_ptr<QVector<nkdMetadataEntry>> loadEntries(qint64 size)
{
    const auto entries = std::make_shared<QVector<nkdMetadataEntry>>();
    kernel::DocumentLoader loader;
    const quint64 set = loader.addSet(QStringLiteral("set"));
    for (qint64 index = 0; index < size; ++index) {
        const QString key = QStringLiteral("key %1").arg(index);
        entries->append(nkdMetadataEntry(loader.addEntry(set, key, nkMetadataTypes::Integer, 0)));
    }
    loader.commit();
    return entries;
}

} // namespace

/// Many values changed in one step and undone, against a command a change as children of one macro.
static Comparison compareUndoBulk(qint64 size)
{
    const auto plain = std::make_shared<std::unique_ptr<PlainScene>>();
    const auto entries = std::make_shared<std::shared_ptr<QVector<nkdMetadataEntry>>>();
    Comparison comparison;
    comparison.ours.prepare = [entries, size] { *entries = loadEntries(size); };
    comparison.ours.run = [entries] {
        {
            const nkScopedUndo scope(true);
            for (int index = 0; index < (*entries)->size(); ++index) {
                (**entries)[index].setValue(index + 1);
            }
        }
        kernel::Document::the().undo();
    };
    comparison.ours.finish = [entries] {
        kernel::Document::the().clear();
        entries->reset();
    };
    comparison.baseline.prepare = [plain, size] { *plain = std::make_unique<PlainScene>(size); };
    comparison.baseline.run = [plain] {
        (*plain)->changeAll();
        (*plain)->stack.undo();
    };
    comparison.baseline.finish = [plain] { plain->reset(); };
    comparison.rows = size;
    comparison.memoryAim = 1;
    return comparison;
}
NK_BENCHMARK("undo-bulk", compareUndoBulk, 100000)
