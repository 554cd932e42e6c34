#pragma once

#include "EditorModule.h"

#include <QString>

/// The words and the icon of an editor's panel, translated.
struct EditorText
{
    QString title;
    /// The same for the View menu, with a mnemonic that no other entry there has.
    QString menuText;
    /// What the panel's dock is called in saved layouts; never translated.
    QString objectName;
    /// Name of the icon in the category "General".
    QString icon;
    /// The accessible name of the search field, and what stands in it while it is empty.
    QString search;
    /// What the panel says in place of rows: nothing to list, and what to do about it.
    QString empty;

    static EditorText of(EditorModule module);
};
