#include "FilesPreferences.h"

#include "Options.h"
#include "PageParts.h"

#include "files/RecentFiles.h"

#include <QCheckBox>
#include <QCoreApplication>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSpinBox>

FilesPreferences::FilesPreferences(QWidget *parent)
    : QWidget(parent),
      nkPreferencesCategory(QCoreApplication::translate("FilesPreferences", "Files")),
      m_recent(new QSpinBox(this)),
      m_clear(new QPushButton(tr("&Clear Recent Files"), this)),
      m_clearNote(PageParts::hint(QString(), this)),
      m_backup(new QCheckBox(tr("Keep a &backup copy of a file that is overwritten"), this)),
      m_folder(new QLineEdit(this)),
      m_folderNote(PageParts::hint(tr("There is no such folder; the documents folder is used."), this))
{
    auto *form = new QFormLayout(this);
    form->setContentsMargins(0, 0, 0, 0);
    addRecent(form);
    addBackup(form);
    addFolder(form);
    registerCategory();
}

FilesPreferences::~FilesPreferences() = default;

void FilesPreferences::addRecent(QFormLayout *form)
{
    m_recent->setRange(Options::recentFiles.lowest, Options::recentFiles.highest);
    m_recent->setAccessibleName(tr("Number of recent files kept"));
    connect(m_clear, &QPushButton::clicked, this, [this] { askToClear(true); });
    auto *row = new QHBoxLayout;
    row->addWidget(m_recent);
    row->addWidget(m_clear);
    row->addStretch(1);
    form->addRow(PageParts::label(tr("&Recent files kept:"), m_recent), row);
    form->addRow(QString(), m_clearNote);
}

void FilesPreferences::addBackup(QFormLayout *form)
{
    form->addRow(tr("Backup:"), m_backup);
    form->addRow(QString(), PageParts::hint(tr("The file as it was before the save stands beside it, with a "
                                               "“~” behind its name."),
                                            this));
}

void FilesPreferences::addFolder(QFormLayout *form)
{
    m_folder->setPlaceholderText(tr("Documents folder"));
    m_folder->setAccessibleName(tr("Default folder"));
    m_folder->setToolTip(tr("Where file dialogs begin while no scene of yours is open."));
    auto *choose = new QPushButton(tr("Br&owse..."), this);
    choose->setAccessibleName(tr("Choose the default folder"));
    connect(choose, &QPushButton::clicked, this, &FilesPreferences::browse);
    connect(m_folder, &QLineEdit::textChanged, this, &FilesPreferences::checkFolder);
    auto *row = new QHBoxLayout;
    row->addWidget(m_folder, 1);
    row->addWidget(choose);
    form->addRow(PageParts::label(tr("&Default folder:"), m_folder), row);
    form->addRow(QString(), m_folderNote);
}

void FilesPreferences::setDefaults(bool overwrite)
{
    Options::recentFiles.store(Options::recentFiles.usual, overwrite);
    Options::backup.store(Options::backup.usual, overwrite);
    Options::defaultFolder.store(QString(), overwrite);
}

void FilesPreferences::loadToPage()
{
    m_recent->setValue(Options::recentFiles.value());
    m_backup->setChecked(Options::backup.value() != 0);
    m_folder->setText(QDir::toNativeSeparators(Options::defaultFolder.value()));
    checkFolder();
    askToClear(false);
}

void FilesPreferences::storeFromPage()
{
    Options::recentFiles.store(m_recent->value());
    Options::backup.store(m_backup->isChecked() ? 1 : 0);
    Options::defaultFolder.store(QDir::fromNativeSeparators(m_folder->text().trimmed()));
    if (m_isClearAsked) {
        RecentFiles::clear();
        askToClear(false);
    }
}

void FilesPreferences::apply() {}

void FilesPreferences::askToClear(bool isAsked)
{
    m_isClearAsked = isAsked;
    const int count = RecentFiles::files().size();
    m_clear->setEnabled(!isAsked && count > 0);
    m_clearNote->setText(isAsked      ? tr("The list is emptied with OK or Apply.")
                         : count == 0 ? tr("The list is empty.")
                                      : tr("In the list now: %1").arg(count));
}

void FilesPreferences::browse()
{
    const QString chosen = QFileDialog::getExistingDirectory(this, tr("Default Folder"), m_folder->text());
    if (!chosen.isEmpty()) {
        m_folder->setText(QDir::toNativeSeparators(chosen));
    }
}

void FilesPreferences::checkFolder()
{
    const QString folder = m_folder->text().trimmed();
    m_folderNote->setVisible(!folder.isEmpty()
                             && !(QFileInfo(folder).isAbsolute() && QFileInfo(folder).isDir()));
}
