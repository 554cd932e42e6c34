#pragma once

#include <interchange/ImportReport.h>
#include <interchange/SceneError.h>

#include <QByteArray>
#include <QCoreApplication>
#include <QString>

#include <functional>
#include <string_view>
#include <vector>

namespace interchange {

/// Where the records of a STEP text (ISO 10303-21) stand. Found in one pass over its bytes; what is in the records
/// is read when it is asked for. Kept are only records whose first value is a text: everything that has a name or
/// an identifier of its own, and none of the points, faces and placements.
class StepFile
{
    Q_DECLARE_TR_FUNCTIONS(StepFile)

public:
    struct Record
    {
        quint64 id = 0;
        quint32 type = 0;      ///< first byte of the type's name
        quint32 arguments = 0; ///< the opening bracket
        quint32 end = 0;       ///< behind the closing one
    };

    /// Told the share that has been read, 0 to 1; false ends the reading.
    using GoOn = std::function<bool(double share)>;

    /// Whether a text that begins like this is one of these.
    static bool isStep(const QByteArray &firstBytes);

    /// Records that are damaged are left out and noted in the report. False with error(), or where it was ended.
    bool read(const QByteArray &text, ImportReport &report, const GoOn &goOn);

    /// In the order of the file; each number comes once.
    const std::vector<Record> &records() const { return m_records; }
    /// The place in records() of the record with this number; -1 where there is none.
    qint64 find(quint64 id) const;
    std::string_view type(const Record &record) const;
    /// With its brackets.
    std::string_view arguments(const Record &record) const;
    /// The first of the schemas that the header names; empty where it names none.
    const QString &schema() const { return m_schema; }
    const SceneError &error() const { return m_error; }

private:
    bool readHeader();
    bool readData();
    bool readStatement();
    bool readRecord();
    void keep(const Record &record);
    bool skipStatement();
    void skipBlanks();
    std::string_view word() const;
    bool isAt(std::string_view text) const;
    char at() const { return m_at < m_size ? m_bytes[m_at] : '\0'; }
    void noteDamage(quint32 start);
    bool indexRecords();
    bool fail(const QString &reason);

    QByteArray m_text;
    const char *m_bytes = nullptr;
    quint32 m_size = 0;
    quint32 m_at = 0;
    bool m_hasEnded = false;
    ImportReport *m_report = nullptr;
    std::vector<Record> m_records;
    std::vector<quint32> m_byId; ///< places in m_records, by id
    QString m_schema;
    SceneError m_error;
};

} // namespace interchange
