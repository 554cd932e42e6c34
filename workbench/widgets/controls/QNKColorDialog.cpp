#include "nkQt4Ext/QNKColorDialog.h"

#include "ColorField.h"
#include "ColorSwatch.h"
#include "HsvColor.h"
#include "HueStrip.h"
#include "RecentColors.h"
#include "nkQt4Ext/QNKSpiner.h"

#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QRegularExpressionValidator>
#include <QSignalBlocker>
#include <QVBoxLayout>

struct QNKColorDialog::Private
{
    QNKColorDialog *q = nullptr;
    QNKColor color;
    QNKColor previous;
    HsvColor hsv;

    ColorField *field = nullptr;
    HueStrip *strip = nullptr;
    ColorSwatch *presentSwatch = nullptr;
    ColorSwatch *previousSwatch = nullptr;
    QNKSpiner *red = nullptr;
    QNKSpiner *green = nullptr;
    QNKSpiner *blue = nullptr;
    QLineEdit *hex = nullptr;
    RecentColors *recent = nullptr;

    QNKSpiner *makeSpiner(const QString &name);
    void makeFields();
    void makeSwatches();
    void connectAll();
    QLayout *layOutSwatches() const;
    QLayout *layOutFields() const;
    void showColor();
    void choose(const QColor &chosen);
    void chooseHsv(const HsvColor &chosen);
    void restore();
};

namespace {

void setGamma(QNKColor &color, const QColor &screen)
{
    color.setGammaRGB(float(screen.redF()), float(screen.greenF()), float(screen.blueF()));
}

constexpr int longHexDigits = 6;

/// "#rrggbb" or "#rgb", with or without the hash.
QColor colorFromHex(QString text)
{
    if (!text.startsWith(QLatin1Char('#')))
        text.prepend(QLatin1Char('#'));
    return text.size() == 4 || text.size() == 7 ? QColor(text) : QColor();
}

} // namespace

QNKSpiner *QNKColorDialog::Private::makeSpiner(const QString &name)
{
    auto *spiner = new QNKSpiner(q);
    spiner->setRange(0, 255);
    spiner->setAccessibleName(name);
    return spiner;
}

void QNKColorDialog::Private::makeFields()
{
    field = new ColorField(q);
    strip = new HueStrip(q);
    red = makeSpiner(tr("Red"));
    green = makeSpiner(tr("Green"));
    blue = makeSpiner(tr("Blue"));
    hex = new QLineEdit(q);
    hex->setAccessibleName(tr("Hexadecimal"));
    hex->setMinimumWidth(hex->fontMetrics().horizontalAdvance(QStringLiteral("#00000000")) + 12);
    const QRegularExpression pattern(QStringLiteral("#?[0-9A-Fa-f]{0,6}"));
    hex->setValidator(new QRegularExpressionValidator(pattern, hex));
    recent = new RecentColors(q);
}

void QNKColorDialog::Private::makeSwatches()
{
    presentSwatch = new ColorSwatch(q);
    presentSwatch->setFocusPolicy(Qt::NoFocus);
    presentSwatch->setAttribute(Qt::WA_TransparentForMouseEvents);
    presentSwatch->setAccessibleName(tr("New colour"));
    previousSwatch = new ColorSwatch(q);
    previousSwatch->setAccessibleName(tr("Previous colour"));
    for (ColorSwatch *swatch : {presentSwatch, previousSwatch})
        swatch->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

void QNKColorDialog::Private::connectAll()
{
    connect(field, &ColorField::moved, q, [this](const HsvColor &moved) { chooseHsv(moved); });
    connect(strip, &HueStrip::moved, q, [this](double hue) {
        HsvColor moved = hsv;
        moved.hue = hue;
        chooseHsv(moved);
    });
    for (QNKSpiner *spiner : {red, green, blue}) {
        connect(spiner, QOverload<int>::of(&QSpinBox::valueChanged), q,
                [this] { choose(QColor(red->value(), green->value(), blue->value())); });
    }
    connect(hex, &QLineEdit::textEdited, q, [this](const QString &text) {
        // Three digits may be the first half of six, so the short form waits for the end.
        const QColor typed = colorFromHex(text);
        if (typed.isValid() && text.size() >= longHexDigits)
            choose(typed);
    });
    connect(hex, &QLineEdit::editingFinished, q, [this] {
        const QColor typed = colorFromHex(hex->text());
        if (typed.isValid())
            choose(typed);
        hex->setText(color.getGammaQColor().name());
    });
    connect(previousSwatch, &ColorSwatch::clicked, q, [this] { restore(); });
    connect(recent, &RecentColors::picked, q, [this](const QColor &picked) { choose(picked); });
}

QLayout *QNKColorDialog::Private::layOutSwatches() const
{
    auto *pair = new QGridLayout;
    pair->setSpacing(2);
    pair->addWidget(new QLabel(tr("New"), q), 0, 0);
    pair->addWidget(new QLabel(tr("Previous"), q), 0, 1);
    pair->addWidget(presentSwatch, 1, 0);
    pair->addWidget(previousSwatch, 1, 1);
    return pair;
}

QLayout *QNKColorDialog::Private::layOutFields() const
{
    auto *form = new QFormLayout;
    form->addRow(tr("&Red:"), red);
    form->addRow(tr("&Green:"), green);
    form->addRow(tr("&Blue:"), blue);
    form->addRow(tr("He&x:"), hex);
    return form;
}

/// Writes the present colour into every field but the one a person is typing in.
void QNKColorDialog::Private::showColor()
{
    const QColor screen = color.getGammaQColor();
    const QSignalBlocker blockRed(red);
    const QSignalBlocker blockGreen(green);
    const QSignalBlocker blockBlue(blue);
    field->setColor(hsv);
    strip->setHue(hsv.hue);
    red->setValue(screen.red());
    green->setValue(screen.green());
    blue->setValue(screen.blue());
    if (!hex->hasFocus() || colorFromHex(hex->text()) != screen)
        hex->setText(screen.name());
    presentSwatch->setColor(screen);
}

void QNKColorDialog::Private::choose(const QColor &chosen)
{
    hsv.take(chosen);
    if (chosen != color.getGammaQColor()) {
        setGamma(color, chosen);
        Q_EMIT q->colorChanged();
    }
    showColor();
}

void QNKColorDialog::Private::chooseHsv(const HsvColor &chosen)
{
    hsv = chosen;
    const QColor screen = chosen.color();
    if (screen != color.getGammaQColor()) {
        setGamma(color, screen);
        Q_EMIT q->colorChanged();
    }
    showColor();
}

void QNKColorDialog::Private::restore()
{
    const bool changed = !(color == previous);
    color = previous;
    hsv.take(color.getGammaQColor());
    showColor();
    if (changed)
        Q_EMIT q->colorChanged();
}

QNKColorDialog::QNKColorDialog(QWidget *parent) : QDialog(parent), d(std::make_unique<Private>())
{
    d->q = this;
    setWindowTitle(tr("Colour"));
    d->makeFields();
    d->makeSwatches();
    auto *buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);

    auto *side = new QVBoxLayout;
    side->addLayout(d->layOutSwatches());
    side->addLayout(d->layOutFields());
    side->addStretch();
    auto *top = new QHBoxLayout;
    top->addWidget(d->field, 1);
    top->addWidget(d->strip);
    top->addLayout(side);
    auto *column = new QVBoxLayout(this);
    column->addLayout(top, 1);
    column->addWidget(new QLabel(tr("Recent colours"), this));
    column->addWidget(d->recent);
    column->addWidget(buttons);

    d->connectAll();
    connect(buttons, &QDialogButtonBox::accepted, this, &QNKColorDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QNKColorDialog::reject);
    reinit(QNKColor());
    d->field->setFocus();
}

QNKColorDialog::~QNKColorDialog() = default;

QNKColor QNKColorDialog::getColor() const
{
    return d->color;
}

void QNKColorDialog::reinit(const QNKColor &color)
{
    d->color = color;
    d->previous = color;
    d->hsv.take(color.getGammaQColor());
    d->previousSwatch->setColor(color.getGammaQColor());
    d->recent->refresh();
    d->showColor();
}

void QNKColorDialog::accept()
{
    RecentColors::remember(d->color.getGammaQColor());
    QDialog::accept();
}

void QNKColorDialog::reject()
{
    // As the editor of a cell the dialog is read when it closes, however it closes.
    d->restore();
    QDialog::reject();
}
