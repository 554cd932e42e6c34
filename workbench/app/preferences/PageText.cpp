#include "PageText.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QTreeWidget>
#include <QVariant>

namespace {

QStringList listTexts(const QWidget *widget)
{
    QStringList texts;
    if (const auto *combo = qobject_cast<const QComboBox *>(widget)) {
        for (int row = 0; row < combo->count(); ++row) {
            texts.append(combo->itemText(row));
        }
    } else if (const auto *tree = qobject_cast<const QTreeWidget *>(widget)) {
        for (int column = 0; column < tree->columnCount(); ++column) {
            texts.append(tree->headerItem()->text(column));
        }
    }
    return texts;
}

} // namespace

QString pageText(const QWidget *page)
{
    QStringList texts;
    const QList<QWidget *> widgets = page->findChildren<QWidget *>();
    for (const QWidget *widget : widgets) {
        const bool isWording = qobject_cast<const QLabel *>(widget)
                               || qobject_cast<const QAbstractButton *>(widget);
        texts.append(isWording ? widget->property("text").toString() : QString());
        texts.append(widget->property("title").toString());
        texts.append(widget->toolTip());
        texts.append(listTexts(widget));
    }
    return texts.join(QLatin1Char('\n')).remove(QLatin1Char('&'));
}
