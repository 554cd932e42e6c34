#pragma once

#include <QListWidget>

/// The scenes opened last, a row each: the name above, the folder below it, elided in the middle. Those that are
/// gone say so and can only be removed.
class RecentList : public QListWidget
{
    Q_OBJECT
public:
    explicit RecentList(QWidget *parent = nullptr);

    /// Reads the list anew and keeps the current row where its file is still in it.
    void refresh();
    /// Absolute path of the current row; empty where there is none.
    QString currentPath() const;
    /// Whether the file of the current row was there when the list was read.
    bool canOpenCurrent() const;
    /// Opens the current row's file, where it is there.
    void openCurrent();
    /// Takes the current row out of the recent files; the file itself stays.
    void removeCurrent();

Q_SIGNALS:
    /// A person wants to open a scene. @param path absolute
    void chosen(const QString &path);

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    void addFile(const QString &path);
    void showMenu(const QPoint &position);
};
