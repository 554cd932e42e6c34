#pragma once

#include <QSet>
#include <QString>
#include <QStringList>

class QWidget;

/// The texts that a person can read in the program: of menus, buttons, labels, titles, fields and lists of choices.
///
/// Kept without the signs that are not seen: mnemonics, the key behind a tabulator, the mark of an unsaved window.
class ProgramTexts
{
public:
    /// Adds the texts of all widgets that there are now, seen or not.
    void collect();
    /// Sorted, each once.
    QStringList all() const;

private:
    void add(const QString &text);
    void addWidget(const QWidget *widget);
    void addChoices(const QWidget *widget);

    QSet<QString> m_texts;
};
