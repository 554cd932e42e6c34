#include "SetFileFixture.h"

#include <TestMain.h>
#include <kernel/services/Progress.h>
#include <nkKernelServices/nkScopedUndo.h>
#include <nkKernelServices/nkdMetadata.h>

#include <functional>
#include <memory>

namespace {

/// Writes down what is shown and answers as told.
class RecordingDisplay : public kernel::ProgressDisplay
{
public:
    RecordingDisplay() { install(this); }

    void begin(const QString &text) override { texts.append(text); }
    bool advance(double share) override
    {
        shares.append(share);
        return !onAdvance || onAdvance(share);
    }
    int interval() const override { return 0; }
    void end() override { ++ends; }

    QStringList texts;
    QList<double> shares;
    int ends = 0;
    std::function<bool(double)> onAdvance;
};

/// A figure of this process in KiB, as the system keeps it.
qint64 statusKib(const QByteArray &name)
{
    const QByteArray status = SetFileFixture::read(QStringLiteral("/proc/self/status"));
    const int at = status.indexOf(name + ':') + name.size() + 1;
    return status.mid(at, status.indexOf(" kB", at) - at).trimmed().toLongLong();
}

} // namespace

/// Saving and loading through the metadata service: what it does to the scene, and to whoever waits for it.
class TestSetFileService : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { m_fixture = std::make_unique<SetFileFixture>(); }
    void cleanup() { m_fixture.reset(); }

    void loaded_sets_are_assigned_in_one_step();
    void loading_belongs_to_the_callers_scope();
    void loaded_names_are_made_unique();
    void an_objects_own_set_is_saved_under_its_name();
    void nothing_to_save_makes_no_file();
    void saving_is_no_change();
    void both_show_how_far_they_are();
    void a_cancelled_load_does_nothing();
    void a_cancelled_save_leaves_the_old_file();
    void sets_that_vanish_meanwhile_end_the_save();
    void targets_that_vanish_meanwhile_are_left_out();
    void another_file_meanwhile_is_refused();
    void without_a_codec_nothing_is_touched();
    void memory_stays_small();

private:
    QList<nkdMetadataSet> manySets(int sets, int entries);
    SetFileFixture &f() const { return *m_fixture; }
    std::unique_ptr<SetFileFixture> m_fixture;
};

QList<nkdMetadataSet> TestSetFileService::manySets(int sets, int entries)
{
    kernel::DocumentLoader loader;
    QList<nkdMetadataSet> handles;
    for (int set = 0; set < sets; ++set) {
        handles.append(nkdMetadataSet(loader.addSet(QStringLiteral("Set %1").arg(set))));
        for (int entry = 0; entry < entries; ++entry)
            loader.addEntry(handles.last().getObjectId(), QStringLiteral("key %1").arg(entry),
                            nkMetadataTypes::String, QStringLiteral("value %1 of %2").arg(entry).arg(set));
    }
    loader.commit();
    return handles;
}

void TestSetFileService::loaded_sets_are_assigned_in_one_step()
{
    const nkdNode first = SceneFixture::node(QStringLiteral("First"));
    const nkdNode second = SceneFixture::node(QStringLiteral("Second"));
    const QByteArray example = SetFileFixture::read(QStringLiteral(NK_DOCS_DIR "/set-file.example.json"));
    QSignalSpy announced(&f().service(), &nkMetadataService::metadataChanged);
    const QList<nkdMetadataSet> sets = f().load(example, {first, second, first, nkdNode()});
    QCOMPARE(sets.size(), 3);
    QCOMPARE(announced.size(), 1);
    QCOMPARE(f().service().getAllSets(), sets);
    for (const nkdMetadataSet &set : sets)
        QCOMPARE(set.getObjects(), (QList<nkdSceneObject>{first, second}));
    QUndoStack *stack = kernel::Document::the().undoStack();
    QCOMPARE(stack->count(), 1);
    QCOMPARE(stack->undoText(), QStringLiteral("Load Metadata Sets"));
    QVERIFY(kernel::Document::the().undo());
    QVERIFY(f().service().getAllSets().isEmpty());
    QVERIFY(nkdMetadata::fromObject(first).getSets().isEmpty());
    QVERIFY(kernel::Document::the().redo());
    QCOMPARE(f().service().getAllSets(), sets);
    QCOMPARE(f().save(sets), example);
}

void TestSetFileService::loading_belongs_to_the_callers_scope()
{
    {
        const nkScopedUndo undo(true);
        QVERIFY(!f().load(SetFileFixture::file("")).isEmpty());
        QVERIFY(!f().load(SetFileFixture::file("")).isEmpty());
    }
    QCOMPARE(kernel::Document::the().undoStack()->count(), 1);
    {
        const nkScopedUndo undo(true);
        QVERIFY(f().load("no sets").isEmpty());
    }
    QCOMPARE(kernel::Document::the().undoStack()->count(), 1);
}

void TestSetFileService::loaded_names_are_made_unique()
{
    QCOMPARE(f().load(SetFileFixture::file("")).first().getName(), QStringLiteral("Set"));
    QCOMPARE(f().load(SetFileFixture::file("")).first().getName(), QStringLiteral("Set2"));
    const QByteArray unnamed = SetFileFixture::file("").replace("\"Set\"", "\"\"");
    QCOMPARE(f().load(unnamed).first().getName(), QStringLiteral("MetadataSet"));
}

void TestSetFileService::an_objects_own_set_is_saved_under_its_name()
{
    const nkdNode node = SceneFixture::node(QStringLiteral("Chair"));
    nkdMetadataSet own = nkdMetadata::fromObject(node).getObjectSet();
    own.setValue(QStringLiteral("a"), 1);
    const QByteArray text = f().save({own});
    QVERIFY(text.contains("{\"name\":\"Chair\","));
    const nkdMetadataSet loaded = f().load(text).first();
    QVERIFY(!loaded.isObjectSet());
    QCOMPARE(loaded.getValue(QStringLiteral("a")), QVariant(1));
}

void TestSetFileService::nothing_to_save_makes_no_file()
{
    nkdMetadataSet dead = f().service().createSet(QString(), {});
    f().service().deleteSets({dead});
    f().service().saveSets({}, f().path());
    f().service().saveSets({nkdMetadataSet(), dead}, f().path());
    f().service().saveSets({f().service().createSet(QString(), {})}, QString());
    QVERIFY(f().files().isEmpty());
    QVERIFY(f().reports.isEmpty());
}

void TestSetFileService::saving_is_no_change()
{
    const QList<nkdMetadataSet> sets = manySets(2, 2);
    QSignalSpy announced(&f().service(), &nkMetadataService::metadataChanged);
    QVERIFY(f().save({sets.at(1), sets.at(0), sets.at(1)}).count("\"name\"") == 2);
    QVERIFY(announced.isEmpty());
    QCOMPARE(kernel::Document::the().undoStack()->count(), 0);
    QVERIFY(!kernel::Document::the().isModified());
}

void TestSetFileService::both_show_how_far_they_are()
{
    RecordingDisplay display;
    const QByteArray text = f().save(manySets(50, 10));
    const QList<double> saving = display.shares;
    display.shares.clear();
    QCOMPARE(f().load(text).size(), 50);
    QCOMPARE(display.texts.size(), 2);
    QVERIFY(display.texts.first().contains(QStringLiteral("“save.json”")));
    QVERIFY(display.texts.last().contains(QStringLiteral("“load.json”")));
    QCOMPARE(display.ends, 2);
    for (const QList<double> &shares : {saving, display.shares}) {
        QVERIFY(!shares.isEmpty());
        QVERIFY(std::is_sorted(shares.begin(), shares.end()));
        QVERIFY(shares.first() >= 0 && shares.last() <= 1);
    }
    QVERIFY(!kernel::Progress::isRunning());
}

void TestSetFileService::a_cancelled_load_does_nothing()
{
    const QByteArray text = f().save(manySets(5, 5));
    SceneFixture::reset();
    RecordingDisplay display;
    display.onAdvance = [](double) { return false; };
    QSignalSpy announced(&f().service(), &nkMetadataService::metadataChanged);
    QVERIFY(f().load(text).isEmpty());
    QVERIFY(f().service().getAllSets().isEmpty());
    QVERIFY(announced.isEmpty());
    QVERIFY(f().reports.isEmpty());
    QCOMPARE(kernel::Document::the().undoStack()->count(), 0);
    QCOMPARE(display.ends, 1);
}

void TestSetFileService::a_cancelled_save_leaves_the_old_file()
{
    const QList<nkdMetadataSet> sets = manySets(5, 5);
    SetFileFixture::write(f().path(), "old");
    RecordingDisplay display;
    // At the first question, which comes amid writing, and at one amid reading back.
    display.onAdvance = [](double) { return false; };
    f().service().saveSets(sets, f().path());
    display.onAdvance = [](double share) { return share < 0.6; };
    f().service().saveSets(sets, f().path());
    QVERIFY(display.shares.last() >= 0.6);
    QCOMPARE(SetFileFixture::read(f().path()), QByteArray("old"));
    QCOMPARE(f().files().size(), 1);
    QVERIFY(f().reports.isEmpty());
}

void TestSetFileService::sets_that_vanish_meanwhile_end_the_save()
{
    const QList<nkdMetadataSet> sets = manySets(5, 5);
    SetFileFixture::write(f().path(), "old");
    RecordingDisplay display;
    display.onAdvance = [](double) {
        kernel::Document::the().clear();
        return true;
    };
    f().service().saveSets(sets, f().path());
    QVERIFY(f().takeReport().contains(QStringLiteral("vanished meanwhile")));
    QCOMPARE(SetFileFixture::read(f().path()), QByteArray("old"));
    QCOMPARE(f().files().size(), 1);
}

void TestSetFileService::targets_that_vanish_meanwhile_are_left_out()
{
    const nkdNode stays = SceneFixture::node(QStringLiteral("Stays"));
    const nkdNode goes = SceneFixture::node(QStringLiteral("Goes"));
    RecordingDisplay display;
    display.onAdvance = [goes](double) {
        kernel::Document::the().deleteObjects({goes.getObjectId()});
        return true;
    };
    const QList<nkdMetadataSet> sets = f().load(SetFileFixture::file(""), {goes, stays});
    QCOMPARE(sets.first().getObjects(), QList<nkdSceneObject>{stays});
}

void TestSetFileService::another_file_meanwhile_is_refused()
{
    const QList<nkdMetadataSet> sets = manySets(2, 2);
    RecordingDisplay display;
    display.onAdvance = [&](double) {
        f().service().saveSets(sets, f().path("other.json"));
        return true;
    };
    const QByteArray text = f().save(sets);
    QVERIFY(text.contains("Set 1"));
    QVERIFY(!f().reports.isEmpty());
    QVERIFY(f().reports.first().at(2).toString().contains(QStringLiteral("another file")));
    QVERIFY(!f().files().contains(QStringLiteral("other.json")));
    QCOMPARE(display.ends, 1);
}

void TestSetFileService::without_a_codec_nothing_is_touched()
{
    const QList<nkdMetadataSet> sets = manySets(1, 1);
    kernel::SetCodec::install(nullptr);
    f().service().saveSets(sets, f().path());
    QVERIFY(f().takeReport().contains(f().path()));
    QVERIFY(f().service().loadSets(f().path(), {}).isEmpty());
    QVERIFY(f().takeReport().contains(f().path()));
    QVERIFY(f().files().isEmpty());
    QVERIFY(sets.first().getJson().isEmpty());
    nkdMetadataSet set = sets.first();
    QVERIFY(!set.setJson("{}"));
}

/// The most memory that saving and loading take on top of the scene, an entry: a KiB at most.
void TestSetFileService::memory_stays_small()
{
    constexpr int Sets = 500;
    constexpr int Entries = 200;
    constexpr qint64 Most = qint64(Sets) * Entries;
    const QList<nkdMetadataSet> sets = manySets(Sets, Entries);
    const auto peakOf = [](const std::function<void()> &work) {
        SetFileFixture::write(QStringLiteral("/proc/self/clear_refs"), "5");
        const qint64 before = statusKib("VmRSS");
        work();
        return statusKib("VmHWM") - before;
    };
    QVERIFY(statusKib("VmRSS") > 0);
    const qint64 saving = peakOf([&] { f().service().saveSets(sets, f().path()); });
    f().service().deleteSets(sets);
    const qint64 loading = peakOf([&] { QCOMPARE(f().service().loadSets(f().path(), {}).size(), Sets); });
    QVERIFY(saving > 0 && loading > 0);
    QVERIFY2(saving <= Most, qPrintable(QString::number(saving)));
    QVERIFY2(loading <= Most, qPrintable(QString::number(loading)));
    QVERIFY(f().reports.isEmpty());
}

NK_TEST_MAIN(TestSetFileService)
#include "test_set_file_service.moc"
