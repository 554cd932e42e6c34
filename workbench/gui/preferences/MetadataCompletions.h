#pragma once

#include <nkKernelServicesGUI/nkKernelServicesGUIExport.h>
#include <nkQt4Ext/QNKStringCompleterLineEdit.h>

#include <QString>

#include <functional>

/// Where metadata line edits take their completions from. The libraries of the application know no files; the
/// application installs the source.
class NK_KERNEL_SERVICES_GUI_EXPORT MetadataCompletions
{
public:
    MetadataCompletions() = delete;

    struct Source
    {
        QNKStringCompleterLineEdit::Completions completions;
        /// The name of the library that would take this word; empty where none would.
        std::function<QString(const QString &word)> libraryFor;
        std::function<void(const QString &word)> add;
    };

    /// Line edits that live already ask the new source too. An empty one offers nothing.
    static void setSource(const Source &source);
    /// Makes the edit complete from the source, and its context menu offer to add what was typed to a library
    /// that would take it.
    static void feed(QNKStringCompleterLineEdit *edit);
};
