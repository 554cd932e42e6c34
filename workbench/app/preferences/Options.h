#pragma once

#include <QString>

/// The choices of a person that the workbench itself goes by, as they stand in the preferences. What is out of range
/// or of another kind reads as its default.
namespace Options {

/// A choice among numbers: the key of its preference, and what it may be.
struct Number
{
    const char *key;
    int lowest;
    int highest;
    int usual;

    int value() const;
    void store(int value, bool overwrite = true) const;
};

/// A choice that is one text.
struct Text
{
    const char *key;

    /// Empty where nothing was chosen.
    QString value() const;
    void store(const QString &value, bool overwrite = true) const;
};

/// Whether copies for recovery are written (1) or not (0), and how many minutes lie between them.
extern const Number autosave;
extern const Number autosaveMinutes;
/// How many scenes the list of recent files keeps.
extern const Number recentFiles;
/// Whether what a save replaces is kept as NAME~ (1) or not (0).
extern const Number backup;
/// Where file dialogs begin while no scene says where.
extern const Text defaultFolder;
/// The code of the language of all texts, such as "en"; empty for that of the system.
extern const Text language;

} // namespace Options
