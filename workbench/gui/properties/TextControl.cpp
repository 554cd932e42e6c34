#include "TextControl.h"

#include "gui/dialogs/ValueText.h"

#include <nkKernelServicesGUI/nkMetadataGUIUtils.h>
#include <nkQt4Ext/QNKStringCompleterLineEdit.h>

TextControl::TextControl(const QString &property, QWidget *parent)
    : PropertyControl(property, parent), m_edit(nkMetadataGUIUtils::createMetadataLineEdit(this))
{
    setEditor(m_edit);
    connect(m_edit, &QLineEdit::textEdited, this, [this] { touch(); });
    connect(m_edit, &QLineEdit::editingFinished, this, &TextControl::commit);
}

TextControl::~TextControl() = default;

void TextControl::showValue(const QVariant &value)
{
    const QString text = ValueText::of(value);
    // Writing the same text again would move the cursor.
    if (m_edit->text() != text) {
        m_edit->setText(text);
        m_edit->setCursorPosition(0);
    }
}

QVariant TextControl::editedValue() const
{
    return m_edit->text();
}

void TextControl::beginEditing(const QString &typed)
{
    m_edit->selectAll();
    if (!typed.isEmpty()) {
        m_edit->insert(typed);
        touch();
    }
}
