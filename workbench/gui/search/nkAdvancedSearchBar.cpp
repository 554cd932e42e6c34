#include <nkKernelServicesGUI/nkAdvancedSearchBar.h>

#include "gui/dialogs/ValueText.h"

#include <nkKernelServices/nkQueryService.h>

#include <QCoreApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QSignalBlocker>
#include <QStyle>
#include <QToolButton>

namespace {

// How long a person pauses before what was typed is searched: milliseconds.
constexpr int livePause = 300;

QString text(const char *source)
{
    return QCoreApplication::translate("Metadata", source);
}

} // namespace

nkAdvancedSearchBar::nkAdvancedSearchBar(QWidget *parent)
    : QWidget(parent),
      m_lineEdit(new QLineEdit(this)),
      m_switch(new QToolButton(this)),
      m_stateIcon(new QLabel(this)),
      m_stateLabel(new QLabel(this))
{
    setUpField();
    setUpSwitch();
    setUpState();
    QHBoxLayout *row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->addWidget(m_switch);
    row->addWidget(m_lineEdit, 3);
    row->addWidget(m_stateIcon);
    row->addWidget(m_stateLabel, 2);
    setFocusProxy(m_lineEdit);
    showState();
}

nkAdvancedSearchBar::~nkAdvancedSearchBar() = default;

void nkAdvancedSearchBar::setUpField()
{
    m_lineEdit->setClearButtonEnabled(true);
    m_lineEdit->setPlaceholderText(text("Search keys, values and sets"));
    m_lineEdit->setAccessibleName(text("Advanced search"));
    m_pause.setSingleShot(true);
    m_pause.setInterval(livePause);
    connect(&m_pause, &QTimer::timeout, this, &nkAdvancedSearchBar::search);
    connect(m_lineEdit, &QLineEdit::textEdited, this, &nkAdvancedSearchBar::onTextEdited);
    connect(m_lineEdit, &QLineEdit::returnPressed, this, &nkAdvancedSearchBar::onReturnPressed);
}

void nkAdvancedSearchBar::setUpSwitch()
{
    m_switch->setObjectName(QStringLiteral("SearchSwitch"));
    m_switch->setCheckable(true);
    m_switch->setChecked(true);
    m_switch->setAutoRaise(true);
    m_switch->setFocusPolicy(Qt::StrongFocus);
    m_switch->setIcon(style()->standardIcon(QStyle::SP_FileDialogContentsView, nullptr, this));
    m_switch->setToolTip(text("Switches the advanced search on and off."));
    m_switch->setAccessibleName(text("Advanced search on"));
    connect(m_switch, &QToolButton::toggled, this, &nkAdvancedSearchBar::search);
}

void nkAdvancedSearchBar::setUpState()
{
    m_stateLabel->setTextFormat(Qt::PlainText);
    m_stateLabel->setObjectName(QStringLiteral("SearchState"));
    m_stateLabel->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
}

// An emptied field ends the search at once; anything else waits for a pause.
void nkAdvancedSearchBar::onTextEdited()
{
    if (m_lineEdit->text().trimmed().isEmpty()) {
        search();
    } else if (m_switch->isChecked()) {
        m_pause.start();
    }
}

// Who asks for a search wants it on, and once.
void nkAdvancedSearchBar::onReturnPressed()
{
    {
        const QSignalBlocker silence(m_switch);
        m_switch->setChecked(true);
    }
    search();
}

void nkAdvancedSearchBar::search()
{
    m_pause.stop();
    const QString query = m_lineEdit->text();
    if (m_switch->isChecked() && !query.trimmed().isEmpty()) {
        tell(true, query);
    } else if (m_told) {
        setState(Idle);
        tell(false, QString());
    }
}

void nkAdvancedSearchBar::tell(bool enabled, const QString &query)
{
    m_told = enabled;
    Q_EMIT searchChanged(enabled, query);
}

void nkAdvancedSearchBar::setState(int state)
{
    if (state < Idle || state > Running) {
        return;
    }
    m_state = state;
    showState();
}

void nkAdvancedSearchBar::showState()
{
    struct Look
    {
        QStyle::StandardPixmap icon;
        QString words;
    };
    const Look looks[] = {
        {QStyle::SP_CustomBase, QString()},
        {QStyle::SP_DialogApplyButton, text("Found")},
        {QStyle::SP_MessageBoxWarning, m_state == Failed ? nkQueryService::the().getQueryError() : QString()},
        {QStyle::SP_BrowserReload, text("Searching\u2026")},
    };
    const Look &look = looks[m_state];
    const int side = style()->pixelMetric(QStyle::PM_SmallIconSize, nullptr, this);
    m_stateIcon->setPixmap(m_state == Idle ? QPixmap()
                                           : style()->standardIcon(look.icon, nullptr, this).pixmap(side));
    const QString words = m_state == Failed && look.words.isEmpty() ? text("The search failed") : look.words;
    m_stateLabel->setText(ValueText::oneLine(words));
    m_stateLabel->setToolTip(words.isEmpty() ? QString() : ValueText::literal(words));
    m_stateIcon->setVisible(m_state != Idle);
    // An idle bar leaves its whole width to the field.
    m_stateLabel->setVisible(m_state != Idle);
}
