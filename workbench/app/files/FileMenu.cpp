#include "FileMenu.h"

#include "FileCommands.h"
#include "RecentMenu.h"
#include "SceneSession.h"

#include <QAction>
#include <QMenu>

FileMenu::FileMenu(QMenu *menu, SceneSession *session, FileCommands *commands, QObject *parent)
    : QObject(parent), m_menu(menu), m_session(session)
{
    addOpening(commands);
    addSaving(commands);
    addLeaving(commands);
    connect(session, &SceneSession::pathChanged, this, &FileMenu::update);
    connect(session, &SceneSession::sceneReplaced, this, &FileMenu::update);
    connect(session, &SceneSession::modifiedChanged, this, &FileMenu::update);
    update();
}

QAction *FileMenu::add(const QString &text, const QKeySequence &shortcut, const QString &name)
{
    QAction *action = m_menu->addAction(text);
    action->setShortcut(shortcut);
    action->setObjectName(name);
    return action;
}

void FileMenu::addOpening(FileCommands *commands)
{
    connect(add(tr("&New"), QKeySequence::New, QStringLiteral("fileNew")), &QAction::triggered, commands,
            &FileCommands::makeNew);
    connect(add(tr("&Open..."), QKeySequence::Open, QStringLiteral("fileOpen")), &QAction::triggered,
            commands, &FileCommands::chooseAndOpen);
    auto *recent = new RecentMenu(m_menu);
    recent->setObjectName(QStringLiteral("fileOpenRecent"));
    m_menu->addMenu(recent);
    connect(recent, &RecentMenu::chosen, commands, &FileCommands::open);
    m_menu->addSeparator();
}

void FileMenu::addSaving(FileCommands *commands)
{
    QAction *save = add(tr("&Save"), QKeySequence::Save, QStringLiteral("fileSave"));
    connect(save, &QAction::triggered, commands, &FileCommands::save);
    // Not the platform's standard key, which not every platform has.
    QAction *saveAs = add(tr("Save &As..."), QKeySequence(Qt::CTRL + Qt::SHIFT + Qt::Key_S),
                          QStringLiteral("fileSaveAs"));
    connect(saveAs, &QAction::triggered, commands, &FileCommands::saveAs);
    m_saving = {save, saveAs};
    m_revert = add(tr("Re&vert"), QKeySequence(), QStringLiteral("fileRevert"));
    connect(m_revert, &QAction::triggered, commands, &FileCommands::revert);
    m_menu->addSeparator();
    m_report = add(tr("&Import Report..."), QKeySequence(), QStringLiteral("fileImportReport"));
    connect(m_report, &QAction::triggered, this, &FileMenu::reportRequested);
    m_menu->addSeparator();
}

void FileMenu::addLeaving(FileCommands *commands)
{
    m_close = add(tr("&Close"), QKeySequence::Close, QStringLiteral("fileClose"));
    connect(m_close, &QAction::triggered, commands, &FileCommands::close);
    connect(add(tr("&Quit"), QKeySequence::Quit, QStringLiteral("fileQuit")), &QAction::triggered, this,
            &FileMenu::quitRequested);
}

void FileMenu::update()
{
    const bool hasFile = !m_session->path().isEmpty();
    // Save stays enabled without changes: an open editor may hold one.
    for (QAction *action : qAsConst(m_saving)) {
        action->setEnabled(m_session->hasScene());
    }
    m_revert->setEnabled(hasFile);
    m_close->setEnabled(m_session->hasScene());
    m_report->setEnabled(m_session->source()
                         && (m_session->report().keptCount() > 0 || !m_session->report().isClean()));
}
