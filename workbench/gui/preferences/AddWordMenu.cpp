#include "AddWordMenu.h"

#include <QContextMenuEvent>
#include <QLineEdit>
#include <QMenu>

namespace {

constexpr int longestShown = 40;

/// Text of the user's in a menu: no mnemonics, no more than a menu can show.
QString menuText(const QString &text)
{
    const QString shown = text.size() > longestShown ? text.left(longestShown) + QChar(0x2026) : text;
    return QString(shown).replace(QLatin1Char('&'), QLatin1String("&&"));
}

} // namespace

AddWordMenu::AddWordMenu(QLineEdit *edit, const LibraryFor &libraryFor, const Add &add)
    : QObject(edit), m_edit(edit), m_libraryFor(libraryFor), m_add(add)
{
    edit->installEventFilter(this);
}

bool AddWordMenu::eventFilter(QObject *watched, QEvent *event)
{
    return event->type() == QEvent::ContextMenu ? show(static_cast<QContextMenuEvent *>(event)->globalPos())
                                                : QObject::eventFilter(watched, event);
}

/// @return false where the line edit's own menu says it all
bool AddWordMenu::show(const QPoint &place)
{
    const QString word = m_edit->text().trimmed();
    const QString library = m_libraryFor(word);
    QMenu *menu = library.isEmpty() ? nullptr : m_edit->createStandardContextMenu();
    if (!menu) {
        return false;
    }
    menu->setAttribute(Qt::WA_DeleteOnClose);
    menu->addSeparator();
    // The word is kept: the editor may be gone, or show another text, before the entry is chosen.
    menu->addAction(tr("Add \"%1\" to \"%2\"").arg(menuText(word), menuText(library)), menu,
                    [add = m_add, word] { add(word); });
    menu->popup(place);
    return true;
}
