#include "EditorState.h"

#include "CellChanges.h"

#include <QLineEdit>
#include <QMetaProperty>
#include <QPlainTextEdit>
#include <QTextEdit>

namespace {

/// The widgets of a class that an editor consists of, itself included, in a fixed order.
template <typename Widget>
QVector<Widget *> partsOf(QWidget *editor)
{
    QVector<Widget *> parts;
    if (auto *whole = qobject_cast<Widget *>(editor))
        parts.append(whole);
    const QList<Widget *> children = editor->findChildren<Widget *>();
    for (Widget *child : children)
        parts.append(child);
    return parts;
}

/// Sets the cursor of a QTextEdit or a QPlainTextEdit as far as its text goes.
template <typename Edit>
void setCursor(Edit *edit, int anchor, int position)
{
    const int end = edit->document()->characterCount() - 1;
    QTextCursor cursor = edit->textCursor();
    cursor.setPosition(qMin(anchor, end));
    cursor.setPosition(qMin(position, end), QTextCursor::KeepAnchor);
    edit->setTextCursor(cursor);
}

void setCursor(QLineEdit *edit, int anchor, int position)
{
    if (anchor == position)
        edit->setCursorPosition(position);
    else
        edit->setSelection(anchor, position - anchor);
}

} // namespace

EditorState::EditorState(const QWidget *editor)
{
    auto *const widget = const_cast<QWidget *>(editor); // parts are found, not changed
    m_value = editor->metaObject()->userProperty().read(editor);
    for (const QLineEdit *edit : partsOf<QLineEdit>(widget)) {
        const int cursor = edit->cursorPosition();
        const int start = edit->selectionStart();
        const bool fromEnd = start == cursor; // the selection was made leftwards
        m_lines.append({edit->text(), cursor, start < 0 ? cursor : (fromEnd ? edit->selectionEnd() : start)});
    }
    for (const QTextEdit *edit : partsOf<QTextEdit>(widget))
        m_documents.append({edit->toPlainText(), edit->textCursor().position(), edit->textCursor().anchor()});
    for (const QPlainTextEdit *edit : partsOf<QPlainTextEdit>(widget))
        m_documents.append({edit->toPlainText(), edit->textCursor().position(), edit->textCursor().anchor()});
}

bool EditorState::hasContentsOf(const EditorState &other) const
{
    const auto sameTexts = [](const QVector<Text> &left, const QVector<Text> &right) {
        return std::equal(left.begin(), left.end(), right.begin(), right.end(),
                          [](const Text &a, const Text &b) { return a.text == b.text; });
    };
    return isSameCellValue(m_value, other.m_value) && sameTexts(m_lines, other.m_lines)
           && sameTexts(m_documents, other.m_documents);
}

void EditorState::applyTo(QWidget *editor) const
{
    const QMetaProperty property = editor->metaObject()->userProperty();
    if (property.isWritable() && m_value.isValid() && !isSameCellValue(property.read(editor), m_value))
        property.write(editor, m_value);
    apply(editor, true);
}

void EditorState::applyCursorTo(QWidget *editor) const
{
    apply(editor, false);
}

void EditorState::apply(QWidget *editor, bool contents) const
{
    const QVector<QLineEdit *> lines = partsOf<QLineEdit>(editor);
    for (int i = 0; i < qMin(lines.size(), m_lines.size()); ++i) {
        if (contents && lines[i]->text() != m_lines[i].text)
            lines[i]->setText(m_lines[i].text);
        setCursor(lines[i], m_lines[i].anchor, m_lines[i].cursor);
    }
    int next = 0;
    const auto applyDocument = [&](auto *edit) {
        if (next >= m_documents.size())
            return;
        const Text &document = m_documents[next++];
        if (contents && edit->toPlainText() != document.text)
            edit->setPlainText(document.text);
        setCursor(edit, document.anchor, document.cursor);
    };
    for (QTextEdit *edit : partsOf<QTextEdit>(editor))
        applyDocument(edit);
    for (QPlainTextEdit *edit : partsOf<QPlainTextEdit>(editor))
        applyDocument(edit);
}
