#pragma once

#include "StringLibrary.h"

#include <QString>

#include <memory>

namespace interchange {

/// Files of words, ".txt" with a word on each line or comma-separated ".csv", both UTF-8 (StringLibraryText).
namespace StringLibraryFile {

constexpr qint64 LargestFile = 64 * 1024 * 1024;

struct Content
{
    /// Null where the file could not be read.
    std::shared_ptr<const StringLibrary> library;
    /// One sentence: why there is no library, or what was left out of it. Empty where all was read.
    QString report;
};

/// Reads a file. Needs nothing but the file and so runs on any thread. A file that is missing, no regular
/// file, unreadable, larger than 64 MiB or no UTF-8 text is not read at all.
Content read(const QString &path);

/// Whether add() can write this word: not empty, no line breaks, no blanks around it, no longer than a word
/// of a library may be, and for files of lines no '#' at its beginning.
bool canHold(const QString &path, const QString &word);
/// Adds a word at the end of the file; every byte that is there stays. Durable: readers find the file with
/// the word or without it. @return the reason of the failure in one sentence; empty on success
QString add(const QString &path, const QString &word);

} // namespace StringLibraryFile

} // namespace interchange
