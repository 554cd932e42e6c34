#pragma once

#include <QWidget>

class QMainWindow;
class QPushButton;
class QVBoxLayout;
class RecentList;

/// What the main window shows while no scene is open: the recent scenes, and the ways to another.
///
/// It covers the docks, which are disabled meanwhile, so that nothing is done to a scene that is not there.
class StartScreen : public QWidget
{
    Q_OBJECT
public:
    /// Hidden at first. @param window its parent
    explicit StartScreen(QMainWindow *window);

    /// Covers the docks and takes the focus.
    void open();
    /// Gives the docks back.
    void close();

    RecentList *recentFiles() const { return m_recent; }

    bool eventFilter(QObject *watched, QEvent *event) override;

Q_SIGNALS:
    /// A person wants to open a recent scene. @param path absolute
    void chosen(const QString &path);
    void openRequested();
    void newRequested();
    void sampleRequested();

protected:
    /// The tab key stays here: what is covered cannot be seen.
    bool focusNextPrevChild(bool next) override;

private:
    QWidget *makeHead();
    QWidget *makeWays();
    QWidget *makeRecent();
    QPushButton *addWay(QVBoxLayout *column, const QString &text, const QString &name, const QIcon &icon);
    void coverDocks();
    void setDocksEnabled(bool enabled) const;
    void updateButtons();

    QMainWindow *m_window;
    RecentList *m_recent = nullptr;
    QPushButton *m_browse = nullptr;
    QPushButton *m_openRecent = nullptr;
    QPushButton *m_removeRecent = nullptr;
};
