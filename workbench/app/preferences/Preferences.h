#pragma once

#include "AssetsPreferences.h"
#include "FilesPreferences.h"
#include "GeneralPreferences.h"

#include "interchange/libraries/StringLibraries.h"

#include <QObject>

class QWidget;

/// What the workbench has of preferences beside those of its plug-ins: its own pages, and the string libraries
/// that feed the metadata line edits.
class Preferences : public QObject
{
    Q_OBJECT
public:
    /// Puts what is stored into effect.
    explicit Preferences(QObject *parent = nullptr);
    ~Preferences() override;

    /// Lets the string libraries be read as soon as this window has been painted for the first time.
    void readAfterPaintOf(QWidget *window);

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void feedLineEdits();

    GeneralPreferences m_general;
    FilesPreferences m_files;
    AssetsPreferences m_assets;
    interchange::StringLibraries m_libraries;
};
