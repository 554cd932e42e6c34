#pragma once

#include <interchange/foreign/ForeignReader.h>
#include <interchange/importer/ImporterProcess.h>

#include <QCoreApplication>
#include <QStringList>

namespace interchange {

class FlatReader;

/// Reads the kinds of importkinds::Models by the importer, a process of its own: what crashes, hangs or fills memory
/// there is a sentence here.
class ImporterReader : public ForeignReader
{
    Q_DECLARE_TR_FUNCTIONS(ImporterReader)

public:
    /// Uses the importer that stands beside the running program.
    ImporterReader();

    /// Endings of the files that are read here, lower case, without the point.
    static QStringList suffixes();

    bool isFor(const QString &suffix, const QByteArray &firstBytes) const override;
    bool read(const QString &path, ForeignScene &scene, kernel::Progress &progress) override;

    /// For tests: another program in the importer's place.
    void setProgram(const QString &path) { m_program = path; }
    /// For tests: other limits.
    void setLimits(const ImporterProcess::Limits &limits) { m_limits = limits; }

private:
    bool isReasonable(const QString &path);
    bool readRecord(const QByteArray &record, const QString &path, ForeignScene &scene);
    bool readFailure(const QByteArray &record, const QString &path);
    bool fail(ImporterProcess::Outcome outcome, const QString &path);
    bool failFile(const QString &reason, const QString &advice);
    static QString exceededText(const QString &limit);
    static QString libraryText(const QString &text, const QString &path);

    QString m_program;
    ImporterProcess::Limits m_limits;
};

} // namespace interchange
