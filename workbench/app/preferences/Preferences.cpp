#include "Preferences.h"

#include "gui/preferences/MetadataCompletions.h"

#include <QEvent>
#include <QFileInfo>
#include <QTimer>
#include <QWidget>

Preferences::Preferences(QObject *parent) : QObject(parent)
{
    feedLineEdits();
}

Preferences::~Preferences()
{
    MetadataCompletions::setSource({});
}

void Preferences::readAfterPaintOf(QWidget *window)
{
    window->installEventFilter(this);
}

bool Preferences::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::Paint) {
        watched->removeEventFilter(this);
        // Not now: the window's children are painted after it.
        QTimer::singleShot(0, &m_libraries, &interchange::StringLibraries::start);
    }
    return QObject::eventFilter(watched, event);
}

void Preferences::feedLineEdits()
{
    interchange::StringLibraries *libraries = &m_libraries;
    MetadataCompletions::setSource(
        {[libraries](const QString &text, int limit) { return libraries->completions(text, limit); },
         [libraries](const QString &word) {
             return libraries->canAdd(word) ? QFileInfo(libraries->activeLibrary()).fileName() : QString();
         },
         [libraries](const QString &word) { libraries->add(word); }});
}
