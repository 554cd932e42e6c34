#pragma once

#include <QVariant>
#include <QVector>

class QWidget;

/// What a person has typed into an editor, with cursor and selection: taken from one editor widget and put
/// into another of the same kind, whatever that is (a line edit, a spin box, a date edit, a text edit, or
/// anything whose value is its user property).
class EditorState
{
public:
    EditorState() = default;
    explicit EditorState(const QWidget *editor);

    /// Whether the contents are the same; cursor and selection do not count.
    bool hasContentsOf(const EditorState &other) const;
    /// Puts contents, cursor and selection into an editor.
    void applyTo(QWidget *editor) const;
    /// Puts cursor and selection into an editor, as far as its text goes.
    void applyCursorTo(QWidget *editor) const;

private:
    struct Text
    {
        QString text;
        int cursor;
        int anchor; // where the selection began; the cursor where there is none
    };

    void apply(QWidget *editor, bool contents) const;

    QVariant m_value; // of the user property
    QVector<Text> m_lines;
    QVector<Text> m_documents;
};
