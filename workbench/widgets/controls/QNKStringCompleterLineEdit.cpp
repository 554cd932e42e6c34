#include "nkQt4Ext/QNKStringCompleterLineEdit.h"

#include <QAbstractItemView>
#include <QCompleter>
#include <QCoreApplication>
#include <QKeyEvent>
#include <QStringListModel>
#include <QStyle>

#include <limits>

namespace {

constexpr int mostWords = 12;
/// A list may be wider than its field, in which long words would all look alike.
constexpr int widestList = 480;

/// What the list takes to show its words, as a place below the field.
QRect listPlace(const QLineEdit *field, QAbstractItemView *list)
{
    const int margin = 2 * list->frameWidth() + list->style()->pixelMetric(QStyle::PM_ScrollBarExtent);
    const int wanted = qMin(list->sizeHintForColumn(0) + margin, widestList);
    return QRect(0, 0, qMax(field->width(), wanted), field->height());
}

} // namespace

QNKStringCompleterLineEdit::QNKStringCompleterLineEdit(QWidget *parent)
    : QLineEdit(parent), m_completer(new QCompleter(this)), m_words(new QStringListModel(m_completer))
{
    m_completer->setModel(m_words);
    m_completer->setCompletionMode(QCompleter::UnfilteredPopupCompletion);
    m_completer->setMaxVisibleItems(mostWords);
    if (auto *frame = qobject_cast<QFrame *>(m_completer->popup())) {
        // Over a table the usual thin frame cannot be told from the cells.
        frame->setFrameStyle(QFrame::Box | QFrame::Plain);
    }
    // Not QLineEdit::setCompleter(): that writes the highlighted word into the field while a person walks the
    // list, and Esc would leave it there.
    m_completer->setWidget(this);
    connect(m_completer, QOverload<const QString &>::of(&QCompleter::activated), this, &QLineEdit::setText);
    connect(this, &QLineEdit::textEdited, this, &QNKStringCompleterLineEdit::offer);
    // Qt cuts at 32,767 characters otherwise, and the cut text would be written back.
    setMaxLength(std::numeric_limits<int>::max());
    setAccessibleName(tr("Text"));
}

QNKStringCompleterLineEdit::~QNKStringCompleterLineEdit() = default;

void QNKStringCompleterLineEdit::setCompletions(const Completions &completions)
{
    m_completions = completions;
    if (!m_completions)
        m_completer->popup()->hide();
}

bool QNKStringCompleterLineEdit::eventFilter(QObject *watched, QEvent *event)
{
    QAbstractItemView *list = m_completer->popup();
    if (watched != list || event->type() != QEvent::KeyPress || list->currentIndex().isValid())
        return QLineEdit::eventFilter(watched, event);
    const auto *key = static_cast<QKeyEvent *>(event);
    const QList<int> leaving{Qt::Key_Return, Qt::Key_Enter, Qt::Key_Tab, Qt::Key_Backtab};
    if (!leaving.contains(key->key()))
        return false;
    // Without a word chosen these keys are meant for the field; Qt would use them up for closing the list.
    list->hide();
    QKeyEvent again(key->type(), key->key(), key->modifiers(), key->text());
    QCoreApplication::sendEvent(this, &again);
    return true;
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
    // Anew each time, to come before the completer's own filter.
    m_completer->popup()->installEventFilter(this);
    m_words->setStringList(words);
    m_completer->complete(listPlace(this, m_completer->popup()));
    // Qt marks the first word, and Return would take it in place of what was typed.
    m_completer->popup()->setCurrentIndex(QModelIndex());
    return true;
}
