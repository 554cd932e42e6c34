#pragma once

#include "table/nkMetadataKeyValueColumns.h"
#include "table/nkMetadataKeyValueModel.h"
#include "table/nkMetadataKeyValueRootModelItem.h"

#include <kernel/document/Document.h>
#include <kernel/document/DocumentLoader.h>
#include <nkKernelServices/nkdMetadata.h>
#include <nkKernelServices/nkdMetadataSet.h>

#include <QAbstractItemModelTester>
#include <QUndoStack>

#include <memory>

/// A scene made anew and the key/value model that shows sets of it, under Qt's model tester.
///
///     Alpha (red)    "name" = "first", "count" = 7, tag "checked"
///     Beta (blue)    "name" = "second"
///     Locked         "note" = "fixed", locked
///     Chair (node)   own entries "weight" = 4.5, tag "own"; carries Alpha
class TableFixture
{
public:
    TableFixture()
    {
        fill();
        model = std::make_unique<nkMetadataKeyValueModel>();
        root = new nkMetadataKeyValueRootModelItem;
        model->setHeader({QString(), QStringLiteral("Assignment"), QStringLiteral("Key"),
                          QStringLiteral("Value"), QStringLiteral("Type")});
        model->setRootItem(root);
        tester = std::make_unique<QAbstractItemModelTester>(
            model.get(), QAbstractItemModelTester::FailureReportingMode::QtTest);
    }

    void show(const QList<nkdMetadataSet> &sets)
    {
        root->setSets(sets);
        model->reload();
    }

    static nkdMetadataEntry entry(const nkdMetadataSet &set, const char *key)
    {
        return set.getEntries().find(QLatin1String(key));
    }

    QModelIndex cell(const nkdMetadataEntry &entry, int column) const
    {
        return model->indexFromId(entry.getObjectId(), column);
    }

    QString text(int row, int column) const { return model->index(row, column).data().toString(); }

    QStringList column(int column) const
    {
        QStringList texts;
        for (int row = 0; row < model->rowCount(); ++row) {
            texts.append(text(row, column));
        }
        return texts;
    }

    static QStringList keys(const nkdMetadataSet &set)
    {
        QStringList keys;
        for (const nkdMetadataEntry &entry : set.getEntries()) {
            keys.append(entry.getKey());
        }
        return keys;
    }

    static QUndoStack *undoStack() { return kernel::Document::the().undoStack(); }

    nkdMetadataSet alpha;
    nkdMetadataSet beta;
    nkdMetadataSet locked;
    nkdMetadataSet chairOwn;
    nkdSceneObject chair;
    std::unique_ptr<nkMetadataKeyValueModel> model;
    nkMetadataKeyValueRootModelItem *root = nullptr;
    std::unique_ptr<QAbstractItemModelTester> tester;

private:
    void fill()
    {
        kernel::DocumentLoader loader;
        const quint64 alphaId = loader.addSet(QStringLiteral("Alpha"), QColor(255, 0, 0));
        const quint64 betaId = loader.addSet(QStringLiteral("Beta"), QColor(0, 0, 255));
        const quint64 lockedId = loader.addSet(QStringLiteral("Locked"), QColor(), true);
        const quint64 chairId = loader.addObject(nkObjectType::Node, QStringLiteral("Chair"));
        const quint64 ownId = loader.objectSet(chairId);
        loader.addEntry(alphaId, QStringLiteral("name"), nkMetadataTypes::String, QStringLiteral("first"));
        loader.addEntry(alphaId, QStringLiteral("count"), nkMetadataTypes::Integer, 7);
        loader.addTag(alphaId, QStringLiteral("checked"));
        loader.addEntry(betaId, QStringLiteral("name"), nkMetadataTypes::String, QStringLiteral("second"));
        loader.addEntry(lockedId, QStringLiteral("note"), nkMetadataTypes::String, QStringLiteral("fixed"));
        loader.addEntry(ownId, QStringLiteral("weight"), nkMetadataTypes::Float, 4.5);
        loader.addTag(ownId, QStringLiteral("own"));
        loader.assign(alphaId, chairId);
        loader.commit();
        alpha = nkdMetadataSet(alphaId);
        beta = nkdMetadataSet(betaId);
        locked = nkdMetadataSet(lockedId);
        chair = nkdSceneObject(nkdObject(chairId));
        chairOwn = nkdMetadataSet(ownId);
    }
};
