#pragma once

#include <QHash>
#include <QPair>
#include <QString>

namespace interchange {

/// Keys that tell the nodes or the materials of a file from each other: the path of names, with a number behind the
/// later ones of equal siblings ("Car/Wheel[2]"). They stay when the file is written anew, as long as the names do.
///
/// Signs that mean something in a key have a backslash in front of them in names, so different paths give different
/// keys. A path of unreasonable length is replaced by its hash.
class AnswerKeys
{
public:
    /// The key of the next one below a parent. @param parentKey empty for none @param name may be empty
    QString next(const QString &parentKey, const QString &name);

private:
    QHash<QPair<QString, QString>, int> m_counts;
};

} // namespace interchange
