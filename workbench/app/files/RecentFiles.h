#pragma once

#include <QStringList>

/// The scenes that were opened or saved last, newest first, kept in the preferences.
namespace RecentFiles {

/// How many are kept: what the person has chosen.
int capacity();

/// Absolute paths. Some of the files may be gone by now.
QStringList files();
/// Puts a file in front. @param path absolute
void add(const QString &path);
void remove(const QString &path);
void clear();

} // namespace RecentFiles
