#pragma once

#include "Clipboard.h"
#include "SlotList.h"

#include <QByteArray>
#include <QCoreApplication>
#include <QString>
#include <QVector>

namespace kernel {

class Document;

/// Sets of the document into files and texts and back, by the installed codec. Failures go to the log; a
/// cancelled work ends without a word and without a trace.
class SetFiles
{
    Q_DECLARE_TR_FUNCTIONS(SetFiles)

public:
    explicit SetFiles(Document &document) : m_document(document) {}

    /// Writes the sets, in order; object sets too.
    void save(const QVector<Slot> &sets, const QString &fileName) const;
    /// Creates the sets of the file and assigns them to the objects: one change, or none.
    /// @return the new sets
    QVector<Slot> load(const QString &fileName, const QVector<Slot> &objects) const;

    /// The text of a living set.
    QByteArray textOf(Slot set) const;
    /// Replaces the content of the set; false, and nothing changed, where the text is no set or the set is not
    /// editable.
    bool replace(quint64 setId, const QByteArray &text) const;

private:
    SetCopy copyOf(Slot set) const;

    Document &m_document;
};

} // namespace kernel
