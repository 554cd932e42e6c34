#pragma once

#include <QByteArray>
#include <QString>
#include <QVector>

/// One include of a source file or a form.
struct Include
{
    int line = 0;        ///< from 1
    QString name;        ///< as written between the quotes or brackets
    bool angled = false; ///< <name> instead of "name"
};

/// Finds what a file includes: the include lines of C++ sources, in branches that are not compiled too, and the
/// headers of promoted widgets in forms.
namespace IncludeReader {

/// The includes of a C++ source in their order; those in comments are none.
QVector<Include> ofSource(const QByteArray &text);

/// The headers that the code made of a Qt Designer form includes.
QVector<Include> ofForm(const QByteArray &text);

} // namespace IncludeReader
