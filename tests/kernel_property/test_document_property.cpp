#include "../support/SceneFixture.h"
#include "SceneSnapshot.h"
#include "ShadowScene.h"
#include "TestMain.h"

#include <nkKernelServices/nkMetadataService.h>
#include <nkKernelServices/nkScopedMultiCommand.h>
#include <nkKernelServices/nkScopedUndo.h>

#include <QUndoStack>

#include <memory>
#include <random>
#include <vector>

namespace {

constexpr int seedCount = 200;
constexpr int operationCount = 2000;
constexpr int objectCount = 8;
/// Sets beyond this number are deleted again, so that snapshots stay small.
constexpr int setLimit = 20;
/// Operations between two comparisons of document and shadow.
constexpr int comparisonInterval = 100;

/// Drives the document and its shadow through one run of random operations.
class RandomRun
{
public:
    explicit RandomRun(unsigned seed) : m_random(seed)
    {
        SceneFixture::reset();
        for (int i = 0; i < objectCount; ++i) {
            m_objects.append(SceneFixture::node(QString::number(i)).getObjectId());
        }
        m_shadow = std::make_unique<ShadowScene>(m_objects, SceneSnapshot::take(m_objects));
    }

    const QList<quint64> &objects() const { return m_objects; }
    const SceneSnapshot &expected() const { return m_shadow->scene(); }
    bool isScopeOpen() const { return !m_scopes.empty(); }
    void closeScopes() { m_scopes.clear(); }

    void step()
    {
        switch (pick(24)) {
        case 0:
            openScope();
            break;
        case 1:
            closeScope();
            break;
        case 2:
            createSet();
            break;
        case 3:
            deleteSets();
            break;
        case 4:
            duplicateSets();
            break;
        case 5:
            renameSet();
            break;
        case 6:
            colourSet();
            break;
        case 7:
            lockSet();
            break;
        case 8:
        case 9:
            assign();
            break;
        case 10:
            removeAssignments();
            break;
        case 11:
        case 12:
        case 13:
        case 14:
            createEntry();
            break;
        case 15:
        case 16:
            renameEntry();
            break;
        case 17:
        case 18:
        case 19:
            changeValue();
            break;
        case 20:
            removeEntry();
            break;
        case 21:
            clearEntries();
            break;
        default:
            appendEntries();
            break;
        }
    }

private:
    struct Scope
    {
        std::unique_ptr<nkScopedUndo> undo;
        std::unique_ptr<nkScopedMultiCommand> command;
    };

    int pick(int count) { return int(m_random() % unsigned(count)); }

    QList<quint64> pickObjects()
    {
        QList<quint64> picked;
        for (quint64 id : qAsConst(m_objects)) {
            if (pick(3) == 0) {
                picked.append(id);
            }
        }
        return picked;
    }

    QList<nkdSceneObject> handles(const QList<quint64> &ids) const
    {
        QList<nkdSceneObject> objects;
        for (quint64 id : ids) {
            objects.append(nkdSceneObject(nkdObject(id)));
        }
        return objects;
    }

    QList<nkdMetadataSet> pickSharedSets()
    {
        QList<nkdMetadataSet> picked;
        for (const nkdMetadataSet &set : nkMetadataService::the().getAllSets()) {
            if (pick(6) == 0) {
                picked.append(set);
            }
        }
        return picked;
    }

    static QList<quint64> ids(const QList<nkdMetadataSet> &sets)
    {
        QList<quint64> result;
        for (const nkdMetadataSet &set : sets) {
            result.append(set.getObjectId());
        }
        return result;
    }

    static QList<quint64> entryIds(const nkdMetadataSet &set, int from)
    {
        QList<quint64> result;
        const nkdMetadataEntryList entries = set.getEntries();
        for (int i = from; i < entries.size(); ++i) {
            result.append(entries.at(i).getObjectId());
        }
        return result;
    }

    nkdMetadataSet pickShared()
    {
        const QList<nkdMetadataSet> sets = nkMetadataService::the().getAllSets();
        return sets.isEmpty() ? nkdMetadataSet() : sets.at(pick(sets.size()));
    }

    nkdMetadataSet pickAny()
    {
        return pick(3) == 0 ? nkdMetadata(m_objects.at(pick(m_objects.size()))).getObjectSet() : pickShared();
    }

    static nkdMetadataEntry pickEntry(const nkdMetadataSet &set, int number)
    {
        const int count = set.getEntries().size();
        return count == 0 ? nkdMetadataEntry() : set.getEntries().at(number % count);
    }

    QVariant randomValue(nkMetadataTypes::ValueType type)
    {
        const int number = pick(1000);
        switch (type) {
        case nkMetadataTypes::Integer:
            return number;
        case nkMetadataTypes::Float:
            return number / 8.0;
        case nkMetadataTypes::Boolean:
            return number % 2 == 0;
        case nkMetadataTypes::Time:
            return QTime(number % 24, number % 60, number % 60);
        case nkMetadataTypes::Date:
            return QDate(2000 + number % 50, 1 + number % 12, 1 + number % 28);
        case nkMetadataTypes::DateTime:
            return QDateTime(QDate(2000 + number % 50, 1, 1), QTime(number % 24, 0));
        case nkMetadataTypes::List:
            return QVariantList{number, QString::number(number)};
        default:
            return QString::number(number);
        }
    }

    void openScope()
    {
        Scope scope;
        scope.undo = std::make_unique<nkScopedUndo>(true);
        if (pick(2) == 0) {
            scope.command = std::make_unique<nkScopedMultiCommand>(nkUndoString(QStringLiteral("Random")),
                                                                   true);
        }
        m_scopes.push_back(std::move(scope));
    }

    void closeScope()
    {
        if (!m_scopes.empty()) {
            m_scopes.pop_back();
        }
    }

    void createSet()
    {
        const QList<quint64> objects = pickObjects();
        const QString name = QStringLiteral("Set") + QString::number(pick(4));
        const nkdMetadataSet set = nkMetadataService::the().createSet(name, handles(objects));
        m_shadow->createSet(set.getObjectId(), name, set.getColor().rgb(), objects);
    }

    void deleteSets()
    {
        QList<nkdMetadataSet> sets = pickSharedSets();
        const QList<nkdMetadataSet> all = nkMetadataService::the().getAllSets();
        for (int i = setLimit; i < all.size(); ++i) {
            sets.append(all.at(i));
        }
        nkMetadataService::the().deleteSets(sets);
        m_shadow->deleteSets(ids(sets));
    }

    void duplicateSets()
    {
        QList<nkdMetadataSet> sets = pickSharedSets();
        while (sets.size() > 2) {
            sets.removeLast();
        }
        const QList<nkdMetadataSet> copies = nkMetadataService::the().duplicateSets(sets);
        for (int i = 0; i < copies.size(); ++i) {
            m_shadow->duplicateSet(sets.at(i).getObjectId(), copies.at(i).getObjectId(),
                                   entryIds(copies.at(i), 0));
        }
    }

    void renameSet()
    {
        nkdMetadataSet set = pickShared();
        const QString name = QStringLiteral("Set") + QString::number(pick(6));
        set.setName(name);
        if (set.isEditable()) {
            m_shadow->renameSet(set.getObjectId(), name);
        }
    }

    void colourSet()
    {
        nkdMetadataSet set = pickAny();
        const QColor color = QColor::fromHsv(pick(360), 200, 200);
        set.setColor(color);
        if (set.isEditable()) {
            m_shadow->set(set.getObjectId())->color = color.rgb();
        }
    }

    void lockSet()
    {
        nkdMetadataSet set = pickAny();
        if (!set.isNull()) {
            const bool locked = pick(3) == 0;
            set.setLocked(locked);
            m_shadow->set(set.getObjectId())->locked = locked;
        }
    }

    void assign()
    {
        const QList<quint64> objects = pickObjects();
        const QList<nkdMetadataSet> sets = pickSharedSets();
        nkMetadataService::the().assignSets(nkToObjects(handles(objects)), sets);
        m_shadow->assign(objects, ids(sets));
    }

    void removeAssignments()
    {
        const QList<quint64> objects = pickObjects();
        const QList<nkdMetadataSet> sets = pickSharedSets();
        nkMetadataService::the().removeAssignments(sets, handles(objects));
        m_shadow->removeAssignments(ids(sets), objects);
    }

    void createEntry()
    {
        nkdMetadataSet set = pickAny();
        const auto type = nkMetadataTypes::ValueType(pick(9));
        const nkdMetadataEntry entry = set.createEntry(type);
        if (set.isEditable()) {
            m_shadow->createEntry(set.getObjectId(), entry.getObjectId(), type, entry.getValue());
        }
    }

    void renameEntry()
    {
        const nkdMetadataSet set = pickAny();
        nkdMetadataEntry entry = pickEntry(set, pick(100));
        const QString key = QStringLiteral("Key") + QString::number(pick(12));
        entry.setKey(key);
        if (!entry.isNull() && set.isEditable()) {
            m_shadow->renameEntry(set.getObjectId(), entry.getObjectId(), key);
        }
    }

    void changeValue()
    {
        const nkdMetadataSet set = pickAny();
        nkdMetadataEntry entry = pickEntry(set, pick(100));
        const QVariant value = randomValue(entry.getValueType());
        entry.setValue(value);
        if (!entry.isNull() && !entry.isTag() && set.isEditable()) {
            m_shadow->entry(set.getObjectId(), entry.getObjectId())->value = value;
        }
    }

    void removeEntry()
    {
        const nkdMetadataSet set = pickAny();
        const nkdMetadataEntry entry = pickEntry(set, pick(100));
        if (set.getEntries().remove(entry)) {
            m_shadow->removeEntry(set.getObjectId(), entry.getObjectId());
        }
    }

    void clearEntries()
    {
        const nkdMetadataSet set = pickAny();
        if (!set.isNull()) {
            set.getEntries().clear();
            m_shadow->set(set.getObjectId())->entries.clear();
        }
    }

    void appendEntries()
    {
        const nkdMetadataSet source = pickAny();
        const nkdMetadataSet target = pickAny();
        if (source.isNull() || target.isNull() || target.getEntries().size() > 20) {
            return;
        }
        const int before = target.getEntries().size();
        const QList<EntrySnapshot> copied = m_shadow->set(source.getObjectId())->entries;
        target.getEntries().append(source.getEntries());
        if (target.isEditable()) {
            m_shadow->appendEntries(target.getObjectId(), copied, entryIds(target, before));
        }
    }

    std::mt19937 m_random;
    QList<quint64> m_objects;
    std::unique_ptr<ShadowScene> m_shadow;
    std::vector<Scope> m_scopes;
};

} // namespace

/// The document against a plain shadow, over random operations in nested scopes; and undo to the start and
/// redo to the end, with a look at every tenth step on the way.
class TestDocumentProperty : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void equalsItsShadowAndIsUndoneAndRedoneWhole();

private:
    void runSeed(unsigned seed);
};

void TestDocumentProperty::equalsItsShadowAndIsUndoneAndRedoneWhole()
{
    for (unsigned seed = 1; seed <= seedCount; ++seed) {
        runSeed(seed);
        if (QTest::currentTestFailed()) {
            return;
        }
    }
}

void TestDocumentProperty::runSeed(unsigned seed)
{
    RandomRun run(seed);
    kernel::Document &document = kernel::Document::the();
    QMap<int, SceneSnapshot> states{{0, SceneSnapshot::take(run.objects())}};
    for (int i = 1; i <= operationCount; ++i) {
        run.step();
        if (i % comparisonInterval == 0) {
            const SceneSnapshot now = SceneSnapshot::take(run.objects());
            QVERIFY2(now == run.expected(), qPrintable(QStringLiteral("seed %1, operation %2: %3")
                                                           .arg(seed)
                                                           .arg(i)
                                                           .arg(now.differenceFrom(run.expected()))));
            if (!run.isScopeOpen()) {
                states.insert(document.undoStack()->index(), now);
            }
        }
    }
    run.closeScopes();
    const int end = document.undoStack()->index();
    QCOMPARE(end, document.undoStack()->count());
    states.insert(end, SceneSnapshot::take(run.objects()));

    const auto compareHere = [&](const char *direction) {
        const int index = document.undoStack()->index();
        if (states.contains(index)) {
            const QString difference = SceneSnapshot::take(run.objects()).differenceFrom(states.value(index));
            QVERIFY2(difference.isEmpty(), qPrintable(QStringLiteral("seed %1, %2 to step %3: %4")
                                                          .arg(seed)
                                                          .arg(QLatin1String(direction))
                                                          .arg(index)
                                                          .arg(difference)));
        }
    };
    while (document.undo() && !QTest::currentTestFailed()) {
        compareHere("undone");
    }
    QCOMPARE(document.undoStack()->index(), 0);
    while (document.redo() && !QTest::currentTestFailed()) {
        compareHere("redone");
    }
    QCOMPARE(document.undoStack()->index(), end);
}

NK_GUILESS_TEST_MAIN(TestDocumentProperty)
#include "test_document_property.moc"
