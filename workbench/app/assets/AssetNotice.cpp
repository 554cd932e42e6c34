#include "AssetNotice.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

AssetNotice::AssetNotice(QWidget *parent)
    : QWidget(parent),
      m_text(new QLabel(this)),
      m_retry(new QPushButton(tr("&Try Again"), this)),
      m_password(new QPushButton(tr("Enter Pass&word..."), this))
{
    m_text->setTextFormat(Qt::PlainText);
    m_text->setWordWrap(true);
    m_text->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    m_text->setAccessibleName(tr("State of the asset database"));
    m_retry->setAccessibleName(tr("Read the asset database again"));
    m_password->setAccessibleName(tr("Enter the password of the asset database"));
    auto *buttons = new QHBoxLayout;
    buttons->addWidget(m_retry);
    buttons->addWidget(m_password);
    buttons->addStretch();
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(0, 4, 0, 4);
    column->addWidget(m_text);
    column->addLayout(buttons);
    hide();
}

void AssetNotice::say(const QString &text, bool canRetry, bool wantsPassword)
{
    m_text->setText(text);
    m_retry->setVisible(canRetry);
    m_password->setVisible(wantsPassword);
    setVisible(!text.isEmpty());
}

QString AssetNotice::text() const
{
    return m_text->text();
}
