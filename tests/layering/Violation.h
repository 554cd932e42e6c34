#pragma once

#include <QList>
#include <QString>

/// One place in the sources that breaks a rule of the rooms.
struct Violation
{
    QString file; ///< relative to the root of the project, with slashes
    int line = 0; ///< from 1; 0 where the file as a whole is meant
    QString text; ///< what is wrong, one sentence

    /// "file:line: text", as compilers write it.
    QString toString() const { return QStringLiteral("%1:%2: %3").arg(file, QString::number(line), text); }
};

using Violations = QList<Violation>;
