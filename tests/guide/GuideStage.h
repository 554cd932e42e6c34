#pragma once

#include "ProgramTexts.h"

#include <QImage>
#include <QModelIndex>
#include <QRect>
#include <QString>

#include <functional>
#include <memory>

class MainWindow;
class QAbstractItemView;
class QDockWidget;
class QLineEdit;
class QMenu;
class QMenuBar;
class QTreeView;
class Workbench;

/// The workbench on which the pictures of the guide are taken, with the hands of the person who uses it.
///
/// What is not there ends the program with a message: a guide that is out of date has to be mended, not pictured.
class GuideStage
{
public:
    /// @param folder where the pictures go; it exists
    explicit GuideStage(const QString &folder);
    ~GuideStage();

    /// Shows the window in its size.
    void show();

    Workbench *workbench() const { return m_workbench.get(); }
    MainWindow *window() const;
    const QStringList &pictures() const { return m_pictures; }
    QStringList texts() const { return m_texts.all(); }

    /// Opens the sample scene anew, with nothing selected and nothing searched, and the panels as laid out.
    /// @param editorHeight of the editor, where it is to be higher than usual
    void openSample(int editorHeight = 0);
    void openScene(const QString &path);

    /// The panel of that object name.
    QDockWidget *dock(const QString &name) const;
    QDockWidget *editor() const { return dock(QStringLiteral("Metadata Editor")); }
    QTreeView *sceneGraph() const;
    QTreeView *upperList() const;
    QTreeView *lowerList() const;
    QTreeView *table() const;
    /// The only field of that accessible name in a widget.
    static QLineEdit *field(const QWidget *parent, const QString &name);

    /// The rows of that text in the first column, or the cells of that text in another one; the first of them.
    static QModelIndexList cells(const QAbstractItemView *view, const QString &text, int column = 0);
    static QModelIndex cell(const QAbstractItemView *view, const QString &text, int column = 0);
    static void click(QAbstractItemView *view, const QModelIndex &index, Qt::KeyboardModifiers keys = {});
    static void clickRow(QAbstractItemView *view, const QString &text, Qt::KeyboardModifiers keys = {});
    static void selectAll(QAbstractItemView *view);
    static void type(QLineEdit *field, const QString &text);
    /// Opens a menu of a menu bar, and the submenus of these names in it.
    static void openMenu(QMenuBar *bar, const QStringList &path);
    QMenuBar *editorMenus() const;
    /// Opens the submenus of these names.
    static void openSubmenus(QMenu *menu, const QStringList &path);
    static void closePopups();
    /// Does what opens a dialog or a menu that waits for an answer, and looks at it while it waits.
    void during(const std::function<void()> &opening, const std::function<void(QWidget *)> &looking) const;

    /// Lets the program do what it has queued.
    static void hurry();
    /// Waits until nothing changes any more. @return the window then, with what pops up over it
    QImage settle() const;
    /// Takes the picture of what stands in this part of the window, with what pops up over it.
    void take(const QString &name, const QWidget *part);
    void take(const QString &name, QRect part);
    /// Notes the texts that stand there now, for a page that quotes them and shows no picture of them.
    void read() { m_texts.collect(); }
    /// Takes the picture of a window by itself.
    void takeDialog(const QString &name, QWidget *dialog);

private:
    QList<QTreeView *> lists() const;
    bool isReading() const;
    QImage look() const;
    void save(const QString &name, const QImage &picture);
    void clearFields() const;

    const QString m_folder;
    std::unique_ptr<Workbench> m_workbench;
    ProgramTexts m_texts;
    QStringList m_pictures;
};
