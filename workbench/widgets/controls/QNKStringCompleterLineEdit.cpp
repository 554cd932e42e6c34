#include "nkQt4Ext/QNKStringCompleterLineEdit.h"

#include <QAbstractItemView>
#include <QCompleter>
#include <QKeyEvent>
#include <QStringListModel>

namespace {

constexpr int mostWords = 12;

} // namespace

QNKStringCompleterLineEdit::QNKStringCompleterLineEdit(QWidget *parent)
    : QLineEdit(parent), m_completer(new QCompleter(this)), m_words(new QStringListModel(m_completer))
{
    m_completer->setModel(m_words);
    m_completer->setCompletionMode(QCompleter::UnfilteredPopupCompletion);
    m_completer->setMaxVisibleItems(mostWords);
    // Not QLineEdit::setCompleter(): that writes the highlighted word into the field while a person walks the
    // list, and Esc would leave it there.
    m_completer->setWidget(this);
    connect(m_completer, QOverload<const QString &>::of(&QCompleter::activated), this, &QLineEdit::setText);
    connect(this, &QLineEdit::textEdited, this, &QNKStringCompleterLineEdit::offer);
    setAccessibleName(tr("Text"));
}

QNKStringCompleterLineEdit::~QNKStringCompleterLineEdit() = default;

void QNKStringCompleterLineEdit::setCompletions(const Completions &completions)
{
    m_completions = completions;
    if (!m_completions)
        m_completer->popup()->hide();
}

void QNKStringCompleterLineEdit::keyPressEvent(QKeyEvent *event)
{
    const bool asks = event->key() == Qt::Key_Down && event->modifiers() == Qt::NoModifier;
    if (asks && !m_completer->popup()->isVisible() && offer(text())) {
        event->accept();
        return;
    }
    QLineEdit::keyPressEvent(event);
}

bool QNKStringCompleterLineEdit::offer(const QString &text)
{
    QStringList words = m_completions ? m_completions(text, mostWords) : QStringList();
    words = words.mid(0, mostWords);
    const bool worthIt = !words.isEmpty() && words != QStringList{text} && !isReadOnly();
    if (!worthIt) {
        m_completer->popup()->hide();
        return false;
    }
    m_words->setStringList(words);
    m_completer->complete();
    return true;
}
