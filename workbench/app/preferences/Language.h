#pragma once

#include <QString>
#include <QStringList>

/// The language of all texts. English is in the program; every other is a file "workbench_CODE.qm" in the folder
/// "translations" beside the executable.
namespace Language {

/// The codes of the languages that there are, English first.
QStringList codes();
/// What a language calls itself.
QString nameOf(const QString &code);
/// Puts the language that a person has chosen into effect, with its way to write numbers and dates: at the start,
/// before the first text is made. Where nothing was chosen, or what is not there, texts follow the system as far
/// as there is a translation. Needs an application object.
void install();

} // namespace Language
