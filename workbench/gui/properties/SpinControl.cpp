#include "SpinControl.h"

#include <QAbstractSpinBox>
#include <QLineEdit>

SpinControl::SpinControl(const QString &property, QWidget *parent) : PropertyControl(property, parent) {}

SpinControl::~SpinControl() = default;

void SpinControl::setSpinBox(QAbstractSpinBox *box)
{
    m_box = box;
    // A value is told when it is whole, not after each digit.
    box->setKeyboardTracking(false);
    setEditor(box);
    connect(box->findChild<QLineEdit *>(), &QLineEdit::textEdited, this, [this] { touch(); });
    connect(box, &QAbstractSpinBox::editingFinished, this, &SpinControl::commit);
}

void SpinControl::onChanged()
{
    touchAndCommit();
}

void SpinControl::beginEditing(const QString &typed)
{
    m_box->selectAll();
    if (!typed.isEmpty()) {
        m_box->findChild<QLineEdit *>()->insert(typed);
        touch();
    }
}
