#pragma once

#include <QMenu>

/// The menu of the scenes opened last. It is made anew whenever it opens; files that are gone are greyed.
class RecentMenu : public QMenu
{
    Q_OBJECT
public:
    explicit RecentMenu(QWidget *parent = nullptr);

Q_SIGNALS:
    /// The user chose a scene. @param path absolute
    void chosen(const QString &path);

private:
    void fill();
    void addFile(const QString &path, int number);
};
