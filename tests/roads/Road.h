#pragma once

#include <QByteArray>
#include <QDir>
#include <QString>
#include <QTemporaryDir>

#include <memory>

class EditorPanel;
class MainWindow;
class QAbstractItemView;
class QDialog;
class QLineEdit;
class QWidget;
class Workbench;

/// A folder with files, and the whole workbench over them with its plug-in loaded from beside the program, as main()
/// starts it. What is done to it goes through Hands; this knows where things stand and what is in the files.
class Road
{
public:
    Road();
    ~Road();

    // Files of the folder -------------------------------------------------------------------------------

    /// @param name in the folder, or an absolute path
    QString path(const QString &name) const { return QDir(m_folder.path()).filePath(name); }
    /// @return the path
    QString write(const QString &name, const QByteArray &content) const;
    /// Fails the running test where there is no such file.
    QByteArray read(const QString &name) const;
    /// Fails the running test, and says where, unless the file holds exactly these bytes.
    void expect(const QString &name, const QByteArray &expected) const;
    /// Empties the folder of recovery copies, the preferences' lists and the asset database of the program.
    static void forgetProgramData();

    // The program ---------------------------------------------------------------------------------------

    /// Starts it, with a file of the folder where one is given, and waits for its window.
    void start(const QString &name = QString());
    /// Ends it, plug-in included.
    void stop();
    Workbench *workbench() const { return m_workbench.get(); }
    MainWindow *window() const;

    // Where things stand --------------------------------------------------------------------------------

    QWidget *editor() const;                    ///< the Metadata Editor's window
    QAbstractItemView *upper() const;           ///< its upper tree
    QAbstractItemView *lower() const;           ///< its lower tree
    QAbstractItemView *table() const;           ///< its keys and values
    QLineEdit *searchField() const;             ///< its advanced search
    QWidget *button(const QString &text) const; ///< a button of the main window
    QLineEdit *valueField() const;              ///< the value in its property panel
    EditorPanel *panel(int module) const;
    QAbstractItemView *objects(int module = 0) const; ///< the list of a panel; of the scene graph

    // What a person does in one go ----------------------------------------------------------------------

    void open(const QString &name);   ///< Ctrl+O
    void save();                      ///< Ctrl+S
    void saveAs(const QString &name); ///< Ctrl+Shift+S
    void undo(int steps = 1);         ///< Ctrl+Z
    /// Makes an entry in what is selected in the trees, by keys; the value is not typed where it is empty.
    static void createEntry(const QString &kind, const QString &key, const QString &value = QString());
    /// Double-clicks the value of a key in the table, types another one and presses Return.
    void editValue(const QString &key, const QString &value);
    /// Opens the context menu of the place with the focus by its key, and walks to an entry by keys.
    static void menuKey(const QStringList &entries);
    /// Types the path of a file of the folder into an open file dialog and presses Return.
    void typeName(QDialog *dialog, const QString &name) const;

private:
    QAbstractItemView *view(const char *className, int number = 0) const;

    QTemporaryDir m_folder;
    std::unique_ptr<Workbench> m_workbench;
};
