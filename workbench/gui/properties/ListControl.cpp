#include "ListControl.h"

#include "SharedValue.h"
#include "gui/dialogs/ValueText.h"

#include <nkKernelServicesGUI/nkMetadataVariantDelegate.h>
#include <nkQt4Ext/QNKVariantListWidget.h>

#include <QCoreApplication>
#include <QPushButton>

namespace {

constexpr int longestText = 60;  // characters on the button
constexpr int popupHeight = 160; // device-independent pixels

} // namespace

ListControl::ListControl(const QString &property, QWidget *parent)
    : PropertyControl(property, parent), m_button(new QPushButton(this))
{
    m_button->setAutoDefault(false);
    setEditor(m_button);
    connect(m_button, &QPushButton::clicked, this, &ListControl::openList);
}

ListControl::~ListControl() = default;

void ListControl::showValue(const QVariant &value)
{
    m_list = value.toList();
    showText();
}

void ListControl::showText()
{
    const QString text = ValueText::oneLine(ValueText::of(QVariant(m_list)));
    QString shown = text.size() > longestText ? QString(text.left(longestText) + QChar(0x2026)) : text;
    // An ampersand would underline the letter behind it.
    shown.replace(QLatin1Char('&'), QLatin1String("&&"));
    m_button->setText(shown.isEmpty() ? QCoreApplication::translate("Metadata", "(empty)") : shown);
    m_button->setToolTip(ValueText::literal(text));
}

QVariant ListControl::editedValue() const
{
    return m_list;
}

void ListControl::beginEditing(const QString &)
{
    openList();
}

void ListControl::openList()
{
    QNKVariantListWidget *popup = new QNKVariantListWidget(this, Qt::Popup);
    popup->setAttribute(Qt::WA_DeleteOnClose);
    popup->setItemDelegate(new nkMetadataVariantDelegate(popup));
    popup->setValues(m_list);
    m_popup = popup;
    // Its list belongs to the objects that are shown now.
    touch();
    connect(popup, &QNKVariantListWidget::finished, this, [this, popup](bool commit) {
        const QVariantList values = popup->values();
        // Once is enough: closing a pop-up ends it, too.
        popup->disconnect(this);
        m_popup.clear();
        popup->close();
        take(values, commit);
    });
    popup->resize(m_button->width(), popupHeight);
    popup->move(m_button->mapToGlobal(QPoint(0, m_button->height())));
    popup->show();
}

void ListControl::completeEditing()
{
    if (m_popup) {
        m_popup->close();
    }
}

void ListControl::take(const QVariantList &values, bool commit)
{
    if (commit && !SharedValue::same(values, m_list)) {
        m_list = values;
        touchAndCommit();
    } else {
        giveUp();
    }
}
