#pragma once

#include <QPoint>
#include <QString>
#include <QStringList>

class QAbstractItemView;
class QMenu;
class QMenuBar;
class QModelIndex;
class QWidget;

/// Keys and mouse of a person: every press arrives at a window, which finds out by itself what it is for.
///
/// Nothing is pressed before the window system has given its focus to the window that a person would look at: the
/// pop-up or modal dialog that is open, else the active window. A hand that finds nothing to press fails the running
/// test with a sentence.
namespace Hands {

/// Presses and releases a key where the focus is.
void press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
/// Types Latin letters where the focus is.
void type(const QString &text);
/// Replaces all of what the field with the focus holds.
void retype(const QString &text);
/// The Menu key. The window system translates it, and asks the widget with the focus for the place.
void pressMenuKey();

/// Clicks the middle of a widget, or a place of it. What stands in front of it gets the click.
void click(QWidget *widget, Qt::MouseButton button = Qt::LeftButton);
void clickAt(QWidget *widget, const QPoint &place, Qt::KeyboardModifiers modifiers = Qt::NoModifier,
             Qt::MouseButton button = Qt::LeftButton);
void doubleClickAt(QWidget *widget, const QPoint &place);
/// Drags from one place to another, also of another view of the same window, until it has been dropped.
void drag(QWidget *from, const QPoint &start, QWidget *to, const QPoint &end);

/// The cell of this text, at any level, unfolded and scrolled into sight; waits for it to come. Fails the test and is
/// invalid where none comes.
QModelIndex cell(QAbstractItemView *view, const QString &text, int column = 0);
void clickCell(QAbstractItemView *view, const QModelIndex &cell,
               Qt::KeyboardModifiers modifiers = Qt::NoModifier);
void clickCell(QAbstractItemView *view, const QString &text,
               Qt::KeyboardModifiers modifiers = Qt::NoModifier);

/// Clicks a menu of the bar and then entry after entry; texts without mnemonics.
void choose(QMenuBar *bar, const QStringList &entries);
/// Walks with the arrow keys from the open pop-up menu through its submenus and presses Return on the last.
void chooseByKeys(const QStringList &entries);

/// Fails the running test with a sentence.
void fail(const QString &reason);

} // namespace Hands
