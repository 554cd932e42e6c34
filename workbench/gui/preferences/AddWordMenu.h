#pragma once

#include <QObject>
#include <QString>

#include <functional>

class QLineEdit;
class QPoint;

/// Adds to the context menu of a line edit the entry that puts the edit's text into a string library. The entry
/// is there only where a library would take the text.
class AddWordMenu : public QObject
{
    Q_OBJECT
public:
    using LibraryFor = std::function<QString(const QString &word)>;
    using Add = std::function<void(const QString &word)>;

    /// @param edit owns it. @param libraryFor the name of the library that would take a word, empty for none
    AddWordMenu(QLineEdit *edit, const LibraryFor &libraryFor, const Add &add);

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    bool show(const QPoint &place);

    QLineEdit *const m_edit;
    const LibraryFor m_libraryFor;
    const Add m_add;
};
