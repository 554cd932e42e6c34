#pragma once

#include <QDockWidget>

class QScrollArea;

/// The dock in which a module window stands in the main window. A window that needs more room than there is, on a
/// small display, is scrolled. It stays the plug-in's: release takes it out again before the frame goes.
class ModuleFrame : public QDockWidget
{
    Q_OBJECT
public:
    /// @param name the module's name, for menus and the saved layout; @param shortTitle for the dock's tab
    ModuleFrame(const QString &name, const QString &shortTitle, QWidget *window, QWidget *parent);
    ~ModuleFrame() override;

    QString moduleName() const { return m_name; }
    /// Takes the window out of the frame, hidden and without a parent. Once; the frame is empty afterwards.
    void release();

private:
    QString m_name;
    QScrollArea *m_area;
};
