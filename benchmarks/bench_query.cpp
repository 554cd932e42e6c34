#include "harness/BenchmarkRegistry.h"

#include <kernel/document/Document.h>
#include <kernel/document/DocumentLoader.h>
#include <kernel/services/QueryService.h>

#include <QEventLoop>
#include <QStringList>

#include <cstdio>
#include <cstdlib>
#include <memory>

namespace {

constexpr int EntriesPerSet = 100;
const QString Word = QStringLiteral("needle");

/// The texts of a scene, and what searches them: the keys of a set are those of every set, values are texts of
/// all lengths up to a line, and one in ten thousand holds the word.
struct SearchedScene
{
    QStringList texts;
    std::unique_ptr<kernel::QueryService> service;
    int setsWithWord = 0;
    int found = 0;
};

QString valueText(qint64 number)
{
    const QString text = QStringLiteral("Value %1 of part %2").arg(number).arg(number % 977);
    return number % 10000 == 5 ? text + QStringLiteral(" with a Needle in it") : text;
}

std::shared_ptr<SearchedScene> loadScene(qint64 entries)
{
    const auto scene = std::make_shared<SearchedScene>();
    kernel::DocumentLoader loader;
    quint64 set = 0;
    for (qint64 number = 0; number < entries; ++number) {
        if (number % EntriesPerSet == 0) {
            scene->texts.append(QStringLiteral("Set %1").arg(number / EntriesPerSet));
            set = loader.addSet(scene->texts.constLast());
        }
        const QString key = QStringLiteral("property %1").arg(number % EntriesPerSet);
        const QString value = valueText(number);
        scene->texts.append(value);
        scene->setsWithWord += number % 10000 == 5;
        // Each key is one text to both sides, however many entries have it.
        if (number < EntriesPerSet) {
            scene->texts.append(key);
        }
        loader.addEntry(set, key, nkMetadataTypes::String, value);
    }
    loader.commit();
    scene->service = std::make_unique<kernel::QueryService>();
    return scene;
}

void check(bool right)
{
    if (!right) {
        std::fputs("query: the search found something else than was there\n", stderr);
        std::exit(1);
    }
}

/// From the start to the answer: reading the query, copying the scene, the thread, the way back.
void search(SearchedScene &scene)
{
    QEventLoop loop;
    scene.found = -1;
    QObject::connect(scene.service.get(), &nkQueryService::asyncMetadataQueryFinished, &loop,
                     [&](bool ok, const QList<nkdMetadataSet> &sets) {
                         scene.found = ok ? sets.size() : -1;
                         loop.quit();
                     });
    scene.service->startAsyncMetadataQuery(Word);
    loop.exec();
}

void scan(SearchedScene &scene)
{
    scene.found = 0;
    for (const QString &text : qAsConst(scene.texts)) {
        scene.found += text.contains(Word, Qt::CaseInsensitive);
    }
}

} // namespace

/// A word searched in all keys, values and set names, from start to answer with a fresh copy of the scene, against
/// one pass of QString::contains over the same texts.
static Comparison compareQuery(qint64 size)
{
    const auto scene = std::make_shared<std::shared_ptr<SearchedScene>>();
    const auto prepare = [scene, size] { *scene = loadScene(size); };
    const auto finish = [scene] {
        check((*scene)->found == (*scene)->setsWithWord);
        scene->reset();
        kernel::Document::the().clear();
    };
    Comparison comparison;
    comparison.ours.prepare = prepare;
    comparison.ours.run = [scene] { search(**scene); };
    comparison.ours.finish = finish;
    comparison.baseline.prepare = prepare;
    comparison.baseline.run = [scene] { scan(**scene); };
    comparison.baseline.finish = finish;
    comparison.timeAim = 2;
    return comparison;
}
NK_BENCHMARK("query", compareQuery, 1000000)
