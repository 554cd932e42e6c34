#include "AssetsPreferences.h"

#include "PageParts.h"

#include "assets/AssetDatabase.h"

#include <nkKernelServices/nkLogService.h>
#include <nkKernelServices/nkPreferencesService.h>

#include <QCoreApplication>
#include <QFormLayout>
#include <QGuiApplication>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QRegularExpression>
#include <QUrl>
#include <QVBoxLayout>

using interchange::AssetAddress;

namespace {

/// Without what may be a password, also where the URL is none: somebody may have written it by hand.
QString shownAs(const QString &url)
{
    static const QRegularExpression userAndPassword(QStringLiteral("^([^/]*//[^:/]*):.*@"));
    static const QRegularExpression option(QStringLiteral("([?&])password=[^&]*"));
    return QString(url)
        .replace(userAndPassword, QStringLiteral("\\1@"))
        .replace(option, QStringLiteral("\\1"));
}

} // namespace

AssetsPreferences::AssetsPreferences(QWidget *parent)
    : QWidget(parent),
      nkPreferencesCategory(QCoreApplication::translate("AssetsPreferences", "Assets")),
      m_own(new QRadioButton(tr("A &file of your own (SQLite)"), this)),
      m_server(new QRadioButton(tr("A &server that people share (PostgreSQL)"), this)),
      m_url(new QLineEdit(this)),
      m_password(new QLineEdit(this)),
      m_test(new QPushButton(tr("&Test Connection"), this)),
      m_result(PageParts::hint(QString(), this)),
      m_state(PageParts::hint(QString(), this))
{
    auto *form = new QFormLayout(this);
    form->setContentsMargins(0, 0, 0, 0);
    addKinds(form);
    addServer(form);
    addTest(form);
    registerCategory();
}

AssetsPreferences::~AssetsPreferences() = default;

void AssetsPreferences::addKinds(QFormLayout *form)
{
    auto *kinds = new QVBoxLayout;
    kinds->addWidget(m_own);
    kinds->addWidget(m_server);
    form->addRow(tr("Assets are kept in:"), kinds);
    connect(m_server, &QRadioButton::toggled, this, &AssetsPreferences::showKind);
}

void AssetsPreferences::addServer(QFormLayout *form)
{
    m_url->setPlaceholderText(QStringLiteral("postgresql://user@host:5432/database"));
    m_url->setAccessibleName(tr("Connection URL"));
    connect(m_url, &QLineEdit::textEdited, this, &AssetsPreferences::urlEdited);
    connect(m_url, &QLineEdit::editingFinished, this, &AssetsPreferences::takePassword);
    form->addRow(PageParts::label(tr("Connection &URL:"), m_url), m_url);
    m_password->setEchoMode(QLineEdit::Password);
    m_password->setAccessibleName(tr("Password"));
    m_password->setPlaceholderText(tr("As before, or from the password file"));
    form->addRow(PageParts::label(tr("&Password:"), m_password), m_password);
    form->addRow(
        QString(),
        PageParts::hint(tr("The password is kept until the workbench ends and written nowhere."), this));
}

void AssetsPreferences::addTest(QFormLayout *form)
{
    m_test->setToolTip(tr("Ask the database that is named above whether it can be used."));
    connect(m_test, &QPushButton::clicked, this, &AssetsPreferences::test);
    m_result->setAccessibleName(tr("Answer of the asset database"));
    form->addRow(QString(), m_test);
    m_test->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    form->addRow(QString(), m_result);
    m_state->setAccessibleName(tr("Asset database in use"));
    form->addRow(tr("In use now:"), m_state);
    for (QLabel *text : {m_result, m_state}) {
        text->setTextInteractionFlags(Qt::TextSelectableByMouse);
    }
}

void AssetsPreferences::setDefaults(bool overwrite)
{
    nkPreferencesService::the().setStringListValue(AssetDatabase::preferenceKey(), {}, overwrite);
}

void AssetsPreferences::loadToPage()
{
    const QString url = AssetDatabase::url();
    m_url->setText(shownAs(url));
    m_urlLength = m_url->text().size();
    m_password->clear();
    (url.isEmpty() ? m_own : m_server)->setChecked(true);
    m_loadedUrl = shownUrl();
    showKind();
    showState();
}

void AssetsPreferences::storeFromPage()
{
    takePassword();
    if (shownUrl() == m_loadedUrl && m_password->text().isEmpty()
        && m_server->isChecked() != AssetDatabase::url().isEmpty()) {
        return;
    }
    QString error;
    if (!shownAddress(&error).isValid()) {
        nkLogService::the().reportError(tr("Asset Manager"), error);
        return;
    }
    const QString url = shownUrl();
    AssetDatabase *database = AssetDatabase::current();
    if (database && m_server->isChecked() && !m_password->text().isEmpty()) {
        database->connectTo(url, m_password->text());
        m_password->clear();
    } else if (url != AssetDatabase::url()) {
        nkPreferencesService::the().setStringListValue(
            AssetDatabase::preferenceKey(), url.isEmpty() ? QStringList() : QStringList{url}, true);
    }
    m_loadedUrl = url;
}

void AssetsPreferences::apply()
{
    showState();
}

/// What is pasted is looked at as a whole; what is typed, when the part before the host is complete.
void AssetsPreferences::urlEdited(const QString &text)
{
    const bool isPasted = qAbs(text.size() - m_urlLength) > 1;
    m_urlLength = text.size();
    if (isPasted || !QUrl(text).password().isEmpty()) {
        takePassword();
    }
}

void AssetsPreferences::takePassword()
{
    QString error;
    const AssetAddress address = AssetAddress::ofUrl(m_url->text(), &error);
    if (address.hasPassword()) {
        m_password->setText(address.password());
        m_url->setText(address.urlWithoutPassword());
        m_urlLength = m_url->text().size();
    }
}

void AssetsPreferences::showKind()
{
    m_url->setEnabled(m_server->isChecked());
    m_password->setEnabled(m_server->isChecked());
    m_result->clear();
    m_result->hide();
}

void AssetsPreferences::showState()
{
    const kernel::AssetStore *store = kernel::AssetStore::installed();
    const AssetDatabase *database = AssetDatabase::current();
    const QString error = database ? database->error() : QString();
    m_state->setText(store ? store->place() : error.isEmpty() ? tr("No database") : error);
}

void AssetsPreferences::test()
{
    takePassword();
    QString told;
    const AssetAddress address = shownAddress(&told);
    if (address.isValid()) {
        QGuiApplication::setOverrideCursor(Qt::WaitCursor);
        AssetDatabase::test(address, &told);
        QGuiApplication::restoreOverrideCursor();
    }
    m_result->setText(told);
    m_result->show();
}

/// Empty for the file.
QString AssetsPreferences::shownUrl() const
{
    return m_server->isChecked() ? m_url->text().trimmed() : QString();
}

AssetAddress AssetsPreferences::shownAddress(QString *error) const
{
    const QString url = shownUrl();
    const AssetDatabase *database = AssetDatabase::current();
    if (m_server->isChecked()) {
        AssetAddress address = database && !url.isEmpty() ? database->addressOf(url, error)
                                                          : AssetAddress::ofUrl(url, error);
        if (!m_password->text().isEmpty()) {
            address.setPassword(m_password->text());
        }
        return address;
    }
    return AssetDatabase::ownAddress();
}
