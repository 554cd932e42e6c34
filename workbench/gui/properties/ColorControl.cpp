#include "ColorControl.h"

#include <nkQt4Ext/QNKColorDialog.h>

#include <QPushButton>

namespace {

constexpr QSize swatch(32, 12); // device-independent pixels

QNKColor toHostColor(const QColor &color)
{
    QNKColor hostColor;
    hostColor.setGammaRGB(float(color.redF()), float(color.greenF()), float(color.blueF()));
    return hostColor;
}

} // namespace

ColorControl::ColorControl(const QString &property, QWidget *parent)
    : PropertyControl(property, parent), m_button(new QPushButton(this))
{
    m_button->setAutoDefault(false);
    m_button->setIconSize(swatch);
    setEditor(m_button);
    connect(m_button, &QPushButton::clicked, this, &ColorControl::openDialog);
}

ColorControl::~ColorControl() = default;

void ColorControl::showValue(const QVariant &value)
{
    m_color = value.value<QColor>();
    showColor();
}

void ColorControl::showColor()
{
    QPixmap pixmap(swatch);
    pixmap.fill(m_color);
    m_button->setIcon(m_color.isValid() ? QIcon(pixmap) : QIcon());
    m_button->setText(m_color.isValid() ? m_color.name() : QString());
}

QVariant ColorControl::editedValue() const
{
    return m_color;
}

void ColorControl::beginEditing(const QString &)
{
    openDialog();
}

void ColorControl::completeEditing()
{
    if (m_dialog) {
        giveUp();
        m_dialog->reject();
    }
}

// The panel may go while the dialog is open, and with it this control and the dialog; or it may be given other
// objects, to which the chosen colour does not belong.
void ColorControl::openDialog()
{
    const QPointer<ColorControl> alive(this);
    const QPointer<QNKColorDialog> dialog(new QNKColorDialog(this));
    m_dialog = dialog;
    dialog->reinit(toHostColor(m_color));
    touch();
    const bool accepted = dialog->exec() == QDialog::Accepted;
    if (!alive || !dialog) {
        return;
    }
    const QColor chosen = dialog->getColor().getGammaQColor();
    delete dialog;
    if (!isPending()) {
        return;
    }
    if (accepted && chosen != m_color) {
        m_color = chosen;
        touchAndCommit();
    } else {
        giveUp();
    }
}
