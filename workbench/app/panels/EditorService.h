#pragma once

#include "EditorModule.h"

#include <QList>
#include <QObject>

#include <functional>

/// The service of one editor, as its panel speaks with it: selections as object ids, in selection order.
struct EditorService
{
    /// Whether a selection that was set wants its first object brought into view.
    enum class Reveal {
        Never,
        /// Where something is selected that was not before.
        WhenNew,
        Always
    };
    using Listener = std::function<void(Reveal)>;

    /// What is selected.
    std::function<QList<quint64>()> selection;
    /// Selects these objects by a person's gesture; the listeners are told before it returns, always.
    std::function<void(const QList<quint64> &)> select;
    /// Has listener called whenever the selection was set, until context dies.
    std::function<void(QObject *context, const Listener &listener)> listen;

    static EditorService of(EditorModule module);
};
