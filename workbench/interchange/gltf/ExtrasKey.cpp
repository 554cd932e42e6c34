#include <interchange/gltf/ExtrasKey.h>

namespace interchange {

namespace {

const QLatin1Char Separator('.');
const QLatin1Char Escape('\\');
const QLatin1String Empty("\"\"");

} // namespace

QString ExtrasKey::escaped(const QString &segment)
{
    if (segment == Empty)
        return Escape + segment;
    if (!segment.contains(Separator) && !segment.contains(Escape))
        return segment;
    QString text;
    text.reserve(segment.size() + 4);
    for (const QChar c : segment) {
        if (c == Separator || c == Escape)
            text += Escape;
        text += c;
    }
    return text;
}

QString ExtrasKey::joined(const QStringList &path)
{
    if (path.size() == 1 && path.first().isEmpty())
        return Empty;
    QString key = escaped(path.value(0));
    for (int i = 1; i < path.size(); ++i)
        key = appended(key, path.at(i));
    return key;
}

QString ExtrasKey::appended(const QString &pathKey, const QString &segment)
{
    return pathKey + Separator + escaped(segment);
}

QStringList ExtrasKey::split(const QString &pathKey)
{
    if (pathKey == Empty)
        return QStringList(QString());
    QStringList path;
    QString segment;
    for (int i = 0; i < pathKey.size(); ++i) {
        const QChar c = pathKey.at(i);
        if (c == Separator) {
            path.append(segment);
            segment.clear();
        } else {
            const bool escapes = c == Escape && i + 1 < pathKey.size();
            segment += escapes ? pathKey.at(++i) : c;
        }
    }
    return path << segment;
}

} // namespace interchange
