#pragma once

#include <nkKernelServicesGUI/nkBaseControl.h>

#include <QVariant>

class DifferingButton;
class DifferingMark;
class QLabel;
class QStackedWidget;

/// The property editor's own kind of control: a label, the mark of differing values, and an editor that a
/// button stands in for while they differ.
///
/// What a person has begun to change is kept until it is committed or given up with Esc, whatever is shown
/// meanwhile; what was not touched is never told as edited.
class PropertyControl : public nkBaseControl
{
    Q_OBJECT
public:
    PropertyControl(const QString &property, QWidget *parent);
    ~PropertyControl() override;

    void setValue(const QVariant &value, bool differing) override;
    /// Whether a person began to change the value and has neither committed it nor given it up.
    bool isPending() const { return m_touched; }
    /// Tells what was begun in the editor as edited; nothing where nothing was. Whoever listens may delete this
    /// control.
    void commit();

    /// Labels of several controls stand in one column when they are equally wide.
    int labelWidth() const;
    void setLabelWidth(int width);

    bool eventFilter(QObject *watched, QEvent *event) override;

Q_SIGNALS:
    /// isPending answers otherwise than before; comes before valueEdited.
    void pendingChanged();

protected:
    /// Takes the editor; called once, in a subclass's constructor.
    void setEditor(QWidget *editor);
    QWidget *editor() const { return m_editor; }
    /// For subclasses: a person changed the editor's content and has not committed it yet.
    void touch() { setPending(true); }
    /// For subclasses: a person chose this very content; it counts without any further commit.
    void touchAndCommit();
    /// For subclasses, and for Esc: what was begun is forgotten, and the value shown again.
    void giveUp();

    /// Puts a value into the editor, silently.
    virtual void showValue(const QVariant &value) = 0;
    virtual QVariant editedValue() const = 0;
    /// A person goes on from differing values. @param typed what was typed already; may be empty
    virtual void beginEditing(const QString &typed);
    /// Before what was begun is read: what the editor has open beside it, such as a pop-up, comes to its end.
    /// May commit or give up by itself.
    virtual void completeEditing();

private:
    void openEditor(const QString &typed);
    void setPending(bool pending);
    bool isOpenOverButton() const;
    bool escapes(const QEvent *event) const;
    bool isLeft(const QEvent *event) const;
    void showState();

    QLabel *m_label;
    DifferingMark *m_mark;
    QStackedWidget *m_stack;
    DifferingButton *m_button;
    QWidget *m_editor = nullptr;
    QVariant m_value;
    bool m_differing = false;
    bool m_touched = false;
};
