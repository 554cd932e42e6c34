#pragma once

#include "StringLibrary.h"

#include <QObject>

#include <vector>

namespace interchange {

/// The keys of the open scene as a library. Gathered when they are asked for, and again only after entries
/// have changed. GUI thread only.
class StringLibrarySceneKeys : public QObject
{
    Q_OBJECT
public:
    explicit StringLibrarySceneKeys(QObject *parent = nullptr);

    const StringLibrary &words();

private:
    void gather();

    StringLibrary m_words;
    /// The numbers of the keys in use, by the document's key pool: one bit each.
    std::vector<bool> m_keys;
    bool m_isStale = true;
};

} // namespace interchange
