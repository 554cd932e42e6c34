#include <interchange/importer/ImporterReader.h>

#include <interchange/importer/AnswerReader.h>
#include <interchange/importer/FlatForm.h>
#include <interchange/importer/FlatReader.h>
#include <interchange/importer/ImportKinds.h>
#include <interchange/importer/ImportLimits.h>

#include <QFileInfo>
#include <QLocale>
#include <QRegularExpression>

#include <algorithm>
#include <iterator>

namespace interchange {

namespace {

constexpr int LongestReason = 200;

QString numberText(quint32 number)
{
    return QLocale(QLocale::English).toString(number);
}

QString bytesText(qint64 bytes)
{
    return QLocale::c().formattedDataSize(bytes, 0);
}

} // namespace

ImporterReader::ImporterReader()
    : m_program(QCoreApplication::applicationDirPath() + QStringLiteral("/nkImporter"))
{}

QStringList ImporterReader::suffixes()
{
    QStringList all;
    for (const char *kind : importkinds::Models)
        all.append(QLatin1String(kind));
    return all;
}

bool ImporterReader::isFor(const QString &suffix, const QByteArray &) const
{
    return std::any_of(std::begin(importkinds::Models), std::end(importkinds::Models),
                       [&suffix](const char *kind) { return suffix == QLatin1String(kind); });
}

bool ImporterReader::read(const QString &path, ForeignScene &scene, kernel::Progress &progress)
{
    if (!isReasonable(path))
        return false;
    ImporterProcess importer;
    const ImporterProcess::Outcome outcome = importer.run(m_program, path, m_limits, progress);
    if (outcome == ImporterProcess::Outcome::Cancelled)
        return false;
    if (outcome != ImporterProcess::Outcome::Answered)
        return fail(outcome, path);
    return readRecord(importer.takeRecord(), path, scene);
}

bool ImporterReader::isReasonable(const QString &path)
{
    if (QFileInfo(path).size() <= importlimits::FileBytes)
        return true;
    return failFile(tr("the file is larger than %1").arg(bytesText(importlimits::FileBytes)),
                    tr("split the scene"));
}

bool ImporterReader::readRecord(const QByteArray &record, const QString &path, ForeignScene &scene)
{
    if (record.startsWith(char(flat::Record::Failure)))
        return readFailure(record, path);
    return AnswerReader(record, QFileInfo(path).fileName()).read(scene)
           || fail(ImporterProcess::Outcome::Nonsense, path);
}

bool ImporterReader::readFailure(const QByteArray &record, const QString &path)
{
    FlatReader reader(record, 1);
    const auto failure = flat::Failure(reader.choice(quint8(flat::Failure::Empty)));
    const QString detail = reader.text();
    if (!reader.isSound() || reader.remaining() > 0)
        return fail(ImporterProcess::Outcome::Nonsense, path);
    switch (failure) {
    case flat::Failure::UnknownKind:
        return failFile(tr("scenes of the kind “.%1” are not known").arg(QFileInfo(path).suffix().toLower()),
                        tr("export it as glTF (.gltf or .glb) and open that"));
    case flat::Failure::NotReadable:
        return failFile(tr("it cannot be read (%1)").arg(libraryText(detail, path)),
                        tr("check who may read it"));
    case flat::Failure::NotUnderstood:
        return failFile(libraryText(detail, path),
                        tr("check that it is what its name says, or export it again"));
    case flat::Failure::TooMuch:
        return failFile(exceededText(detail), tr("split the scene"));
    case flat::Failure::Empty:
        return failFile(tr("nothing was found in it"), tr("check that it is what its name says"));
    }
    return fail(ImporterProcess::Outcome::Nonsense, path);
}

bool ImporterReader::fail(ImporterProcess::Outcome outcome, const QString &path)
{
    const QString otherwise = tr("export it again, or as glTF (.gltf or .glb)");
    switch (outcome) {
    case ImporterProcess::Outcome::NotStarted:
        return failFile(tr("the importer for files of the kind “.%1” cannot be started")
                            .arg(QFileInfo(path).suffix().toLower()),
                        tr("install the workbench again"));
    case ImporterProcess::Outcome::TooSlow:
        return failFile(
            tr("reading it takes longer than %1 seconds").arg(double(m_limits.milliseconds) / 1000),
            otherwise);
    case ImporterProcess::Outcome::TooLarge:
        return failFile(tr("there is more in it than %1").arg(bytesText(m_limits.answerBytes)),
                        tr("split the scene"));
    case ImporterProcess::Outcome::OutOfMemory:
        return failFile(
            tr("reading it needs more than %1 of memory").arg(bytesText(qint64(importlimits::Memory))),
            tr("check that it is whole, or split the scene"));
    case ImporterProcess::Outcome::Crashed:
        return failFile(tr("the importer crashed on it"), otherwise);
    default:
        return failFile(tr("the importer gave no answer that makes sense"), otherwise);
    }
}

bool ImporterReader::failFile(const QString &reason, const QString &advice)
{
    m_error = SceneError::ofFile(reason, advice);
    return false;
}

QString ImporterReader::exceededText(const QString &limit)
{
    if (limit == QLatin1String("depth"))
        return tr("its nodes are more than %1 levels deep").arg(numberText(importlimits::Depth));
    if (limit == QLatin1String("nodes"))
        return tr("it has more than %1 nodes").arg(numberText(importlimits::Nodes));
    if (limit == QLatin1String("entries"))
        return tr("it has more than %1 metadata entries").arg(numberText(importlimits::Entries));
    if (limit == QLatin1String("triangles"))
        return tr("it has more than %1 vertices").arg(numberText(importlimits::Vertices));
    return tr("it has more materials, cameras or lights than can be shown");
}

/// What the library or the system says: in one line, without the path of the file, which stands in front of it
/// anyway, and not too long.
QString ImporterReader::libraryText(const QString &text, const QString &path)
{
    static const QRegularExpression ofStandardLibrary(
        QStringLiteral("^(std::|vector|basic_string|map::|_Map|deque|array|stoi|stof|stod|bitset)"));
    QString plain = text;
    plain.replace(path, QFileInfo(path).fileName());
    plain.replace(QRegularExpression(QStringLiteral("[\\x00-\\x1f\\x7f]")), QStringLiteral(" "));
    plain = plain.simplified();
    while (plain.endsWith(QLatin1Char('.')) || plain.endsWith(QLatin1Char('!')))
        plain.chop(1);
    if (plain.isEmpty() || plain.contains(ofStandardLibrary))
        return tr("the file is damaged");
    return plain.size() > LongestReason ? plain.left(LongestReason) + QStringLiteral(" …") : plain;
}

} // namespace interchange
