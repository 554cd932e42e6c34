#include "nkQt4Ext/QNKCollapsibleFrame.h"

#include <QToolButton>
#include <QVBoxLayout>

QNKCollapsibleFrame::QNKCollapsibleFrame(QWidget *parent) : QFrame(parent), m_button(new QToolButton(this))
{
    m_button->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    m_button->setArrowType(Qt::DownArrow);
    m_button->setAutoRaise(true);
    m_button->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    m_button->setFocusPolicy(Qt::StrongFocus);
    m_button->setAccessibleName(tr("Section"));
    m_button->setAccessibleDescription(tr("Expanded"));

    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(m_button);
    connect(m_button, &QToolButton::clicked, this, [this] { setExpanded(!m_expanded); });
}

QNKCollapsibleFrame::~QNKCollapsibleFrame() = default;

QString QNKCollapsibleFrame::title() const
{
    return m_title;
}

void QNKCollapsibleFrame::setTitle(const QString &title)
{
    m_title = title;
    // The title may be a name out of a file, in which an ampersand is a letter.
    m_button->setText(QString(title).replace(QLatin1Char('&'), QLatin1String("&&")));
    m_button->setAccessibleName(title.isEmpty() ? tr("Section") : title);
}

void QNKCollapsibleFrame::setExpanded(bool expanded)
{
    if (expanded == m_expanded)
        return;
    m_expanded = expanded;
    m_button->setArrowType(expanded ? Qt::DownArrow : Qt::RightArrow);
    m_button->setAccessibleDescription(expanded ? tr("Expanded") : tr("Collapsed"));
    if (m_content)
        m_content->setVisible(expanded);
    Q_EMIT expandedChanged(expanded);
}

void QNKCollapsibleFrame::setWidget(QWidget *content)
{
    if (content == m_content)
        return;
    delete m_content;
    m_content = content;
    if (!content)
        return;
    layout()->addWidget(content);
    content->setVisible(m_expanded);
}
