#pragma once

#include "ui_nkMetadataPreferencesGUI.h"

#include <nkKernelServicesGUI/nkPreferencesCategory.h>

#include <QWidget>

class QButtonGroup;
class QRadioButton;

/// The preferences page of the string libraries: which text files offer their words as completions of keys and
/// text values, and which one of them is active. The category "Metadata" of the host's preferences dialog.
///
/// The page never reads a library; it hands paths and index to the metadata service. Two values are stored:
/// "Metadata String Libraries", absolute paths in the order of the rows, and "Metadata Active String Library
/// Index", the button id of the active row, -1 for none.
class nkMetadataPreferencesGUII : public QWidget,
                                  public nkPreferencesCategory,
                                  public Ui_nkMetadataPreferencesGUI
{
    Q_OBJECT
public:
    /// Registers the page with the host and makes sure that the user's default library exists, as an empty
    /// file; where it cannot be made, that is reported once and the page works without it.
    explicit nkMetadataPreferencesGUII(QWidget *parent = nullptr);
    /// Takes the page out of the host's dialog.
    ~nkMetadataPreferencesGUII() override;

    QWidget *getWidget() override { return this; }
    /// The default library alone, and active, where its file exists; else no library and none active.
    void setDefaults(bool overwrite) override;
    void loadToPage() override;
    void storeFromPage() override;
    void apply() override;

    /// Adds a row for each path, as the Add button does with what was chosen: one that is listed already, or
    /// comes twice, is told and skipped; the first library of an empty list becomes the active one.
    void addLibraries(const QStringList &paths);

private:
    void createDefaultLibrary();
    void connectPage();
    void addItem(const QString &path);
    QRadioButton *buttonOf(const QTreeWidgetItem *item) const;
    bool isListed(const QString &path) const;
    /// Tells the user where the path is listed already. @return whether it is not
    bool isNewOrTold(const QString &path);
    void addPaths();
    void changePath(const QTreeWidgetItem *item);
    void changeSelectedPath();
    void removePaths();
    void updateButtons();

    QString defaultLibraryPath;
    QButtonGroup *buttonGroup;
};
