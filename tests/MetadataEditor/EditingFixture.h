#pragma once

#include "WindowFixture.h"

#include <nkQt4Ext/QNKViewBase.h>

#include <QComboBox>
#include <QLineEdit>
#include <QUndoStack>

/// The editor window with a set that holds one entry of every type and a locked one, both shown, and what it
/// takes to open, change and leave cell editors as a person does.
class EditingFixture : public WindowFixture
{
public:
    EditingFixture()
    {
        kernel::DocumentLoader loader(kernel::DocumentLoader::Mode::Add);
        const quint64 id = loader.addSet(QStringLiteral("Types"), QColor(0, 160, 80));
        const auto add = [&](const char *key, nkMetadataTypes::ValueType type, const QVariant &value) {
            loader.addEntry(id, QLatin1String(key), type, value);
        };
        add("string", nkMetadataTypes::String, QStringLiteral("some text"));
        add("integer", nkMetadataTypes::Integer, -42);
        add("float", nkMetadataTypes::Float, 0.1);
        add("boolean", nkMetadataTypes::Boolean, false);
        add("time", nkMetadataTypes::Time, QTime(13, 45, 30));
        add("date", nkMetadataTypes::Date, QDate(2023, 3, 2));
        add("moment", nkMetadataTypes::DateTime, QDateTime(QDate(2023, 3, 2), QTime(15, 7, 9)));
        add("list", nkMetadataTypes::List, QVariantList{QStringLiteral("a"), 1});
        loader.addTag(id, QStringLiteral("tag"));
        const quint64 lockedId = loader.addSet(QStringLiteral("Locked"), QColor(), true);
        loader.addEntry(lockedId, QStringLiteral("fixed"), nkMetadataTypes::String, QStringLiteral("stays"));
        loader.commit();
        types = nkdMetadataSet(id);
        locked = nkdMetadataSet(lockedId);
    }

    void showTypes()
    {
        show();
        select({types, locked});
        QCOMPARE(view()->model()->rowCount(), 10);
    }

    nkdMetadataEntry of(const char *key) const { return entry(types, key); }
    QModelIndex cellOf(const char *key, int column) const { return cell(QLatin1String(key), column); }

    /// Opens the editor of a cell; null where none opens.
    QWidget *open(const QModelIndex &cell) const
    {
        view()->setCurrentIndex(cell);
        if (cell.flags() & Qt::ItemIsEditable) {
            view()->edit(cell);
        }
        return editor();
    }
    QWidget *open(const char *key, int column) const { return open(cellOf(key, column)); }

    /// The editor of the current cell.
    QWidget *editor() const { return view()->indexWidget(view()->currentIndex()); }

    /// Presses a key in the editor, and lets what it queues happen.
    void press(int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) const
    {
        QTest::keyClick(editor(), Qt::Key(key), modifiers);
        QCoreApplication::processEvents();
    }

    static QUndoStack *undoStack() { return kernel::Document::the().undoStack(); }

    nkdMetadataSet types;
    nkdMetadataSet locked;
};
