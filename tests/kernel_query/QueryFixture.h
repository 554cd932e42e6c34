#pragma once

#include <SceneFixture.h>
#include <kernel/query/QueryEvaluation.h>
#include <kernel/query/QueryParser.h>
#include <kernel/query/QueryRun.h>
#include <kernel/query/SnapshotCollector.h>
#include <nkKernelServices/nkMetadataService.h>
#include <nkKernelServices/nkdMetadataEntry.h>

#include <QStringList>

/// Queries answered at once, without the service, and sets to ask about.
namespace QueryFixture {

using T = nkMetadataTypes;

inline std::shared_ptr<const kernel::QuerySnapshot> snapshot()
{
    kernel::SnapshotCollector collector(kernel::Document::the(), true);
    collector.work(-1);
    return collector.take();
}

/// The error of a text that is no query; empty for others.
inline kernel::QueryError errorOf(const QString &query)
{
    kernel::QueryParser parser(query);
    return parser.parse() ? kernel::QueryError() : parser.error();
}

/// The ids of the sets that a query finds. A text that is no query finds the id 0.
inline QVector<quint64> idsOf(const QString &query)
{
    kernel::QueryParser parser(query);
    const std::optional<kernel::QueryNode> root = parser.parse();
    if (!root) {
        return {0};
    }
    const auto scene = snapshot();
    const std::atomic<bool> cancelled(false);
    kernel::QueryRun run(cancelled);
    return kernel::QueryEvaluation(*root, *scene, run).matchingSets();
}

/// The names of the sets that a query finds; for a text that is no query, the reason.
inline QStringList find(const QString &query)
{
    const QVector<quint64> ids = idsOf(query);
    if (ids == QVector<quint64>{0}) {
        return {errorOf(query).sentence};
    }
    QStringList names;
    for (const quint64 id : ids) {
        names.append(nkdMetadataSet(id).getName());
    }
    return names;
}

inline nkdMetadataSet set(const QString &name, const QList<nkdSceneObject> &objects = {})
{
    return nkMetadataService::the().createSet(name, objects);
}

inline void add(nkdMetadataSet set, const QString &key, T::ValueType type, const QVariant &value = QVariant())
{
    nkdMetadataEntry entry = set.createEntry(type);
    entry.setKey(key);
    if (value.isValid()) {
        entry.setValue(value);
    }
}

} // namespace QueryFixture
