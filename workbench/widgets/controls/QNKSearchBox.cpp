#include "nkQt4Ext/QNKSearchBox.h"

#include "GlyphIcon.h"
#include "SearchLineEdit.h"
#include "nkQt4Ext/QNKInlineButton.h"

#include <QHBoxLayout>
#include <QResizeEvent>

QNKSearchBox::QNKSearchBox(QWidget *parent)
    : QWidget(parent), m_lineEdit(new SearchLineEdit(this)), m_switch(new QNKInlineButton(this))
{
    m_switch->setTerminated(true);
    m_switch->setIcon(GlyphIcon::make(GlyphIcon::Sign::Search));
    m_switch->setChecked(true);
    m_switch->setToolTip(tr("Search on or off"));
    m_switch->setAccessibleName(tr("Search on or off"));

    auto *row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(0);
    row->addWidget(m_lineEdit, 1);
    row->addWidget(m_switch);

    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    setFocusProxy(m_lineEdit);
    connect(m_lineEdit, &QLineEdit::textChanged, this, &QNKSearchBox::tell);
    connect(m_switch, &QNKInlineButton::toggled, this, &QNKSearchBox::setSearchEnabled);
}

QNKSearchBox::~QNKSearchBox() = default;

QString QNKSearchBox::text() const
{
    return m_lineEdit->text();
}

void QNKSearchBox::setPlaceholderText(const QString &text)
{
    m_lineEdit->setPlaceholderText(text);
}

bool QNKSearchBox::isSearchEnabled() const
{
    return m_enabled;
}

void QNKSearchBox::setSearchEnabled(bool enabled)
{
    if (enabled == m_enabled)
        return;
    m_enabled = enabled;
    m_switch->setChecked(enabled);
    if (enabled) {
        tell();
        return;
    }
    // Who hears this searches for nothing from now on, which is what the next text is compared with.
    m_told.clear();
    Q_EMIT searchDisabled();
}

void QNKSearchBox::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    // In a column too narrow for both, the field is what people need.
    m_switch->setVisible(event->size().width() >= 2 * m_switch->sizeHint().width() + m_lineEdit->height());
}

void QNKSearchBox::tell()
{
    const QString present = text();
    if (!m_enabled || present == m_told)
        return;
    m_told = present;
    Q_EMIT searchChanged(present);
}
