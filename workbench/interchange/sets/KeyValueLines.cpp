#include <interchange/sets/KeyValueLines.h>

#include <kernel/document/ValueConversion.h>

#include <QStringList>

#include <algorithm>

namespace interchange {

namespace {

constexpr int LongestKey = 80;

using Entries = std::vector<kernel::EntryCopy>;

QString cell(const QString &text)
{
    const bool isPlain = std::none_of(text.begin(), text.end(), [](QChar c) {
        return c == QLatin1Char('\t') || c == QLatin1Char('\n') || c == QLatin1Char('\r')
               || c == QLatin1Char('"');
    });
    if (isPlain)
        return text;
    return QLatin1Char('"') + QString(text).replace(QLatin1Char('"'), QLatin1String("\"\""))
           + QLatin1Char('"');
}

/// A spreadsheet's cells, in rows.
class Table
{
public:
    explicit Table(const QString &text) : m_text(text) {}

    QVector<QStringList> rows()
    {
        QVector<QStringList> rows;
        while (m_at < m_text.size())
            rows.append(row());
        return rows;
    }

private:
    QStringList row()
    {
        QStringList cells{nextCell()};
        while (isAt('\t')) {
            ++m_at;
            cells.append(nextCell());
        }
        m_at += isAt('\r') ? 1 : 0;
        m_at += isAt('\n') ? 1 : 0;
        return cells;
    }

    QString nextCell()
    {
        const int from = m_at;
        if (isAt('"')) {
            const QString quoted = quotedCell();
            if (m_at >= m_text.size() || isAtEnd())
                return quoted;
            m_at = from;
        }
        while (m_at < m_text.size() && !isAtEnd())
            ++m_at;
        return m_text.mid(from, m_at - from);
    }

    QString quotedCell()
    {
        QString text;
        for (++m_at; m_at < m_text.size(); ++m_at) {
            if (isAt('"') && !(m_at + 1 < m_text.size() && m_text.at(m_at + 1) == QLatin1Char('"'))) {
                ++m_at;
                break;
            }
            m_at += isAt('"') ? 1 : 0;
            text += m_text.at(m_at);
        }
        return text;
    }

    bool isAt(char c) const { return m_at < m_text.size() && m_text.at(m_at) == QLatin1Char(c); }
    bool isAtEnd() const { return isAt('\t') || isAt('\n') || isAt('\r'); }

    const QString &m_text;
    int m_at = 0;
};

Entries ofTable(const QString &text)
{
    Entries entries;
    const QVector<QStringList> rows = Table(text).rows();
    for (const QStringList &row : rows) {
        if (row.size() == 1 && row.first().trimmed().isEmpty())
            continue;
        if (row.size() != 2 || row.first().trimmed().isEmpty())
            return {};
        entries.push_back({row.first(), kernel::EntryValue(row.at(1))});
    }
    return entries;
}

bool isKey(const QString &key)
{
    static const QString telltale = QStringLiteral("\"'/\\<>{}[]();=:?&|*");
    return !key.isEmpty() && key.size() <= LongestKey && std::none_of(key.begin(), key.end(), [](QChar c) {
        return telltale.contains(c) || c < QLatin1Char(' ');
    });
}

Entries ofLines(const QString &text, const QString &separator)
{
    Entries entries;
    const QStringList lines = text.split(QLatin1Char('\n'));
    for (const QString &line : lines) {
        if (line.trimmed().isEmpty())
            continue;
        const int middle = line.indexOf(separator);
        const QString key = line.left(middle).trimmed();
        if (middle < 0 || !isKey(key))
            return {};
        entries.push_back({key, kernel::EntryValue(line.mid(middle + separator.size()).trimmed())});
    }
    return entries;
}

} // namespace

QByteArray KeyValueLines::table(const Entries &entries)
{
    QByteArray table;
    for (const kernel::EntryCopy &entry : entries) {
        const QString line = cell(entry.key) + QLatin1Char('\t')
                             + cell(kernel::valueText(entry.value.toVariant()));
        table += line.toUtf8() + '\n';
    }
    return table;
}

Entries KeyValueLines::read(const QString &text)
{
    Entries entries = text.contains(QLatin1Char('\t')) ? ofTable(text) : Entries();
    for (const QString &separator : {QStringLiteral("="), QStringLiteral(": ")}) {
        if (entries.empty())
            entries = ofLines(text, separator);
    }
    return entries;
}

} // namespace interchange
