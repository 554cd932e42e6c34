#include "SearchLineEdit.h"

#include "GlyphIcon.h"

#include <QAction>
#include <QKeyEvent>

SearchLineEdit::SearchLineEdit(QWidget *parent) : QLineEdit(parent)
{
    setClearButtonEnabled(true);
    // Qt's own picture is a dark bitmap, lost on a dark field. The action has had this name since Qt 5.2.
    if (auto *clearAction = findChild<QAction *>(QStringLiteral("_q_qlineeditclearaction")))
        clearAction->setIcon(GlyphIcon::make(GlyphIcon::Sign::Clear));
    setAccessibleName(tr("Search"));
}

void SearchLineEdit::keyPressEvent(QKeyEvent *event)
{
    if (event->key() != Qt::Key_Escape || text().isEmpty() || isReadOnly()) {
        QLineEdit::keyPressEvent(event);
        return;
    }
    clear();
    event->accept();
}
