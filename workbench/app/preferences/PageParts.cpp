#include "PageParts.h"

#include <QLabel>

namespace PageParts {

namespace {

/// Wide enough for a sentence in two lines; without a width, a label that wraps makes itself a column.
constexpr int hintWidth = 60;

} // namespace

QLabel *label(const QString &text, QWidget *control)
{
    auto *made = new QLabel(text, control->parentWidget());
    made->setBuddy(control);
    return made;
}

QLabel *hint(const QString &text, QWidget *parent)
{
    auto *made = new QLabel(text, parent);
    made->setTextFormat(Qt::PlainText);
    made->setWordWrap(true);
    made->setMinimumWidth(made->fontMetrics().averageCharWidth() * hintWidth);
    return made;
}

} // namespace PageParts
