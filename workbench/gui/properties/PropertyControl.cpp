#include "PropertyControl.h"

#include "DifferingButton.h"
#include "DifferingMark.h"
#include "SharedValue.h"

#include <QApplication>
#include <QHBoxLayout>
#include <QHash>
#include <QKeyEvent>
#include <QLabel>
#include <QStackedWidget>

namespace {

QString titleOf(const QString &property)
{
    static const QHash<QString, const char *> titles{
        {QStringLiteral("key"), QT_TRANSLATE_NOOP("Metadata", "Key")},
        {QStringLiteral("value"), QT_TRANSLATE_NOOP("Metadata", "Value")},
        {QStringLiteral("valueType"), QT_TRANSLATE_NOOP("Metadata", "Type")},
        {QStringLiteral("name"), QT_TRANSLATE_NOOP("Metadata", "Name")},
        {QStringLiteral("color"), QT_TRANSLATE_NOOP("Metadata", "Color")},
        {QStringLiteral("locked"), QT_TRANSLATE_NOOP("Metadata", "Locked")},
    };
    const char *title = titles.value(property);
    return title ? QCoreApplication::translate("Metadata", title) : property;
}

} // namespace

PropertyControl::PropertyControl(const QString &property, QWidget *parent)
    : nkBaseControl(property, parent),
      m_label(new QLabel(this)),
      m_mark(new DifferingMark(this)),
      m_stack(new QStackedWidget(this)),
      m_button(new DifferingButton(m_stack))
{
    m_label->setTextFormat(Qt::PlainText);
    m_label->setText(titleOf(property));
    m_stack->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    m_stack->addWidget(m_button);
    m_mark->hide();

    QHBoxLayout *row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->addWidget(m_label);
    row->addWidget(m_stack, 1);
    row->addWidget(m_mark);

    connect(m_button, &QPushButton::clicked, this, [this] { openEditor(QString()); });
    connect(m_button, &DifferingButton::typed, this, &PropertyControl::openEditor);
}

// Qt takes the focus from the editor while it destroys the control, and the editor tells that it is finished.
PropertyControl::~PropertyControl()
{
    const QList<QWidget *> parts = findChildren<QWidget *>();
    for (QWidget *part : parts) {
        part->disconnect(this);
    }
}

void PropertyControl::setEditor(QWidget *editor)
{
    m_editor = editor;
    m_stack->addWidget(editor);
    m_stack->setCurrentWidget(editor);
    m_label->setBuddy(editor);
    editor->setAccessibleName(m_label->text());
    m_button->setAccessibleName(m_label->text());
    m_button->setAccessibleDescription(m_mark->accessibleName());
    editor->installEventFilter(this);
    setFocusProxy(m_stack);
    m_stack->setFocusProxy(editor);
}

void PropertyControl::setValue(const QVariant &value, bool differing)
{
    m_value = value;
    m_differing = differing;
    if (!m_touched) {
        showState();
    }
}

void PropertyControl::showState()
{
    const bool hadFocus = m_stack->isAncestorOf(QApplication::focusWidget());
    showValue(m_value);
    m_mark->setVisible(m_differing);
    QWidget *page = m_differing ? static_cast<QWidget *>(m_button) : m_editor;
    m_stack->setFocusProxy(page);
    if (m_stack->currentWidget() != page) {
        m_stack->setCurrentWidget(page);
        if (hadFocus) {
            page->setFocus();
        }
    }
}

void PropertyControl::openEditor(const QString &typed)
{
    m_stack->setFocusProxy(m_editor);
    m_stack->setCurrentWidget(m_editor);
    m_editor->setFocus();
    beginEditing(typed);
}

void PropertyControl::beginEditing(const QString &) {}

void PropertyControl::completeEditing() {}

void PropertyControl::setPending(bool pending)
{
    if (pending != m_touched) {
        m_touched = pending;
        Q_EMIT pendingChanged();
    }
}

void PropertyControl::commit()
{
    if (!m_touched) {
        return;
    }
    completeEditing();
    const QVariant edited = m_touched ? editedValue() : QVariant();
    if (!m_touched) {
        // Completing or reading made the editor tell its value itself.
        return;
    }
    setPending(false);
    if (!m_differing && SharedValue::same(edited, m_value)) {
        showState();
        return;
    }
    // Last: whoever listens may delete this control.
    Q_EMIT valueEdited(edited);
}

void PropertyControl::touchAndCommit()
{
    touch();
    commit();
}

void PropertyControl::giveUp()
{
    setPending(false);
    showState();
}

// The editor is shown though the values differ, because a person wants to give them one.
bool PropertyControl::isOpenOverButton() const
{
    return m_differing && m_stack->currentWidget() == m_editor;
}

bool PropertyControl::escapes(const QEvent *event) const
{
    return event->type() == QEvent::KeyPress && static_cast<const QKeyEvent *>(event)->key() == Qt::Key_Escape
           && (m_touched || isOpenOverButton());
}

bool PropertyControl::isLeft(const QEvent *event) const
{
    if (event->type() != QEvent::FocusOut || m_touched || !isOpenOverButton()) {
        return false;
    }
    const Qt::FocusReason reason = static_cast<const QFocusEvent *>(event)->reason();
    return reason != Qt::PopupFocusReason && reason != Qt::ActiveWindowFocusReason;
}

bool PropertyControl::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == m_editor && escapes(event)) {
        giveUp();
        return true;
    }
    const bool left = watched == m_editor && isLeft(event);
    const bool handled = nkBaseControl::eventFilter(watched, event);
    if (left) {
        giveUp();
    }
    return handled;
}

int PropertyControl::labelWidth() const
{
    return m_label->sizeHint().width();
}

void PropertyControl::setLabelWidth(int width)
{
    m_label->setFixedWidth(width);
}
