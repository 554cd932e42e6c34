#include <interchange/importer/AnswerKeys.h>

#include <QCryptographicHash>

namespace interchange {

namespace {

constexpr int LongestKey = 1024;

/// The name as it stands in a key. Brackets alone come from no name: they stand for none.
QString segment(const QString &name)
{
    if (name.isEmpty())
        return QStringLiteral("[]");
    QString escaped;
    escaped.reserve(name.size());
    for (const QChar letter : name) {
        if (QStringLiteral("\\/[]").contains(letter))
            escaped.append(QLatin1Char('\\'));
        escaped.append(letter);
    }
    return escaped;
}

QString bounded(const QString &key)
{
    if (key.size() <= LongestKey)
        return key;
    const QByteArray hash = QCryptographicHash::hash(key.toUtf8(), QCryptographicHash::Sha256).toHex();
    return QStringLiteral("[%1]").arg(QString::fromLatin1(hash));
}

} // namespace

QString AnswerKeys::next(const QString &parentKey, const QString &name)
{
    const int number = ++m_counts[{parentKey, name}];
    QString key = parentKey.isEmpty() ? segment(name) : parentKey + QLatin1Char('/') + segment(name);
    if (number > 1)
        key += QStringLiteral("[%1]").arg(number);
    return bounded(key);
}

} // namespace interchange
