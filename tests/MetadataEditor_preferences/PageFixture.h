#pragma once

#include "preferences/nkMetadataPreferencesGUII.h"

#include <ModalAnswer.h>
#include <kernel/services/ServiceRegistry.h>
#include <nkKernelServices/nkPlatformService.h>
#include <nkKernelServices/nkPreferencesService.h>
#include <nkKernelServicesGUI/nkRadioButtonWidget.h>

#include <QButtonGroup>
#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QLineEdit>
#include <QRadioButton>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QtTest>

#include <memory>

/// The page as a user finds it at the first start: no preferences, no default library. Restarting makes a new
/// page over what the former one left on disk.
class PageFixture
{
public:
    PageFixture()
    {
        kernel::ServiceRegistry::shutDown();
        QFile::remove(QDir(QStandardPaths::writableLocation(QStandardPaths::AppConfigLocation))
                          .filePath("preferences.json"));
        QDir(nkPlatformService::the().getUserDataDirectory()).removeRecursively();
    }

    static QString defaultLibrary()
    {
        return nkPlatformService::the().getUserDataDirectory() + QStringLiteral("DefaultStringLibrary.txt");
    }

    void start()
    {
        page = std::make_unique<nkMetadataPreferencesGUII>();
        page->loadToPage();
    }

    /// Shows these libraries, the one in that row active, as if they had been stored.
    void startWith(const QStringList &paths, int active)
    {
        store(paths, active);
        start();
    }

    static void store(const QStringList &paths, int active)
    {
        nkPreferencesService::the().setStringListValue(librariesKey(), paths, true);
        nkPreferencesService::the().setIntValue(indexKey(), active, true);
    }

    static QString librariesKey() { return QStringLiteral("Metadata String Libraries"); }
    static QString indexKey() { return QStringLiteral("Metadata Active String Library Index"); }
    static QStringList storedPaths()
    {
        return nkPreferencesService::the().getStringListValue(librariesKey());
    }
    static int storedIndex() { return nkPreferencesService::the().getIntValue(indexKey(), -77); }

    QStringList paths() const
    {
        QStringList paths;
        for (int row = 0; row < page->m_treeWidget->topLevelItemCount(); ++row) {
            paths.append(page->m_treeWidget->topLevelItem(row)->text(1));
        }
        return paths;
    }

    QRadioButton *button(int row) const
    {
        QTreeWidgetItem *item = page->m_treeWidget->topLevelItem(row);
        return qobject_cast<nkRadioButtonWidget *>(page->m_treeWidget->itemWidget(item, 0))->button();
    }

    QButtonGroup *group() const { return page->findChild<QButtonGroup *>(); }
    int id(int row) const { return group()->id(button(row)); }

    /// The rows whose radio button is checked.
    QList<int> checkedRows() const
    {
        QList<int> rows;
        for (int row = 0; row < page->m_treeWidget->topLevelItemCount(); ++row) {
            if (button(row)->isChecked()) {
                rows.append(row);
            }
        }
        return rows;
    }

    void select(const QList<int> &rows) const
    {
        page->m_treeWidget->clearSelection();
        for (const int row : rows) {
            page->m_treeWidget->topLevelItem(row)->setSelected(true);
        }
    }

    void remove(const QList<int> &rows) const
    {
        select(rows);
        page->m_removeButton->click();
    }

    /// A real file in the user's temporary home. @return its absolute path
    QString file(const QString &name) const
    {
        QFile file(folder.filePath(name));
        return file.open(QIODevice::WriteOnly) ? file.fileName() : QString();
    }

    /// Adds these files by the button and its dialog.
    void add(const QStringList &files) const
    {
        const ModalAnswer answer = choose(files);
        page->m_addButton->click();
        QVERIFY(answer.given());
    }

    /// Chooses several files in the next file dialog, some of them twice perhaps.
    static ModalAnswer choose(const QStringList &files)
    {
        return ModalAnswer(ModalAnswer::DialogAction([files](QDialog *dialog) {
            auto *edit = dialog->findChild<QLineEdit *>(QStringLiteral("fileNameEdit"));
            QVERIFY(edit);
            edit->setText('"' + files.join(QStringLiteral("\" \"")) + '"');
            dialog->accept();
        }));
    }

    QTemporaryDir folder;
    std::unique_ptr<nkMetadataPreferencesGUII> page;
};
