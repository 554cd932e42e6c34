#include "preferences/nkMetadataPreferencesGUII.h"

#include <nkKernelServices/nkLogService.h>
#include <nkKernelServices/nkMetadataService.h>
#include <nkKernelServices/nkPlatformService.h>
#include <nkKernelServices/nkPreferencesService.h>
#include <nkKernelServicesGUI/nkRadioButtonWidget.h>

#include <QButtonGroup>
#include <QCoreApplication>
#include <QFile>
#include <QFileDialog>
#include <QFileInfo>
#include <QHeaderView>
#include <QMessageBox>
#include <QPersistentModelIndex>
#include <QRadioButton>

namespace {

enum Column : int { ActiveColumn, PathColumn };

// Copies on the heap: the host may hold a key longer than the plug-in's own constants live.
QString librariesKey()
{
    return QString(QLatin1String("Metadata String Libraries"));
}

QString activeIndexKey()
{
    return QString(QLatin1String("Metadata Active String Library Index"));
}

QString translate(const char *text)
{
    return QCoreApplication::translate("Metadata", text);
}

QString fileFilter()
{
    return translate("Text Files (*.txt *.csv)");
}

} // namespace

nkMetadataPreferencesGUII::nkMetadataPreferencesGUII(QWidget *parent)
    : QWidget(parent), nkPreferencesCategory(translate("Metadata")), buttonGroup(new QButtonGroup(this))
{
    setupUi(this);
    m_treeWidget->header()->setSectionResizeMode(ActiveColumn, QHeaderView::ResizeToContents);
    createDefaultLibrary();
    connectPage();
    updateButtons();
    // Last: the host asks for the defaults at once, and they depend on the file.
    registerCategory();
}

nkMetadataPreferencesGUII::~nkMetadataPreferencesGUII() = default;

void nkMetadataPreferencesGUII::createDefaultLibrary()
{
    defaultLibraryPath = nkPlatformService::the().getUserDataDirectory()
                         + QLatin1String("DefaultStringLibrary.txt");
    // Not QFile::exists(): it takes a link into nowhere for a file.
    if (!QFileInfo::exists(defaultLibraryPath) && !QFile(defaultLibraryPath).open(QIODevice::WriteOnly)) {
        nkLogService::the().reportError(translate("Metadata Preferences"),
                                        translate("Can't create/write default string library file."));
    }
}

void nkMetadataPreferencesGUII::connectPage()
{
    connect(m_addButton, &QPushButton::clicked, this, &nkMetadataPreferencesGUII::addPaths);
    connect(m_changeButton, &QPushButton::clicked, this, &nkMetadataPreferencesGUII::changeSelectedPath);
    connect(m_removeButton, &QPushButton::clicked, this, &nkMetadataPreferencesGUII::removePaths);
    connect(m_treeWidget, &QTreeWidget::itemDoubleClicked, this, &nkMetadataPreferencesGUII::changePath);
    connect(m_treeWidget, &QTreeWidget::itemSelectionChanged, this,
            &nkMetadataPreferencesGUII::updateButtons);
}

void nkMetadataPreferencesGUII::setDefaults(bool overwrite)
{
    const QFileInfo library(defaultLibraryPath);
    const bool exists = library.exists();
    nkPreferencesService &preferences = nkPreferencesService::the();
    preferences.setStringListValue(
        librariesKey(), exists ? QStringList{library.canonicalFilePath()} : QStringList(), overwrite);
    preferences.setIntValue(activeIndexKey(), exists ? 0 : -1, overwrite);
}

void nkMetadataPreferencesGUII::loadToPage()
{
    const QList<QAbstractButton *> buttons = buttonGroup->buttons();
    for (QAbstractButton *button : buttons) {
        buttonGroup->removeButton(button);
    }
    m_treeWidget->clear();
    const QStringList paths = nkPreferencesService::the().getStringListValue(librariesKey());
    for (const QString &path : paths) {
        addItem(path);
    }
    const int active = nkPreferencesService::the().getIntValue(activeIndexKey());
    if (const QTreeWidgetItem *item = m_treeWidget->topLevelItem(active)) {
        buttonOf(item)->setChecked(true);
    }
    updateButtons();
}

void nkMetadataPreferencesGUII::storeFromPage()
{
    QStringList paths;
    for (int row = 0; row < m_treeWidget->topLevelItemCount(); ++row) {
        paths.append(m_treeWidget->topLevelItem(row)->text(PathColumn));
    }
    nkPreferencesService::the().setStringListValue(librariesKey(), paths, true);
    nkPreferencesService::the().setIntValue(activeIndexKey(), buttonGroup->checkedId(), true);
}

void nkMetadataPreferencesGUII::apply()
{
    nkPreferencesService &preferences = nkPreferencesService::the();
    nkMetadataService &metadata = nkMetadataService::the();
    if (isChanged(librariesKey())) {
        metadata.setStringLibraries(preferences.getStringListValue(librariesKey()));
    }
    if (isChanged(activeIndexKey())) {
        metadata.setActiveStringLibraryIndex(preferences.getIntValue(activeIndexKey(), 0));
    }
}

void nkMetadataPreferencesGUII::addItem(const QString &path)
{
    auto *item = new QTreeWidgetItem(m_treeWidget);
    item->setText(PathColumn, path);
    auto *button = new QRadioButton;
    button->setAccessibleName(path);
    m_treeWidget->setItemWidget(item, ActiveColumn, new nkRadioButtonWidget(button));
    buttonGroup->addButton(button, buttonGroup->buttons().size());
}

QRadioButton *nkMetadataPreferencesGUII::buttonOf(const QTreeWidgetItem *item) const
{
    QWidget *cell = m_treeWidget->itemWidget(const_cast<QTreeWidgetItem *>(item), ActiveColumn);
    return static_cast<nkRadioButtonWidget *>(cell)->button();
}

bool nkMetadataPreferencesGUII::isListed(const QString &path) const
{
    for (int row = 0; row < m_treeWidget->topLevelItemCount(); ++row) {
        if (m_treeWidget->topLevelItem(row)->text(PathColumn) == path) {
            return true;
        }
    }
    return false;
}

bool nkMetadataPreferencesGUII::isNewOrTold(const QString &path)
{
    if (!isListed(path)) {
        return true;
    }
    QMessageBox box(QMessageBox::Information, nkPlatformService::the().getInformationTitle(),
                    translate("The path already exists!\n%1").arg(path), QMessageBox::Ok, this);
    box.setTextFormat(Qt::PlainText);
    box.exec();
    return false;
}

void nkMetadataPreferencesGUII::addPaths()
{
    addLibraries(QFileDialog::getOpenFileNames(this, translate("Select String List File(s)"), QString(),
                                               fileFilter()));
}

void nkMetadataPreferencesGUII::addLibraries(const QStringList &paths)
{
    const bool wasEmpty = m_treeWidget->topLevelItemCount() == 0;
    for (const QString &path : paths) {
        if (isNewOrTold(path)) {
            addItem(path);
        }
    }
    if (wasEmpty && m_treeWidget->topLevelItemCount() > 0) {
        buttonGroup->buttons().constFirst()->setChecked(true);
    }
}

void nkMetadataPreferencesGUII::changeSelectedPath()
{
    const QList<QTreeWidgetItem *> selected = m_treeWidget->selectedItems();
    if (selected.size() == 1) {
        changePath(selected.constFirst());
    }
}

void nkMetadataPreferencesGUII::changePath(const QTreeWidgetItem *item)
{
    // Not the item: while a dialog is open the page may be filled anew.
    const QPersistentModelIndex row(m_treeWidget->model()->index(
        m_treeWidget->indexOfTopLevelItem(const_cast<QTreeWidgetItem *>(item)), PathColumn));
    const QString path = QFileDialog::getOpenFileName(this, translate("Select String List File"),
                                                      item->text(PathColumn), fileFilter());
    if (path.isEmpty() || !isNewOrTold(path)) {
        return;
    }
    if (QTreeWidgetItem *changed = row.isValid() ? m_treeWidget->topLevelItem(row.row()) : nullptr) {
        changed->setText(PathColumn, path);
        buttonOf(changed)->setAccessibleName(path);
    }
}

void nkMetadataPreferencesGUII::removePaths()
{
    bool isActiveGone = false;
    const QList<QTreeWidgetItem *> selected = m_treeWidget->selectedItems();
    for (QTreeWidgetItem *item : selected) {
        QRadioButton *button = buttonOf(item);
        isActiveGone = isActiveGone || button->isChecked();
        // The view deletes its cells only later. The buttons that stay keep their ids, which may then be
        // other than their rows, and it is the id that is stored.
        buttonGroup->removeButton(button);
        delete item;
    }
    if (isActiveGone && m_treeWidget->topLevelItemCount() > 0) {
        buttonOf(m_treeWidget->topLevelItem(0))->setChecked(true);
    }
}

void nkMetadataPreferencesGUII::updateButtons()
{
    const int selected = m_treeWidget->selectedItems().size();
    m_changeButton->setEnabled(selected == 1);
    m_removeButton->setEnabled(selected > 0);
}
