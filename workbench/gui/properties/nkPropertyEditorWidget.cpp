#include <nkKernelServicesGUI/nkPropertyEditorWidget.h>

#include "KeyRename.h"
#include "PanelTitle.h"
#include "PendingEdits.h"
#include "PropertyControl.h"
#include "PropertyControls.h"
#include "SharedValue.h"

#include <nkKernelServices/nkScopedUndo.h>
#include <nkKernelServices/nkdMetadataEntry.h>
#include <nkKernelServices/nkdMetadataSet.h>
#include <nkKernelServicesGUI/nkControlFactory.h>

#include <QApplication>
#include <QFrame>
#include <QHash>
#include <QLabel>
#include <QPointer>
#include <QScrollArea>
#include <QStyle>
#include <QVBoxLayout>

namespace {

using Wrappers = QList<nkPropertyEditorNkdObjectWrapper>;

const QString valueTypeProperty = QStringLiteral("valueType");
const QString keyProperty = QStringLiteral("key");
constexpr int leastWidth = 220; // device-independent pixels: label, editor and mark side by side

bool sameObjects(const Wrappers &left, const Wrappers &right)
{
    const auto same = [](const auto &one, const auto &other) { return one.getObject() == other.getObject(); };
    return std::equal(left.cbegin(), left.cend(), right.cbegin(), right.cend(), same);
}

QStringList sharedProperties(const Wrappers &objects)
{
    QStringList shared = objects.isEmpty() ? QStringList() : objects.first().getProperties();
    quint64 askedType = objects.isEmpty() ? 0 : objects.first().getObject().getTypeId();
    for (const nkPropertyEditorNkdObjectWrapper &object : objects) {
        // Objects of one kind have the same properties; only a change of kind, or death, brings others.
        if (object.getObject().getTypeId() == askedType && object.getObject().isAlive()) {
            continue;
        }
        askedType = object.getObject().getTypeId();
        const QStringList properties = object.getProperties();
        shared.erase(std::remove_if(shared.begin(), shared.end(),
                                    [&](const QString &name) { return !properties.contains(name); }),
                     shared.end());
    }
    return shared;
}

// Values of several types are edited as text, which each object converts for itself.
int typeToEdit(const SharedValue &valueType)
{
    return valueType.differing ? int(nkMetadataTypes::String) : valueType.value.toInt();
}

} // namespace

struct nkPropertyEditorWidget::Private
{
    Private(nkPropertyEditorWidget *panel, const QList<nkControlFactory *> &controlFactories)
        : q(panel), factories(controlFactories)
    {}

    void build(bool showHeader, bool scrollable);
    void makeControls();
    void dropControls();
    nkBaseControl *makeControl(const QString &property);
    void alignLabels();
    bool isPending() const;
    void commitPending();
    void showValues(const QHash<QString, SharedValue> &values);
    void refresh();
    void write(const QString &property, const QVariant &value);

    nkPropertyEditorWidget *q;
    QList<nkControlFactory *> factories;
    Wrappers objects;
    QStringList properties;
    int valueType = nkMetadataTypes::String;
    QList<nkBaseControl *> controls;
    QFrame *frame = nullptr;
    QLabel *header = nullptr;
    QScrollArea *scrollArea = nullptr;
    QVBoxLayout *column = nullptr;
    PendingEdits *pending = nullptr;
    int requests = 0; // to show other objects
};

void nkPropertyEditorWidget::Private::build(bool showHeader, bool scrollable)
{
    frame = new QFrame(q);
    frame->setFrameShape(QFrame::StyledPanel);
    column = new QVBoxLayout(frame);
    if (showHeader) {
        header = new QLabel(frame);
        header->setTextFormat(Qt::PlainText);
        header->setObjectName(QStringLiteral("PropertyHeader"));
        column->addWidget(header);
    }
    QVBoxLayout *outer = new QVBoxLayout(q);
    if (scrollable) {
        scrollArea = new QScrollArea(q);
        scrollArea->setFrameShape(QFrame::NoFrame);
        scrollArea->setWidgetResizable(true);
        scrollArea->setWidget(frame);
        outer->addWidget(scrollArea);
    } else {
        outer->addWidget(frame);
    }
    q->setMinimumWidth(leastWidth);
    pending = new PendingEdits(q);
    QObject::connect(pending, &PendingEdits::commitRequested, q, [this] { commitPending(); });
}

nkBaseControl *nkPropertyEditorWidget::Private::makeControl(const QString &property)
{
    nkBaseControl *control = nullptr;
    for (nkControlFactory *factory : factories) {
        control = control ? control : factory->createControl(property, valueType, frame);
    }
    if (!control) {
        control = PropertyControls::make(property, valueType, frame);
    }
    QObject::connect(control, &nkBaseControl::valueEdited, q,
                     [this, property](const QVariant &value) { write(property, value); });
    if (const PropertyControl *own = qobject_cast<PropertyControl *>(control)) {
        QObject::connect(own, &PropertyControl::pendingChanged, q,
                         [this] { pending->setPending(isPending()); });
    }
    return control;
}

void nkPropertyEditorWidget::Private::makeControls()
{
    const nkBaseControl *focused = nullptr;
    for (const nkBaseControl *control : controls) {
        focused = control->isAncestorOf(QApplication::focusWidget()) ? control : focused;
    }
    const QString focusedProperty = focused ? focused->getProperty() : QString();
    dropControls();
    for (const QString &property : properties) {
        nkBaseControl *control = makeControl(property);
        controls.append(control);
        column->addWidget(control);
        // A layout would show it only with the next events, too late for whoever asks for the height now.
        control->show();
        if (property == focusedProperty) {
            control->setFocus();
        }
    }
    alignLabels();
}

// A control may be the one whose edit is being written right now: it goes when its work is done.
void nkPropertyEditorWidget::Private::dropControls()
{
    const QList<nkBaseControl *> old = controls;
    controls.clear();
    for (nkBaseControl *control : old) {
        control->disconnect(q);
        column->removeWidget(control);
        control->hide();
        control->deleteLater();
    }
    pending->setPending(false);
}

void nkPropertyEditorWidget::Private::alignLabels()
{
    int widest = 0;
    for (nkBaseControl *control : qAsConst(controls)) {
        const PropertyControl *own = qobject_cast<PropertyControl *>(control);
        widest = qMax(widest, own ? own->labelWidth() : 0);
    }
    for (nkBaseControl *control : qAsConst(controls)) {
        if (PropertyControl *own = qobject_cast<PropertyControl *>(control)) {
            own->setLabelWidth(widest);
        }
    }
}

bool nkPropertyEditorWidget::Private::isPending() const
{
    return std::any_of(controls.cbegin(), controls.cend(), [](const nkBaseControl *control) {
        const PropertyControl *own = qobject_cast<const PropertyControl *>(control);
        return own && own->isPending();
    });
}

void nkPropertyEditorWidget::Private::commitPending()
{
    const QPointer<nkPropertyEditorWidget> alive(q);
    const QList<nkBaseControl *> present = controls;
    for (nkBaseControl *control : present) {
        // A commit may have brought other controls, or the end of the panel.
        PropertyControl *own = alive && controls.contains(control) ? qobject_cast<PropertyControl *>(control)
                                                                   : nullptr;
        if (own) {
            own->commit();
        }
    }
}

void nkPropertyEditorWidget::Private::refresh()
{
    const QStringList nowShared = sharedProperties(objects);
    QHash<QString, SharedValue> values;
    for (const QString &property : nowShared) {
        values.insert(property, SharedValue::of(objects, property));
    }
    const int nowType = typeToEdit(values.value(valueTypeProperty));
    if (nowShared != properties || nowType != valueType) {
        if (isPending()) {
            // What was begun in a control is not lost with it. Committing refreshes in its turn.
            const QPointer<nkPropertyEditorWidget> alive(q);
            commitPending();
            if (alive) {
                refresh();
            }
            return;
        }
        properties = nowShared;
        valueType = nowType;
        makeControls();
    }
    showValues(values);
}

void nkPropertyEditorWidget::Private::showValues(const QHash<QString, SharedValue> &values)
{
    for (nkBaseControl *control : qAsConst(controls)) {
        const SharedValue shared = values.value(control->getProperty());
        control->setValue(shared.value, shared.differing);
    }
    if (header) {
        header->setText(PanelTitle::of(objects));
    }
}

void nkPropertyEditorWidget::Private::write(const QString &property, const QVariant &value)
{
    // A question or a listener can end the panel, or give it other objects.
    const QPointer<nkPropertyEditorWidget> alive(q);
    const Wrappers targets = objects;
    if (property == keyProperty) {
        QList<nkdMetadataEntry> entries;
        for (const nkPropertyEditorNkdObjectWrapper &target : targets) {
            entries.append(nkdMetadataEntry(target.getObject()));
        }
        KeyRename::rename(entries, value.toString());
    } else {
        const nkScopedUndo undo(true);
        for (const nkPropertyEditorNkdObjectWrapper &target : targets) {
            target.setProperty(property, value);
        }
    }
    if (alive) {
        refresh();
    }
}

nkPropertyEditorWidget::nkPropertyEditorWidget(QWidget *parent, const QList<nkControlFactory *> &factories,
                                               bool showHeader, bool scrollable)
    : QWidget(parent), d(std::make_unique<Private>(this, factories))
{
    d->build(showHeader, scrollable);
}

// Qt hides the controls while it destroys the panel, and a control that loses the focus commits: too late here.
nkPropertyEditorWidget::~nkPropertyEditorWidget()
{
    for (const nkBaseControl *control : qAsConst(d->controls)) {
        control->disconnect(this);
    }
}

void nkPropertyEditorWidget::setDocumentMode(bool on)
{
    const int margin = on ? 0 : style()->pixelMetric(QStyle::PM_LayoutLeftMargin);
    layout()->setContentsMargins(margin, margin, margin, margin);
    d->frame->setFrameShape(on ? QFrame::NoFrame : QFrame::StyledPanel);
}

void nkPropertyEditorWidget::setCurrentObjects(const QList<nkPropertyEditorNkdObjectWrapper> &objects,
                                               bool force)
{
    const Wrappers wanted = objects;
    const QPointer<nkPropertyEditorWidget> alive(this);
    if (force || !sameObjects(wanted, d->objects)) {
        const int request = ++d->requests;
        d->commitPending();
        // Under a question the panel can go, or be given newer objects.
        if (!alive || request != d->requests) {
            return;
        }
        d->objects = wanted;
    }
    if (force) {
        d->properties.clear();
        d->dropControls();
    }
    d->refresh();
}

QList<nkPropertyEditorNkdObjectWrapper> nkPropertyEditorWidget::getCurrentObjects() const
{
    return d->objects;
}

nkBaseControl *nkPropertyEditorWidget::getControl(const QString &property) const
{
    for (nkBaseControl *control : qAsConst(d->controls)) {
        if (control->getProperty() == property) {
            return control;
        }
    }
    return nullptr;
}

void nkPropertyEditorWidget::resize()
{
    d->column->activate();
    layout()->activate();
    const int frameHeight = d->frame->sizeHint().height();
    const QMargins margins = layout()->contentsMargins();
    QWidget::resize(width(), frameHeight + margins.top() + margins.bottom());
}
