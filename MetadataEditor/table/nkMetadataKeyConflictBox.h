#pragma once

/// The question what to do when an entry is renamed to a key that another entry of its set has.
class nkMetadataKeyConflictBox
{
public:
    nkMetadataKeyConflictBox() = delete;

    enum Answer { Cancel, Replace };

    /// Asks modally, in a box without parent. Closing the box is Cancel, which is also what Return presses:
    /// a second Return after the one that committed the key must not overwrite an entry.
    static Answer ask();
};
